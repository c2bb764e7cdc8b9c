// gen_project_file OUT.msw [OUT.tsv] [CASES] [padded]: writes the synthetic project of the
// load benchmark (1,000,000 cases by default) and, when asked, the same table as TSV;
// "padded" writes the decimals as other programs do, trailing zeros kept.

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "synthetic_project.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: gen_project_file OUT.msw [OUT.tsv] [CASES] [padded]\n");
    return 2;
  }
  int cases = argc > 3 ? std::atoi(argv[3]) : 1000000;
  std::FILE* msw = std::fopen(argv[1], "wb");
  std::FILE* tsv = argc > 2 ? std::fopen(argv[2], "wb") : nullptr;
  if (msw == nullptr || (argc > 2 && tsv == nullptr)) {
    std::perror("gen_project_file");
    return 1;
  }
  const bool padded = argc > 4 && std::string_view(argv[4]) == "padded";
  tarvika::bench::WriteSyntheticProject(msw, tsv, cases, padded);
  bool ok = std::fclose(msw) == 0;
  if (tsv != nullptr) ok = std::fclose(tsv) == 0 && ok;
  return ok ? 0 : 1;
}
