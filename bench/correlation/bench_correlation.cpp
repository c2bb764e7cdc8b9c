// Kendall's tau-b and tau of 1,000,000 pairs, and the run of bivariate correlation (every
// measure, the report) on 1,000,000 cases of two numeric variables held as text.

#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <vector>

#include "analyses/command_table.h"
#include "frame/analysis_request.h"
#include "stats/correlation.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

constexpr int kCases = 1000000;

// Related pairs in units of 0.001, so that there are ties as in real data.
struct Pairs {
  std::vector<double> x, y;
};

const Pairs& BigPairs() {
  static const Pairs pairs = [] {
    Pairs p;
    std::uint64_t state = 1;
    auto next = [&state] {
      state = state * 6364136223846793005ULL + 1442695040888963407ULL;
      return static_cast<double>((state >> 40) % 100000) / 1000;
    };
    for (int i = 0; i < kCases; ++i) {
      const double x = next();
      p.x.push_back(x);
      p.y.push_back(std::round(1000 * (0.5 * x + next())) / 1000);
    }
    return p;
  }();
  return pairs;
}

void BM_Kendall(benchmark::State& state) {
  const Pairs& p = BigPairs();
  for (auto _ : state) benchmark::DoNotOptimize(KendallOf(p.x, p.y));
}
BENCHMARK(BM_Kendall)->Unit(benchmark::kMillisecond);

void BM_BivariateCorrelation(benchmark::State& state) {
  static ScriptedChannel user;
  static Workspace ws = [] {
    Workspace w(user, Language::English, '.');
    const Pairs& p = BigPairs();
    w.data.Resize(3, kCases + 1);
    w.vars.SetRowCount(3);
    for (int v = 1; v <= 2; ++v) {
      const std::string name = v == 1 ? "x" : "y";
      w.vars.SetCell(kShortName, v, name);
      w.vars.SetCell(kType, v, "num=0_0;");
      w.vars.SetCell(kGroupType, v, "none");
      w.data.SetCell(v, 0, name);
    }
    for (int r = 1; r <= kCases; ++r) {
      w.data.SetCell(1, r, fmt::format("{:.3f}", p.x[r - 1]));
      w.data.SetCell(2, r, fmt::format("{:.3f}", p.y[r - 1]));
    }
    w.programFolder = (std::filesystem::temp_directory_path() / "tarvika_bench_correlation").string();
    return w;
  }();
  AnalysisRequest request = BuildRequest(ws, 31, 2);
  request.role[1] = 'X';
  request.role[2] = 'Y';
  for (auto _ : state) RunRequest(ws, request);
}
BENCHMARK(BM_BivariateCorrelation)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvika

BENCHMARK_MAIN();
