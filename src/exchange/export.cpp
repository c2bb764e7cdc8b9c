#include "exchange/export.h"

#include <readstat.h>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <unordered_set>

#include "exchange/import_table.h"
#include "lang/utf8.h"
#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/text_files.h"
#include "workspace/workspace.h"

namespace tarvika {

namespace {

// The longest data line SPSS reads without trouble.
constexpr int kLongestRecord = 516;

bool IsNumeric(const Workspace& ws, int v) { return ws.vars.GetCell(kType, v).substr(0, 4) == "num="; }

// A numeric cell as other programs read it: "." as separator; empty when it holds no number.
std::string OutNumber(std::string_view cell, char sep) {
  if (cell.empty()) return {};
  if (IsCleanNumber(cell)) {
    // Already in the general format: only its separator may change.
    std::string text(cell);
    std::replace(text.begin(), text.end(), ',', '.');
    return text;
  }
  const auto v = ParseEitherSeparator(cell, sep);
  return v ? FormatImportedNumber(*v, '.') : std::string();
}

int DecimalsOf(std::string_view number) {
  const std::size_t dot = number.find('.');
  if (dot == std::string_view::npos || number.find('E') != std::string_view::npos) return 0;
  return static_cast<int>(number.size() - dot - 1);
}

std::string Quoted(std::string_view text) {
  std::string out = "\"";
  for (char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  return out + "\"";
}

std::string Num(double v) { return FormatGeneral(v, '.'); }

void ShowCaseProgress(const Workspace& ws, int r) {
  if (r % 1000 == 0) ws.ShowProgress(fmt::format("{}{} / {}", ws.Text("Writing cases: ", "Esetek írása: "), r, ws.NumberOfCases()));
}

bool WriteFile(Workspace& ws, const std::string& path, std::string_view bytes) {
  ws.ShowProgress("");
  AtomicFile out(path);
  if (out.Open() && out.Write(bytes) && out.Commit(true)) return true;
  ws.user.Tell(fmt::format("{}{}: {}", ws.Text("The file could not be written: ", "A fájl nem írható: "), path, out.error()));
  return false;
}

// The interval variables get new variables "Var001", "Var002", ... in the syntax.
struct Recode {
  int variable;
  std::string newName;
  std::vector<LabelEntry> intervals;
};

std::vector<Recode> Recodes(const Workspace& ws) {
  std::vector<Recode> recodes;
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    if (GroupKindOf(ws.vars.GetCell(kGroupType, v)) != GroupKind::Intervals) continue;
    auto labels = ParseLabels(ws, v);
    if (!labels || labels->empty()) continue;
    recodes.push_back({v, fmt::format("Var{:03}", recodes.size() + 1), std::move(*labels)});
  }
  return recodes;
}

// The missing codes in the words of SPSS: "9/99" -> "9, 99", "90_99/-1" -> "90 thru 99, -1".
std::string MissingList(std::string_view declaration, char sep) {
  const MissingParse parsed = ParseMissingText(declaration, sep);
  std::string list;
  for (char c : parsed.canonical) {
    if (c == '/') {
      list += ", ";
    } else if (c == '_') {
      list += " thru ";
    } else {
      list += c == sep ? '.' : c;
    }
  }
  return list;
}

struct SavContext {
  AtomicFile* file;
};

ssize_t WriteSavBytes(const void* data, size_t len, void* ctx) {
  auto* c = static_cast<SavContext*>(ctx);
  return c->file->Write(std::string_view(static_cast<const char*>(data), len)) ? static_cast<ssize_t>(len) : -1;
}

}  // namespace

std::string SpssName(std::string_view shortName) {
  std::string name;
  for (char ch : shortName) {
    const auto c = static_cast<unsigned char>(ch);
    const bool legal = c >= 0x80 || std::isalnum(c) || c == '.' || c == '_' || c == '$' || c == '#' || c == '@';
    name += legal ? ch : '_';
  }
  if (name.empty() || (static_cast<unsigned char>(name[0]) < 0x80 && !std::isalpha(static_cast<unsigned char>(name[0])))) {
    name = "V" + name;
    if (Utf8Length(name) > static_cast<std::size_t>(kShortNameLength)) name = std::string(Utf8Prefix(name, kShortNameLength));
  }
  if (name.back() == '.') name.back() = '_';
  // SPSS's reserved words can't name a variable.
  for (const char* word : {"ALL", "AND", "BY", "EQ", "GE", "GT", "LE", "LT", "NE", "NOT", "OR", "TO", "WITH"}) {
    if (EqualIgnoringCase(name, word)) return "V" + name;
  }
  return name;
}

std::vector<ExportColumn> ExportLayout(const Workspace& ws) {
  std::vector<ExportColumn> layout;
  std::unordered_set<std::string> used;
  int start = 1;
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    ExportColumn col;
    col.name = SpssName(ws.vars.GetCell(kShortName, v));
    // Names that became equal ("a-b" and "a_b"), also in case only, take a number.
    for (int k = 0; used.count(FoldCase(col.name)) > 0; ++k) {
      col.name = fmt::format("{}_{:02}", Utf8Prefix(SpssName(ws.vars.GetCell(kShortName, v)), 5), k);
    }
    used.insert(FoldCase(col.name));
    col.isString = !IsNumeric(ws, v);
    for (int r = 1; r <= ws.NumberOfCases(); ++r) {
      std::string_view cell = ws.data.GetCell(v, r);
      if (col.isString) {
        col.width = std::max(col.width, static_cast<int>(cell.size()));
      } else {
        const std::string number = OutNumber(cell, ws.decimalSeparator);
        col.width = std::max(col.width, static_cast<int>(number.size()));
        col.decimals = std::max(col.decimals, DecimalsOf(number));
      }
    }
    col.start = start;
    start += col.width;
    layout.push_back(col);
  }
  return layout;
}

std::string SpssSyntax(const Workspace& ws, const std::vector<ExportColumn>& layout, const std::string& dataPath) {
  const int n = static_cast<int>(layout.size());
  std::string s = "DATA LIST FILE '" + dataPath + "' ENCODING='UTF8' /\n";
  for (int i = 0; i < n; ++i) {
    const ExportColumn& c = layout[i];
    s += "   " + PadRight(c.name, 8);
    s += c.width > 1 ? fmt::format("{:>7}-{}", c.start, c.start + c.width - 1) : fmt::format("{:>8}", c.start);
    s += c.isString ? " (A)" : fmt::format(" (F,{})", c.decimals);
    s += i + 1 < n ? ",\n" : ".\n";
  }

  std::vector<std::string> entries;
  for (int v = 1; v <= n; ++v) {
    std::string_view label = ws.vars.GetCell(kLongName, v);
    if (!label.empty()) entries.push_back(layout[v - 1].name + " " + Quoted(label));
  }
  auto command = [&s](std::string_view name, const std::vector<std::string>& list, std::string_view between) {
    if (list.empty()) return;
    s += std::string(name) + " ";
    for (std::size_t i = 0; i < list.size(); ++i) s += (i ? std::string(between) : std::string()) + list[i];
    s += ".\n";
  };
  command("VARIABLE LABELS", entries, "\n /");

  entries.clear();
  for (int v = 1; v <= n; ++v) {
    const std::string list = MissingList(ws.vars.GetCell(kMissing, v), ws.decimalSeparator);
    if (!layout[v - 1].isString && !list.empty()) entries.push_back(layout[v - 1].name + " (" + list + ")");
  }
  command("MISSING VALUES", entries, "\n /");

  const std::vector<Recode> recodes = Recodes(ws);
  for (const Recode& r : recodes) {
    s += "RECODE\n    " + layout[r.variable - 1].name + "\n";
    for (std::size_t k = 0; k < r.intervals.size(); ++k) {
      s += fmt::format("      ({} thru {} ={})\n", Num(r.intervals[k].lo), Num(r.intervals[k].hi), k + 1);
    }
    s += "      INTO   " + r.newName + ".\nEXECUTE.\n";
    s += "VARIABLE LABELS " + r.newName + " " +
         Quoted(layout[r.variable - 1].name +
                std::string(ws.Text(" grouped by its intervals", " változó övezetei alapján"))) +
         ".\n";
  }

  entries.clear();
  for (int v = 1; v <= n; ++v) {
    if (GroupKindOf(ws.vars.GetCell(kGroupType, v)) != GroupKind::Codes) continue;
    auto labels = ParseLabels(ws, v);
    if (!labels || labels->empty()) continue;
    std::string entry = layout[v - 1].name;
    for (const LabelEntry& l : *labels) entry += " " + Num(l.lo) + " " + Quoted(l.label);
    entries.push_back(entry);
  }
  for (const Recode& r : recodes) {
    std::string entry = r.newName;
    for (std::size_t k = 0; k < r.intervals.size(); ++k) entry += fmt::format(" {} {}", k + 1, Quoted(r.intervals[k].label));
    entries.push_back(entry);
  }
  command("VALUE LABELS", entries, "\n  /");

  s += "FREQUENCIES /VARIABLES";
  for (const ExportColumn& c : layout) s += " " + c.name;
  for (const Recode& r : recodes) s += " " + r.newName;
  s += ".\n";
  return s;
}

bool ExportToSpss(Workspace& ws, const std::string& dataPath, const std::string& syntaxPath) {
  const std::vector<ExportColumn> layout = ExportLayout(ws);
  std::string data;
  int record = 0;
  for (const ExportColumn& c : layout) record += c.width;
  for (int r = 1; r <= ws.NumberOfCases(); ++r) {
    ShowCaseProgress(ws, r);
    for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
      const ExportColumn& c = layout[v - 1];
      std::string_view cell = ws.data.GetCell(v, r);
      if (c.isString) {
        data += cell;
        data.append(static_cast<std::size_t>(c.width) - cell.size(), ' ');
      } else {
        const std::string number = OutNumber(cell, ws.decimalSeparator);
        data.append(static_cast<std::size_t>(c.width) - number.size(), ' ');
        data += number;
      }
    }
    data += "\r\n";
  }
  std::error_code ec;
  const std::string fullData = std::filesystem::absolute(dataPath, ec).lexically_normal().string();
  if (!WriteFile(ws, dataPath, data) || !WriteFile(ws, syntaxPath, SpssSyntax(ws, layout, fullData))) return false;
  if (record > kLongestRecord) {
    ws.user.Tell(ws.Text("The length of one data record exceeds 516 characters. Running SPSS syntax may be problematic.",
                         "Egy adatsor hossza meghaladja az 516 karaktert. Az SPSS syntax futtatása problémás lehet."));
  }
  ws.user.Tell(ws.Text("SPSS data and syntax files have been succesfully created.",
                       "Az SPSS adatfájl és syntax fájl sikeresen létrejött."));
  return true;
}

bool ExportSav(Workspace& ws, const std::string& path, std::optional<std::time_t> timestamp) {
  const std::vector<ExportColumn> layout = ExportLayout(ws);
  const std::vector<MissingCodes> missing = ParseMissing(ws);
  AtomicFile file(path);
  if (!file.Open()) {
    ws.user.Tell(fmt::format("{}{}: {}", ws.Text("The file could not be written: ", "A fájl nem írható: "), path, file.error()));
    return false;
  }
  SavContext context{&file};
  readstat_writer_t* writer = readstat_writer_init();
  readstat_set_data_writer(writer, WriteSavBytes);
  readstat_writer_set_compression(writer, READSTAT_COMPRESS_ROWS);
  if (timestamp) readstat_writer_set_file_timestamp(writer, *timestamp);
  const int n = static_cast<int>(layout.size());
  std::vector<readstat_variable_t*> variables;
  for (int v = 1; v <= n; ++v) {
    const ExportColumn& c = layout[v - 1];
    readstat_variable_t* var = readstat_add_variable(writer, c.name.c_str(), c.isString ? READSTAT_TYPE_STRING : READSTAT_TYPE_DOUBLE,
                                                     c.isString ? static_cast<std::size_t>(c.width) : 0);
    const std::string label(ws.vars.GetCell(kLongName, v));
    if (!label.empty()) readstat_variable_set_label(var, label.c_str());
    if (!c.isString) {
      const int width = std::min(40, std::max(c.width, c.decimals + 2));
      readstat_variable_set_format(var, fmt::format("F{}.{}", width, c.decimals).c_str());
      const MissingCodes& m = missing[v];
      if (m.count >= 4) readstat_variable_add_missing_double_range(var, m.lo, m.hi);
      if (m.count >= 1 && m.count <= 3) readstat_variable_add_missing_double_value(var, m.lo);
      if (m.count >= 2 && m.count <= 3) readstat_variable_add_missing_double_value(var, m.hi);
      if (m.count == 3 || m.count == 5) readstat_variable_add_missing_double_value(var, m.extra);
      if (GroupKindOf(ws.vars.GetCell(kGroupType, v)) == GroupKind::Codes) {
        auto labels = ParseLabels(ws, v);
        if (labels && !labels->empty()) {
          readstat_label_set_t* set = readstat_add_label_set(writer, READSTAT_TYPE_DOUBLE, fmt::format("labels{}", v).c_str());
          for (const LabelEntry& l : *labels) readstat_label_double_value(set, l.lo, l.label.c_str());
          readstat_variable_set_label_set(var, set);
        }
      }
    }
    variables.push_back(var);
  }
  readstat_error_t status = readstat_begin_writing_sav(writer, &context, ws.NumberOfCases());
  std::string text;
  for (int r = 1; r <= ws.NumberOfCases() && status == READSTAT_OK; ++r) {
    ShowCaseProgress(ws, r);
    status = readstat_begin_row(writer);
    for (int v = 1; v <= n && status == READSTAT_OK; ++v) {
      std::string_view cell = ws.data.GetCell(v, r);
      if (layout[v - 1].isString) {
        text.assign(cell);
        status = readstat_insert_string_value(writer, variables[v - 1], text.c_str());
      } else if (auto value = cell.empty() ? std::nullopt : ParseEitherSeparator(cell, ws.decimalSeparator)) {
        status = readstat_insert_double_value(writer, variables[v - 1], *value);
      } else {
        status = readstat_insert_missing_value(writer, variables[v - 1]);
      }
    }
    if (status == READSTAT_OK) status = readstat_end_row(writer);
  }
  if (status == READSTAT_OK) status = readstat_end_writing(writer);
  readstat_writer_free(writer);
  ws.ShowProgress("");
  if (status != READSTAT_OK || !file.Commit(true)) {
    ws.user.Tell(fmt::format("{}{}: {}", ws.Text("The file could not be written: ", "A fájl nem írható: "), path,
                             status != READSTAT_OK ? readstat_error_message(status) : file.error()));
    return false;
  }
  return true;
}

bool ExportTabDelimited(Workspace& ws, const std::string& path) {
  std::string text;
  for (int r = 0; r <= ws.NumberOfCases(); ++r) {
    ShowCaseProgress(ws, r);
    for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
      if (v > 1) text += '\t';
      text += ws.data.GetCell(v, r);
    }
    text += "\r\n";
  }
  return WriteFile(ws, path, text);
}

}  // namespace tarvika
