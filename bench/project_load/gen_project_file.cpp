// gen_project_file OUT.msw [OUT.tsv] [CASES]: writes the synthetic project of the load
// benchmark (1,000,000 cases by default) and, when asked, the same table as TSV.

#include <cstdio>
#include <cstdlib>

#include "synthetic_project.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: gen_project_file OUT.msw [OUT.tsv] [CASES]\n");
    return 2;
  }
  int cases = argc > 3 ? std::atoi(argv[3]) : 1000000;
  std::FILE* msw = std::fopen(argv[1], "wb");
  std::FILE* tsv = argc > 2 ? std::fopen(argv[2], "wb") : nullptr;
  if (msw == nullptr || (argc > 2 && tsv == nullptr)) {
    std::perror("gen_project_file");
    return 1;
  }
  tarvika::bench::WriteSyntheticProject(msw, tsv, cases);
  bool ok = std::fclose(msw) == 0;
  if (tsv != nullptr) ok = std::fclose(tsv) == 0 && ok;
  return ok ? 0 : 1;
}
