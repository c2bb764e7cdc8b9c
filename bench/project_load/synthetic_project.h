#pragma once
// A synthetic project of 21 numeric variables: 6 answers on a 1-7 scale, 7 scores with two
// decimals and 8 measures with three, all in the form the program writes (about 118 bytes
// a case). The same rows can be written as tab-separated text for other readers. In the
// form other programs write (`padded`), the decimals keep their trailing zeros and a third
// of the scores and measures are negative ("48.90", "-0.570").

#include <cstdint>
#include <cstdio>
#include <string>

namespace tarvika::bench {

inline constexpr int kSyntheticVariables = 21;

// The kind of variable i: 1-6 answers, 7-13 scores, 14-21 measures, and so on by 21.
inline int SyntheticKind(int i) { return (i - 1) % kSyntheticVariables + 1; }

// Writes the project file to msw and, when tsv is given, the same table as tab-separated
// text with a line of names. Same seed, same bytes.
inline void WriteSyntheticProject(std::FILE* msw, std::FILE* tsv, int cases, bool padded = false,
                                  int variables = kSyntheticVariables, std::uint64_t seed = 20240601) {
  std::string head =
      "<Tarvika_for_windows>=2.0;\r\n<variables>=" + std::to_string(variables) + ";\r\n<cases>=" + std::to_string(cases) + ";\r\n";
  std::string names;
  for (int i = 1; i <= variables; ++i) {
    const int kind = SyntheticKind(i);
    std::string name = (kind <= 6 ? "item" : kind <= 13 ? "score" : "meas") + std::to_string(i);
    head += "#=" + std::to_string(i) + ";\r\n<name>=" + name +
            ";\r\n<longname>=;\r\n$num=0_0;\r\n<assign>=none;\r\n"
            "<labels>=;\r\n<help>=;\r\n<missing>=;\r\n";
    names += (i > 1 ? "\t" : "") + name;
  }
  head += "<datamatrix>=;\r\n";
  std::fwrite(head.data(), 1, head.size(), msw);
  if (tsv != nullptr) {
    names += "\r\n";
    std::fwrite(names.data(), 1, names.size(), tsv);
  }

  std::uint64_t state = seed;
  auto next = [&state](std::uint32_t range) {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::uint32_t>((state >> 33) % range);
  };
  std::string buf;
  char cell[32];
  for (int r = 1; r <= cases; ++r) {
    for (int v = 1; v <= variables; ++v) {
      const int i = SyntheticKind(v);
      int len;
      if (i <= 6) {
        len = std::snprintf(cell, sizeof cell, "%u", 1 + next(7));
      } else if (padded) {
        const char* sign = next(3) == 0 ? "-" : "";
        len = i <= 13 ? std::snprintf(cell, sizeof cell, "%s%u.%u%u", sign, next(100), next(10), next(10))
                      : std::snprintf(cell, sizeof cell, "%s%u.%u%u%u", sign, next(1000), next(10), next(10), next(10));
      } else if (i <= 13) {
        len = std::snprintf(cell, sizeof cell, "%u.%u%u", 10 + next(90), next(10), 1 + next(9));
      } else {
        len = std::snprintf(cell, sizeof cell, "%u.%u%u%u", 100 + next(900), next(10), next(10), 1 + next(9));
      }
      if (v > 1) buf.push_back('\t');
      buf.append(cell, static_cast<std::size_t>(len));
    }
    buf.append("\r\n");
    if (buf.size() > (1 << 20) || r == cases) {
      std::fwrite(buf.data(), 1, buf.size(), msw);
      if (tsv != nullptr) std::fwrite(buf.data(), 1, buf.size(), tsv);
      buf.clear();
    }
  }
}

}  // namespace tarvika::bench
