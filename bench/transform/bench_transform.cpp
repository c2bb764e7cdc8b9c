// Each transformation over 1,000,000 cases held as text: a formula variable, a bivariate
// function, a statistical function and a weighted sum of 5 variables, recoding, counting,
// and random variables.
// Each iteration works on a fresh copy of the tables (the copy is not timed).

#include <benchmark/benchmark.h>

#include <fmt/format.h>

#include "transform/formula.h"
#include "transform/random_generators.h"
#include "transform/recode.h"
#include "transform/row_statistics.h"
#include "transform/weighted_sum.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

constexpr int kCases = 1000000;
constexpr int kVariables = 5;

Workspace& Source() {
  static ScriptedChannel user;
  static Workspace ws = [] {
    Workspace w(user, Language::English, '.');
    w.data.Resize(kVariables + 1, kCases + 1);
    w.vars.SetRowCount(kVariables + 1);
    for (int v = 1; v <= kVariables; ++v) {
      const std::string name = fmt::format("v{}", v);
      w.vars.SetCell(kShortName, v, name);
      w.vars.SetCell(kType, v, "num=0_0;");
      w.vars.SetCell(kGroupType, v, "none");
      w.data.SetCell(v, 0, name);
    }
    std::uint64_t state = 1;
    for (int r = 1; r <= kCases; ++r) {
      for (int v = 1; v <= kVariables; ++v) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        const unsigned x = static_cast<unsigned>(state >> 40);
        // One cell in 20 empty; values 1 to 9 with two decimals.
        if (x % 20 != 0) w.data.SetCell(v, r, fmt::format("{}.{:02}", 1 + x % 9, x % 100));
      }
    }
    return w;
  }();
  return ws;
}

// Times `work` on a copy of the source workspace.
template <typename Work>
void OnCopy(benchmark::State& state, Work work) {
  for (auto _ : state) {
    state.PauseTiming();
    Workspace ws = Source();
    state.ResumeTiming();
    work(ws);
    benchmark::DoNotOptimize(ws.NumberOfVariables());
  }
  state.SetItemsProcessed(state.iterations() * kCases);
}

void BM_Univariate(benchmark::State& state) {
  OnCopy(state, [](Workspace& ws) { ApplyUnivariate(ws, Univariate::Ln, 0, {1}, {{"lnv1", "", Placement::End}}); });
}
void BM_Round(benchmark::State& state) {
  OnCopy(state, [](Workspace& ws) { ApplyUnivariate(ws, Univariate::Round, 0, {1}, {{"", "", Placement::Same}}); });
}
void BM_Bivariate(benchmark::State& state) {
  OnCopy(state, [](Workspace& ws) { ApplyBivariate(ws, Bivariate::Divide, {1}, 2, {{"q", "", Placement::After}}); });
}
void BM_RowMedianOf5(benchmark::State& state) {
  OnCopy(state, [](Workspace& ws) {
    ApplyStatFunction(ws, RowStatistic::Median, {1, 2, 3, 4, 5}, {"med", "", Placement::End});
  });
}
void BM_RowSdOf5(benchmark::State& state) {
  OnCopy(state,
         [](Workspace& ws) { ApplyStatFunction(ws, RowStatistic::SD, {1, 2, 3, 4, 5}, {"sd", "", Placement::End}); });
}
void BM_WeightedSumOf5(benchmark::State& state) {
  OnCopy(state, [](Workspace& ws) {
    ApplyWeightedSum(ws, {1, 2, 3, 4, 5}, {1, 0.5, -2, 1.25, 3}, {"w", "", Placement::End});
  });
}
void BM_RecodeInto(benchmark::State& state) {
  OnCopy(state, [](Workspace& ws) {
    auto rules = ParseRules(ws, {"(b) Missing -> 0", "(c) 1 ... 3 -> 1", "(e) 3.0001 ... maximum -> 2"}, true);
    RecodeDifferent(ws, {1}, {"r1"}, *rules);
  });
}
void BM_CountOf5(benchmark::State& state) {
  OnCopy(state, [](Workspace& ws) {
    auto rules = ParseRules(ws, {"(a) 5.5", "(d) minimum ... 2"}, false);
    CountValues(ws, {1, 2, 3, 4, 5}, *rules, {"n", "", Placement::End});
  });
}
void BM_RandomNormal(benchmark::State& state) {
  OnCopy(state, [](Workspace& ws) {
    RandomSource source(1);
    GenerateColumn(ws, *FindGenerator("normal"), {100, 15}, {}, source);
  });
}
void BM_RandomBinomial(benchmark::State& state) {
  OnCopy(state, [](Workspace& ws) {
    RandomSource source(1);
    GenerateColumn(ws, *FindGenerator("binomial"), {20, 0.3}, {}, source);
  });
}

BENCHMARK(BM_Univariate)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Round)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Bivariate)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RowMedianOf5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RowSdOf5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WeightedSumOf5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RecodeInto)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CountOf5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RandomNormal)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RandomBinomial)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvika

BENCHMARK_MAIN();
