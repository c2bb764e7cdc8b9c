#include "single/class_table.h"

#include <algorithm>
#include <cmath>

namespace tarvika {

int ClassCountFor(int n, int multiplier, bool discrete, bool normality) {
  if (normality) return n <= 100 ? 100 : std::min(2000, (n - 1) / 15 + 1);
  if (discrete) return std::min(10000, n);
  int k = static_cast<int>(2.1715 * std::log(static_cast<double>(n)));
  k = std::min(k, 15);
  k = k * multiplier;
  return std::max(k, 6);
}

void ClassTable::Reset(int k, double minimum, double maximum, bool classesWhenFull) {
  values_.clear();
  freq_.clear();
  index_.Clear();
  k_ = k;
  minimum_ = minimum;
  width_ = (maximum - minimum) / k;
  classesWhenFull_ = classesWhenFull;
  classes_ = false;
  other_ = 0;
}

void ClassTable::Add(double x) {
  if (classes_) {
    ++freq_[ClassOf(x)];
    return;
  }
  int e = index_.Find(x);
  if (e >= 0) {
    ++freq_[e];
    return;
  }
  if (Count() >= k_) {
    ++other_;
    return;
  }
  index_.Insert(x, Count());
  values_.push_back(x);
  freq_.push_back(1);
  if (Count() == k_ && classesWhenFull_) ConvertToClasses();
}

int ClassTable::ClassOf(double x) const {
  // Class c (from 0) reaches from minimum + c*width up to the next; the maximum belongs to
  // the last class. The values seen before the table turned into classes are placed by the
  // same rule as the cases after them, so that a value never counts in two classes. A value
  // on an edge, which the division can leave a hair below a whole number (16.9 in classes
  // of 0.975 from 13: 3.9999999999999982), belongs to the class above.
  constexpr double kEdgeTolerance = 1e-9;
  const int c = static_cast<int>((x - minimum_) / width_ + kEdgeTolerance);
  return std::clamp(c, 0, k_ - 1);
}

void ClassTable::ConvertToClasses() {
  std::vector<std::int32_t> classes(k_, 0);
  for (int e = 0; e < Count(); ++e) classes[ClassOf(values_[e])] += freq_[e];
  freq_ = std::move(classes);
  values_.resize(k_);
  for (int i = 1; i <= k_; ++i) values_[i - 1] = (i - 0.5) * width_ + minimum_;
  index_.Clear();
  classes_ = true;
}

void ClassTable::Sort() {
  if (!classes_ && Count() > 1) SortValuesWithInts(values_, freq_, 0, Count() - 1);
}

int ClassTable::SortedEntry(double x) const {
  auto it = std::lower_bound(values_.begin(), values_.end(), x - kZeroTolerance);
  if (it == values_.end() || std::fabs(*it - x) >= kZeroTolerance) return -1;
  return static_cast<int>(it - values_.begin());
}

}  // namespace tarvika
