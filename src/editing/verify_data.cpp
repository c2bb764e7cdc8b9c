#include "editing/verify_data.h"

#include <fmt/format.h>

#include <charconv>
#include <map>

#include "lang/utf8.h"
#include "workspace/declarations.h"
#include "workspace/numbers.h"

namespace tarvika {

std::vector<VerifyFinding> VerifyData(Workspace& ws) {
  std::vector<VerifyFinding> findings;
  const std::string_view rowWord = ws.Text("Row=", "Sor=");
  const std::string_view colWord = ws.Text("Col=", "Oszl=");
  auto add = [&](int r, int c, std::string_view what) {
    findings.push_back({r, c, fmt::format("{}{};  {}{}; {}", rowWord, r, colWord, c, what)});
  };
  for (int c = 1; c <= ws.NumberOfVariables(); ++c) {
    std::string_view type = ws.vars.GetCell(kType, c);
    if (type.substr(0, 3) != "num") continue;
    // "num=0_0;" declares no range (a type whose low bound is not below the high one is
    // stored so): nothing is out of it.
    auto range = NumericTypeRange(type, ws.decimalSeparator);
    if (range && !(range->first < range->second)) range.reset();
    for (int r = 1; r <= ws.NumberOfCases(); ++r) {
      std::string cell(ws.data.GetCell(c, r));
      if (cell.empty()) continue;
      auto cleaned = CleanNumber(cell, ws.decimalSeparator);
      if (cleaned && *cleaned != cell) {
        ws.data.SetCell(c, r, *cleaned);
        ws.dataChanged = true;
      }
      auto value = cleaned ? ParseLocalNumber(*cleaned, ws.decimalSeparator) : std::nullopt;
      if (!value) {
        add(r, c, ws.Text("nonnumeric value", "nem numerikus adat!"));
      } else if (range && (*value < range->first || *value > range->second)) {
        add(r, c, ws.Text("out of specified range", "megadott határokon kívüli érték"));
      }
    }
  }
  return findings;
}

std::optional<std::pair<int, int>> FindingCell(std::string_view line) {
  if (line.find("VarFind") != std::string_view::npos) return std::nullopt;
  auto numberAfter = [&line](std::size_t at) -> std::optional<int> {
    if (at == std::string_view::npos) return std::nullopt;
    int v = 0;
    auto [end, ec] = std::from_chars(line.data() + at, line.data() + line.size(), v);
    if (ec != std::errc()) return std::nullopt;
    return v;
  };
  std::size_t eq1 = line.find('=');
  std::size_t eq2 = eq1 == std::string_view::npos ? eq1 : line.find('=', eq1 + 1);
  auto row = numberAfter(eq1 == std::string_view::npos ? eq1 : eq1 + 1);
  auto col = numberAfter(eq2 == std::string_view::npos ? eq2 : eq2 + 1);
  if (!row || !col) return std::nullopt;
  return std::pair{*row, *col};
}

std::optional<DeclaredRange> RangeOf(const Workspace& ws, int variable) {
  auto range = NumericTypeRange(ws.vars.GetCell(kType, variable), ws.decimalSeparator);
  if (!range) return std::nullopt;
  return DeclaredRange{range->first, range->second};
}

bool FixEnteredValue(Workspace& ws, int col, int row, EntryFix fix) {
  auto range = RangeOf(ws, col);
  if (!range || row < 1 || row > ws.NumberOfCases()) return false;
  ws.data.SetCell(col, row, FormatGeneral(fix == EntryFix::ToMinimum ? range->lo : range->hi, ws.decimalSeparator));
  ws.dataChanged = true;
  return true;
}

bool ChangeLimits(Workspace& ws, int variable, double lo, double hi) {
  if (variable < 1 || variable > ws.NumberOfVariables() || !(lo < hi)) return false;
  ws.vars.SetCell(kType, variable,
                  fmt::format("num={}_{};", FormatGeneral(lo, ws.decimalSeparator), FormatGeneral(hi, ws.decimalSeparator)));
  ws.dataChanged = true;
  return true;
}

std::vector<std::string> DuplicatedVariables(const Workspace& ws) {
  std::map<std::string, int> count;
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) ++count[FoldCase(ws.vars.GetCell(kShortName, v))];
  std::vector<std::string> lines;
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    if (count[FoldCase(ws.vars.GetCell(kShortName, v))] > 1) lines.push_back(fmt::format("{}={};", v, ws.vars.GetCell(kShortName, v)));
  }
  return lines;
}

bool RenameVariable(Workspace& ws, int v, std::string_view name) {
  if (v < 1 || v > ws.NumberOfVariables() || name.empty()) return false;
  if (ShortNameInUse(ws, name, v)) {
    ws.user.Tell(fmt::format("{}{}{}",
                             ws.Text("The new variable name is identical to an existing variable name.\r\nChange the new name: ",
                                     "Az új változónév megegyezik egy létező változónévvel.\r\nMódosítsa az új nevet: "),
                             name, ws.Text(".", "!")));
    return false;
  }
  if (Utf8Length(name) > kShortNameLength) {
    ws.user.Tell(ws.Text("A short name has at most 8 characters.", "A rövid név legfeljebb 8 karakter lehet."));
    return false;
  }
  ws.vars.SetCell(kShortName, v, name);
  ws.data.SetCell(v, 0, name);
  ws.dataChanged = true;
  return true;
}

}  // namespace tarvika
