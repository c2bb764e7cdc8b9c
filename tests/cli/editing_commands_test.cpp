#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/cli_runner.h"

namespace tarvika::test {
namespace {

using Strings = std::vector<std::string>;

// Projects written by hand in the file format, and the data rows of a written project.
class EditingCliTest : public CliTest {
 protected:
  // Variables id (number), g (number 1..3 with missing code 9), s (text); five cases.
  std::string Project(const std::string& name, const Strings& rows = {"1\t2\tbe", "2\t1\tAx", "3\t\tce", "4\t1\tab", "5\t9\tdd"}) {
    std::string text = "<Tarvika_for_windows>=2.0;\r\n<variables>=3;\r\n<cases>=" + std::to_string(rows.size()) + ";\r\n";
    const char* decl[3][3] = {{"id", "num=0_0;", ""}, {"g", "num=1_3;", "9"}, {"s", "string=4;", ""}};
    for (int v = 0; v < 3; ++v) {
      text += "#=" + std::to_string(v + 1) + ";\r\n<name>=" + decl[v][0] + ";\r\n<longname>=;\r\n$" + decl[v][1] +
              "\r\n<assign>=none;\r\n<labels>=;\r\n<help>=;\r\n<missing>=" + decl[v][2] + ";\r\n";
    }
    text += "<datamatrix>=;\r\n";
    for (const std::string& row : rows) text += row + "\r\n";
    const auto path = folder_ / name;
    std::ofstream(path, std::ios::binary) << text;
    return path.string();
  }
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
  Strings Rows(const std::string& name) const {
    std::string text = ReadFile(folder_ / name);
    Strings rows;
    std::size_t at = text.find("<datamatrix>=;\r\n");
    if (at == std::string::npos) return rows;
    for (std::size_t start = at + 16, end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2) {
      rows.push_back(text.substr(start, end - start));
    }
    return rows;
  }
  std::string Names(const std::string& name) const {
    std::string text = ReadFile(folder_ / name), names;
    for (std::size_t at = 0; (at = text.find("<name>=", at)) != std::string::npos; at += 7) {
      names += text.substr(at + 7, text.find(';', at) - at - 7) + " ";
    }
    return names;
  }
};

TEST_F(EditingCliTest, SortAndFindWriteTheirResult) {
  const std::string p = Project("p.msw");
  CliResult r = Cli("--lang en sort '" + p + "' --by g,id:desc --out '" + Path("s.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.err.find("The cases have been successfully sorted."), std::string::npos);
  // The empty g last; the two cases of g = 1 by id descending.
  EXPECT_EQ(Rows("s.msw"), (Strings{"4\t1\tab", "2\t1\tAx", "1\t2\tbe", "5\t9\tdd", "3\t\tce"}));
  r = Cli("--lang en sort '" + p + "' --by s --out '" + Path("t.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(Rows("t.msw"), (Strings{"4\t1\tab", "2\t1\tAx", "1\t2\tbe", "3\t\tce", "5\t9\tdd"}));

  r = Cli("--lang en find '" + p + "' A");
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "row: 2; column: 3\nrow: 4; column: 3\n2 matches found\n");
  r = Cli("--lang en find '" + p + "' '' --scope column:g --replace 0 --out '" + Path("f.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out, "row: 3; column: 2\n1 match found\nCells replaced: 1\n");
  EXPECT_EQ(Rows("f.msw")[2], "3\t0\tce");

  // Errors: an unknown key, a replace without --out, an --out without a replace; nothing
  // is written.
  r = Cli("--lang en sort '" + p + "' --by nosuch --out '" + Path("x.msw") + "'");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("Unknown variable: nosuch"), std::string::npos);
  EXPECT_EQ(Cli("--lang en find '" + p + "' a --replace b").status, 2);
  r = Cli("--lang en find '" + p + "' a --out '" + Path("x.msw") + "'");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("--out needs --replace."), std::string::npos) << r.err;
  EXPECT_FALSE(std::filesystem::exists(Path("x.msw")));
}

TEST_F(EditingCliTest, CasesAndVariablesAreInsertedAndDeleted) {
  const std::string p = Project("p.msw");
  CliResult r = Cli("--lang en insert-cases '" + p + "' --count 2 --at before:2 --out '" + Path("a.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(Rows("a.msw"), (Strings{"1\t2\tbe", "\t\t", "\t\t", "2\t1\tAx", "3\t\tce", "4\t1\tab", "5\t9\tdd"}));
  r = Cli("--lang en delete-cases '" + p + "' --cases 2-4 --out '" + Path("b.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(Rows("b.msw"), (Strings{"1\t2\tbe", "5\t9\tdd"}));
  r = Cli("--lang en insert-variables '" + p + "' --at after:id --like g --out '" + Path("c.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(Names("c.msw"), "id Var_1 g s ");
  EXPECT_NE(ReadFile(folder_ / "c.msw").find("<name>=Var_1;\r\n<longname>=Var as g;\r\n$num=1_3;"), std::string::npos);
  r = Cli("--lang en delete-variables '" + p + "' --vars id,s --out '" + Path("d.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(Rows("d.msw"), (Strings{"2", "1", "", "1", "9"}));

  // Refusals exit with status 2 and write nothing.
  r = Cli("--lang en delete-cases '" + p + "' --cases 4-9 --out '" + Path("e.msw") + "'");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("The case numbers of your data table go from 1 to 5"), std::string::npos);
  r = Cli("--lang en delete-variables '" + p + "' --vars id,g,s --out '" + Path("e.msw") + "'");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("You cannot delete all variables."), std::string::npos);
  r = Cli("--lang en insert-variables '" + p + "' --count 998 --out '" + Path("e.msw") + "'");
  EXPECT_EQ(r.status, 2);
  EXPECT_FALSE(std::filesystem::exists(Path("e.msw")));
}

TEST_F(EditingCliTest, MergeSplitAndVerify) {
  const std::string p = Project("p.msw");
  const std::string q = Project("q.msw", {"4\t3\tqq", "1\t1\tqa", "4\t2\tqb"});
  CliResult r = Cli("--lang en merge '" + p + "' '" + q + "' --variables --key id --indicator src --out '" + Path("m.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(Names("m.msw"), "id g s g0 s0 src ");
  EXPECT_EQ(Rows("m.msw"), (Strings{"1\t2\tbe\t1\tqa\t1", "2\t1\tAx\t\t\t0", "3\t\tce\t\t\t0", "4\t1\tab\t3\tqq\t1", "5\t9\tdd\t\t\t0"}));
  r = Cli("--lang en merge '" + p + "' '" + q + "' --cases --out '" + Path("n.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(Rows("n.msw").size(), 8u);
  EXPECT_EQ(Rows("n.msw")[5], "4\t3\tqq");
  r = Cli("--lang en merge '" + p + "' '" + q + "' --variables --key id,g --out '" + Path("x.msw") + "'");
  EXPECT_EQ(r.status, 2);
  EXPECT_NE(r.err.find("You can select one variable as key variable."), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(Path("x.msw")));

  r = Cli("--lang en split '" + p + "' --vars s,g --cases 1-2 --out '" + Path("a.msw") + "' --rest '" + Path("b.msw") + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(Rows("a.msw"), (Strings{"be\t2", "Ax\t1"}));
  EXPECT_EQ(Rows("b.msw"), (Strings{"ce\t", "ab\t1", "dd\t9"}));
  // The missing code of g goes with it.
  EXPECT_NE(ReadFile(folder_ / "b.msw").find("<name>=g;\r\n<longname>=;\r\n$num=1_3;\r\n<assign>=none;\r\n<labels>=;\r\n<help>=;\r\n<missing>=9;"),
            std::string::npos);

  r = Cli("--lang en verify '" + Project("v.msw", {"1\t2\tx", "2\tabc\ty", "3\t4\tz", "4\t1\tw", "5\t9\tv"}) + "'");
  EXPECT_EQ(r.status, 0);
  // id (num=0_0) declares no range; the missing code 9 is outside the range 1_3.
  EXPECT_EQ(r.out,
            "Row=2;  Col=2; nonnumeric value\n"
            "Row=3;  Col=2; out of specified range\nRow=5;  Col=2; out of specified range\n");
}

}  // namespace
}  // namespace tarvika::test
