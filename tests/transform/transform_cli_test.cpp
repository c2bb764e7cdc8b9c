// The transformation commands as a shell runs them: the project written to --out or back in
// place, and nothing written on an input error, which exits with status 2.

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "support/cli_runner.h"
#include "support/reference_csv.h"

namespace tarvika {
namespace {

using TransformCli = test::CliTest;
using test::CliResult;
using test::ReadFile;

TEST_F(TransformCli, CommandsWriteTheProject) {
  const std::string out = (folder_ / "out.msw").string();
  CliResult r = Cli("transform " + Survey() + " --function mean --vars Wr.Hnd,NW.Hnd --name HandMean --place after --out '" +
                    out + "' --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  std::string project = ReadFile(out);
  EXPECT_NE(project.find("<variables>=10;"), std::string::npos);
  EXPECT_NE(project.find("<longname>=MEAN of variables: Wr.Hnd, NW.Hnd;"), std::string::npos);
  EXPECT_NE(project.find("1\t18.5\t18\t18.25\t2\t92\t"), std::string::npos);
  // Pulse declares 999 missing; in place, the missing cells stay as they are.
  r = Cli("transform '" + out + "' --function round --c -1 --vars Pulse --place same --in-place --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  r = Cli("recode '" + out + "' --vars Exer --rule \"(a) 3 -> 0\" --rule \"(f) Else -> same\" --into Exer0 --in-place --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.err.find("cell(s) succesfully performed."), std::string::npos);
  r = Cli("count '" + out + "' --vars Exer,Smoke --rule \"(a) 1\" --rule \"(b) Missing\" --name Ones --in-place --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  r = Cli("transform '" + out + "' --function weighted-sum --vars Wr.Hnd,NW.Hnd --weights -1,2 --name W --in-place"
          " --lang en");
  ASSERT_EQ(r.status, 0) << r.err;
  project = ReadFile(out);
  EXPECT_NE(project.find("<variables>=13;"), std::string::npos);
  EXPECT_NE(project.find("<longname>=wsum(-1*Wr.Hnd+2*NW.Hnd);"), std::string::npos);
  // Pulse 92 rounded to tens; Exer 2 kept; one of Exer 2 and Smoke 1 is a 1; 2 x 18 - 18.5.
  EXPECT_NE(project.find("1\t18.5\t18\t18.25\t2\t90\t2\t1\t173\t18.25\t2\t1\t17.5\r\n"), std::string::npos);
}

// The statistics of a case on the bundled survey against R on the same data (reference/
// survey_row_statistics.R); the project saves numbers to 11 decimals.
TEST_F(TransformCli, CaseStatisticsOfTheSurveyEqualRs) {
  const std::string out = (folder_ / "out.msw").string();
  const std::string vars = " --vars Wr.Hnd,NW.Hnd,Pulse,Height,Age --lang en";
  ASSERT_EQ(Cli("transform " + Survey() + " --function mean --name M --out '" + out + "'" + vars).status, 0);
  ASSERT_EQ(Cli("transform '" + out + "' --function sd --name S --in-place" + vars).status, 0);
  ASSERT_EQ(Cli("transform '" + out + "' --function median --name Md --in-place" + vars).status, 0);
  ASSERT_EQ(Cli("transform '" + out + "' --function usable --name N --in-place" + vars).status, 0);
  const std::string project = ReadFile(out);
  std::size_t at = project.find("<datamatrix>=;\r\n");
  ASSERT_NE(at, std::string::npos);
  at += 16;
  const test::ReferenceCsv ref("survey_row_statistics.csv", "transform");
  for (std::size_t row = 0; row < ref.size(); ++row) {
    const std::size_t end = project.find("\r\n", at);
    std::vector<std::string> cells;
    std::stringstream line(project.substr(at, end - at));
    for (std::string cell; std::getline(line, cell, '\t');) cells.push_back(cell);
    at = end + 2;
    ASSERT_EQ(cells.size(), 13u) << "case " << row + 1;
    const char* names[] = {"mean", "sd", "median", "usable"};
    for (int k = 0; k < 4; ++k) {
      const double want = ref.Number(row, names[k]);
      EXPECT_NEAR(std::stod(cells[9 + k]), want, 1e-10 * std::max(1.0, want)) << names[k] << " of case " << row + 1;
    }
  }
}

TEST_F(TransformCli, InputErrorsWriteNothing) {
  const std::string out = (folder_ / "out.msw").string();
  const std::string to = " --out '" + out + "' --lang en";
  struct Bad {
    std::string args;
    std::string message;
  };
  const std::vector<Bad> cases = {
      {"recode " + Survey() + " --vars Exer --rule \"(c) 1 ... 2 -> 1\" --rule \"(c) 1 .. 2 -> 1\"" + to,
       "Not a rule line: (c) 1 .. 2 -> 1"},
      {"count " + Survey() + " --vars Exer --rule \"(a) 1 -> 2\" --name N" + to, "Not a rule line: (a) 1 -> 2"},
      {"count " + Survey() + " --vars Exer --rule \"(a) 1\"" + to, "Give a name to new variable!"},
      {"transform " + Survey() + " --function abs --vars Weight --name W" + to, "Unknown variable: Weight"},
      {"transform " + Survey() + " --function add --vars Pulse --c ten --name P" + to, "c: not a number: ten"},
      {"transform " + Survey() + " --function x+y --vars Pulse --name P" + to, "Select Y variable."},
      {"transform " + Survey() + " --function mean --vars Pulse,Age --name P,Q" + to, "give one name"},
      {"transform " + Survey() + " --function abs --vars Pulse --name Age" + to,
       "You must give a unique name for each new variable"},
      {"transform " + Survey() + " --function abs --vars Pulse --name P --place same" + to, "--place same"},
      {"transform " + Survey() + " --function abs --vars Pulse --name P --lang en", "--in-place"},
      {"transform " + Survey() + " --function cube --vars Pulse --name P" + to, "--function"},
      {"transform " + Survey() + " --function abs --vars Pulse --name P --in-place" + to, "--in-place"},
      {"recode " + Survey() + " --vars Exer --rule \"(a) 1 -> 2\" --into A,B" + to,
       "Give one new name for each variable to recode."},
      {"transform " + Survey() + " --function weighted-sum --vars Pulse,Age --weights 1 --name W" + to,
       "Give one weight for each variable: 2 variables, weights: 1"},
      {"transform " + Survey() + " --function mean --vars Pulse,Age --weights 1,2 --name W" + to,
       "--weights goes with --function weighted-sum only."},
      {"transform " + Survey() + " --function median --vars Pulse --name Age --lang hu --out '" + out + "'",
       "Minden új változónak egyedi nevet kell adnia."},
  };
  for (const Bad& c : cases) {
    const CliResult r = Cli(c.args);
    EXPECT_EQ(r.status, 2) << c.args;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << c.args << "\n" << r.err;
    EXPECT_FALSE(std::filesystem::exists(out)) << c.args;
  }
}

TEST_F(TransformCli, RandomRunsRepeatWithTheirSeed) {
  const std::string a = (folder_ / "a.msw").string(), b = (folder_ / "b.msw").string();
  const std::string args = " --generator bivariate-normal --set Mean_1=50 --set correl=0.3 --lang en";
  CliResult r = Cli("random " + Survey() + args + " --out '" + a + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  const std::size_t at = r.err.find("Seed: ");
  ASSERT_NE(at, std::string::npos) << r.err;
  const std::string seed = r.err.substr(at + 6, r.err.find('\n', at) - at - 6);
  EXPECT_NE(r.err.find("Two new random variables have been successfully created."), std::string::npos);
  r = Cli("random " + Survey() + args + " --seed " + seed + " --out '" + b + "'");
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string project = ReadFile(a);
  EXPECT_EQ(project, ReadFile(b));
  EXPECT_NE(project.find("<name>=RNorm1;"), std::string::npos);
  EXPECT_NE(project.find("<longname>=Random Bivariate Normal 1 with mean: 50, SD: 15 and correlation: 0.3;"),
            std::string::npos);

  const std::vector<std::pair<std::string, std::string>> bad = {
      {"--generator normal --set Median=3", "Not a parameter of this generator: Median=3. Its parameters: Mean, SD"},
      {"--generator normal --set SD=-1", "SD must not be negative."},
      {"--generator poisson --set Lambda=x", "Lambda: not a number: x"},
      {"--generator normal --name Sex", "You must give a unique name for each new variable"},
  };
  const std::string c = (folder_ / "c.msw").string();
  for (const auto& [args2, message] : bad) {
    r = Cli("random " + Survey() + " " + args2 + " --out '" + c + "' --lang en");
    EXPECT_EQ(r.status, 2) << args2;
    EXPECT_NE(r.err.find(message), std::string::npos) << r.err;
    EXPECT_FALSE(std::filesystem::exists(c));
  }
  std::filesystem::remove(folder_ / "stattab" / "lambda.txt");
  r = Cli("random " + Survey() + " --generator lambda --out '" + c + "' --lang en");
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("File Lambda.TXT is missing. Program stops."), std::string::npos) << r.err;
  EXPECT_FALSE(std::filesystem::exists(c));
}

}  // namespace
}  // namespace tarvika
