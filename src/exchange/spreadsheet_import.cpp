#include "exchange/spreadsheet_import.h"

#include <freexl.h>
#include <pugixml.hpp>
#include <zip.h>

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <map>
#include <cmath>
#include <memory>
#include <vector>

#include "exchange/spss_values.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {

namespace {

[[noreturn]] void Damaged(const Workspace& ws, const std::string& path, std::string_view why) {
  throw ImportError{fmt::format("{}{} ({})", ws.Text("The file is damaged or not a spreadsheet: ", "A fájl sérült, vagy nem táblázat: "),
                                path, why)};
}

[[noreturn]] void NoSheet(const Workspace& ws, const std::string& sheet, const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& n : names) list += (list.empty() ? "" : ", ") + n;
  throw ImportError{fmt::format(fmt::runtime(ws.Text("The file has no sheet named \"{}\"; its sheets: {}.",
                                                     "A fájlban nincs \"{}\" nevű munkalap; a munkalapjai: {}.")),
                                sheet, list)};
}

// The part of the archive as text; nullopt when it isn't there.
std::optional<std::string> ReadPart(zip_t* archive, const std::string& name) {
  zip_stat_t st;
  if (zip_stat(archive, name.c_str(), 0, &st) != 0 || !(st.valid & ZIP_STAT_SIZE)) return std::nullopt;
  std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file(zip_fopen(archive, name.c_str(), 0), zip_fclose);
  if (!file) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(st.size), '\0');
  zip_int64_t got = zip_fread(file.get(), bytes.data(), bytes.size());
  if (got < 0 || static_cast<zip_uint64_t>(got) != st.size) return std::nullopt;
  return bytes;
}

// All the text of an element: a shared or inline string is one <t> or runs of <r><t>.
std::string TextOf(const pugi::xml_node& node) {
  if (auto t = node.child("t")) return t.text().get();
  std::string text;
  for (const pugi::xml_node& run : node.children("r")) text += run.child("t").text().get();
  return text;
}

// "BC12" -> column 54 (from 0), row 11 (from 0).
bool ParseReference(std::string_view ref, int& column, int& row) {
  std::size_t i = 0;
  column = 0;
  while (i < ref.size() && ref[i] >= 'A' && ref[i] <= 'Z') column = column * 26 + (ref[i++] - 'A' + 1);
  if (i == 0 || i == ref.size() || column > 16384) return false;
  auto r = ParseWholeNumber(ref.substr(i));
  if (!r || *r < 1 || *r > INT_MAX) return false;
  column -= 1;
  row = static_cast<int>(*r - 1);
  return true;
}

// Per cell style of the workbook (its "s" attribute), whether it shows a date, and a time
// of day with it: the built-in date formats, or a format of its own whose code has day or
// year parts (and hour or second parts for a time).
std::vector<DateKind> DateStyles(const pugi::xml_document& styles) {
  const pugi::xml_node sheet = styles.child("styleSheet");
  std::map<unsigned, DateKind> custom;
  for (const pugi::xml_node& f : sheet.child("numFmts").children("numFmt")) {
    const std::string code = f.attribute("formatCode").value();
    bool quoted = false, bracket = false, date = false, time = false;
    for (char ch : code) {
      if (ch == '"') quoted = !quoted;
      if (quoted) continue;
      if (ch == '[') bracket = true;
      if (ch == ']') bracket = false;
      if (bracket) continue;
      const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
      date = date || lower == 'd' || lower == 'y';
      time = time || lower == 'h' || lower == 's';
    }
    if (date) custom[f.attribute("numFmtId").as_uint()] = time ? DateKind::DateTime : DateKind::Date;
  }
  std::vector<DateKind> kinds;
  for (const pugi::xml_node& xf : sheet.child("cellXfs").children("xf")) {
    const unsigned id = xf.attribute("numFmtId").as_uint();
    const auto own = custom.find(id);
    kinds.push_back(id >= 14 && id <= 17 ? DateKind::Date
                    : id == 22           ? DateKind::DateTime
                    : own != custom.end() ? own->second
                                          : DateKind::None);
  }
  return kinds;
}

// A spreadsheet's day number (days since 30 December 1899, the fraction the time of day)
// as "YYYY-MM-DD", with the time when the format shows one.
std::string SerialDateText(double serial, DateKind kind) {
  constexpr double kSpssSecondsOfSerialZero = kSpssSecondsTo1970 - 25569.0 * 86400.0;
  return DateText(serial * 86400.0 + kSpssSecondsOfSerialZero, kind);
}

std::string SheetPath(std::string target) {
  if (!target.empty() && target[0] == '/') return target.substr(1);
  return "xl/" + target;
}

}  // namespace

int FillFromSheet(const Workspace& ws, std::vector<SheetCell>& cells, bool headerRow, ImportTable& table) {
  cells.erase(std::remove_if(cells.begin(), cells.end(), [](const SheetCell& c) { return c.text.empty(); }), cells.end());
  if (cells.empty()) throw ImportError{std::string(ws.Text("The sheet is empty.", "A munkalap üres."))};
  int top = INT_MAX, left = INT_MAX, bottom = 0;
  for (const SheetCell& c : cells) {
    top = std::min(top, c.row);
    left = std::min(left, c.column);
    bottom = std::max(bottom, c.row);
  }
  const int first = top + (headerRow ? 1 : 0);
  // Columns of dates only: 1 while every data cell seen is a date, 0 once one is not.
  std::vector<char> dates;
  for (const SheetCell& c : cells) {
    if (headerRow && c.row == top) continue;
    const std::size_t k = static_cast<std::size_t>(c.column - left);
    if (k >= dates.size()) dates.resize(k + 1, 1);
    dates[k] = dates[k] && c.isDate;
  }
  for (std::size_t k = 0; k < dates.size(); ++k) {
    if (dates[k]) table.DeclareDate(static_cast<int>(k));
  }
  for (const SheetCell& c : cells) {
    const int k = c.column - left;
    if (headerRow && c.row == top) {
      table.Variable(k).name = c.text;
    } else if (dates[static_cast<std::size_t>(k)]) {
      table.SetString(k, c.row - first, c.text);
    } else {
      table.SetText(k, c.row - first, c.text);
    }
  }
  return bottom - first + 1;
}

std::vector<SheetCell> ReadXlsxSheet(const Workspace& ws, const std::string& path, const std::string& sheet) {
  int error = 0;
  std::unique_ptr<zip_t, void (*)(zip_t*)> archive(zip_open(path.c_str(), ZIP_RDONLY, &error), zip_discard);
  if (!archive) {
    zip_error_t ze;
    zip_error_init_with_code(&ze, error);
    const std::string why = zip_error_strerror(&ze);
    zip_error_fini(&ze);
    Damaged(ws, path, why);
  }
  pugi::xml_document workbook, rels, strings, data;
  auto parse = [&](pugi::xml_document& doc, const std::string& part, bool required) {
    auto text = ReadPart(archive.get(), part);
    if (!text) {
      if (required) Damaged(ws, path, part);
      return;
    }
    if (!doc.load_buffer(text->data(), text->size())) Damaged(ws, path, part);
  };
  parse(workbook, "xl/workbook.xml", true);
  parse(rels, "xl/_rels/workbook.xml.rels", true);
  parse(strings, "xl/sharedStrings.xml", false);

  std::vector<std::string> names;
  std::string relation;
  for (const pugi::xml_node& s : workbook.child("workbook").child("sheets").children("sheet")) {
    names.emplace_back(s.attribute("name").value());
    if (relation.empty() && (sheet.empty() || names.back() == sheet)) relation = s.attribute("r:id").value();
  }
  if (relation.empty()) {
    if (names.empty()) Damaged(ws, path, "xl/workbook.xml");
    NoSheet(ws, sheet, names);
  }
  std::string target;
  for (const pugi::xml_node& r : rels.child("Relationships").children("Relationship")) {
    if (relation == r.attribute("Id").value()) target = r.attribute("Target").value();
  }
  if (target.empty()) Damaged(ws, path, "xl/_rels/workbook.xml.rels");
  parse(data, SheetPath(target), true);

  pugi::xml_document styles;
  parse(styles, "xl/styles.xml", false);
  const std::vector<DateKind> dateStyles = DateStyles(styles);

  std::vector<std::string> shared;
  for (const pugi::xml_node& si : strings.child("sst").children("si")) shared.push_back(TextOf(si));

  std::vector<SheetCell> cells;
  int rowIndex = -1;
  for (const pugi::xml_node& row : data.child("worksheet").child("sheetData").children("row")) {
    const int given = row.attribute("r").as_int(0);
    rowIndex = given > 0 ? given - 1 : rowIndex + 1;
    int columnIndex = -1;
    for (const pugi::xml_node& c : row.children("c")) {
      SheetCell cell;
      int r = rowIndex;
      if (!ParseReference(c.attribute("r").value(), cell.column, r)) cell.column = columnIndex + 1;
      columnIndex = cell.column;
      cell.row = rowIndex;
      const std::string_view type = c.attribute("t").value();
      const char* v = c.child("v").text().get();
      if (type == "s") {
        const int k = c.child("v").text().as_int(-1);
        if (k < 0 || k >= static_cast<int>(shared.size())) Damaged(ws, path, "xl/sharedStrings.xml");
        cell.text = shared[static_cast<std::size_t>(k)];
      } else if (type == "inlineStr") {
        cell.text = TextOf(c.child("is"));
      } else if (type == "e") {
        continue;  // an error value (#DIV/0!, #N/A) is no datum
      } else {
        cell.text = v;  // numbers, booleans (1 and 0) and the strings of formulas
        const std::size_t style = c.attribute("s").as_uint(0);
        if (type.empty() && style < dateStyles.size() && dateStyles[style] != DateKind::None) {
          if (auto serial = ParseLocalNumber(cell.text, '.')) {
            cell.text = SerialDateText(*serial, dateStyles[style]);
            cell.isDate = true;
          }
        }
      }
      cells.push_back(std::move(cell));
    }
  }
  return cells;
}

std::vector<SheetCell> ReadXlsSheet(const Workspace& ws, const std::string& path, const std::string& sheet) {
  const void* handle = nullptr;
  if (freexl_open(path.c_str(), &handle) != FREEXL_OK) {
    if (handle) freexl_close(handle);
    Damaged(ws, path, "BIFF");
  }
  std::unique_ptr<const void, int (*)(const void*)> guard(handle, freexl_close);
  unsigned int count = 0;
  if (freexl_get_info(handle, FREEXL_BIFF_SHEET_COUNT, &count) != FREEXL_OK || count == 0) Damaged(ws, path, "BIFF");
  std::vector<std::string> names;
  int chosen = -1;
  for (unsigned int i = 0; i < count; ++i) {
    const char* name = nullptr;
    freexl_get_worksheet_name(handle, static_cast<unsigned short>(i), &name);
    names.emplace_back(name ? name : "");
    if (chosen < 0 && (sheet.empty() || names.back() == sheet)) chosen = static_cast<int>(i);
  }
  if (chosen < 0) NoSheet(ws, sheet, names);
  unsigned int rows = 0;
  unsigned short columns = 0;
  if (freexl_select_active_worksheet(handle, static_cast<unsigned short>(chosen)) != FREEXL_OK ||
      freexl_worksheet_dimensions(handle, &rows, &columns) != FREEXL_OK) {
    Damaged(ws, path, "BIFF");
  }
  std::vector<SheetCell> cells;
  for (unsigned int r = 0; r < rows; ++r) {
    for (unsigned short c = 0; c < columns; ++c) {
      FreeXL_CellValue value;
      if (freexl_get_cell_value(handle, r, c, &value) != FREEXL_OK) continue;
      SheetCell cell{static_cast<int>(r), c, {}};
      switch (value.type) {
        case FREEXL_CELL_INT:
          cell.text = std::to_string(value.value.int_value);
          break;
        case FREEXL_CELL_DOUBLE:
          cell.text = FormatGeneral(value.value.double_value, '.');
          break;
        case FREEXL_CELL_TEXT:
        case FREEXL_CELL_SST_TEXT:
        case FREEXL_CELL_TIME:
          cell.text = value.value.text_value ? value.value.text_value : "";
          break;
        case FREEXL_CELL_DATE:
        case FREEXL_CELL_DATETIME:
          cell.text = value.value.text_value ? value.value.text_value : "";
          cell.isDate = true;
          break;
        default:
          continue;
      }
      cells.push_back(std::move(cell));
    }
  }
  return cells;
}

}  // namespace tarvika
