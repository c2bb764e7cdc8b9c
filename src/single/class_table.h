#pragma once
// The frequency table of modes 13 and 15: distinct values with their frequencies until
// there are as many as classes, then (for a continuous variable, and always in the
// normality test) classes of equal width with their midpoints.

#include <cstdint>
#include <span>
#include <vector>

#include "numeric/order_stats.h"

namespace tarvika {

// The number of classes for n valid values: trunc(2.1715 ln n), at most 15, times the
// multiplier, at least 6. A discrete variable gets up to 10000 entries (at most n); the
// normality test 100 for n up to 100, else (n-1) div 15 + 1, at most 2000.
int ClassCountFor(int n, int multiplier, bool discrete, bool normality);

class ClassTable {
 public:
  // classesWhenFull: the table turns into k classes when the k-th distinct value arrives.
  void Reset(int k, double minimum, double maximum, bool classesWhenFull);
  void Add(double x);

  bool Classes() const { return classes_; }
  int Count() const { return static_cast<int>(values_.size()); }
  double Value(int e) const { return values_[e]; }
  std::int32_t Frequency(int e) const { return freq_[e]; }
  std::span<const double> Values() const { return values_; }
  std::span<const std::int32_t> Frequencies() const { return freq_; }
  std::int32_t Other() const { return other_; }
  // Sorts a table of distinct values by value (entries of classes are in order already).
  void Sort();
  // The entry of a value in a sorted table of distinct values, -1 when there is none.
  int SortedEntry(double x) const;

 private:
  void ConvertToClasses();
  int ClassOf(double x) const;

  std::vector<double> values_;
  std::vector<std::int32_t> freq_;
  DistinctValueIndex index_;
  int k_ = 0;
  double minimum_ = 0;
  double width_ = 0;
  bool classesWhenFull_ = false;
  bool classes_ = false;
  std::int32_t other_ = 0;
};

}  // namespace tarvika
