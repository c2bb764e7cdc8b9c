#include "workspace/declarations.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <fmt/format.h>

#include "lang/utf8.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

bool StartsWith(std::string_view s, std::string_view prefix) { return s.substr(0, prefix.size()) == prefix; }

// Splits s at the first occurrence of c: the part before, and the rest after it (empty
// when c does not occur).
std::pair<std::string_view, std::string_view> SplitAt(std::string_view s, char c) {
  std::size_t p = s.find(c);
  if (p == std::string_view::npos) return {s, {}};
  return {s.substr(0, p), s.substr(p + 1)};
}

std::string CanonicalMissing(const MissingCodes& m, char sep) {
  auto f = [sep](double v) { return FormatGeneral(v, sep); };
  switch (m.count) {
    case 1:
      return f(m.lo);
    case 2:
      return f(m.lo) + "/" + f(m.hi);
    case 3:
      return f(m.lo) + "/" + f(m.hi) + "/" + f(m.extra);
    case 4:
      return f(m.lo) + "_" + f(m.hi);
    case 5:
      return f(m.lo) + "_" + f(m.hi) + "/" + f(m.extra);
    default:
      return "";
  }
}

std::string_view NoneWord(const Workspace& ws) { return GroupTypeWord(GroupKind::None, ws.language); }

// Replaces every "," and "." by the separator.
std::string WithSeparator(std::string_view s, char sep) {
  std::string out(s);
  for (char& ch : out) {
    if (ch == ',' || ch == '.') ch = sep;
  }
  return out;
}

}  // namespace

MissingParse ParseMissingText(std::string_view text, char separator) {
  MissingParse p;
  MissingCodes& m = p.codes;
  if (text.empty()) return p;
  if (text.find('_') == std::string_view::npos) {
    double codes[3] = {0, 0, 0};
    std::string_view rest = text;
    int stored = 0;
    for (int k = 0; k < 3 && !rest.empty(); ++k) {
      auto [piece, after] = SplitAt(rest, '/');
      rest = after;
      if (auto v = ParseFourDecimals(piece, separator)) {
        codes[stored++] = *v;
      } else {
        p.fault = true;
      }
    }
    m.count = stored;
    m.lo = codes[0];
    m.hi = codes[1];
    m.extra = codes[2];
  } else {
    auto [range, rest] = SplitAt(text, '/');
    auto [loText, hiText] = SplitAt(range, '_');
    auto lo = range.find('_') == std::string_view::npos ? std::nullopt : ParseFourDecimals(loText, separator);
    auto hi = range.find('_') == std::string_view::npos ? std::nullopt : ParseFourDecimals(hiText, separator);
    if (lo && hi) {
      m.lo = *lo;
      m.hi = *hi;
      m.count = 4;
    } else {
      p.fault = true;
    }
    if (auto v = ParseFourDecimals(rest, separator)) {
      ++m.count;
      if (m.count == 5) {
        m.extra = *v;
      } else {
        m.lo = *v;
      }
    } else {
      // An empty rest counts as a failure too, so a bare range is rewritten (to itself).
      p.fault = true;
    }
  }
  if (m.count > 3 && m.lo > m.hi) {
    std::swap(m.lo, m.hi);
    p.fault = true;
  }
  p.canonical = CanonicalMissing(m, separator);
  return p;
}

std::vector<MissingCodes> ParseMissing(Workspace& ws, const std::vector<std::uint8_t>* scaleKinds) {
  int n = ws.NumberOfVariables();
  std::vector<MissingCodes> codes(n + 1);
  for (int v = 1; v <= n; ++v) {
    MissingParse p = ParseMissingText(ws.vars.GetCell(kMissing, v), ws.decimalSeparator);
    codes[v] = p.codes;
    bool nominal = scaleKinds != nullptr && v < static_cast<int>(scaleKinds->size()) && (*scaleKinds)[v] == 2;
    if (p.fault && !nominal) ws.vars.SetCell(kMissing, v, p.canonical);
  }
  return codes;
}

std::optional<std::vector<LabelEntry>> ParseLabelText(std::string_view text, bool intervals, char separator) {
  std::vector<LabelEntry> entries;
  std::size_t i = 0;
  while (true) {
    while (i < text.size() && text[i] == '/') ++i;
    if (i >= text.size()) break;
    // The value runs up to "=", skipping "/"; an interval is split at "_" first.
    std::string loText, hiText;
    bool inHigh = false;
    for (; i < text.size() && text[i] != '='; ++i) {
      if (text[i] == '/') continue;
      if (intervals && !inHigh && text[i] == '_') {
        inHigh = true;
        continue;
      }
      (inHigh ? hiText : loText).push_back(text[i]);
    }
    if (i >= text.size()) return std::nullopt;  // no "="
    ++i;
    std::size_t end = text.find(';', i);
    if (end == std::string_view::npos) end = text.size();
    LabelEntry e;
    e.label = std::string(text.substr(i, end - i));
    i = end + 1;
    auto lo = ParseFourDecimals(loText, separator);
    if (!lo) return std::nullopt;
    e.lo = e.hi = *lo;
    if (intervals) {
      auto hi = inHigh ? ParseFourDecimals(hiText, separator) : std::nullopt;
      if (!hi) return std::nullopt;
      e.hi = *hi;
    }
    entries.push_back(std::move(e));
  }
  return entries;
}

std::optional<std::vector<LabelEntry>> ParseLabels(const Workspace& ws, int v) {
  GroupKind kind = GroupKindOf(ws.vars.GetCell(kGroupType, v));
  if (kind != GroupKind::Codes && kind != GroupKind::Intervals) return std::vector<LabelEntry>{};
  return ParseLabelText(ws.vars.GetCell(kGroupLabels, v), kind == GroupKind::Intervals, ws.decimalSeparator);
}

std::string NormaliseType(std::string_view type, char separator) {
  if (StartsWith(type, "num=")) {
    std::string_view body = type.substr(4);
    if (!body.empty() && body.back() == ';') body.remove_suffix(1);
    if (body.find('_') != std::string_view::npos) {
      auto [loText, hiText] = SplitAt(body, '_');
      auto lo = ParseLocalNumber(WithSeparator(loText, separator), separator);
      auto hi = ParseLocalNumber(WithSeparator(hiText, separator), separator);
      if (lo && hi && *lo < *hi) {
        return "num=" + FormatGeneral(*lo, separator) + "_" + FormatGeneral(*hi, separator) + ";";
      }
    }
    return "num=0_0;";
  }
  if (StartsWith(type, "string=")) {
    auto [value, rest] = SplitAt(type.substr(7), ';');
    if (auto n = ParseWholeNumber(value)) return fmt::format("string={};", *n);
    return "string=0;";
  }
  if (StartsWith(type, "date=")) return "date=;";
  if (StartsWith(type, "link=")) return "link=;";
  // "sep=;" is not among the recognised forms and becomes a string, deliberately.
  return "string=0;";
}

void NormaliseShortNames(Workspace& ws) {
  int n = ws.vars.RowCount() - 1;
  std::vector<std::string> names(n + 1);
  for (int r = 1; r <= n; ++r) {
    std::string name(ws.vars.GetCell(kShortName, r));
    if (Utf8Length(name) > kShortNameLength) {
      if (ws.vars.GetCell(kLongName, r).empty()) ws.vars.SetCell(kLongName, r, name);
      name = std::string(Utf8Prefix(name, kShortNameLength));
    }
    names[r] = std::move(name);
  }
  // The names before i, and for each "abcde~" the counter below which every candidate is
  // taken: the earlier names only grow, so a search never has to start again from "00".
  std::unordered_set<std::string> earlier;
  std::unordered_map<std::string, int> nextCounter;
  if (n >= 1) earlier.insert(names[1]);
  for (int i = 2; i <= n; ++i) {
    if (earlier.count(names[i]) > 0) {
      std::string base = std::string(Utf8Prefix(names[i], 5)) + "~";
      int& k = nextCounter[base];
      std::string candidate = fmt::format("{}{:02}", base, k);
      while (earlier.count(candidate) > 0) candidate = fmt::format("{}{:02}", base, ++k);
      names[i] = candidate;
    }
    earlier.insert(names[i]);
  }
  for (int r = 1; r <= n; ++r) {
    ws.vars.SetCell(kShortName, r, names[r]);
    ws.data.SetCell(r, 0, names[r]);
  }
}

bool ShortNameInUse(const Workspace& ws, std::string_view name, int exceptRow) {
  for (int r = 1; r < ws.vars.RowCount(); ++r) {
    if (r != exceptRow && EqualIgnoringCase(ws.vars.GetCell(kShortName, r), name)) return true;
  }
  return false;
}

std::string FreeVarName(const Workspace& ws, int exceptRow) {
  for (int k = 1; k <= 10000; ++k) {
    std::string candidate = fmt::format("var_{}", k);
    if (!ShortNameInUse(ws, candidate, exceptRow)) return candidate;
  }
  return "";
}

bool CheckDuplicateNames(Workspace& ws) {
  int n = ws.vars.RowCount() - 1;
  std::vector<std::string> folded(n + 1);
  for (int r = 1; r <= n; ++r) folded[r] = FoldCase(ws.vars.GetCell(kShortName, r));
  std::vector<bool> listed(n + 1, false);
  std::string list;
  for (int i = 1; i <= n; ++i) {
    for (int j = i + 1; j <= n; ++j) {
      if (folded[i].empty() || folded[i] != folded[j]) continue;
      for (int v : {i, j}) {
        if (listed[v]) continue;
        listed[v] = true;
        list += fmt::format("\r\n{}={};", v, ws.vars.GetCell(kShortName, v));
      }
    }
  }
  bool duplicates = !list.empty();
  if (duplicates) {
    ws.user.Tell(std::string(ws.Text("Error: identical variable names! See the declaration of variables.",
                                     "Hiba: azonos változónevek. Változtassa meg az azonos neveket!")) +
                 list);
  }
  for (int r = 1; r <= n; ++r) {
    if (!ws.vars.GetCell(kShortName, r).empty()) continue;
    std::string prompt = std::string(ws.Text("Error: missing short name.", "Hiba: nincs rövid név.")) + "\r\n" +
                         std::string(ws.Text("Enter a short name.", "Írjon be egy rövid nevet!"));
    if (auto answer = ws.user.AskText(prompt, ""); answer && !answer->empty()) {
      ws.vars.SetCell(kShortName, r, *answer);
      ws.data.SetCell(r, 0, *answer);
    }
  }
  return !duplicates;
}

void ValidateDeclarations(Workspace& ws) {
  VariableTable& vars = ws.vars;
  int n = vars.RowCount() - 1;

  // 1. Names. The first message is Hungarian in either language, as it always was.
  bool told = false;
  for (int r = 1; r <= n; ++r) {
    if (!vars.GetCell(kShortName, r).empty()) continue;
    if (!told) {
      ws.user.Tell("Hiba: nincs változónév!");
      told = true;
    }
    auto answer = ws.user.AskText(ws.Text("Enter variable name", "Írja be a változó nevét"), "");
    std::string name = answer ? *answer : std::string();
    if (name.empty()) name = FreeVarName(ws, r);
    vars.SetCell(kShortName, r, name);
  }

  // 2. Types.
  for (int r = 1; r <= n; ++r) vars.SetCell(kType, r, NormaliseType(vars.GetCell(kType, r), ws.decimalSeparator));

  // 3. Duplicate names.
  CheckDuplicateNames(ws);

  // 4. Group types, and 5. the labels they announce.
  for (int r = 1; r <= n; ++r) {
    GroupKind kind = GroupKindOf(vars.GetCell(kGroupType, r));
    if (kind == GroupKind::Unknown || vars.GetCell(kGroupLabels, r).empty()) {
      vars.SetCell(kGroupType, r, NoneWord(ws));
      continue;
    }
    if (kind == GroupKind::None) continue;
    if (!ParseLabels(ws, r)) {
      vars.SetCell(kGroupLabels, r, "");
      vars.SetCell(kGroupType, r, NoneWord(ws));
    }
  }

  // 6. The header row of the data table.
  int columns = std::min(n, ws.NumberOfVariables());
  for (int r = 1; r <= columns; ++r) ws.data.SetCell(r, 0, vars.GetCell(kShortName, r));
  ws.data.SetCell(0, 0, "");
}

std::optional<std::pair<double, double>> NumericTypeRange(std::string_view type, char separator) {
  if (!StartsWith(type, "num")) return std::nullopt;
  std::string_view body = type.substr(std::min<std::size_t>(4, type.size()));
  if (!body.empty() && body.back() == ';') body.remove_suffix(1);
  auto [loText, hiText] = SplitAt(body, '_');
  auto lo = ParseLocalNumber(loText, separator);
  auto hi = ParseLocalNumber(hiText, separator);
  if (!lo || !hi) return std::nullopt;
  return std::pair{*lo, *hi};
}

CellFault FindCellFault(Workspace& ws, int c, int r) {
  if (!ws.typeControl || c < 1 || r < 1 || c > ws.NumberOfVariables() || r > ws.NumberOfCases()) return CellFault::None;
  std::string_view type = ws.vars.GetCell(kType, c);
  std::string cell(ws.data.GetCell(c, r));
  if (!StartsWith(type, "num") || cell.empty()) return CellFault::None;
  auto cleaned = CleanNumber(cell, ws.decimalSeparator);
  if (!cleaned) return CellFault::NonNumeric;
  if (*cleaned != cell) {
    ws.data.SetCell(c, r, *cleaned);
    ws.dataChanged = true;
  }
  auto value = ParseLocalNumber(*cleaned, ws.decimalSeparator);
  if (!value) return CellFault::NonNumeric;
  auto range = NumericTypeRange(type, ws.decimalSeparator);
  if (range && range->first < range->second && (*value < range->first || *value > range->second)) return CellFault::OutOfRange;
  return CellFault::None;
}

void TellCellFault(const Workspace& ws, int c, CellFault fault) {
  if (fault == CellFault::NonNumeric) {
    ws.user.Tell(ws.Text("Error: nonnumeric value.", "Hiba: nem numerikus adat!"));
  } else if (fault == CellFault::OutOfRange) {
    auto range = NumericTypeRange(ws.vars.GetCell(kType, c), ws.decimalSeparator);
    if (!range) return;
    ws.user.Tell(fmt::format("{}{} - {}", ws.Text("Value out of the declared range: ", "Az érték kívül esik a megadott tartományon: "),
                             FormatGeneral(range->first, ws.decimalSeparator), FormatGeneral(range->second, ws.decimalSeparator)));
  }
}

bool CheckCell(Workspace& ws, int c, int r) {
  CellFault fault = FindCellFault(ws, c, r);
  TellCellFault(ws, c, fault);
  return fault == CellFault::None;
}

}  // namespace tarvika
