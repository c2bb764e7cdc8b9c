// The import and export commands as a shell runs them: what they write, and that bad input
// ends with status 2 and no file.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/cli_runner.h"

namespace tarvika::test {
namespace {

using ExchangeCli = CliTest;

const std::string kReference = std::string(TARVIKA_TEST_DATA) + "/exchange/reference/";

TEST_F(ExchangeCli, ImportThenExportEachWay) {
  const std::string csv = (folder_ / "in.csv").string(), msw = (folder_ / "in.msw").string();
  std::ofstream(csv) << "a;b\n1,5;x\n2;y\n";
  CliResult r = Cli("--lang en import '" + csv + "' '" + msw + "' --delimiter semicolon --header yes");
  ASSERT_EQ(r.status, 0) << r.err;
  r = Cli("--lang en info '" + msw + "'");
  EXPECT_NE(r.out.find("num=1_2;"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("string=1;"), std::string::npos) << r.out;

  r = Cli("--lang en export '" + msw + "' '" + (folder_ / "out.txt").string() + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(ReadFile(folder_ / "out.txt"), "a\tb\r\n1.5\tx\r\n2\ty\r\n");
  r = Cli("--lang en export '" + msw + "' '" + (folder_ / "fixed.txt").string() + "' --syntax '" +
          (folder_ / "fixed.sps").string() + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(ReadFile(folder_ / "fixed.txt"), "1.5x\r\n  2y\r\n");
  r = Cli("--lang en export '" + msw + "' '" + (folder_ / "out.sav").string() + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  r = Cli("--lang en import '" + (folder_ / "out.sav").string() + "' '" + (folder_ / "back.msw").string() + "'");
  ASSERT_EQ(r.status, 0) << r.err;

  r = Cli("--lang en import '" + kReference + "labelled.sav' '" + (folder_ / "l.msw").string() + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.err.find("WARNING! If a short variable name ends with ***"), std::string::npos) << r.err;
}

TEST_F(ExchangeCli, BadInputEndsWithStatusTwoAndNoFile) {
  const std::string out = (folder_ / "out.msw").string();
  std::ofstream(folder_ / "open.csv") << "a,b\n1,\"2\n";
  std::ofstream(folder_ / "fake.sav") << "not a data file";
  std::ofstream(folder_ / "empty.txt") << "";
  for (const char* input : {"open.csv", "fake.sav", "empty.txt", "absent.csv", "data.dat"}) {
    SCOPED_TRACE(input);
    const CliResult r = Cli("--lang en import '" + (folder_ / input).string() + "' '" + out + "'");
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("Unsuccessful data input."), std::string::npos) << r.err;
    EXPECT_FALSE(std::filesystem::exists(out));
  }
  EXPECT_EQ(Cli("--lang en import '" + kReference + "labelled.sav' '" + (folder_ / "x.txt").string() + "'").status, 2);
  EXPECT_EQ(Cli("--lang en import x.csv y.msw --delimiter pipe").status, 2);
  const CliResult r = Cli("--lang en export '" + kReference + "export_source.msw' '" + (folder_ / "e.sav").string() +
                          "' --syntax '" + (folder_ / "e.sps").string() + "'");
  EXPECT_EQ(r.status, 2);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "e.sav"));
  EXPECT_EQ(Cli("--lang en export '" + (folder_ / "absent.msw").string() + "' '" + (folder_ / "e.txt").string() + "'").status, 2);
  EXPECT_FALSE(std::filesystem::exists(folder_ / "e.txt"));
}

}  // namespace
}  // namespace tarvika::test
