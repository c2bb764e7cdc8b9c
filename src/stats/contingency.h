#pragma once
// Statistics of a two-way frequency table: the test of independence and the measures of
// relationship, monotonicity, prediction and agreement. Every function takes a complete
// table (no empty row or column margin); a measure whose denominator vanishes is NaN.

#include <vector>

#include "numeric/probability.h"

namespace tarvika {

// f[i][j]: the count of row category i and column category j, with its margins.
struct Contingency {
  std::vector<std::vector<double>> f;
  std::vector<double> rows, columns;
  double n = 0;
  int R() const { return static_cast<int>(rows.size()); }
  int C() const { return static_cast<int>(columns.size()); }
  double Expected(int i, int j) const { return rows[i] * columns[j] / n; }
};

// The table with its margins; every row of f has the same length.
Contingency MakeContingency(std::vector<std::vector<double>> f);
// Rows become columns.
Contingency Transposed(const Contingency& t);
// True when every row and every column margin is above 0.
bool IsComplete(const Contingency& t);

// Pearson's chi-square of independence, df = (R-1)(C-1), and the smallest expected count.
struct IndependenceTest {
  double chiSquare = 0;
  int df = 0;
  PValue p;
  double minimumExpected = 0;
};
IndependenceTest PearsonIndependence(const Contingency& t);

// Cramér's V = sqrt(X / (N (min(R, C) - 1))) and the contingency coefficient
// sqrt(X / (X + N)), from the chi-square X.
struct NominalAssociation {
  double cramerV = 0;
  double contingencyCoefficient = 0;
};
NominalAssociation NominalMeasures(const Contingency& t, double chiSquare);

// A 2 by 2 table (a b / c d). Yule's Q = (ad - bc)/(ad + bc) and
// Y = (sqrt(ad) - sqrt(bc))/(sqrt(ad) + sqrt(bc)) from the counts; the odds ratio ad/(bc),
// with 0.5 added to every cell when one is 0; the Jaccard index d/(b + c + d), the second
// category of each variable (the larger code) counting as presence.
struct TwoByTwoMeasures {
  double yuleQ = 0, yuleY = 0;
  double oddsRatio = 0;
  bool oddsCorrected = false;
  double jaccard = 0;
};
TwoByTwoMeasures TwoByTwo(const Contingency& t);

// Concordance of ordered categories. C and D count the concordant and discordant pairs
// (cells strictly below-right, and below-left, of each cell); SR and SC are the sums of
// squared row and column margins.
//   gamma = (C-D)/(C+D)                     tau-b = 2(C-D)/sqrt((N²-SR)(N²-SC))
//   Somers' D(c,r) = 2(C-D)/(N²-SR)         Somers' D(r,c) = 2(C-D)/(N²-SC)
// Under independence every one of them has the asymptotic standard error that makes its
// z equal (C-D)/sqrt(V), V = sum of f_ij (C_ij - D_ij)² - 4(C-D)²/N, with C_ij and D_ij
// the counts in the cells concordant and discordant with cell ij.
struct Monotonicity {
  double concordant = 0, discordant = 0;
  double gamma = 0, tauB = 0, somersCR = 0, somersRC = 0;
  double z = 0;
  PValue p;
};
Monotonicity MonotonicityMeasures(const Contingency& t);

// Goodman and Kruskal's predictive association. Predicting the column from the row:
//   lambda(c,r) = (sum_i max_j f_ij - max_j c_j) / (N - max_j c_j)
//   tau(c,r) = (sum_ij f_ij²/r_i - sum_j c_j²/N) / (N - sum_j c_j²/N)
// and the same the other way. The star forms take each row's (column's) proportions
// f_ij/r_i in place of the counts, so that every row weighs the same.
struct PredictiveAssociation {
  double lambdaCR = 0, tauCR = 0, lambdaRC = 0, tauRC = 0;
  double lambdaStarCR = 0, tauStarCR = 0, lambdaStarRC = 0, tauStarRC = 0;
};
PredictiveAssociation PredictiveMeasures(const Contingency& t);

// Uncertainty coefficients: UC(c,r) = (H(R) + H(C) - H(RC)) / H(C), UC(r,c) the same over
// H(R), with the entropies from the sums of f ln f over the cells and the margins.
struct Uncertainty {
  double columnFromRow = 0, rowFromColumn = 0;
};
Uncertainty UncertaintyCoefficients(const Contingency& t);

// Cohen's kappa of a square table whose rows and columns are the same categories:
//   p_o = sum f_ii / N,  p_e = sum r_i c_i / N²,  kappa = (p_o - p_e)/(1 - p_e)
// with the asymptotic standard error under no agreement beyond chance
//   se0 = sqrt(p_e + p_e² - sum p_i. p_.i (p_i. + p_.i)) / ((1 - p_e) sqrt(N)),
// z = kappa/se0 and its two-sided p.
struct Kappa {
  double observed = 0, chance = 0, kappa = 0, se0 = 0, z = 0;
  PValue p;
};
Kappa CohenKappa(const Contingency& t);

// Pearson's chi-square of the 2 by C table of rows a and b; columns empty in both rows add
// nothing.
double RowPairChiSquare(const Contingency& t, int a, int b);

// a/(a + b + c): the cases where both are present over those where at least one is; NaN
// when none is.
double JaccardCoefficient(int both, int firstOnly, int secondOnly);

}  // namespace tarvika
