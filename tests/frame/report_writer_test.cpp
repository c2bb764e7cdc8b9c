#include <gtest/gtest.h>

#include <filesystem>

#include "frame/report_writer.h"
#include "support/memory_workspace.h"

namespace tarvika {
namespace {

using testing::CrLfLines;
using testing::Declared;
using testing::MemoryWorkspace;

std::string Ratio(int width, int decimals, double guard, double numerator, double denominator) {
  return RatioText(Language::English, width, decimals, guard, numerator, denominator);
}

TEST(WriteRatio, GuardsGiveTheEmptyCellOrTooBig) {
  EXPECT_EQ(Ratio(8, 8, 1, 5, 0), "......");
  EXPECT_EQ(Ratio(8, 8, 1, 5, 1e-09), "......");
  EXPECT_EQ(Ratio(8, 0, 1, 0.000001, 1), "0");  // a tiny numerator is 0, printed whole
  EXPECT_EQ(Ratio(8, -1, -0.5, 2, 4), "......");  // relative SD of a variable with negatives
  EXPECT_EQ(Ratio(8, -1, 0, 2, 4), "0.500");
  EXPECT_EQ(Ratio(8, 0, 1, 123456789, 1), "TooBig");
  EXPECT_EQ(Ratio(8, 9, 1, 123456789.5, 1), "TooBig");
  EXPECT_EQ(Ratio(8, 0, 1, 99999999, 1), "99999999");
  EXPECT_EQ(Ratio(2, 0, 1, 123456789, 1), "123456789");  // narrow cells are never too big
  EXPECT_EQ(RatioText(Language::Hungarian, 7, 2, 1, -1e9, 1), "TúlNagy");
}

TEST(WriteRatio, DecimalsFollowTheCodeAndTheSize) {
  EXPECT_EQ(Ratio(8, 0, 1, 1234.5, 1), "1234.5");
  EXPECT_EQ(Ratio(8, 0, 1, 12.345, 1), "12.35");
  EXPECT_EQ(Ratio(8, 0, 1, 0.5, 1), "0.500");
  EXPECT_EQ(Ratio(8, 0, 1, 0.012, 1), "0.0120");
  EXPECT_EQ(Ratio(8, 0, 1, 3.0, 1), "3");
  EXPECT_EQ(Ratio(8, 0, 1, -3.0, 1), "-3");
  EXPECT_EQ(Ratio(8, 0, 1, 2500000.4, 1), "2500000");
  EXPECT_EQ(Ratio(8, 8, 1, 5, 1), "5.000");  // code 8 keeps the decimals of a whole value
  EXPECT_EQ(Ratio(8, 8, 1, 3000, 1), "3000.0");
  EXPECT_EQ(Ratio(8, 9, 1, 0, 1), "0");      // code 9: tiny values as 0
  EXPECT_EQ(Ratio(8, 9, 1, 4, 1), "4.000");
  EXPECT_EQ(Ratio(7, 2, 1, -1, 3), "-0.33");
  EXPECT_EQ(Ratio(7, 2, 1, 7, 1), "7.00");
  EXPECT_EQ(Ratio(7, 2, 1, -0.001, 1), "0.00");  // no "-0.00"
  EXPECT_EQ(RatioText(Language::English, 8, 8, 1, 2, 1, true), "   2.000");
}

TEST(ReportWriter, TextReportBeginsWithBannerFileAndTitleAndEndsInCrLf) {
  MemoryWorkspace m({{"a", "", "", "none", "9/x"}}, {{"1"}});
  ReportWriter report(m.ws);
  std::string shown;
  m.ws.hooks.showReport = [&](const std::string& path) { shown = path; };
  ASSERT_TRUE(report.OpenReport("Basic descriptive statistics"));
  report.FirstCell("  1. ");
  report.Cell("a");
  report.WriteRatio(8, 8, 1, 2, 1);
  report.EndRow();
  report.CloseReport();
  report.ShowReport();
  EXPECT_EQ(shown, (m.programFolder / "output" / "zuli_akt.txt").string());
  std::vector<std::string> expected = {"|| Tarvika 2.0",
                                       "|| Statistics for the social and behavioural sciences:",
                                       "|| robust comparison of groups and person-oriented analysis",
                                       "|| Authors: the Tarvika team",
                                       "",
                                       "Name of input file: /data/survey.msw",
                                       "",
                                       "Basic descriptive statistics",
                                       "",
                                       "  1. \ta\t2.000"};
  std::string text = m.Output("zuli_akt.txt");
  EXPECT_EQ(CrLfLines(text), expected);
  EXPECT_TRUE(text.ends_with("2.000\r\n"));
  // The missing codes were parsed (and the faulty declaration repaired) on opening.
  ASSERT_EQ(report.Missing().size(), 2u);
  EXPECT_EQ(report.Missing()[1].count, 1);
  EXPECT_EQ(m.ws.vars.GetCell(kMissing, 1), "9");
}

TEST(ReportWriter, HtmlReportHasItsHeadCellsAndClosingTags) {
  MemoryWorkspace m({{"a"}}, {{"1"}}, Language::Hungarian);
  ReportWriter report(m.ws, ReportFormat::Html);
  ASSERT_TRUE(report.OpenReport("Alapstatisztikák"));
  report.Line("x < y");
  report.BeginTable();
  report.FirstCell("Index");
  report.WriteRatio(7, 2, 1, 1, 0);
  report.WriteRatio(7, 2, 1, 123456789, 1);
  report.WriteRatio(7, 2, 1, 1, 4);
  report.TextOnlyCell("|====");
  report.EndRow();
  report.EndTable();
  report.Figure("<svg></svg>");
  EXPECT_TRUE(report.CloseReport());
  std::vector<std::string> expected = {"<HTML><HEAD><!-- Created with Selvoran for Win/2.0 -->",
                                       "<META charset=\"windows-1250\">",
                                       "<TITLE>Alapstatisztikák</TITLE>",
                                       "</HEAD><BODY BACKGROUND=\"HATTER.jpg\">",
                                       "<B>Alapstatisztikák</B><P>",
                                       "x &lt; y<BR>",
                                       "<TABLE BORDER>",
                                       "<TR><TD>Index</TD>",
                                       "<TD ALIGN=RIGHT>......</TD>",  // only a number fills the width
                                       "<TD ALIGN=RIGHT>TúlNagy</TD>",
                                       "<TD ALIGN=RIGHT>   0.25</TD>",
                                       "</TR>",
                                       "</TABLE>",
                                       "<svg></svg>",
                                       "</BODY></HTML>"};
  EXPECT_EQ(CrLfLines(m.Output("zuli_akt.html")), expected);
  // On disk the report is Windows-1250: "á" is one byte.
  EXPECT_NE(m.RawOutput("zuli_akt.html").find("<TITLE>Alapstatisztik\xE1k</TITLE>"), std::string::npos);
}

TEST(ReportWriter, TitledTablesKeepEveryHeadingInPlaceAndEscapeHtml) {
  MemoryWorkspace m({{"a"}}, {{"1"}});
  {
    ReportWriter report(m.ws);
    ASSERT_TRUE(report.OpenReport("Title"));
    report.BeginTitledTable("T", {"", "b", "c"});  // an empty first heading still leads its column
    report.EndTable();
    ASSERT_TRUE(report.CloseReport());
    const std::vector<std::string> lines = CrLfLines(m.Output("zuli_akt.txt"));
    EXPECT_EQ(std::vector<std::string>(lines.end() - 2, lines.end()), (std::vector<std::string>{"T", "\tb\tc"}));
  }
  ReportWriter report(m.ws, ReportFormat::Html);
  ASSERT_TRUE(report.OpenReport("Title"));
  report.BeginTitledTable("x < y", {"a & b"});
  report.EndTable();
  ASSERT_TRUE(report.CloseReport());
  const std::string html = m.Output("zuli_akt.html");
  EXPECT_NE(html.find(">x &lt; y</TD>"), std::string::npos);
  EXPECT_NE(html.find(">a &amp; b</TD>"), std::string::npos);
}

TEST(ReportWriter, AFullDiskIsToldAtTheClose) {
  MemoryWorkspace m({{"a"}}, {{"1"}});
  std::filesystem::create_symlink("/dev/full", m.programFolder / "output" / "zuli_akt.txt");
  ReportWriter report(m.ws);
  ASSERT_TRUE(report.OpenReport("Title"));
  for (int i = 0; i < 1000; ++i) report.Line("a line of the report");
  EXPECT_FALSE(report.CloseReport());
}

TEST(ReportWriter, NamesArePaddedAndLongNamesAddedOnlyWhenLonger) {
  MemoryWorkspace m({{"age", "Age in years"}, {"height", "h"}, {"kor", "kör"}}, {});
  EXPECT_EQ(PadName("age"), "age                     ");
  EXPECT_EQ(PadName("ő"), "ő                       ");
  EXPECT_EQ(NameWithLong(m.ws, 1), "age (Age in years)");
  EXPECT_EQ(NameWithLong(m.ws, 2), "height");
  EXPECT_EQ(NameWithLong(m.ws, 3), "kor");
}

}  // namespace
}  // namespace tarvika
