#include "stats/moments.h"

#include <algorithm>
#include <cmath>

namespace tarvika {

void MomentAccumulator::Add(double x) {
  const long double n = ++count;
  const long double d = (x - static_cast<long double>(mean)) / n;
  const long double e = d * d;
  if (count == 1 || x > maximum) maximum = x;
  if (count == 1 || x < minimum) minimum = x;
  if (higherMoments) {
    // m4 and m3 first: each update reads the lower sums before they take this value.
    m4 = static_cast<double>(m4 - 4 * d * m3 + 6 * e * m2 + (n * n - 3 * n + 3) * e * e * n * (n - 1));
    m3 = static_cast<double>(m3 - 3 * d * m2 + d * e * n * (n - 1) * (n - 2));
  }
  m2 = static_cast<double>(m2 + n * e * (n - 1));
  mean = static_cast<double>(mean + d);
}

double Variance(const MomentAccumulator& m) {
  return m.count > 1 ? m.m2 / (m.count - 1) : 0;
}

bool ZeroVariance(const MomentAccumulator& m) {
  if (m.count < 2) return true;
  const double size = std::max(std::fabs(m.minimum), std::fabs(m.maximum));
  return std::sqrt(Variance(m)) <= 1e-12 * size;
}

double StandardDeviation(const MomentAccumulator& m) {
  return ZeroVariance(m) ? 0 : std::sqrt(Variance(m));
}

double StandardErrorOfMean(const MomentAccumulator& m) {
  return StandardDeviation(m) / std::sqrt(static_cast<double>(m.count));
}

double Skewness(const MomentAccumulator& m) {
  if (m.count < 3 || ZeroVariance(m)) return 0;
  const double v = Variance(m);
  const double n = m.count, s = std::sqrt(v);
  return n * (m.m3 / (n - 1) / (n - 2)) / (s * v);
}

double Kurtosis(const MomentAccumulator& m) {
  if (m.count < 3 || ZeroVariance(m)) return 0;
  const double v = Variance(m);
  const double n = m.count;
  if (n > 3) return (n * (n + 1) * m.m4 - 3 * (n - 1) * m.m2 * m.m2) / (v * v) / (n - 1) / (n - 2) / (n - 3);
  return 3;
}

double ZeroBelowPrintThreshold(double x) {
  return std::fabs(x) < 0.00045 ? 0 : x;
}

ShapeTest NormalityByShape(const MomentAccumulator& m) {
  ShapeTest out;
  const double root = std::sqrt(6 / static_cast<double>(m.count));
  out.skewness = ZeroBelowPrintThreshold(Skewness(m));
  out.kurtosis = ZeroBelowPrintThreshold(Kurtosis(m));
  out.skewnessP = NormalP2(out.skewness / root);
  out.kurtosisP = NormalP2(0.5 * out.kurtosis / root);
  return out;
}

}  // namespace tarvika
