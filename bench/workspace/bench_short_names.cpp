// Short-name normalisation of a project whose 1000 variables all came without a name (or
// with one name): every one after the first must find its own "~NN" counter.

#include <benchmark/benchmark.h>

#include "workspace/declarations.h"
#include "workspace/workspace.h"

namespace {

void NormaliseUnnamedVariables(benchmark::State& state) {
  tarvika::ScriptedChannel user;
  tarvika::Workspace ws(user, tarvika::Language::English, '.');
  const int n = static_cast<int>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    ws.data.Resize(n + 1, 2);
    ws.vars.SetRowCount(n + 1);
    for (int v = 1; v <= n; ++v) ws.vars.SetCell(tarvika::kShortName, v, "");
    state.ResumeTiming();
    tarvika::NormaliseShortNames(ws);
  }
}
BENCHMARK(NormaliseUnnamedVariables)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
