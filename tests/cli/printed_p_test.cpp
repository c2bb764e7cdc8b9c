// Every p that the single-sample commands print on the survey is a probability.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/cli_runner.h"
#include "support/printed_p_values.h"

namespace tarvika {
namespace {

using CliRun = test::CliTest;
using test::CliResult;

// Every p that commands 11 to 15 print on the survey, in both languages, with and without
// conditional groups, trimming and hypothetical values near and far from the means, is a
// probability.
TEST_F(CliRun, EveryPrintedPOfTheSurveyIsAProbability) {
  const std::string all = " --vars Sex,Wr.Hnd,NW.Hnd,W.Hnd,Pulse,Exer,Smoke,Height,Age";
  const std::string near = " --set hypotheticalValue:Wr.Hnd=18.5 --set hypotheticalValue:NW.Hnd=18.6"
                           " --set hypotheticalValue:Pulse=74 --set hypotheticalValue:Height=172"
                           " --set hypotheticalValue:Age=20 --set hypotheticalValue:Exer=2";
  const std::string far = " --set hypotheticalValue:Wr.Hnd=0 --set hypotheticalValue:Pulse=1000"
                          " --set hypotheticalValue:Height=172.38 --set hypotheticalValue:Age=17";
  const std::vector<std::string> runs = {
      "--command 11" + all + " --lang en",
      "--command 11" + all + " --cond Sex --lang hu",
      "--command 12" + all + " --lang en",
      "--command 12" + all + " --set trimmingPercent=20 --cond Exer",
      "--command 13" + all + " --set scaleType:Exer=discrete --set scaleType:Smoke=group.def. --set testEqualFrequencies=on",
      "--command 13" + all + " --set scaleType:Age=group.def. --set testEqualFrequencies=on --cond Sex --lang hu",
      "--command 14" + all + near + " --lang en",
      "--command 14" + all + near + " --set trimmingPercent=10 --cond Sex",
      "--command 14" + all + far + " --set trimmingPercent=25 --lang hu",
      "--command 15" + all + " --lang en",
      "--command 15" + all + " --cond Smoke --lang hu",
  };
  int checked = 0;
  for (const std::string& args : runs) {
    CliResult r = Cli("run " + Survey() + " " + args);
    ASSERT_EQ(r.status, 0) << args << "\n" << r.err;
    for (const testing::PrintedP& p : testing::PrintedPValues(r.out)) {
      EXPECT_TRUE(p.value >= 0 && p.value <= 1) << args << "\n" << p.line;
      ++checked;
    }
  }
  EXPECT_GT(checked, 250);
}

}  // namespace
}  // namespace tarvika
