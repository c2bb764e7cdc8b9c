// The transformation commands as a shell runs them: the project written to --out or back in
// place, and nothing written on an input error, which exits with status 2.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/cli_runner.h"

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
  project = ReadFile(out);
  EXPECT_NE(project.find("<variables>=12;"), std::string::npos);
  // Pulse 92 rounded to tens; Exer 2 kept; one of Exer 2 and Smoke 1 is a 1.
  EXPECT_NE(project.find("1\t18.5\t18\t18.25\t2\t90\t2\t1\t173\t18.25\t2\t1\r\n"), std::string::npos);
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
  };
  for (const Bad& c : cases) {
    const CliResult r = Cli(c.args);
    EXPECT_EQ(r.status, 2) << c.args;
    EXPECT_NE(r.err.find(c.message), std::string::npos) << c.args << "\n" << r.err;
    EXPECT_FALSE(std::filesystem::exists(out)) << c.args;
  }
}

}  // namespace
}  // namespace tarvika
