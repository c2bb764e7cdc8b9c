#pragma once
// Multiple linear regression: each Y variable of the relationship dialog on all its X
// variables, per conditional group, on the listwise complete cases; all variables entered
// or stepwise selection by an F to enter and stay; the steps, the fit, the coefficients
// with their tests, the partial correlations of the variables left out, and the estimate
// and the standardized residual saved as new variables.

namespace tarvika {

class AnalysisRun;

void MultipleRegressionRun(AnalysisRun& run);

}  // namespace tarvika
