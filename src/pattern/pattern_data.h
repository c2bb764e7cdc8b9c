#pragma once
// The objects of the pattern analyses: the complete cases of a group collapsed into distinct
// value patterns with their multiplicities, the moments of the variables, the normalized
// variable weights, standardization, and the distance between two value patterns.

#include <cstddef>
#include <vector>

namespace tarvika {

inline constexpr double kPatternZero = 0.00000001;

enum class DistanceType { Ased = 1, Pearson = 2 };

// One complete case as read: its row and its values over the V variables.
struct CaseValues {
  int row = 0;
  std::vector<double> values;  // 0-based, V entries
};

struct PatternSet {
  int V = 0;  // variables
  int N = 0;  // complete cases
  int D = 0;  // distinct patterns
  std::vector<int> caseRows;       // the row of each complete case, in case order
  std::vector<int> patternOfCase;  // per complete case its pattern, 0-based
  std::vector<int> multiplicity;   // per pattern
  std::vector<int> firstRow;       // per pattern the row of its first case
  std::vector<double> x;           // D x V stored values (standardized when on), row-major
  // Per variable, over the complete cases (Welford): mean, variance with N - 1 (0 unless
  // above the zero tolerance), SD, minimum, maximum.
  std::vector<double> mean, variance, sd, min, max;
  std::vector<double> rawWeight;  // |weight| as given
  std::vector<double> weight;     // zero for zero-variance variables, summing to 1
  bool standardized = false;

  const double* Pattern(int p) const { return x.data() + static_cast<std::size_t>(p) * V; }
  // A stored value on the variable's own scale.
  double BackTransform(double z, int v) const;
};

// The complete cases in case order: moments, ties collapsed (two cases are tied when no
// variable differs by more than the zero tolerance), patterns numbered in the order of
// their first case. Values are stored raw; see Standardize.
PatternSet CollapsePatterns(const std::vector<CaseValues>& cases, int V);

// Copies the weights (their absolute values), zeroes those of zero-variance variables and
// divides by the sum. False when the sum is not above the zero tolerance.
bool NormalizeWeights(PatternSet& set, const std::vector<double>& weights);

// (x - mean) / SD for every variable whose SD is above the zero tolerance.
void Standardize(PatternSet& set);

// The weighted mean squared difference of two patterns of V values.
inline double Ased(const double* a, const double* b, const double* weight, int V) {
  double d = 0;
  for (int v = 0; v < V; ++v) d += weight[v] * (a[v] - b[v]) * (a[v] - b[v]);
  return d;
}

// ASED: the weighted mean squared difference. Pearson: 1 - the weighted correlation of the
// two patterns (exactly 1 when r^2 is not above the tolerance; r = 1 when both patterns are
// flat, 0 when one is).
double Distance(const double* a, const double* b, const std::vector<double>& weight, DistanceType type);

// The mean and SD of the distances over all pairs of cases (identical cases at distance 0).
struct DistanceSummary {
  double mean = 0, sd = 0;
};
DistanceSummary SummarizeDistances(const PatternSet& set, DistanceType type);

}  // namespace tarvika
