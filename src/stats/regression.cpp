#include "stats/regression.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "numeric/matrix.h"

namespace tarvika {
namespace {

constexpr double kZero = 0.00000001;
constexpr double kTolerance = 0.0001;  // the least tolerance of a variable that is swept in
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargestF = 1e8;  // an entry that explains all that is left

// The sweep state of one fit: the correlation matrix of the active independents with the
// dependent last, and which of them are in the model (0 out, 1 in, 2 out of consideration).
class Selection {
 public:
  Selection(MultipleRegression& fit, const std::vector<int>& active, SweepMatrix a)
      : fit_(fit), active_(active), a_(std::move(a)), dep_(static_cast<int>(active.size())), state_(active.size(), 0) {}

  // The partial correlations of the variables out of the model with the dependent.
  void RecordPartials();
  void Forced();
  void Stepwise(double enterF);
  void Finish();

 private:
  double D(int i) const { return a_(i, i); }
  double Partial(int i) const {
    const double d = std::fabs(D(i)) * D(dep_);
    return d > kZero ? a_(dep_, i) / std::sqrt(d) : 0;
  }
  // The F of an entry that leaves `rest` of the dependent's variance unexplained after
  // explaining `gain` more, with the model one variable larger.
  double EntryF(double gain, double rest) const {
    const double df = fit_.n - fit_.m - 2;
    if (gain < kZero) return 0;
    if (rest <= kZero) return kLargestF;
    return df * gain / rest;
  }
  bool Significant(double f) const {
    return StudentP2(std::sqrt(f), fit_.n - static_cast<int>(active_.size())).p <= 0.1;
  }
  void Enter(int i, double f);
  void Remove(int i, double f);
  void Record(int i, bool entered, double partial, double f);

  MultipleRegression& fit_;
  const std::vector<int>& active_;
  SweepMatrix a_;
  int dep_;
  std::vector<int> state_;
  std::vector<int> order_;  // the variables in the model, in the order of entry
};

void Selection::Record(int i, bool entered, double partial, double f) {
  MultipleRegression& r = fit_;
  r.df = r.n - r.m - 1;
  r.rsq = 1 - D(dep_);
  r.adjustedRsq = r.df > 0 ? std::max(0.0, r.rsq - (1 - r.rsq) * r.m / r.df) : 0;
  r.errorVariance = r.df > 0 ? r.varDep * D(dep_) * r.n / r.df : 0;
  r.se = r.errorVariance > kZero ? std::sqrt(r.errorVariance) : 0;
  const int df = entered ? r.df : r.df - 1;
  r.steps.push_back({.variable = active_[i], .entered = entered, .r = std::sqrt(std::max(0.0, r.rsq)), .rsq = r.rsq,
                     .adjustedRsq = r.adjustedRsq, .errorVariance = r.errorVariance, .se = r.se, .partial = partial,
                     .f = f, .p = df > 0 ? FProb(f, 1, df) : Marked(1)});
  RecordPartials();
}

void Selection::RecordPartials() {
  std::vector<double> row(fit_.mean.size() - 1, kNone);
  for (int j = 0; j < dep_; ++j) {
    if (state_[j] == 0) row[active_[j]] = Partial(j);
  }
  fit_.partials.push_back(std::move(row));
}

void Selection::Enter(int i, double f) {
  const double partial = Partial(i);
  a_.Pivot(i);
  state_[i] = 1;
  order_.push_back(i);
  ++fit_.m;
  Record(i, true, partial, f);
}

void Selection::Remove(int i, double f) {
  a_.Pivot(i);
  state_[i] = 2;
  std::erase(order_, i);
  --fit_.m;
  Record(i, false, Partial(i), f);
}

void Selection::Forced() {
  for (;;) {
    int best = -1;
    for (int i = 0; i < dep_; ++i) {
      if (state_[i] == 0 && (best < 0 || std::fabs(a_(dep_, i)) > std::fabs(a_(dep_, best)))) best = i;
    }
    if (best < 0) return;
    if (D(best) <= kTolerance) {
      state_[best] = 2;
      fit_.lowTolerance.push_back(active_[best]);
      continue;
    }
    const double gain = a_(dep_, best) * a_(best, dep_) / D(best);
    Enter(best, EntryF(gain, D(dep_) - gain));
    if (D(dep_) < kTolerance) return;
  }
}

void Selection::Stepwise(double enterF) {
  for (;;) {
    if (fit_.m > 0) {
      int worst = -1;
      double least = 0;
      for (int i : order_) {
        const double loss = std::fabs(D(i)) > kTolerance ? a_(dep_, i) * a_(i, dep_) / std::fabs(D(i)) : 0;
        if (worst < 0 || loss < least) {
          worst = i;
          least = loss;
        }
      }
      bool remove = least < kZero;
      double f = 0;
      if (!remove && D(dep_) > kZero) {
        f = (fit_.n - fit_.m - 1) * least / D(dep_);
        remove = f <= enterF || !Significant(f);
      }
      if (remove) {
        Remove(worst, f);
        continue;
      }
    }
    int best = -1;
    double bestGain = 0;
    for (int i = 0; i < dep_; ++i) {
      if (state_[i] != 0 || D(i) <= kTolerance) continue;
      const double gain = a_(dep_, i) * a_(i, dep_) / D(i);
      if (best < 0 || gain > bestGain) {
        best = i;
        bestGain = gain;
      }
    }
    if (best < 0) return;
    const double f = EntryF(bestGain, D(dep_) - bestGain);
    if (f <= enterF || !Significant(f)) return;
    Enter(best, f);
  }
}

void Selection::Finish() {
  MultipleRegression& r = fit_;
  const int dep = static_cast<int>(r.mean.size()) - 1;
  r.df = r.n - r.m - 1;
  r.totalSS = r.n * r.varDep;
  r.residualSS = r.n * D(dep_) * r.varDep;
  if (r.m > 0 && r.df > 0) {
    const double rest = std::max(D(dep_), 0.0);
    r.f = rest > kZero ? (r.rsq / r.m) / (rest / r.df) : kLargestF;
    r.p = FProb(r.f, r.m, r.df);
  }
  r.intercept = r.mean[dep];
  for (int i : order_) {
    const int v = active_[i];
    RegressionCoefficient c{.variable = v, .beta = a_(dep_, i)};
    const double var = r.df > 0 ? std::fabs(D(i)) * std::max(D(dep_), 0.0) / r.df : 0;
    c.seBeta = std::sqrt(var);
    c.t = c.seBeta > 0 ? c.beta / c.seBeta : 0;
    c.p = c.seBeta > 0 ? StudentP2(c.t, r.df) : Marked(0);
    c.b = c.beta * r.sd[dep] / r.sd[v];
    c.seB = c.seBeta * r.sd[dep] / r.sd[v];
    r.intercept -= c.b * r.mean[v];
    r.coefficients.push_back(c);
  }
}

}  // namespace

MultipleRegression FitRegression(const std::vector<std::vector<double>>& rows, bool forced, double enterF) {
  MultipleRegression fit;
  fit.n = static_cast<int>(rows.size());
  if (rows.empty()) {
    fit.failure = RegressionFailure::TooFewCases;
    return fit;
  }
  const int cols = static_cast<int>(rows.front().size()), dep = cols - 1;
  fit.mean.assign(cols, 0);
  fit.sd.assign(cols, 0);
  fit.min = rows.front();
  fit.max = rows.front();
  std::vector<double> ss(cols, 0);
  int k = 0;
  for (const auto& row : rows) {
    ++k;
    for (int j = 0; j < cols; ++j) {
      const double x = row[j], old = fit.mean[j];
      fit.mean[j] += (x - old) / k;
      ss[j] += (x - old) * (x - fit.mean[j]);
      fit.min[j] = std::min(fit.min[j], x);
      fit.max[j] = std::max(fit.max[j], x);
    }
  }
  const int n = fit.n;
  for (int j = 0; j < cols; ++j) {
    const double var = ss[j] / n;
    fit.sd[j] = var > kZero ? std::sqrt(var) : 0;
  }
  fit.varDep = fit.sd[dep] * fit.sd[dep];
  if (n < dep + 2) {
    fit.failure = RegressionFailure::TooFewCases;
    return fit;
  }
  if (fit.sd[dep] == 0) {
    fit.failure = RegressionFailure::ConstantDependent;
    return fit;
  }
  std::vector<int> active;
  for (int j = 0; j < dep; ++j) {
    if (fit.sd[j] == 0) {
      fit.constant.push_back(j);
    } else {
      active.push_back(j);
    }
  }
  if (active.empty()) {
    fit.failure = RegressionFailure::ConstantIndependents;
    return fit;
  }
  active.push_back(dep);
  const int q = static_cast<int>(active.size());
  SweepMatrix a(q);
  for (const auto& row : rows) {
    for (int i = 0; i < q; ++i) {
      const double di = row[active[i]] - fit.mean[active[i]];
      for (int j = i; j < q; ++j) a(i, j) += di * (row[active[j]] - fit.mean[active[j]]) / n;
    }
  }
  for (int i = 0; i < q; ++i) {
    for (int j = i + 1; j < q; ++j) {
      a(i, j) /= fit.sd[active[i]] * fit.sd[active[j]];
      a(j, i) = a(i, j);
    }
    a(i, i) = 1;
  }
  active.pop_back();
  Selection selection(fit, active, std::move(a));
  selection.RecordPartials();
  if (forced) {
    selection.Forced();
  } else {
    selection.Stepwise(enterF);
  }
  selection.Finish();
  return fit;
}

double RegressionEstimate(const MultipleRegression& fit, const std::vector<double>& row) {
  double y = fit.intercept;
  for (const RegressionCoefficient& c : fit.coefficients) y += c.b * row[c.variable];
  return y;
}

}  // namespace tarvika
