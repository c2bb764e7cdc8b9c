#include "exchange/spss_import.h"
#include "exchange/spss_values.h"

#include <readstat.h>

#include <fmt/format.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <vector>

#include "lang/utf8.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {

namespace {

struct Reader {
  Workspace& ws;
  ImportTable& table;
  SpssReadNotes notes;
  std::map<std::string, std::vector<ValueLabel>> labelSets;
  std::vector<std::string> labelSetOf;  // per variable
  std::vector<bool> isString;
  std::vector<DateKind> dates;
  int declaredCases = -1;
  int variables = 0;
  std::string error;
};

std::string MissingDeclaration(const readstat_variable_t* variable, char sep) {
  SpssMissing missing;
  const int n = readstat_variable_get_missing_ranges_count(variable);
  for (int i = 0; i < n; ++i) {
    const readstat_value_t lo = readstat_variable_get_missing_range_lo(variable, i);
    const readstat_value_t hi = readstat_variable_get_missing_range_hi(variable, i);
    if (readstat_value_type_class(lo) != READSTAT_TYPE_CLASS_NUMERIC) return {};
    const double a = readstat_double_value(lo), b = readstat_double_value(hi);
    if (a == b) {
      missing.codes.push_back(a);
    } else {
      missing.range = {a, b};
    }
  }
  return missing.Declaration(sep);
}

int OnMetadata(readstat_metadata_t* metadata, void* ctx) {
  auto& r = *static_cast<Reader*>(ctx);
  const int cases = readstat_get_row_count(metadata);
  const int variables = readstat_get_var_count(metadata);
  r.declaredCases = cases;
  if (cases > 0) r.table.ReserveRows(std::min(cases, kMaxCases));
  if (cases > kMaxCases) {
    r.ws.user.Tell(CasesCutMessage(r.ws, cases));
  }
  if (variables > kMaxVariables) {
    r.ws.user.Tell(VariablesCutMessage(r.ws, variables));
  }
  return READSTAT_HANDLER_OK;
}

int OnVariable(int index, readstat_variable_t* variable, const char* labelSet, void* ctx) {
  auto& r = *static_cast<Reader*>(ctx);
  if (index >= kMaxVariables) return READSTAT_HANDLER_SKIP_VARIABLE;
  const std::string name = readstat_variable_get_name(variable);
  const char* labelText = readstat_variable_get_label(variable);
  const std::string label = labelText ? labelText : "";
  ImportedVariable& v = r.table.Variable(index);
  r.notes.namesCut = NameVariable(v, name, label) || r.notes.namesCut;
  r.variables = std::max(r.variables, index + 1);
  r.labelSetOf.resize(static_cast<std::size_t>(r.variables));
  r.isString.resize(static_cast<std::size_t>(r.variables));
  r.dates.resize(static_cast<std::size_t>(r.variables));
  const bool text = readstat_variable_get_type_class(variable) == READSTAT_TYPE_CLASS_STRING;
  r.isString[index] = text;
  const char* format = readstat_variable_get_format(variable);
  r.dates[index] = text || format == nullptr ? DateKind::None : DateKindOf(format);
  if (text) {
    r.table.DeclareString(index);
  } else if (r.dates[index] != DateKind::None) {
    r.table.DeclareDate(index);
  } else {
    if (labelSet) r.labelSetOf[index] = labelSet;
    v.missing = MissingDeclaration(variable, r.ws.decimalSeparator);
  }
  return READSTAT_HANDLER_OK;
}

int OnValue(int obs, readstat_variable_t* variable, readstat_value_t value, void* ctx) {
  auto& r = *static_cast<Reader*>(ctx);
  const int index = readstat_variable_get_index(variable);
  if (obs >= kMaxCases || index >= kMaxVariables) return READSTAT_HANDLER_OK;
  r.notes.cases = std::max(r.notes.cases, obs + 1);
  if (index == 0 && obs % 1000 == 0) {
    r.ws.ShowProgress(fmt::format("{}{}", r.ws.Text("Reading cases: ", "Esetek olvasása: "), obs));
  }
  if (readstat_value_type_class(value) == READSTAT_TYPE_CLASS_STRING) {
    const char* s = readstat_string_value(value);
    r.table.SetString(index, obs, s ? s : "");
  } else if (readstat_value_is_system_missing(value)) {
    return READSTAT_HANDLER_OK;
  } else if (index < static_cast<int>(r.dates.size()) && r.dates[index] != DateKind::None) {
    r.table.SetString(index, obs, DateText(readstat_double_value(value), r.dates[index]));
  } else {
    r.table.SetNumber(index, obs, readstat_double_value(value));
  }
  return READSTAT_HANDLER_OK;
}

int OnValueLabel(const char* labelSet, readstat_value_t value, const char* label, void* ctx) {
  auto& r = *static_cast<Reader*>(ctx);
  if (readstat_value_type_class(value) != READSTAT_TYPE_CLASS_NUMERIC || readstat_value_is_system_missing(value)) {
    return READSTAT_HANDLER_OK;  // labels of strings can't be codes
  }
  r.labelSets[labelSet].push_back({readstat_double_value(value), label ? label : ""});
  return READSTAT_HANDLER_OK;
}

void OnError(const char* message, void* ctx) {
  auto& r = *static_cast<Reader*>(ctx);
  if (r.error.empty()) r.error = message;
}

void RequireFile(const Workspace& ws, const std::string& path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) {
    throw ImportError{std::string(ws.Text("File specified to load does not exist.",
                                          "A megadott fájl nem létezik, ezért nem lehet betölteni."))};
  }
}

using Parse = readstat_error_t (*)(readstat_parser_t*, const char*, void*);

SpssReadNotes Read(Workspace& ws, const std::string& path, ImportTable& table, Parse parse, std::string_view damaged) {
  Reader r{ws, table, {}, {}, {}, {}};
  readstat_parser_t* parser = readstat_parser_init();
  readstat_set_metadata_handler(parser, OnMetadata);
  readstat_set_variable_handler(parser, OnVariable);
  readstat_set_value_handler(parser, OnValue);
  readstat_set_value_label_handler(parser, OnValueLabel);
  readstat_set_error_handler(parser, OnError);
  readstat_set_handler_character_encoding(parser, "UTF-8");
  const readstat_error_t status = parse(parser, path.c_str(), &r);
  readstat_parser_free(parser);
  if (status != READSTAT_OK) {
    std::string message(damaged);
    message += fmt::format(" ({})", r.error.empty() ? readstat_error_message(status) : r.error);
    throw ImportError{message};
  }
  table.EnsureColumns(r.variables);
  for (int v = 0; v < r.variables; ++v) {
    auto set = r.labelSets.find(r.labelSetOf[v]);
    if (r.labelSetOf[v].empty() || set == r.labelSets.end()) continue;
    bool longLabel = false;
    table.Variable(v).groupLabels = GroupLabels(set->second, ws.decimalSeparator, longLabel);
    r.notes.longLabelVariables += longLabel;
  }
  return r.notes;
}

}  // namespace

SpssReadNotes ReadSavFile(Workspace& ws, const std::string& path, ImportTable& table) {
  RequireFile(ws, path);
  char magic[4] = {};
  std::ifstream(path, std::ios::binary).read(magic, sizeof magic);
  const std::string_view start(magic, sizeof magic);
  if (start != "$FL2" && start != "$FL3") {
    throw ImportError{std::string(ws.Text("The file is damaged or not a valid SPSS sav file.",
                                          "A megadott fájl sérült, vagy nem valódi SPSS sav fájl."))};
  }
  return Read(ws, path, table, readstat_parse_sav,
              ws.Text("An error occurred during reading the data file.",
                      "Adatbeolvasási hiba: a megadott fájl sérült, vagy nem valódi SPSS sav fájl."));
}

}  // namespace tarvika
