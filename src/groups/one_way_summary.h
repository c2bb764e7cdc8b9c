#pragma once
// The tables across the interval dependents of one conditional group: the parametric
// comparisons of two groups (t and Welch, or the covariance analysis) and of more groups.

#include <vector>

#include "numeric/probability.h"

namespace tarvika {

class AnalysisRun;

// What a pass over one dependent leaves for the tables.
struct OneWaySummaryRow {
  int dependent = 0;
  int k = 0;                  // groups of at least two cases
  std::vector<int> nonEmpty;  // the groups with cases
  bool smallGroup = false;    // some group has at most two cases
  // The first two groups.
  double mean1 = 0, mean2 = 0, sd1 = 0, sd2 = 0, pooledSd = 0;
  PValue pLevene;
  double t = 0, tDf = 0;  // the t test, or the root of the covariance analysis's F
  PValue tP;
  double welchT = 0, welchDf = 0;
  PValue welchP;
  bool welchDefined = true;
  // More groups: the means (adjusted with a covariate) of every assigned group, NaN where
  // a group has fewer than two cases (three with a covariate).
  std::vector<double> means;
  double F = 0;
  PValue fP;
  double W = 0;
  PValue wP;
  double etaSquared = 0;
  // With a covariate.
  bool ancova = false;
  double r = 0;  // of the dependent and the covariate
};

// Writes the tables that the rows of the conditional group call for.
void WriteOneWaySummaries(AnalysisRun& run, const std::vector<OneWaySummaryRow>& rows);

}  // namespace tarvika
