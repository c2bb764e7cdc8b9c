// gen_project_file OUT.msw [OUT.tsv|-] [CASES] [padded|plain] [VARIABLES]: writes the
// synthetic project of the load benchmark (1,000,000 cases by 21 variables by default)
// and, when asked, the same table as TSV; "padded" writes the decimals as other programs
// do, trailing zeros kept.

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "synthetic_project.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: gen_project_file OUT.msw [OUT.tsv|-] [CASES] [padded|plain] [VARIABLES]\n");
    return 2;
  }
  int cases = argc > 3 ? std::atoi(argv[3]) : 1000000;
  std::FILE* msw = std::fopen(argv[1], "wb");
  const bool wantTsv = argc > 2 && std::string_view(argv[2]) != "-";
  std::FILE* tsv = wantTsv ? std::fopen(argv[2], "wb") : nullptr;
  if (msw == nullptr || (wantTsv && tsv == nullptr)) {
    std::perror("gen_project_file");
    return 1;
  }
  const bool padded = argc > 4 && std::string_view(argv[4]) == "padded";
  const int variables = argc > 5 ? std::atoi(argv[5]) : tarvika::bench::kSyntheticVariables;
  tarvika::bench::WriteSyntheticProject(msw, tsv, cases, padded, variables);
  bool ok = std::fclose(msw) == 0;
  if (tsv != nullptr) ok = std::fclose(tsv) == 0 && ok;
  return ok ? 0 : 1;
}
