// Export for other programs: the SPSS pair checked against files verified by hand, the
// SPSS data file read back (here through ReadStat, once through R's haven into
// reference/exported_*.csv), and the tab-delimited table.

#include <gtest/gtest.h>

#include "exchange/export.h"
#include "import_fixture.h"
#include "support/cli_runner.h"
#include "support/reference_csv.h"
#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/project_file.h"

namespace tarvika::test {
namespace {

const std::string kFolder = std::string(TARVIKA_TEST_DATA) + "/exchange/";

class Export : public ImportTest {
 protected:
  void SetUp() override {
    ASSERT_EQ(LoadProject(ws, kFolder + "reference/export_source.msw"), LoadResult::Loaded);
    ValidateDeclarations(ws);
  }
  std::string Out(const std::string& name) const { return (folder.path() / name).string(); }
};

TEST_F(Export, SpssNamesFollowTheNameRules) {
  EXPECT_EQ(SpssName("1st scor"), "V1st_sco");
  EXPECT_EQ(SpssName("inc."), "inc_");
  EXPECT_EQ(SpssName("a-b(c)"), "a_b_c_");
  EXPECT_EQ(SpssName("_x"), "V_x");
  EXPECT_EQ(SpssName("élet"), "élet");
  EXPECT_EQ(SpssName("age"), "age");
  EXPECT_EQ(SpssName("to"), "Vto");
  // Names that become equal are numbered.
  ws.vars.SetCell(kShortName, 2, "V1st_SCO");
  ws.vars.SetCell(kShortName, 3, "1st-scor");
  const std::vector<ExportColumn> layout = ExportLayout(ws);
  EXPECT_EQ(layout[0].name, "V1st_sco");
  EXPECT_EQ(layout[1].name, "V1st__00");
  EXPECT_EQ(layout[2].name, "V1st__01");
}

TEST_F(Export, FixedColumnDataAndSyntax) {
  ASSERT_TRUE(ExportToSpss(ws, Out("e.txt"), Out("e.sps"))) << Told();
  std::string syntax = ReadFile(Out("e.sps"));
  const std::size_t at = syntax.find(Out("e.txt"));
  ASSERT_NE(at, std::string::npos);
  syntax.replace(at, Out("e.txt").size(), "DATA");
  EXPECT_EQ(syntax, ReadFile(kFolder + "expected/export_source.sps"));
  EXPECT_EQ(ReadFile(Out("e.txt")), ReadFile(kFolder + "expected/export_source.dat"));
  EXPECT_EQ(Told(), "SPSS data and syntax files have been succesfully created.\n");

  // A record over 516 characters is told, and the export goes on.
  ws.data.SetCell(4, 1, std::string(600, 'x'));
  user.told.clear();
  ASSERT_TRUE(ExportToSpss(ws, Out("e.txt"), Out("e.sps")));
  EXPECT_NE(Told().find("exceeds 516 characters"), std::string::npos);
}

TEST_F(Export, SavReadsBackWithValuesLabelsAndMissingCodes) {
  const Workspace& original = ws;
  std::vector<std::vector<std::string>> cells, decl;
  for (int v = 1; v <= original.NumberOfVariables(); ++v) {
    std::vector<std::string> column;
    for (int r = 1; r <= original.NumberOfCases(); ++r) column.push_back(Cell(v, r));
    cells.push_back(column);
    decl.push_back({Decl(kLongName, v), Decl(kGroupLabels, v), Decl(kMissing, v)});
  }
  ASSERT_TRUE(ExportSav(ws, Out("e.sav"))) << Told();
  ASSERT_TRUE(Import(Out("e.sav"))) << Told();
  ASSERT_EQ(ws.NumberOfVariables(), 5);
  ASSERT_EQ(ws.NumberOfCases(), 3);
  EXPECT_EQ(Names(), (std::vector<std::string>{"V1st_sco", "group", "inc_", "name", "weird_na"}));
  for (int v = 1; v <= 5; ++v) {
    SCOPED_TRACE(v);
    for (int r = 1; r <= 3; ++r) EXPECT_EQ(Cell(v, r), cells[v - 1][r - 1]);
    EXPECT_EQ(Decl(kLongName, v), decl[v - 1][0]);
    // Intervals have no place in an SPSS data file; codes do.
    EXPECT_EQ(Decl(kGroupLabels, v), v == 3 ? "" : decl[v - 1][1]);
    EXPECT_EQ(Decl(kMissing, v), decl[v - 1][2]);
  }
  EXPECT_EQ(Decl(kType, 4), "string=8;");
}

TEST_F(Export, HavenReadsTheWrittenSavAsTheProjectHoldsIt) {
  const ReferenceCsv cells("exported_cells.csv", "exchange");
  const ReferenceCsv decl("exported_declarations.csv", "exchange");
  const std::vector<ExportColumn> layout = ExportLayout(ws);
  ASSERT_EQ(decl.size(), layout.size());
  const std::vector<MissingCodes> missing = ParseMissing(ws);
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    SCOPED_TRACE(v);
    const std::string& name = layout[v - 1].name;
    EXPECT_EQ(decl.Text(v - 1, "name"), name);
    EXPECT_EQ(decl.Text(v - 1, "label"), Decl(kLongName, v));
    EXPECT_EQ(decl.Text(v - 1, "type"), layout[v - 1].isString ? "string" : "numeric");
    for (int r = 1; r <= ws.NumberOfCases(); ++r) {
      std::string haven = cells.Text(r - 1, name);
      for (std::size_t p; (p = haven.find("\"\"")) != std::string::npos;) haven.erase(p, 1);
      if (layout[v - 1].isString || haven.empty()) {
        EXPECT_EQ(haven, Cell(v, r));
      } else {
        EXPECT_DOUBLE_EQ(std::stod(haven), *ParseLocalNumber(Cell(v, r), '.'));
      }
    }
  }
  EXPECT_EQ(decl.Text(1, "labels"), "1=control|2=treated");
  EXPECT_EQ(decl.Text(1, "na_values"), "9");
  EXPECT_EQ(missing[5].count, 5);
  EXPECT_EQ(decl.Text(4, "na_range"), "90|99");
  EXPECT_EQ(decl.Text(4, "na_values"), "-1");
}

TEST_F(Export, TabDelimitedTableWithItsHeaderRow) {
  ASSERT_TRUE(ExportTabDelimited(ws, Out("t.txt")));
  EXPECT_EQ(ReadFile(Out("t.txt")),
            "1st scor\tgroup\tinc.\tname\tweird-na\r\n1\t1\t1500.5\tAnna\t-2\r\n2\t2\t\tBéla \"B\"\t3.25\r\n"
            "3\t9\t2500\t\t95\r\n");
}

}  // namespace
}  // namespace tarvika::test
