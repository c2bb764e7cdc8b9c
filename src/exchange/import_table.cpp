#include "exchange/import_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <unordered_set>

#include "lang/utf8.h"
#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {

namespace {

std::string_view TrimBlanks(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

bool OnlyStars(std::string_view s) { return !s.empty() && s.find_first_not_of('*') == std::string_view::npos; }

bool HasLineBreakOrTab(std::string_view s) {
  for (char c : s) {
    if (c == '\t' || c == '\r' || c == '\n') return true;
  }
  return false;
}

// Characters of UTF-8 text: the bytes that don't continue a character.
std::size_t CharacterCount(std::string_view s) {
  std::size_t n = 0;
  for (char c : s) n += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  return n;
}

// A cell can hold no tab or line end: they separate fields and records of the project file.
std::string_view WithoutBreaks(std::string_view s, std::string& scratch) {
  if (!HasLineBreakOrTab(s)) return s;
  scratch.assign(s);
  for (char& c : scratch) {
    if (c == '\t' || c == '\r' || c == '\n') c = ' ';
  }
  return scratch;
}

}  // namespace

std::string FormatImportedNumber(double value, char separator) {
  const double a = std::fabs(value);
  char buf[32];
  if (a < 1e15 && value == std::trunc(value)) {
    const auto end = std::to_chars(buf, buf + sizeof buf, static_cast<long long>(value)).ptr;
    return std::string(buf, end);
  }
  if (a >= 1e-4 && a < 1e15) {
    // Fifteen significant digits without trailing zeros, as the general format prints them.
    const auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, 15);
    std::string_view text(buf, static_cast<std::size_t>(res.ptr - buf));
    if (res.ec == std::errc() && text.find('e') == std::string_view::npos) {
      std::string s(text);
      if (separator != '.') std::replace(s.begin(), s.end(), '.', separator);
      return s;
    }
  }
  return FormatGeneral(value, separator);
}

void ImportTable::EnsureColumns(int n) {
  if (n <= Columns()) return;
  columns_.resize(static_cast<std::size_t>(n));
  data_.SetColCount(n + 1);
}

void ImportTable::ReserveRows(int rows) {
  if (rows + 1 > rowCapacity_) {
    rowCapacity_ = rows + 1;
    data_.SetRowCount(rowCapacity_);
  }
}

void ImportTable::EnsureRows(int r) {
  if (r + 1 < rowCapacity_) return;
  rowCapacity_ = std::max(2 * rowCapacity_, std::max(r + 2, 1024));
  data_.SetRowCount(rowCapacity_);
}

void ImportTable::Note(Column& col, double value) {
  if (!col.anyValue) {
    col.lo = col.hi = value;
    col.anyValue = true;
  } else if (value < col.lo) {
    col.lo = value;
  } else if (value > col.hi) {
    col.hi = value;
  }
}

void ImportTable::SetText(int c, int r, std::string_view field, bool mayHoldBreaks) {
  field = TrimBlanks(field);
  if (field.empty() || (field[0] == '*' && OnlyStars(field))) return;
  if (mayHoldBreaks) field = WithoutBreaks(field, scratch_);
  EnsureColumns(c + 1);
  EnsureRows(r + 1);
  Column& col = columns_[c];
  bool numeric = false;
  if (!col.isString) {
    // The common number of a file: a plain decimal with "." (then its text is ASCII).
    if (auto v = ParsePlainDecimal(field, '.')) {
      numeric = true;
      Note(col, *v);
      if (!col.needsCleaning) col.needsCleaning = !IsCleanNumber(field) || (sep_ != '.' && field.find('.') != field.npos);
    } else if (auto w = ParseEitherSeparator(field, sep_)) {
      numeric = true;
      Note(col, *w);
      col.needsCleaning = true;
    } else {
      col.isString = true;
    }
  }
  col.longest = std::max(col.longest, numeric ? field.size() : CharacterCount(field));
  data_.SetCell(c + 1, r + 1, field);
}

void ImportTable::SetNumber(int c, int r, double value) {
  EnsureColumns(c + 1);
  EnsureRows(r + 1);
  Column& col = columns_[c];
  Note(col, value);
  const std::string text = FormatImportedNumber(value, sep_);
  col.longest = std::max(col.longest, text.size());
  data_.SetCell(c + 1, r + 1, text);
}

void ImportTable::SetString(int c, int r, std::string_view text) {
  DeclareString(c);
  if (text.empty()) return;
  text = WithoutBreaks(text, scratch_);
  EnsureRows(r + 1);
  Column& col = columns_[c];
  col.longest = std::max(col.longest, CharacterCount(text));
  data_.SetCell(c + 1, r + 1, text);
}

void ImportTable::DeclareString(int c) {
  EnsureColumns(c + 1);
  columns_[c].isString = true;
}

void ImportTable::DeclareDate(int c) {
  DeclareString(c);
  columns_[c].isDate = true;
}

void ImportTable::CleanNumericColumn(int c, int cases) {
  std::string field;
  for (int r = 1; r <= cases; ++r) {
    std::string_view cell = data_.GetCell(c, r);
    if (cell.empty()) continue;
    field.assign(cell);
    CleanNumericField(field, sep_);
    if (field != cell) data_.SetCell(c, r, field);
  }
}

void ImportTable::Install(Workspace& ws, int cases) {
  const int n = Columns();
  if (n == 0 || cases == 0) {
    throw ImportError{std::string(ws.Text("The file holds no data.", "A fájlban nincs adat."))};
  }
  if (n > kMaxVariables) {
    throw ImportError{fmt::format(fmt::runtime(ws.Text("The file has {} variables; a project can hold at most {}.",
                                                       "A fájlban {} változó van; egy projekt legfeljebb {} változót tartalmazhat.")),
                                  n, kMaxVariables)};
  }
  if (cases > kMaxCases) {
    throw ImportError{fmt::format(fmt::runtime(ws.Text("The file has {} cases; a project can hold at most {}.",
                                                       "A fájlban {} eset van; egy projekt legfeljebb {} esetet tartalmazhat.")),
                                  cases, kMaxCases)};
  }
  data_.SetRowCount(cases + 1);
  data_.SetColCount(n + 1);
  data_.RenumberCases();

  VariableTable& vars = ws.vars;
  vars.SetRowCount(1);
  vars.SetRowCount(n + 1);
  int unnamed = 0;
  for (int c = 0; c < n; ++c) {
    Column& col = columns_[c];
    const int v = c + 1;
    std::string name(TrimBlanks(col.decl.name));
    if (name.empty()) name = fmt::format("Var00{}", ++unnamed);
    vars.SetCell(kIndex, v, fmt::format("{}.", v));
    vars.SetCell(kShortName, v, name);
    vars.SetCell(kLongName, v, col.decl.longName);
    std::string type;
    if (col.isDate) {
      type = "date=;";
    } else if (col.isString) {
      type = fmt::format("string={};", col.longest);
    } else {
      // The range holds every value read, so the type control accepts the imported cells.
      type = col.anyValue && std::floor(col.lo) < std::ceil(col.hi)
                 ? fmt::format("num={}_{};", FormatGeneral(std::floor(col.lo), sep_),
                               FormatGeneral(std::ceil(col.hi), sep_))
                 : std::string("num=0_0;");
      if (col.needsCleaning) CleanNumericColumn(v, cases);
    }
    vars.SetCell(kType, v, type);
    const bool codes = !col.decl.groupLabels.empty();
    vars.SetCell(kGroupLabels, v, col.decl.groupLabels);
    vars.SetCell(kGroupType, v, GroupTypeWord(codes ? GroupKind::Codes : GroupKind::None, ws.language));
    vars.SetCell(kMissing, v, col.decl.missing);
    data_.SetCell(v, 0, name);
  }
  vars.WriteTitles(ws.language);
  ws.data = std::move(data_);
  data_ = DataMatrix();
  columns_.clear();
  rowCapacity_ = 0;
  MakeNamesUnique(ws);
  ValidateDeclarations(ws);
  ws.dataChanged = true;
}

void MakeNamesUnique(Workspace& ws) {
  NormaliseShortNames(ws);
  std::unordered_set<std::string> earlier;
  for (int r = 1; r < ws.vars.RowCount(); ++r) {
    std::string name(ws.vars.GetCell(kShortName, r));
    if (earlier.count(FoldCase(name)) > 0) {
      const std::string base = std::string(Utf8Prefix(name, 5)) + "~";
      int k = 0;
      do {
        name = fmt::format("{}{:02}", base, k++);
      } while (earlier.count(FoldCase(name)) > 0);
      ws.vars.SetCell(kShortName, r, name);
      ws.data.SetCell(r, 0, name);
    }
    earlier.insert(FoldCase(name));
  }
}

}  // namespace tarvika
