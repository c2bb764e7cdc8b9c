#include <gtest/gtest.h>

#include <fstream>

#include "frame/report_viewer.h"
#include "support/memory_workspace.h"

namespace tarvika {
namespace {

using testing::CrLfLines;
using testing::MemoryWorkspace;

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

TEST(Viewer, DecimalDotsBecomeTheLocalSeparatorOnlyBeforeDigits) {
  EXPECT_EQ(ConvertDecimals("Mean\t3.14 and 1.2.3. End.", ','), "Mean\t3,14 and 1,2,3. End.");
  EXPECT_EQ(ConvertDecimals("no dots", ','), "no dots");
  EXPECT_EQ(ConvertDecimals(".5", ','), ",5");
}

TEST(Viewer, OpenConvertsTheFirstPageAndAppendKeepsOneBanner) {
  MemoryWorkspace m({{"a"}}, {}, Language::Hungarian, ',', "viewer_append");
  WriteFile(m.programFolder / "output" / "zuli_akt.txt", "|| Tarvika 2.0\r\n\r\nMean\t3.14\r\n");
  ReportViewer viewer(m.ws);
  viewer.Open();
  // The version number is a number too: the rule converts it.
  EXPECT_EQ(viewer.Title(), (m.programFolder / "output" / "zuli_akt.txt").string());
  EXPECT_EQ(viewer.Text(ReportViewer::kLast), "|| Tarvika 2,0\n\nMean\t3,14");
  viewer.AppendToComplete();
  EXPECT_EQ(viewer.Shown(), ReportViewer::kComplete);
  viewer.AppendToComplete();
  EXPECT_EQ(viewer.Lines(ReportViewer::kComplete),
            (std::vector<std::string>{"|| Tarvika 2,0", "", "Mean\t3,14", std::string(56, '_'), "", "", "Mean\t3,14"}));
  ASSERT_TRUE(viewer.SaveAndExit());
  EXPECT_TRUE(viewer.Closed());
  EXPECT_EQ(m.Output("zuli_tot.txt"), "|| Tarvika 2,0\r\n\r\nMean\t3,14\r\n" + std::string(56, '_') + "\r\n\r\n\r\nMean\t3,14\r\n");

  // A later session: a missing last report is told on refresh; exit without saving deletes.
  std::filesystem::remove(m.programFolder / "output" / "zuli_akt.txt");
  WriteFile(m.programFolder / "output" / "zuli_tot.html", "x");
  ReportViewer again(m.ws);
  again.Open();
  EXPECT_EQ(again.Text(ReportViewer::kComplete).substr(0, 14), "|| Tarvika 2,0");
  again.Refresh();
  ASSERT_EQ(m.user.told.size(), 1u);
  EXPECT_EQ(m.user.told[0], "Kimeneti fájl hiányzik: " + (m.programFolder / "output" / "zuli_akt.txt").string());
  again.ExitWithoutSaving();
  EXPECT_TRUE(again.Text(ReportViewer::kComplete).empty());
  EXPECT_FALSE(std::filesystem::exists(m.programFolder / "output" / "zuli_tot.txt"));
  EXPECT_FALSE(std::filesystem::exists(m.programFolder / "output" / "zuli_tot.html"));
}

TEST(Viewer, FindAndReplaceTellTheirResults) {
  MemoryWorkspace m({{"a"}}, {}, Language::English, '.', "viewer_find");
  ReportViewer viewer(m.ws);
  viewer.SetText(ReportViewer::kLast, "Mean MEAN mean\nmeans");
  ASSERT_TRUE(viewer.FindNext("mean", true));
  EXPECT_EQ(viewer.SelectionStart(), 10u);
  ASSERT_TRUE(viewer.FindNext("mean", true));
  EXPECT_EQ(viewer.SelectionStart(), 15u);
  EXPECT_FALSE(viewer.FindNext("mean", true));
  EXPECT_EQ(m.user.told.back(), "Could not find (more) \"mean\" in this text.");

  // From a fresh selection every occurrence is replaced and counted.
  viewer.Show(ReportViewer::kLast);
  EXPECT_EQ(viewer.ReplaceAll("mean", "avg", false), 4);
  EXPECT_EQ(viewer.Text(ReportViewer::kLast), "avg avg avg\navgs");
  EXPECT_EQ(m.user.told.back(), "Replaced: 4");

  // After a find the selection is replaced in the first round, which the count leaves out.
  viewer.Show(ReportViewer::kLast);
  ASSERT_TRUE(viewer.FindNext("avg", true));
  EXPECT_EQ(viewer.ReplaceAll("avg", "avg avg", true), 3);
  EXPECT_EQ(viewer.Text(ReportViewer::kLast), "avg avg avg avg avg avg\navg avgs");
}

TEST(Viewer, ShowAsHtmlGivesStructureToTheReportText) {
  std::vector<std::string> lines = {
      "|| Tarvika 2.0", "", "   Table of means", "Index\tMean \t p ", "1\t2.5\t0.01**", "Notation: p < 0.05*",
      "x\ty*", " ", "Significant**", "  "};
  std::string expected =
      "<HTML><HEAD><TITLE></TITLE></HEAD><BODY>\r\n"
      "|| Tarvika 2.0<BR>\r\n"
      "<P align=left>\r\n"
      "<TABLE BORDER><TR><TD bgcolor=#000000 colspan=3><B><FONT COLOR=\"#ffffff\">   Table of means</FONT></B></TD></TR>\r\n"
      "<TR><TD align=right>Index</TD><TD align=left>Mean </TD><TD align=center> p </TD></TR>\r\n"
      "<TR><TD align=right>1</TD><TD align=right>2.5</TD><TD align=right bgcolor=\"#00ff6b\">0.01</TD></TR>\r\n"
      "</TABLE></P><FONT color=\"#0000ff\">Notation: p &lt; 0.05</FONT><BR>\r\n"
      "<TABLE BORDER><TR><TD align=right>x</TD><TD align=right bgcolor=\"#ffff00\">y</TD></TR>\r\n"
      "</TABLE><P align=right>\r\n"
      "<FONT color=\"#ff0000\">Significant</FONT><BR>\r\n"
      "<P align=center>\r\n"
      "</BODY></HTML>\r\n";
  EXPECT_EQ(ReportToHtml(lines), expected);

  MemoryWorkspace m({{"a"}}, {}, Language::English, '.', "viewer_html");
  ReportViewer viewer(m.ws);
  std::string opened;
  viewer.openExternal = [&](const std::string& path) { opened = path; };
  viewer.SetText(ReportViewer::kLast, "a\tb");
  std::string path = viewer.ShowAsHtml();
  EXPECT_EQ(opened, path);
  EXPECT_EQ(m.Output("zuli_akt.html"),
            "<HTML><HEAD><TITLE></TITLE></HEAD><BODY>\r\n<TABLE BORDER><TR><TD align=right>a</TD><TD "
            "align=right>b</TD></TR>\r\n</TABLE>\r\n</BODY></HTML>\r\n");
}

}  // namespace
}  // namespace tarvika
