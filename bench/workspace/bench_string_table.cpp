// Capacity and speed of the cell store: a table of 1,000,000 cases by 100 variables of
// short numbers (1 to 6 characters), as a typical survey project holds them.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "workspace/string_table.h"

namespace {

constexpr int kCases = 1000000;
constexpr int kVariables = 100;

// The number texts, made once so that the timing measures the store, not the formatting.
const std::vector<std::string>& Texts() {
  static const std::vector<std::string> texts = [] {
    std::vector<std::string> t;
    unsigned x = 12345;
    for (int i = 0; i < 4096; ++i) {
      x = x * 1103515245u + 12345u;
      int digits = 1 + static_cast<int>((x >> 16) % 6);
      std::string s = std::to_string((x >> 8) % 1000000);
      t.push_back(s.substr(0, digits));
    }
    return t;
  }();
  return texts;
}

std::unique_ptr<tarvika::StringTable> FilledTable() {
  auto table = std::make_unique<tarvika::StringTable>(kVariables + 1, kCases + 1);
  const auto& texts = Texts();
  for (int r = 1; r <= kCases; ++r)
    for (int c = 1; c <= kVariables; ++c) table->SetCell(c, r, texts[(r * 31 + c) & 4095]);
  return table;
}

void FillInRowOrder(benchmark::State& state) {
  for (auto _ : state) {
    auto table = FilledTable();
    benchmark::DoNotOptimize(table.get());
    state.PauseTiming();
    double cells = static_cast<double>(kCases) * kVariables;
    state.counters["bytes_per_cell"] = static_cast<double>(table->MemoryBytes()) / cells;
    table.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(FillInRowOrder)->Unit(benchmark::kMillisecond)->Iterations(2);

void ReadOneColumn(benchmark::State& state) {
  static auto table = FilledTable();
  std::size_t total = 0;
  for (auto _ : state) {
    for (int r = 1; r <= kCases; ++r) total += table->GetCell(50, r).size();
    benchmark::DoNotOptimize(total);
  }
  state.counters["cells"] = kCases;
}
BENCHMARK(ReadOneColumn)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
