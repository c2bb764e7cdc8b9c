// Load and save of a synthetic project of 100,000 cases by 21 numeric variables.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "synthetic_project.h"
#include "workspace/project_file.h"
#include "workspace/workspace.h"

namespace {

constexpr int kCases = 100000;

const std::string& ProjectPath() {
  static const std::string path = [] {
    auto dir = std::filesystem::temp_directory_path() / "tarvika_bench_project_load";
    std::filesystem::create_directories(dir);
    std::string file = (dir / "synthetic.msw").string();
    std::FILE* f = std::fopen(file.c_str(), "wb");
    tarvika::bench::WriteSyntheticProject(f, nullptr, kCases);
    std::fclose(f);
    return file;
  }();
  return path;
}

void BM_LoadProject(benchmark::State& state) {
  tarvika::ScriptedChannel user;
  tarvika::Workspace ws(user, tarvika::Language::English, '.');
  ws.programFolder = std::filesystem::path(ProjectPath()).parent_path().string();
  for (auto _ : state) {
    auto result = tarvika::LoadProject(ws, ProjectPath());
    benchmark::DoNotOptimize(result);
  }
  state.SetBytesProcessed(state.iterations() *
                          static_cast<std::int64_t>(std::filesystem::file_size(ProjectPath())));
}
BENCHMARK(BM_LoadProject)->Unit(benchmark::kMillisecond);

void BM_SaveProject(benchmark::State& state) {
  tarvika::ScriptedChannel user;
  tarvika::Workspace ws(user, tarvika::Language::English, '.');
  ws.programFolder = std::filesystem::path(ProjectPath()).parent_path().string();
  tarvika::LoadProject(ws, ProjectPath());
  std::string out = ProjectPath() + ".saved.msw";
  for (auto _ : state) {
    bool ok = tarvika::SaveProject(ws, out);
    benchmark::DoNotOptimize(ok);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(out)));
}
BENCHMARK(BM_SaveProject)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
