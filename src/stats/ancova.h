#pragma once
// The analysis of covariance of one dependent x across groups with one covariate c: the
// means of x adjusted to the grand mean of c by the pooled within-group slope, the F of the
// adjusted means, its effect sizes, the within-group correlations of x and c with the test
// of their equality, and the partial correlation of x and c after the group code.

#include <span>
#include <vector>

#include "numeric/probability.h"

namespace tarvika {

// The complete cases of one group: x[i] and c[i] belong to one case.
struct AncovaGroupData {
  std::vector<double> x, c;
};

struct AncovaGroupResult {
  int n = 0;
  double meanX = 0, meanC = 0;
  double sdX = 0;  // divisor n - 1
  double adjustedMean = 0;
  double r = 0;  // within the group; 0 without spread
  PValue rP;     // on n - 2 df
};

struct AncovaResult {
  bool done = false;                      // at least two groups of three cases
  std::vector<int> used;                  // indices of the groups of at least three cases
  std::vector<AncovaGroupResult> groups;  // per used group
  int total = 0;
  double df1 = 0, df2 = 0;  // k - 1, N - k - 1
  double F = 0;             // 99 when the adjusted within sum vanishes and the total does not
  PValue p;
  double partialEtaSquared = 0, omegaSquared = 0;
  double cohenD = 0;     // two groups only
  double r = 0;          // x and c over the used cases
  PValue rP;             // on N - 2 df
  double chiSquare = 0;  // equality of the within-group correlations, k - 1 df
  PValue chiSquareP;
  double adjustedWithin = 0;  // the error term per case: E
};
AncovaResult Ancova(std::span<const AncovaGroupData> groups);

// The correlation of x and c after the linear effect of g, from the three pairwise
// correlations; 1 when either of the others is within rounding of 1.
double PartialCorrelation(double rxc, double rxg, double rcg);
// Pearson's r of two equally long series; 0 when either is constant.
double PearsonR(std::span<const double> a, std::span<const double> b);

}  // namespace tarvika
