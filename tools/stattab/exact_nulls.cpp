#include "stattab/exact_nulls.h"

#include <algorithm>
#include <array>

namespace tarvika::stattab {

std::vector<std::uint64_t> SignedRankCounts(int n) {
  std::vector<std::uint64_t> counts(n * (n + 1) / 2 + 1, 0);
  counts[0] = 1;
  int reach = 0;
  for (int rank = 1; rank <= n; ++rank) {  // each rank joins the positive side or not
    reach += rank;
    for (int s = reach; s >= rank; --s) counts[s] += counts[s - rank];
  }
  return counts;
}

std::vector<std::uint64_t> SignCounts(int n) {
  std::vector<std::uint64_t> counts(n + 1, 0);
  counts[0] = 1;
  for (int i = 1; i <= n; ++i) counts[i] = counts[i - 1] * (n - i + 1) / i;
  return counts;
}

CriticalCounts TwoSidedCriticalValues(const std::vector<std::uint64_t>& counts, int n) {
  // 2 * cumulative / 2^n <= 1 / divisor, compared in whole numbers: 2 * divisor * cumulative <= 2^n.
  constexpr std::array<std::uint64_t, 3> kDivisor = {10, 20, 100};
  const std::uint64_t patterns = std::uint64_t{1} << n;
  CriticalCounts critical{};
  for (size_t level = 0; level < kDivisor.size(); ++level) {
    std::uint64_t cumulative = 0;
    for (size_t s = 0; s < counts.size(); ++s) {
      cumulative += counts[s];
      if (2 * kDivisor[level] * cumulative > patterns) break;
      critical[level] = static_cast<std::uint8_t>(std::min<size_t>(s, 255));
    }
  }
  return critical;
}

}  // namespace tarvika::stattab
