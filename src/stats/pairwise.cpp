#include "stats/pairwise.h"

#include <algorithm>
#include <cmath>

namespace tarvika {
namespace {

constexpr double kNoVariance = 1e-8;  // a V, SD or product of SDs at most this counts as 0
constexpr double kNoVarianceQ = 99;   // the q of a pair whose difference has no variance

int UsableGroups(const std::vector<PairwiseGroup>& groups) {
  return static_cast<int>(std::count_if(groups.begin(), groups.end(), [](const PairwiseGroup& g) { return g.n > 1; }));
}

double RangeQ(double difference, double v) {
  return v > kNoVariance ? std::fabs(difference) / std::sqrt(0.5 * v) : kNoVarianceQ;
}

}  // namespace

int SatterthwaiteDf(int n1, int n2, double s1, double s2) {
  const double v1 = s1 * s1 / n1;
  const double v2 = s2 * s2 / n2;
  const double df = (v1 + v2) * (v1 + v2) / (v1 * v1 / (n1 - 1) + v2 * v2 / (n2 - 1));
  return static_cast<int>(std::lround(df));
}

PairwiseResult PairwiseComparisons(PairwiseMethod method, const std::vector<PairwiseGroup>& groups, int k, int df,
                                   double msError, const StudentizedRangeTable& table) {
  PairwiseResult result{method, k, df, static_cast<int>(groups.size()), {}};
  if (UsableGroups(groups) < 3) return result;
  // Games-Howell: a group without spread borrows the pooled SD, so that its pairs still
  // have a variance.
  auto sd = [&](const PairwiseGroup& g) { return g.sd < kNoVariance ? std::sqrt(std::max(msError, 0.0)) : g.sd; };
  for (size_t i = 0; i < groups.size(); ++i) {
    const PairwiseGroup& a = groups[i];
    if (a.n < 2) continue;
    for (size_t j = i + 1; j < groups.size(); ++j) {
      const PairwiseGroup& b = groups[j];
      if (b.n < 2) continue;
      PairComparison pair;
      pair.first = static_cast<int>(i) + 1;
      pair.second = static_cast<int>(j) + 1;
      if (method == PairwiseMethod::TukeyKramer) {
        pair.q = RangeQ(a.mean - b.mean, (1.0 / a.n + 1.0 / b.n) * msError);
        pair.df = df;
      } else {
        const double sa = sd(a), sb = sd(b);
        pair.q = RangeQ(a.mean - b.mean, sa * sa / a.n + sb * sb / b.n);
        pair.df = sa * sb > kNoVariance ? SatterthwaiteDf(a.n, b.n, sa, sb) : a.n + b.n - 2;
      }
      pair.mark = QMark(table, k, pair.df, pair.q);
      result.pairs.push_back(pair);
    }
  }
  return result;
}

PairwiseResult TukeyForFactor(const std::vector<double>& means, int n, int k, int df, double msError,
                              const StudentizedRangeTable& table) {
  // With one n for all levels, V = 2 msError / n and sqrt(0.5 V) = sqrt(msError / n).
  std::vector<PairwiseGroup> levels;
  for (double mean : means) levels.push_back({mean, 0, n});
  return PairwiseComparisons(PairwiseMethod::TukeyKramer, levels, k, df, msError, table);
}

PairwiseResult GamesHowellForFactor(const std::vector<PairwiseGroup>& levels, int k,
                                    const StudentizedRangeTable& table) {
  // No pooled term: an SD of 0 stays 0.
  return PairwiseComparisons(PairwiseMethod::GamesHowell, levels, k, 0, 0, table);
}

PairwiseResult TukeyKramerForLevels(PairwiseMethod method, const std::vector<double>& levelSums, int cells,
                                    const std::vector<PairwiseGroup>& levels, int k, int df, double msError,
                                    const StudentizedRangeTable& table) {
  std::vector<PairwiseGroup> means = levels;
  for (size_t i = 0; i < means.size() && i < levelSums.size(); ++i) means[i].mean = levelSums[i] / cells;
  return PairwiseComparisons(method, means, k, df, msError, table);
}

ScheffeToRestResult ScheffeToRest(const std::vector<double>& levelSums, int cells, const std::vector<int>& n, int df,
                                  double msError) {
  ScheffeToRestResult result;
  result.df = df;
  double sumOfMeans = 0, sumOfInverseN = 0;
  for (size_t i = 0; i < levelSums.size() && i < n.size(); ++i) {
    if (n[i] < 2) continue;
    ++result.levels;
    sumOfMeans += levelSums[i] / cells;
    sumOfInverseN += 1.0 / n[i];
  }
  const int L = result.levels;
  if (L < 3) return result;
  for (size_t i = 0; i < levelSums.size() && i < n.size(); ++i) {
    if (n[i] < 2) continue;
    const double mean = levelSums[i] / cells;
    const double d = (L * mean - sumOfMeans) * (L * mean - sumOfMeans);
    const double g = msError * ((L - 2.0) * L / n[i] + sumOfInverseN);
    LevelToRest row;
    row.level = static_cast<int>(i) + 1;
    row.effect = mean - sumOfMeans / L;
    row.f = g > 0 ? d / ((L - 1) * g) : 0;
    row.p = FProb(row.f, L - 1, df);
    row.bonferroniP = g > 0 ? std::min(1.0, L * FProb(d / g, 1, df).p) : 1;
    result.rows.push_back(row);
  }
  return result;
}

}  // namespace tarvika
