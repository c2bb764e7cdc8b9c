// time_import FILE [RUNS]: imports FILE into a workspace RUNS times (3 by default) and
// prints the shortest wall time in seconds, the cases and the variables: the import alone,
// without the start of the program and without saving the project.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "exchange/import.h"
#include "workspace/workspace.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: time_import FILE [RUNS]\n");
    return 2;
  }
  const int runs = argc > 2 ? std::atoi(argv[2]) : 3;
  double best = 1e300;
  int cases = 0, variables = 0;
  for (int i = 0; i < runs; ++i) {
    tarvika::ScriptedChannel user;
    tarvika::Workspace ws(user, tarvika::Language::English, '.');
    const auto start = std::chrono::steady_clock::now();
    if (!tarvika::ImportFile(ws, argv[1], {})) {
      for (const std::string& m : user.told) std::fprintf(stderr, "%s\n", m.c_str());
      return 1;
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    best = std::min(best, took.count());
    cases = ws.NumberOfCases();
    variables = ws.NumberOfVariables();
  }
  std::printf("%.3f %d %d\n", best, cases, variables);
  return 0;
}
