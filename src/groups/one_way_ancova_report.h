#pragma once
// The report of the analysis of covariance of one dependent: the adjusted means, the
// within-group correlations, the test of the adjusted means and its effect sizes.

#include "stats/ancova.h"

namespace tarvika {

class AnalysisRun;

// partialR: the correlation of the dependent and the covariate after the group code.
void WriteAncovaReport(AnalysisRun& run, int dependent, int covariate, const AncovaResult& a,
                       double partialR);

}  // namespace tarvika
