// The analyses that cut their work by variable, dependent or pair give the same report bytes
// with two threads as with one, and a cancel asked on the calling thread still ends the run.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "analyses/command_table.h"
#include "frame/analysis_dialogs.h"
#include "support/dialog_settings.h"
#include "support/memory_workspace.h"

namespace tarvika {
namespace {

using testing::Declared;
using testing::MemoryWorkspace;

// Enough cases for the work and the column conversion to be split: a conditional variable
// of three groups and five variables of different scales with a missing code, empty cells
// and foreign text spread over both halves of the rows.
MemoryWorkspace LargeProject() {
  std::vector<Declared> vars = {{"g", "", "1=a;/2=b;/3=c;/", "codes"},
                                {"x1", "", "", "none", "-9"}, {"x2"}, {"x3"}, {"x4"}, {"x5"}};
  std::vector<std::vector<std::string>> rows;
  unsigned state = 12345;
  auto next = [&] { return state = state * 1103515245u + 12345u, (state >> 8) % 10000; };
  for (int r = 1; r <= 70000; ++r) {
    rows.push_back({std::to_string(1 + r % 3), r % 97 == 0 ? "-9" : std::to_string(next() % 7 + 1),
                    r % 101 == 0 ? "" : std::to_string(next()) + ".25", r % 89 == 0 ? "n/a" : std::to_string(next() * 0.001),
                    std::to_string(-static_cast<int>(next())), r % 2 ? "5" : std::to_string(next() % 50)});
  }
  MemoryWorkspace m(vars, rows, Language::English, '.', "parallel");
  std::filesystem::copy(std::filesystem::path(TARVIKA_PROGRAM_DIR) / "stattab", m.programFolder / "stattab");
  return m;
}

struct Command {
  DialogKind kind;
  int code;
  std::vector<std::string> settings;  // "name=value" or "name:variable=value"
  std::vector<std::string> selected = {"x1", "x2", "x3", "x4", "x5"};
  std::string conditional = "g";
  std::vector<std::string> grouping = {};
};

std::string Report(MemoryWorkspace& m, const Command& c) {
  AnalysisDialog dialog(AllCommands(), c.kind);
  dialog.commandCode = c.code;
  dialog.selected = c.selected;
  dialog.conditional = c.conditional;
  dialog.grouping = c.grouping;
  testing::ApplySettings(dialog, c.settings);
  PreparedRun run = PrepareRun(m.ws, dialog);
  EXPECT_TRUE(run.ok()) << run.error;
  EXPECT_TRUE(RunRequest(m.ws, run.request));
  return m.RawOutput("zuli_akt.txt");
}

TEST(ParallelRun, TwoThreadsWriteTheSameBytesAsOne) {
  MemoryWorkspace m = LargeProject();
  const std::vector<Command> commands = {
      {DialogKind::SingleSample, 11, {}},
      {DialogKind::SingleSample, 12, {}},
      {DialogKind::SingleSample, 12, {"trimmingPercent=10"}},
      {DialogKind::SingleSample, 13, {"scaleType:x1=discrete", "scaleType:x5=discrete", "classMultiplier=2"}},
      {DialogKind::SingleSample, 14, {"trimmingPercent=10", "hypotheticalValue:x3=5"}},
      {DialogKind::SingleSample, 15, {}},
      {DialogKind::Relations, 32, {"correlationType=Spearman rho", "listPValues=on"}},
      {DialogKind::Relations, 32, {"correlationType=Kendall tau"}},
      // Interval and ordinal dependents computed two at a time.
      {DialogKind::Groups, 21, {"scaleType:x2=ordinal"}, {"x1", "x2", "x3"}, "", {"g"}}};
  for (const Command& c : commands) {
    m.ws.workThreads = 1;
    const std::string serial = Report(m, c);
    m.ws.workThreads = 2;
    const std::string parallel = Report(m, c);
    EXPECT_GT(serial.size(), 1000u) << c.code;
    EXPECT_EQ(serial, parallel) << c.code;
  }

  // Without a conditional variable the first progress message is the data pass's: a cancel
  // there ends the run with its closing line.
  m.ws.hooks.cancelAsked = [] { return true; };
  const std::string cancelled = Report(m, {DialogKind::SingleSample, 11, {}, {"x1", "x2", "x3", "x4", "x5"}, ""});
  EXPECT_NE(cancelled.find("The analysis was cancelled."), std::string::npos);
  EXPECT_EQ(cancelled.find("X_max"), std::string::npos);
}

}  // namespace
}  // namespace tarvika
