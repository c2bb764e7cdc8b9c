#pragma once
// The studentized range distribution: the range of k independent standard normal values
// divided by an independent sqrt(chi-square(df)/df). Used to write the Tukey table.

namespace tarvika::stattab {

// P(range of k standard normals <= w).
double NormalRangeCdf(double w, int k);

// P(Q <= q) for k means and df error degrees of freedom (df >= 1).
double StudentizedRangeCdf(double q, int k, int df);

// The q with StudentizedRangeCdf(q, k, df) = 1 - alpha, to about 1e-9 relative.
double StudentizedRangeQuantile(double alpha, int k, int df);

}  // namespace tarvika::stattab
