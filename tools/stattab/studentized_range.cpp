#include "stattab/studentized_range.h"

#include <boost/math/quadrature/gauss.hpp>
#include <boost/math/quadrature/gauss_kronrod.hpp>
#include <boost/math/special_functions/gamma.hpp>
#include <boost/math/tools/roots.hpp>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace tarvika::stattab {

namespace {

using Gauss = boost::math::quadrature::gauss<double, 10>;

double Phi(double z) {
  return 0.5 * std::erfc(-z / std::sqrt(2.0));
}

constexpr double kLn2Pi = 1.8378770664093454836;

// The nodes of the integral over the largest value z, on [-9, 9] (beyond it the normal
// density is below 1e-17), with weight * phi(z) and Phi(z), computed once. The integrand
// is smooth, and a 10-point Gauss-Legendre rule on panels of width 2 integrates it to far
// below the 1e-9 the tables need.
struct RangeNode {
  double z, weightedDensity, phi;
};

const std::vector<RangeNode>& RangeNodes() {
  static const std::vector<RangeNode> nodes = [] {
    std::vector<RangeNode> result;
    const auto& x = Gauss::abscissa();
    const auto& w = Gauss::weights();
    constexpr double kWidth = 2;
    for (int panel = 0; panel < 9; ++panel) {
      const double middle = -9 + (panel + 0.5) * kWidth;
      for (size_t i = 0; i < x.size(); ++i) {
        for (int side : {-1, 1}) {
          if (side == -1 && x[i] == 0) continue;  // the centre node is stored once
          const double z = middle + side * 0.5 * kWidth * x[i];
          result.push_back({z, 0.5 * kWidth * w[i] * std::exp(-0.5 * z * z - 0.5 * kLn2Pi), Phi(z)});
        }
      }
    }
    return result;
  }();
  return nodes;
}

}  // namespace

double NormalRangeCdf(double w, int k) {
  if (w <= 0) return 0;
  // k * integral of phi(z) * (Phi(z) - Phi(z - w))^(k-1): the largest value is z and the
  // other k - 1 values lie within w below it.
  double sum = 0;
  for (const RangeNode& node : RangeNodes()) {
    sum += node.weightedDensity * std::pow(node.phi - Phi(node.z - w), k - 1);
  }
  return std::min(1.0, k * sum);
}

double StudentizedRangeCdf(double q, int k, int df) {
  if (q <= 0) return 0;
  // The range cdf at q*s, averaged over s = sqrt(chi-square(df)/df), whose density is
  // proportional to s^(df-1) exp(-df s^2 / 2). The limits hold all but 1e-15 of it.
  const double nu = df;
  const double logNorm =
      0.5 * nu * std::log(nu) - boost::math::lgamma(0.5 * nu) - (0.5 * nu - 1) * std::log(2.0);
  const double low = std::sqrt(boost::math::gamma_p_inv(0.5 * nu, 1e-15) * 2 / nu);
  const double high = std::sqrt(boost::math::gamma_q_inv(0.5 * nu, 1e-15) * 2 / nu);
  auto integrand = [&](double s) {
    const double density = std::exp(logNorm + (nu - 1) * std::log(s) - 0.5 * nu * s * s);
    return density * NormalRangeCdf(q * s, k);
  };
  // The range cdf rises steeply in s when q is large, so this integral adapts its panels.
  return boost::math::quadrature::gauss_kronrod<double, 15>::integrate(integrand, low, high, 15, 1e-10);
}

double StudentizedRangeQuantile(double alpha, int k, int df) {
  const double target = 1 - alpha;
  auto f = [&](double q) { return StudentizedRangeCdf(q, k, df) - target; };
  double low = 0.5, high = 8;
  while (f(high) < 0) high *= 2;
  std::uintmax_t iterations = 200;
  const auto root = boost::math::tools::toms748_solve(
      f, low, high, boost::math::tools::eps_tolerance<double>(32), iterations);
  return 0.5 * (root.first + root.second);
}

}  // namespace tarvika::stattab
