#pragma once
// Exact null distributions of the signed-rank sum and of the sign count, and the critical
// values read from them for the "WILC.MST" and "SIGN.MST" tables.

#include <cstdint>
#include <vector>

#include "numeric/stat_tables.h"

namespace tarvika::stattab {

// counts[s]: how many of the 2^n sign patterns of the ranks 1..n give the positive rank
// sum s, for s = 0 .. n(n+1)/2.
std::vector<std::uint64_t> SignedRankCounts(int n);

// counts[i] = C(n, i): how many of the 2^n patterns have i cases on one side.
std::vector<std::uint64_t> SignCounts(int n);

// For a symmetric null distribution given by its counts over 2^n patterns: per level 0.10,
// 0.05, 0.01, the largest statistic s (the smaller of the two sides) whose two-sided p,
// 2 * P(S <= s), is at most the level; 0 where even s = 0 is not significant.
CriticalCounts TwoSidedCriticalValues(const std::vector<std::uint64_t>& counts, int n);

}  // namespace tarvika::stattab
