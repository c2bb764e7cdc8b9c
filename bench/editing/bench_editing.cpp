// Sorting and merging at the size of the workspace's limit: 1,000,000 cases.
//   SortTwoKeys: by a grouping number (50 values) and then a number with decimals, with
//   ten variables in all moving with the cases.
//   MergeByKey: two projects of 1,000,000 cases and six variables each, the added one in
//   another order, joined by an identifier.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "editing/merge_files.h"
#include "editing/sort_cases.h"
#include "workspace/user_channel.h"
#include "workspace/workspace.h"

namespace {

constexpr int kCases = 1000000;

unsigned Next(unsigned& x) {
  x = x * 1103515245u + 12345u;
  return x >> 8;
}

// A workspace of kCases cases: variable 1 an identifier (in a shuffled order when asked),
// the others short numbers.
std::unique_ptr<tarvika::Workspace> Project(tarvika::UserChannel& user, int variables, bool shuffled, unsigned seed) {
  auto ws = std::make_unique<tarvika::Workspace>(user, tarvika::Language::English, '.');
  ws->data.Resize(variables + 1, kCases + 1);
  ws->vars.SetRowCount(variables + 1);
  std::vector<int> ids(kCases);
  for (int i = 0; i < kCases; ++i) ids[i] = i + 1;
  unsigned x = seed;
  if (shuffled)
    for (int i = kCases - 1; i > 0; --i) std::swap(ids[i], ids[Next(x) % (i + 1)]);
  for (int v = 1; v <= variables; ++v) {
    std::string name = "v" + std::to_string(v + seed % 7);
    if (v == 1) name = "id";
    ws->vars.SetCell(tarvika::kShortName, v, name);
    ws->vars.SetCell(tarvika::kType, v, "num=0_0;");
    ws->data.SetCell(v, 0, name);
  }
  for (int r = 1; r <= kCases; ++r) {
    ws->data.SetCell(0, r, std::to_string(r));
    ws->data.SetCell(1, r, std::to_string(ids[r - 1]));
    ws->data.SetCell(2, r, std::to_string(1 + Next(x) % 50));
    for (int v = 3; v <= variables; ++v) ws->data.SetCell(v, r, std::to_string(Next(x) % 1000) + "." + std::to_string(Next(x) % 10));
  }
  return ws;
}

void SortTwoKeys(benchmark::State& state) {
  tarvika::ScriptedChannel user;
  auto original = Project(user, 10, true, 17);
  for (auto _ : state) {
    state.PauseTiming();
    tarvika::Workspace ws(user, tarvika::Language::English, '.');
    ws.data = original->data;
    ws.vars = original->vars;
    state.ResumeTiming();
    bool sorted = tarvika::SortCases(ws, {{2, false}, {3, true}});
    benchmark::DoNotOptimize(sorted);
  }
}
BENCHMARK(SortTwoKeys)->Unit(benchmark::kMillisecond)->Iterations(3);

void MergeByKey(benchmark::State& state) {
  tarvika::ScriptedChannel user;
  auto working = Project(user, 6, false, 3);
  auto added = Project(user, 6, true, 5);
  tarvika::MergeSource source;
  source.result = tarvika::LoadResult::Loaded;
  source.data = added->data;
  source.vars = added->vars;
  auto plan = tarvika::StartMergePlan(*working, source, tarvika::MergeMode::AddVariables, {"id"});
  for (auto _ : state) {
    auto merged = tarvika::MergeTables(*working, source, *plan, "added.msw");
    benchmark::DoNotOptimize(merged);
    state.PauseTiming();
    merged.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(MergeByKey)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
