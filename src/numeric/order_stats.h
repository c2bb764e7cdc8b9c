#pragma once
// Order statistics of one variable without keeping its values: a table of distinct values
// with frequencies that turns into equal-width bins when there are too many, and the
// median, quartiles, trimmed and winsorized statistics and signed ranks computed on it.
// Also the exchange sort whose order among equal keys the analyses rely on, and mid-ranks.

#include <cstdint>
#include <map>
#include <span>
#include <unordered_map>
#include <vector>

#include "numeric/tolerance.h"

namespace tarvika {

inline constexpr int kMaxDistinctValues = 20000;
inline constexpr int kValueTableSize = kMaxDistinctValues + 1;

// In-place ascending sorts of keys[lo..hi]; the companions move with their keys. Equal keys
// end up in the order this exchange sort gives them.
void SortValues(std::span<double> keys, int lo, int hi);
void SortValuesWithInts(std::span<double> keys, std::span<std::int32_t> ints, int lo, int hi);
void SortValuesWithIntsAndBytes(std::span<double> keys, std::span<std::int32_t> ints, std::span<std::uint8_t> bytes,
                                int lo, int hi);

// Sorts values[0..n-1] and replaces each by its mid-rank: a run of t equal values starting
// at position i (counted from 1) gets (t + 1)/2 + i - 1.
void MidRanks(std::span<double> values, int n);

// The number g of values cut (or winsorized) at each end of n values for a trimming
// percentage: round(n * percent / 100).
int TrimmedCount(int n, double percent);

struct OrderStatistics {
  double median = 0;
  double quartile1 = 0;
  double quartile3 = 0;
};

struct TrimmedStatistics {
  double trimmedMean = 0;
  double winsorizedSD = 0;
  int trimmedCount = 0;  // g, cut at each end
  int keptCount = 0;     // h = n - 2g
  int trimDF = 0;        // h - 1
  bool hasTrimming = false;
};

struct SignedRanks {
  double rankSumPlus = 0;
  double countPlus = 0;
  double tieCorrection = 0;
  int n = 0;  // the valid cases less those equal to the reference
};

// Finds a value among the distinct entries of a table: the entries are at least the
// tolerance apart, so at most two lie within it of any value, and the earlier entry is the
// match, as a search from the first entry would find. A lookup is logarithmic; a value
// equal to an entry (the usual case: the same text gives the same number) is found by a
// hash first, and that entry is the only one within the tolerance.
class DistinctValueIndex {
 public:
  void Clear() {
    index_.clear();
    exact_.clear();
  }
  // The entry within the tolerance of x, or -1.
  int Find(double x) const;
  void Insert(double x, int entry) {
    index_.emplace(x, entry);
    exact_.emplace(x, entry);
  }

 private:
  std::multimap<double, int> index_;
  std::unordered_map<double, int> exact_;
};

class ValueTable {
 public:
  ValueTable();

  // Empties the table for a variable whose values lie from minimum to maximum.
  void Reset(double minimum, double maximum);
  void Add(double x);

  bool Binned() const { return count_ > kMaxDistinctValues; }
  int Count() const { return count_; }
  double Value(int k) const { return values_[k]; }
  std::int32_t Frequency(int k) const { return freq_[k]; }
  double BinWidth() const { return binWidth_; }

  struct Position {
    int index = -1;
    double cumulative = 0;
  };
  // The first entry whose cumulative frequency is at least target.
  Position CumulativeIndex(double target) const;

  // After the table is filled, for n valid values. Sorts an unbinned table.
  OrderStatistics OrderStats(int n, double minimum, double maximum);
  // p is the trimming percentage, 0 to 25.
  TrimmedStatistics TrimmedStats(int n, double p);
  // Wilcoxon signed-rank sums around the reference; changes the table.
  SignedRanks SignedRankSums(double reference, int n);

 private:
  void SortEntries();
  void ConvertToBins();
  int BinOf(double x) const;

  std::vector<double> values_;
  std::vector<std::int32_t> freq_;
  std::vector<std::uint8_t> marks_;
  int count_ = 0;
  double minimum_ = 0;
  double binWidth_ = 0;
  DistinctValueIndex index_;  // not a linear search

};

}  // namespace tarvika
