#pragma once
// The tables across the ordinal dependents of one conditional group: the rank comparisons of
// two groups and the stochastic comparisons of more groups.

#include <vector>

#include "numeric/probability.h"

namespace tarvika {

class AnalysisRun;

struct RankSummaryRow {
  int dependent = 0;
  int k = 0;                  // groups of at least two cases
  std::vector<int> nonEmpty;  // the groups with cases
  bool smallGroup = false;    // some group has at most two cases
  std::vector<double> rankMeans;  // per assigned group, NaN below two cases
  PValue pLevene;
  // Two groups.
  double aEstimate = 0, somersD2 = 0;
  PValue pMannWhitney;
  bool fpDefined = false, bmDefined = false;
  double fp = 0, fpDf = 0, bm = 0, bmDf = 0;
  PValue fpP, bmP;
  // More groups.
  double H = 0;
  PValue hP;
  bool welchDefined = false;
  double rW3 = 0;
  PValue rW3P;
  double kulle = 0;
  PValue kulleP;
  double rankEtaSquared = 0;
};

void WriteRankSummaries(AnalysisRun& run, const std::vector<RankSummaryRow>& rows);

}  // namespace tarvika
