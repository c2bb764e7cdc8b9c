#pragma once
// The moments of one variable in one pass over its values, and the statistics that are
// functions of them: variance, standard deviation, skewness, kurtosis and the normality
// test on skewness and kurtosis.

#include <cstdint>

#include "numeric/probability.h"

namespace tarvika {

// The running mean and central sums m2 = sum (x - mean)^2, m3, m4 of the values added so
// far, with their extremes. The sums are updated in extended precision, value by value, so
// that no second pass is needed. m3 and m4, which only skewness and kurtosis need, cost as
// much as the rest and are summed only when asked for; without them they stay 0.
struct MomentAccumulator {
  explicit MomentAccumulator(bool withHigherMoments = true) : higherMoments(withHigherMoments) {}
  void Add(double x);

  bool higherMoments = true;
  std::int32_t count = 0;
  double mean = 0;
  double m2 = 0;
  double m3 = 0;
  double m4 = 0;
  // The first value sets both; these only mark a variable without values.
  double minimum = 999999999;
  double maximum = -999999999;
};

// m2/(count - 1) from two values on, else 0.
double Variance(const MomentAccumulator& m);
// True below two values, and when the standard deviation is within rounding of zero for
// numbers of the data's size: at most 1e-12 times the largest absolute value. Constant data
// give m2 = 0 exactly; an absolute threshold would also take data measured in small units
// (SD 5e-5, variance 2.5e-9) for constant.
bool ZeroVariance(const MomentAccumulator& m);
// The root of the variance; 0 when ZeroVariance.
double StandardDeviation(const MomentAccumulator& m);
// SD/sqrt(n).
double StandardErrorOfMean(const MomentAccumulator& m);
// The adjusted skewness n/((n-1)(n-2)) m3/SD^3 and the excess kurtosis
// n(n+1)(n-1) m4/((n-2)(n-3) m2^2) - 3(n-1)^2/((n-2)(n-3)); 0 below three values and when
// ZeroVariance. The kurtosis of three values is 3 by convention.
double Skewness(const MomentAccumulator& m);
double Kurtosis(const MomentAccumulator& m);

// Skewness and kurtosis below 0.00045 in absolute value print as 0.
double ZeroBelowPrintThreshold(double x);

// The normality test on skewness and kurtosis: each (zeroed below the print threshold) over
// its large-sample standard error sqrt(6/n), the kurtosis halved, against the normal.
struct ShapeTest {
  double skewness = 0;
  double kurtosis = 0;
  PValue skewnessP;
  PValue kurtosisP;
};
ShapeTest NormalityByShape(const MomentAccumulator& m);

}  // namespace tarvika
