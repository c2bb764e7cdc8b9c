#pragma once
// Multiple linear regression of one dependent variable on V independents, on the complete
// cases, by sweeping their correlation matrix: all variables entered (largest remaining
// partial covariance with the dependent first), or stepwise selection with an F to enter
// and to stay.

#include <vector>

#include "numeric/probability.h"

namespace tarvika {

struct RegressionStep {
  int variable = 0;  // index among the independents
  bool entered = true;
  double r = 0, rsq = 0, adjustedRsq = 0, errorVariance = 0, se = 0;
  double partial = 0;  // of the variable with the dependent, given the model before the step
  double f = 0;
  PValue p;  // of f on 1 and the residual df of the larger of the two models
};

struct RegressionCoefficient {
  int variable = 0;
  double b = 0, seB = 0, beta = 0, seBeta = 0, t = 0;
  PValue p;
};

enum class RegressionFailure { None, TooFewCases, ConstantDependent, ConstantIndependents };

struct MultipleRegression {
  RegressionFailure failure = RegressionFailure::None;
  int n = 0;
  // Per column (the independents, the dependent last): of the complete cases, SD with N.
  std::vector<double> mean, sd, min, max;
  std::vector<int> constant;  // independents of zero variance, left out
  std::vector<int> lowTolerance;  // independents not swept in: collinear with those in
  std::vector<RegressionStep> steps;
  // After each step, the partial correlation of every independent out of the model with the
  // dependent (NaN: in the model or left out); row 0 before the first step.
  std::vector<std::vector<double>> partials;
  int m = 0, df = 0;  // variables in the model; N - m - 1
  double rsq = 0, adjustedRsq = 0;
  double varDep = 0, totalSS = 0, residualSS = 0, errorVariance = 0, se = 0;
  double f = 0;
  PValue p;
  double intercept = 0;
  std::vector<RegressionCoefficient> coefficients;  // in the order of entry
};

// rows: one per complete case, the V independents then the dependent.
MultipleRegression FitRegression(const std::vector<std::vector<double>>& rows, bool forced, double enterF);

// The estimate of the dependent from one row of independents (the dependent, if present,
// is ignored).
double RegressionEstimate(const MultipleRegression& fit, const std::vector<double>& row);

}  // namespace tarvika
