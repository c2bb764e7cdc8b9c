#pragma once
// What the two SPSS readers (data files through ReadStat, portable files by their own
// reader) share: how a variable, its labels, missing codes and dates enter the workspace.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exchange/import_table.h"
#include "exchange/spss_import.h"

namespace tarvika {

struct ValueLabel {
  double value;
  std::string label;
};

// Codes and at most one range of user-missing values.
struct SpssMissing {
  std::vector<double> codes;
  std::optional<std::pair<double, double>> range;
  // "9/99/999", "lo_hi" or "lo_hi/code" in the separator given; empty for none.
  std::string Declaration(char sep) const;
};

// Name and long name: a name over 8 characters becomes its first five characters and
// "***", and goes in front of the label as the long name. True when it was cut.
bool NameVariable(ImportedVariable& v, const std::string& name, const std::string& label);

// "value=label;/..." with ";" and "/" in a label made ",", as the label list needs;
// longLabel tells whether a label is over 12 characters.
std::string GroupLabels(const std::vector<ValueLabel>& labels, char sep, bool& longLabel);

// "Number of variables: " count " > " the limit ". Only the first " the limit " variables will
// be loaded." in the session's language.
std::string VariablesCutMessage(const Workspace& ws, long long count);
// The same for cases: "Number of cases: " count " > " the limit ". Only the first " ...;
// a count of 0 (a portable file does not say how many it holds) reads "more than".
std::string CasesCutMessage(const Workspace& ws, long long count);

// SPSS keeps dates as seconds since the start of the Gregorian calendar (14 October 1582);
// 1970-01-01 is this many seconds on.
constexpr double kSpssSecondsTo1970 = 12219379200.0;
enum class DateKind { None, Date, DateTime };
// The kind of a print format by its name ("DATE11", "ADATE10", "DATETIME20", ...).
DateKind DateKindOf(std::string_view format);
// "YYYY-MM-DD", with " HH:MM:SS" for a date and time.
std::string DateText(double spssSeconds, DateKind kind);

}  // namespace tarvika
