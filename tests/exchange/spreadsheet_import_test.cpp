// Spreadsheets into the workspace: .xlsx built here with libxlsxwriter (shared strings, and
// inline strings in its constant-memory mode), .xls from reference/make_sheet_xls.py, and
// the refusals of empty sheets, absent sheet names and damaged files.

#include <gtest/gtest.h>
#include <xlsxwriter.h>

#include "import_fixture.h"
#include "support/cli_runner.h"

namespace tarvika::test {
namespace {

class SpreadsheetImport : public ImportTest {
 protected:
  // A workbook whose first sheet "First" holds its table from B2 (with a column of dates),
  // and a second sheet.
  std::string Workbook(const std::string& name, bool inlineStrings) const {
    const std::string path = (folder.path() / name).string();
    lxw_workbook_options options = {};
    options.constant_memory = inlineStrings ? LXW_TRUE : LXW_FALSE;
    lxw_workbook* book = workbook_new_opt(path.c_str(), &options);
    lxw_worksheet* first = workbook_add_worksheet(book, "First");
    lxw_format* date = workbook_add_format(book);
    format_set_num_format(date, "yyyy-mm-dd");
    lxw_datetime visit1 = {2020, 3, 1, 0, 0, 0}, visit3 = {2024, 2, 29, 12, 30, 0};
    const char* header[] = {"id", "name", "ok", "score", "visit"};
    for (int c = 0; c < 5; ++c) worksheet_write_string(first, 1, 1 + c, header[c], nullptr);
    worksheet_write_number(first, 2, 1, 1, nullptr);
    worksheet_write_string(first, 2, 2, "Anna", nullptr);
    worksheet_write_boolean(first, 2, 3, 1, nullptr);
    worksheet_write_number(first, 2, 4, 3.5, nullptr);
    worksheet_write_datetime(first, 2, 5, &visit1, date);
    worksheet_write_number(first, 3, 1, 2, nullptr);
    worksheet_write_boolean(first, 3, 3, 0, nullptr);
    worksheet_write_number(first, 4, 1, 3, nullptr);
    worksheet_write_string(first, 4, 2, "Béla", nullptr);
    worksheet_write_boolean(first, 4, 3, 1, nullptr);
    worksheet_write_number(first, 4, 4, -0.25, nullptr);
    worksheet_write_datetime(first, 4, 5, &visit3, date);
    lxw_worksheet* second = workbook_add_worksheet(book, "Second");
    worksheet_write_string(second, 0, 0, "x", nullptr);
    worksheet_write_number(second, 1, 0, 10, nullptr);
    worksheet_write_number(second, 2, 0, 20, nullptr);
    workbook_add_worksheet(book, "Empty");
    EXPECT_EQ(workbook_close(book), LXW_NO_ERROR);
    return path;
  }
  void ExpectFirstSheet() {
    ASSERT_EQ(ws.NumberOfCases(), 3);
    EXPECT_EQ(Names(), (std::vector<std::string>{"id", "name", "ok", "score", "visit"}));
    EXPECT_EQ(Cell(2, 1), "Anna");
    EXPECT_EQ(Cell(2, 2), "");
    EXPECT_EQ(Cell(2, 3), "Béla");
    EXPECT_EQ(Cell(3, 2), "0");
    EXPECT_EQ(Cell(4, 3), "-0.25");
    EXPECT_EQ(Cell(4, 2), "");
    EXPECT_EQ(Decl(kType, 1), "num=1_3;");
    EXPECT_EQ(Decl(kType, 2), "string=4;");
    EXPECT_EQ(Decl(kType, 3), "num=0_1;");
    EXPECT_EQ(Decl(kType, 4), "num=-1_4;");
    EXPECT_EQ(Decl(kType, 5), "date=;");
    EXPECT_EQ(Cell(5, 1), "2020-03-01");
    EXPECT_EQ(Cell(5, 2), "");
    EXPECT_EQ(Cell(5, 3), "2024-02-29");  // the time of day is not in the format
  }
};

TEST_F(SpreadsheetImport, XlsxSharedAndInlineStringsBooleansAndEmptyCells) {
  for (bool inlineStrings : {false, true}) {
    SCOPED_TRACE(inlineStrings);
    const std::string path = Workbook(inlineStrings ? "inline.xlsx" : "shared.xlsx", inlineStrings);
    ASSERT_TRUE(Import(path)) << Told();
    ExpectFirstSheet();
    ImportOptions options;
    options.sheet = "Second";
    options.headerRow = false;
    ASSERT_TRUE(Import(path, options)) << Told();
    EXPECT_EQ(Names(), (std::vector<std::string>{"var1"}));
    EXPECT_EQ(ws.NumberOfCases(), 3);
    EXPECT_EQ(Cell(1, 3), "20");
  }
}

TEST_F(SpreadsheetImport, XlsFromAnotherWriter) {
  ASSERT_TRUE(Import(std::string(TARVIKA_TEST_DATA) + "/exchange/reference/sheet.xls")) << Told();
  ExpectFirstSheet();
}

TEST_F(SpreadsheetImport, EmptySheetsAbsentNamesAndDamagedFilesAreRefused) {
  const std::string book = Workbook("b.xlsx", false);
  ASSERT_TRUE(Import(Write("keep.csv", "a\n1\n")));
  const std::string whole = ReadFile(book);
  ImportOptions empty, absent;
  empty.sheet = "Empty";
  absent.sheet = "Third";
  const std::tuple<std::string, ImportOptions, std::string> cases[] = {
      {book, empty, "The sheet is empty."},
      {book, absent, "The file has no sheet named \"Third\"; its sheets: First, Second, Empty."},
      {Write("cut.xlsx", whole.substr(0, whole.size() - 200)), {}, "The file is damaged or not a spreadsheet"},
      {Write("text.xlsx", "a,b\n"), {}, "The file is damaged or not a spreadsheet"},
      {Write("text.xls", "a,b\n"), {}, "The file is damaged or not a spreadsheet"},
  };
  for (const auto& [path, options, message] : cases) {
    SCOPED_TRACE(path);
    user.told.clear();
    EXPECT_FALSE(Import(path, options));
    EXPECT_NE(Told().find(message), std::string::npos) << Told();
    EXPECT_EQ(Names(), (std::vector<std::string>{"a"}));
  }
}

}  // namespace
}  // namespace tarvika::test
