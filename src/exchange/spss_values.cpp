#include "exchange/spss_values.h"

#include <fmt/format.h>

#include <cmath>

#include "lang/utf8.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {

namespace {

// The longest group label the reports print whole.
constexpr std::size_t kGroupLabelLength = 12;

// The text of a code group label: ";" and "/" would break the label list, a line end the file.
std::string GroupLabelText(std::string_view label) {
  std::string s(label);
  for (char& c : s) {
    if (c == ';' || c == '/') c = ',';
    if (c == '\t' || c == '\r' || c == '\n') c = ' ';
  }
  return s;
}

}  // namespace

std::string SpssMissing::Declaration(char sep) const {
  std::string text;
  if (range) {
    text = FormatGeneral(range->first, sep) + "_" + FormatGeneral(range->second, sep);
    if (!codes.empty()) text += "/" + FormatGeneral(codes.front(), sep);
    return text;
  }
  for (std::size_t i = 0; i < codes.size() && i < 3; ++i) text += (i ? "/" : "") + FormatGeneral(codes[i], sep);
  return text;
}

bool NameVariable(ImportedVariable& v, const std::string& name, const std::string& label) {
  if (Utf8Length(name) > static_cast<std::size_t>(kShortNameLength)) {
    v.name = std::string(Utf8Prefix(name, kShortNameLength - 3)) + "***";
    v.longName = label.empty() ? name : name + " " + label;
    return true;
  }
  v.name = name;
  v.longName = label;
  return false;
}

std::string GroupLabels(const std::vector<ValueLabel>& labels, char sep, bool& longLabel) {
  std::string text;
  longLabel = false;
  for (const ValueLabel& l : labels) {
    const std::string label = GroupLabelText(l.label);
    longLabel = longLabel || Utf8Length(label) > kGroupLabelLength;
    text += FormatGeneral(l.value, sep) + "=" + label + ";/";
  }
  return text;
}

std::string VariablesCutMessage(const Workspace& ws, long long count) {
  return fmt::format(fmt::runtime(ws.Text("Number of variables: {0} > {1}. Only the first {1} variables will be loaded.",
                                          "A változók száma: {0} > {1}. Csak az első {1} változót olvassuk be.")),
                     count, kMaxVariables);
}

std::string CasesCutMessage(const Workspace& ws, long long count) {
  const std::string cases = count > 0 ? fmt::format("{} > {}", count, kMaxCases)
                                      : fmt::format("{}{}", ws.Text("more than ", "több mint "), kMaxCases);
  return fmt::format(fmt::runtime(ws.Text("Number of cases: {0}. Only the first {1} cases will be loaded.",
                                          "Az esetek száma: {0}. Csak az első {1} esetet (adatsort) olvassuk be.")),
                     cases, kMaxCases);
}

DateKind DateKindOf(std::string_view format) {
  if (format.substr(0, 8) == "DATETIME" || format.substr(0, 6) == "YMDHMS") return DateKind::DateTime;
  for (std::string_view prefix : {"DATE", "ADATE", "EDATE", "SDATE", "JDATE"}) {
    if (format.substr(0, prefix.size()) == prefix) return DateKind::Date;
  }
  return DateKind::None;
}

// The civil date of a day count from 1970-01-01 by the proleptic Gregorian calendar
// (H. Hinnant's days-to-civil algorithm).
std::string DateText(double spssSeconds, DateKind kind) {
  const double unix = spssSeconds - kSpssSecondsTo1970;
  const long long days = static_cast<long long>(std::floor(unix / 86400.0));
  const long long z = days + 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const long long doe = z - era * 146097;
  const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long long mp = (5 * doy + 2) / 153;
  const long long d = doy - (153 * mp + 2) / 5 + 1;
  const long long m = mp < 10 ? mp + 3 : mp - 9;
  const long long y = yoe + era * 400 + (m <= 2 ? 1 : 0);
  std::string text = fmt::format("{:04}-{:02}-{:02}", y, m, d);
  if (kind == DateKind::DateTime) {
    const long long s = static_cast<long long>(std::llround(unix - static_cast<double>(days) * 86400.0));
    text += fmt::format(" {:02}:{:02}:{:02}", s / 3600, s / 60 % 60, s % 60);
  }
  return text;
}

std::string SpssReadWarning(const Workspace& ws, const SpssReadNotes& notes) {
  std::string text;
  if (notes.namesCut) {
    text += ws.Text("WARNING! ", "FIGYELEM! ");
    text += ws.Text("If a short variable name ends with ***, it indicates that the original SPSS name is longer than 8 characters. ",
                    "Ha egy rövid változónév végén *** van, az azt jelzi, hogy az eredeti SPSS név hosszabb 8 karakternél. ");
    text += ws.Text("The SPSS name stands then in the beginning of the long variable name.",
                    "Ezt az SPSS nevet a hosszú változónév elejére tettük.");
  }
  if (notes.longLabelVariables > 0) {
    if (!text.empty()) text += "\r\n";
    text += std::to_string(notes.longLabelVariables);
    text += ws.Text(" variables at least one group label is longer than 12 characters.",
                    " változó esetén van olyan csoportcímke, amely 12-nél több karakterből áll.");
  }
  return text;
}

}  // namespace tarvika
