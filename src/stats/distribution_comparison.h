#pragma once
// The point-wise comparison of the distribution functions of groups: the values binned into
// 101 equal cells of their common range, the cut points chosen from the pooled cumulative
// distribution, and at a cut the 2 x 2 table of group against "at most the cut" with its
// correct classification rate, phi, odds ratio and test, and the binned Kolmogorov-Smirnov
// statistic.

#include <string_view>
#include <vector>

#include "numeric/probability.h"

namespace tarvika {

struct CellTable {
  double rangeMin = 0;
  double cellWidth = 0;                 // a hundredth of the range
  std::vector<std::vector<int>> counts;  // per group, 101 cells; empty when cellWidth <= 0.0001
  std::vector<int> sizes;               // per group
};
CellTable BinIntoCells(const std::vector<std::vector<double>>& values);

// The cells chosen as cut points from the pooled counts of the 101 cells: those inside the
// middle region (epsmin left out at each end, and more than 3 cases on each side), all of
// them when they are at most maxCutpoints, else spread by halving the widest gaps of the
// cumulative share.
std::vector<int> SelectCutpoints(const std::vector<double>& pooledCounts, double epsmin, int maxCutpoints);

// The mark of a Bonferroni-adjusted p: the round levels plus 0.00044.
std::string_view ChiSquareCaseMark(double p);

// Group 1 against group 2 at a cut: a and b the cases at most the cut of the sizes n1, n2.
struct CutComparison {
  bool defined = false;  // both sides of the cut have cases
  double correctPercent = 0;
  double phi = 0;
  bool oddsDefined = false;
  double odds = 0;
  bool fisher = false;  // the smallest expected count is below 20
  double chiSquare = 0;
  PValue p;
};
CutComparison CompareAtCut(int a, int b, int n1, int n2);

// The cumulative counts of each group through each cell.
std::vector<std::vector<int>> CumulativeCounts(const CellTable& cells);

}  // namespace tarvika
