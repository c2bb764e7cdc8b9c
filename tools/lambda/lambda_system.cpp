#include "lambda/lambda_system.h"

#include <fmt/format.h>

#include <boost/math/special_functions/beta.hpp>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace tarvika::lambda {
namespace {

struct Moments {
  double a, b, c, d;  // the raw moments of u^l3 - (1-u)^l4
};

Moments RawMoments(double l3, double l4) {
  using boost::math::beta;
  Moments m;
  m.a = 1 / (1 + l3) - 1 / (1 + l4);
  m.b = 1 / (1 + 2 * l3) + 1 / (1 + 2 * l4) - 2 * beta(1 + l3, 1 + l4);
  m.c = 1 / (1 + 3 * l3) - 1 / (1 + 3 * l4) - 3 * beta(1 + 2 * l3, 1 + l4) + 3 * beta(1 + l3, 1 + 2 * l4);
  m.d = 1 / (1 + 4 * l3) + 1 / (1 + 4 * l4) - 4 * beta(1 + 3 * l3, 1 + l4) + 6 * beta(1 + 2 * l3, 1 + 2 * l4) -
        4 * beta(1 + l3, 1 + 3 * l4);
  return m;
}

bool Admissible(double l3, double l4) {
  return l3 > -0.249 && l4 > -0.249 && (l3 > 0) == (l4 > 0) && std::fabs(l3) > 1e-6 && std::fabs(l4) > 1e-6 &&
         l3 < 50 && l4 < 50;
}

double Distance(double l3, double l4, Shape target) {
  if (!Admissible(l3, l4)) return std::numeric_limits<double>::infinity();
  const Shape s = ShapeOf(l3, l4);
  return (s.skewness - target.skewness) * (s.skewness - target.skewness) +
         (s.kurtosis - target.kurtosis) * (s.kurtosis - target.kurtosis);
}

// Nelder-Mead on the squared distance of the shapes, from one start.
std::pair<std::array<double, 2>, double> Minimise(std::array<double, 2> start, Shape target) {
  std::array<std::array<double, 2>, 3> p = {start, start, start};
  p[1][0] += 0.1 * std::fabs(start[0]);
  p[2][1] += 0.1 * std::fabs(start[1]);
  std::array<double, 3> f;
  for (int i = 0; i < 3; ++i) f[i] = Distance(p[i][0], p[i][1], target);
  for (int iteration = 0; iteration < 2000; ++iteration) {
    // Order: best p[0], worst p[2].
    for (int i = 0; i < 3; ++i) {
      for (int j = i + 1; j < 3; ++j) {
        if (f[j] < f[i]) {
          std::swap(f[i], f[j]);
          std::swap(p[i], p[j]);
        }
      }
    }
    const double spread = std::fabs(p[2][0] - p[0][0]) + std::fabs(p[2][1] - p[0][1]);
    if (f[0] < 1e-24 || spread < 1e-13 * (std::fabs(p[0][0]) + std::fabs(p[0][1]))) break;
    const std::array<double, 2> centre = {(p[0][0] + p[1][0]) / 2, (p[0][1] + p[1][1]) / 2};
    auto along = [&](double t) {
      return std::array<double, 2>{centre[0] + t * (p[2][0] - centre[0]), centre[1] + t * (p[2][1] - centre[1])};
    };
    const auto reflected = along(-1);
    const double fr = Distance(reflected[0], reflected[1], target);
    if (fr < f[0]) {
      const auto expanded = along(-2);
      const double fe = Distance(expanded[0], expanded[1], target);
      if (fe < fr) {
        p[2] = expanded;
        f[2] = fe;
      } else {
        p[2] = reflected;
        f[2] = fr;
      }
    } else if (fr < f[1]) {
      p[2] = reflected;
      f[2] = fr;
    } else {
      const auto contracted = along(fr < f[2] ? -0.5 : 0.5);
      const double fc = Distance(contracted[0], contracted[1], target);
      if (fc < std::min(fr, f[2])) {
        p[2] = contracted;
        f[2] = fc;
      } else {
        for (int i = 1; i < 3; ++i) {
          p[i] = {(p[i][0] + p[0][0]) / 2, (p[i][1] + p[0][1]) / 2};
          f[i] = Distance(p[i][0], p[i][1], target);
        }
      }
    }
  }
  int best = 0;
  for (int i = 1; i < 3; ++i) {
    if (f[i] < f[best]) best = i;
  }
  return {p[best], f[best]};
}

}  // namespace

Shape ShapeOf(double l3, double l4) {
  const Moments m = RawMoments(l3, l4);
  const double variance = m.b - m.a * m.a;
  Shape s;
  // lambda2 has the sign of lambda3, so that Q rises; dividing by a negative lambda2 turns
  // the skewness of u^l3 - (1-u)^l4 over.
  s.skewness = (l3 > 0 ? 1 : -1) * (m.c - 3 * m.a * m.b + 2 * m.a * m.a * m.a) / std::pow(variance, 1.5);
  s.kurtosis = (m.d - 4 * m.a * m.c + 6 * m.a * m.a * m.b - 3 * m.a * m.a * m.a * m.a) / (variance * variance);
  return s;
}

std::optional<std::array<double, 4>> SolveLambdas(Shape target) {
  constexpr double kStarts[] = {0.01, 0.05, 0.2, 1, 4};
  std::array<double, 2> best{};
  double bestDistance = std::numeric_limits<double>::infinity();
  for (double sign : {1.0, -1.0}) {
    for (double a : kStarts) {
      for (double b : kStarts) {
        if (sign < 0 && (a > 0.2 || b > 0.2)) continue;  // moments need lambdas above -1/4
        auto [point, distance] = Minimise({sign * a, sign * b}, target);
        if (distance < bestDistance - 1e-24) {
          best = point;
          bestDistance = distance;
        }
      }
    }
  }
  if (!(bestDistance < 1e-18)) return std::nullopt;
  const Moments m = RawMoments(best[0], best[1]);
  const double l2 = (best[0] > 0 ? 1 : -1) * std::sqrt(m.b - m.a * m.a);
  return std::array<double, 4>{-m.a / l2, l2, best[0], best[1]};
}

std::array<Shape, 72> TableShapes() {
  std::array<Shape, 72> shapes;
  for (int i = 0; i < 9; ++i) {
    const double skewness = 0.25 * i;
    // The lowest kurtosis the distribution reaches at this skewness, up to 0.1.
    double lowest = 1.8 + 0.1 * std::ceil(10 * 0.9 * skewness * skewness);
    while (!SolveLambdas({skewness, lowest})) lowest += 0.1;
    for (int j = 0; j < 8; ++j) {
      const double kurtosis = lowest + (15.8 - lowest) * std::pow(j / 7.0, 2);
      shapes[8 * i + j] = {skewness, std::round(kurtosis * 100) / 100};
    }
  }
  return shapes;
}

std::string LambdaTableLine(Shape shape) {
  const auto lambdas = SolveLambdas(shape);
  if (!lambdas) throw std::runtime_error(fmt::format("no lambdas for {} {}", shape.skewness, shape.kurtosis));
  std::string line = fmt::format("{:5.2f} {:6.2f}", shape.skewness, shape.kurtosis);
  for (double l : *lambdas) line += fmt::format(" {:12.8f}", std::fabs(l) < 5e-9 ? 0.0 : l);  // no "-0.00000000"
  return line + '\n';
}

std::string LambdaTableText() {
  std::string text;
  for (const Shape& shape : TableShapes()) text += LambdaTableLine(shape);
  return text;
}

}  // namespace tarvika::lambda
