#include "stats/reliability.h"

#include <algorithm>
#include <cmath>

namespace tarvika {
namespace {

constexpr double kZero = 0.00000001;

struct Running {
  int n = 0;
  double mean = 0, ss = 0;
  void Add(double y) {
    const double old = mean;
    mean += (y - old) / ++n;
    ss += (y - old) * (y - mean);
  }
  double Variance() const { return ss > kZero && n > 1 ? ss / (n - 1) : 0; }
};

double Root(double variance) { return variance > kZero ? std::sqrt(variance) : 0; }

}  // namespace

Reliability ScaleReliability(const std::vector<std::vector<double>>& rows, const std::vector<bool>& negative, double K) {
  Reliability r;
  const int k = static_cast<int>(negative.size());
  r.n = static_cast<int>(rows.size());
  r.items.resize(k);
  if (rows.empty()) return r;
  std::vector<Running> item(k), remainder(k);
  Running scale;
  std::vector<double> reversed(k);
  r.itemsMin = r.itemsMax = rows.front().front();
  bool first = true;
  for (const auto& row : rows) {
    double s = 0;
    for (int i = 0; i < k; ++i) {
      reversed[i] = negative[i] ? K - row[i] : row[i];
      s += reversed[i];
      ItemStatistics& it = r.items[i];
      it.min = first ? row[i] : std::min(it.min, row[i]);
      it.max = first ? row[i] : std::max(it.max, row[i]);
      r.itemsMin = std::min(r.itemsMin, row[i]);
      r.itemsMax = std::max(r.itemsMax, row[i]);
    }
    r.scaleMin = first ? s : std::min(r.scaleMin, s);
    r.scaleMax = first ? s : std::max(r.scaleMax, s);
    first = false;
    scale.Add(s);
    for (int i = 0; i < k; ++i) {
      item[i].Add(reversed[i]);
      remainder[i].Add(s - reversed[i]);
    }
  }
  // The covariance of each item with the scale, from deviations about the final means.
  std::vector<double> products(k, 0);
  for (const auto& row : rows) {
    double s = 0;
    for (int i = 0; i < k; ++i) s += negative[i] ? K - row[i] : row[i];
    for (int i = 0; i < k; ++i) {
      const double y = negative[i] ? K - row[i] : row[i];
      products[i] += (y - item[i].mean) * (s - scale.mean);
    }
  }
  const int n = r.n;
  const double vT = scale.Variance(), sdT = Root(vT);
  r.scaleMean = scale.mean;
  r.scaleSd = sdT;
  double sumOfVariances = 0;
  for (int i = 0; i < k; ++i) {
    ItemStatistics& it = r.items[i];
    const double v = item[i].Variance(), sd = Root(v);
    sumOfVariances += v;
    it.mean = negative[i] ? K - item[i].mean : item[i].mean;
    it.sd = sd;
    const double cov = n > 1 ? products[i] / (n - 1) : 0;
    it.rIT = sd * sdT > kZero ? cov / (sd * sdT) : 0;
    const double d = v + vT - 2 * it.rIT * sdT * sd;
    it.rIR = d > kZero ? (it.rIT * sdT - sd) / std::sqrt(d) : 0;
    it.pIR = CorrelationP2(it.rIR, n - 2);
  }
  r.alpha = sdT > kZero ? (1 - sumOfVariances / vT) * k / (k - 1) : 0;
  if (k > 2) {
    for (int i = 0; i < k; ++i) {
      const double vR = remainder[i].Variance();
      if (vR > kZero) r.items[i].alphaIfOmitted = (1 - (sumOfVariances - item[i].Variance()) / vR) * (k - 1) / (k - 2);
    }
  }
  return r;
}

}  // namespace tarvika
