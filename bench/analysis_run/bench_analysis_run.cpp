// The feed and the run of basic descriptive statistics over 1,000,000 cases by 20 numeric
// variables held as text, the way a loaded project holds them, on one thread and on two.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fmt/format.h>

#include "frame/analysis_request.h"
#include "frame/data_feed.h"
#include "analyses/command_table.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

constexpr int kCases = 1000000;
constexpr int kVariables = 20;

Workspace& BigWorkspace() {
  static ScriptedChannel user;
  static Workspace ws = [] {
    Workspace w(user, Language::English, '.');
    w.data.Resize(kVariables + 1, kCases + 1);
    w.vars.SetRowCount(kVariables + 1);
    std::uint64_t state = 1;
    for (int v = 1; v <= kVariables; ++v) {
      std::string name = fmt::format("v{}", v);
      w.vars.SetCell(kShortName, v, name);
      w.vars.SetCell(kType, v, "num=0_0;");
      w.vars.SetCell(kGroupType, v, "none");
      w.data.SetCell(v, 0, name);
    }
    for (int r = 1; r <= kCases; ++r) {
      for (int v = 1; v <= kVariables; ++v) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        unsigned x = static_cast<unsigned>(state >> 40);
        w.data.SetCell(v, r, fmt::format("{}.{:03}", 100 + x % 900, x % 1000));
      }
    }
    w.programFolder = (std::filesystem::temp_directory_path() / "tarvika_bench_run").string();
    return w;
  }();
  return ws;
}

void BM_ReadRow(benchmark::State& state) {
  Workspace& ws = BigWorkspace();
  std::vector<MissingCodes> codes(kVariables + 1);
  std::vector<int> columns(kVariables + 1);
  for (int v = 0; v <= kVariables; ++v) columns[v] = v;
  DataFeed feed(ws, codes, columns);
  std::vector<double> values(kVariables + 1);
  std::vector<std::uint8_t> missings(kVariables + 1);
  for (auto _ : state) {
    double sum = 0;
    for (int r = 1; r <= kCases; ++r) {
      feed.ReadRow(r, kVariables, values, missings);
      sum += values[kVariables];
    }
    benchmark::DoNotOptimize(sum);
  }
  state.counters["ns_per_cell"] =
      benchmark::Counter(static_cast<double>(kCases) * kVariables, benchmark::Counter::kIsIterationInvariantRate |
                                                                       benchmark::Counter::kInvert);
}
BENCHMARK(BM_ReadRow)->Unit(benchmark::kMillisecond);

// The argument is the number of threads the run may use (the same report either way).
void BM_BasicDescriptiveStatistics(benchmark::State& state) {
  Workspace& ws = BigWorkspace();
  ws.workThreads = static_cast<int>(state.range(0));
  AnalysisRequest request = BuildRequest(ws, kBasicStatistics, kVariables);
  for (int v = 1; v <= kVariables; ++v) request.role[v] = 'X';
  for (auto _ : state) RunRequest(ws, request);
}
BENCHMARK(BM_BasicDescriptiveStatistics)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace tarvika

BENCHMARK_MAIN();
