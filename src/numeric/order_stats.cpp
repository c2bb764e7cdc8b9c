#include "numeric/order_stats.h"

#include <cmath>
#include <utility>

namespace tarvika {
namespace {

// The exchange sort: partition around the middle key, then sort both parts. The larger part
// is handled by the loop, the smaller by recursion, which bounds the depth; the parts are
// disjoint, so the order in which they are sorted doesn't change the result.
template <typename Swap>
void ExchangeSort(std::span<double> keys, int lo, int hi, Swap swapCompanions) {
  while (lo < hi) {
    int i = lo, j = hi;
    double pivot = keys[(lo + hi) / 2];
    do {
      while (keys[i] < pivot) ++i;
      while (pivot < keys[j]) --j;
      if (i <= j) {
        std::swap(keys[i], keys[j]);
        swapCompanions(i, j);
        ++i;
        --j;
      }
    } while (i <= j);
    if (j - lo < hi - i) {
      if (lo < j) ExchangeSort(keys, lo, j, swapCompanions);
      lo = i;
    } else {
      if (i < hi) ExchangeSort(keys, i, hi, swapCompanions);
      hi = j;
    }
  }
}

}  // namespace

void SortValues(std::span<double> keys, int lo, int hi) {
  ExchangeSort(keys, lo, hi, [](int, int) {});
}

void SortValuesWithInts(std::span<double> keys, std::span<std::int32_t> ints, int lo, int hi) {
  ExchangeSort(keys, lo, hi, [&](int i, int j) { std::swap(ints[i], ints[j]); });
}

void SortValuesWithIntsAndBytes(std::span<double> keys, std::span<std::int32_t> ints, std::span<std::uint8_t> bytes,
                                int lo, int hi) {
  ExchangeSort(keys, lo, hi, [&](int i, int j) {
    std::swap(ints[i], ints[j]);
    std::swap(bytes[i], bytes[j]);
  });
}

void MidRanks(std::span<double> values, int n) {
  if (n <= 0) return;
  SortValues(values, 0, n - 1);
  int i = 0;
  while (i < n) {
    int t = 1;
    while (i + t < n && values[i + t] - values[i] < kZeroTolerance) ++t;
    double rank = (t + 1) / 2.0 + (i + 1) - 1;
    for (int k = i; k < i + t; ++k) values[k] = rank;
    i += t;
  }
}

int DistinctValueIndex::Find(double x) const {
  if (auto hit = exact_.find(x); hit != exact_.end()) return hit->second;
  int match = -1;
  auto it = index_.lower_bound(x - kZeroTolerance);
  for (; it != index_.end() && it->first < x + kZeroTolerance; ++it) {
    if (std::fabs(it->first - x) < kZeroTolerance && (match < 0 || it->second < match)) match = it->second;
  }
  return match;
}

ValueTable::ValueTable() : values_(kValueTableSize), freq_(kValueTableSize), marks_(kValueTableSize) {}

void ValueTable::Reset(double minimum, double maximum) {
  count_ = 0;
  minimum_ = minimum;
  binWidth_ = (maximum - minimum) / kMaxDistinctValues;
  index_.Clear();
}

void ValueTable::Add(double x) {
  if (Binned()) {
    ++freq_[BinOf(x)];
    return;
  }
  int match = index_.Find(x);
  if (match >= 0) {
    ++freq_[match];
    return;
  }
  values_[count_] = x;
  freq_[count_] = 1;
  index_.Insert(x, count_);
  ++count_;
  if (count_ == kValueTableSize) ConvertToBins();
}

int ValueTable::BinOf(double x) const {
  // Values at the maximum fall into the extra last bin; rounding can't push one outside.
  int bin = static_cast<int>((x - minimum_) / binWidth_);
  return bin < 0 ? 0 : bin > kMaxDistinctValues ? kMaxDistinctValues : bin;
}

void ValueTable::ConvertToBins() {
  std::vector<std::int32_t> bins(kValueTableSize, 0);
  for (int k = 0; k < count_; ++k) bins[BinOf(values_[k])] += freq_[k];
  freq_ = std::move(bins);
  // The entries stand for their bins from now on: their values are the bin centres.
  for (int k = 0; k < kValueTableSize; ++k) values_[k] = (k + 0.5) * binWidth_ + minimum_;
  index_.Clear();
}

void ValueTable::SortEntries() {
  if (!Binned() && count_ > 1) SortValuesWithIntsAndBytes(values_, freq_, marks_, 0, count_ - 1);
}

ValueTable::Position ValueTable::CumulativeIndex(double target) const {
  double c = 0;
  for (int k = 0; k < count_; ++k) {
    c += freq_[k];
    if (c >= target) return {k, c};
  }
  return {count_ - 1, c};
}

OrderStatistics ValueTable::OrderStats(int n, double minimum, double maximum) {
  OrderStatistics out;
  if (count_ == 0) return out;
  if (count_ == 1) {
    out.median = out.quartile1 = out.quartile3 = values_[0];
    return out;
  }
  if (!Binned()) {
    binWidth_ = (maximum - minimum) / (count_ - 1);
    SortEntries();
  }
  auto quantile = [&](double target, int* foundIndex) {
    Position p = CumulativeIndex(target);
    *foundIndex = p.index;
    int k = p.index;
    if (Binned()) {
      return ((k - 0.5) * binWidth_ + minimum) + (target - p.cumulative + freq_[k]) * binWidth_ / freq_[k];
    }
    if (std::fabs(p.cumulative - target) < kZeroTolerance && k + 1 < count_) return (values_[k] + values_[k + 1]) / 2;
    return values_[k];
  };
  int k = 0;
  out.median = quantile(n / 2.0, &k);
  if (k == 0) {
    out.median = out.quartile1 = minimum;
  } else {
    out.quartile1 = quantile(n * 0.25, &k);
  }
  out.quartile3 = quantile(n * 0.75, &k);
  return out;
}

int TrimmedCount(int n, double percent) { return static_cast<int>(std::round(0.01 * percent * n + kZeroTolerance)); }

TrimmedStatistics ValueTable::TrimmedStats(int n, double p) {
  TrimmedStatistics out;
  int g = TrimmedCount(n, p);
  int h = n - 2 * g;
  out.trimmedCount = g;
  out.keptCount = h;
  if (g == 0 || count_ == 0) return out;
  out.hasTrimming = true;
  SortEntries();
  int k = 0;
  double c = freq_[0];
  while (c <= g && k + 1 < count_) c += freq_[++k];
  int lowIndex = k;
  double low = values_[k], cLow = c;
  while (c < n - g && k + 1 < count_) c += freq_[++k];
  int t = k;
  double high = values_[t], cHigh = freq_[t] + n - c;
  out.trimDF = h - 1;
  if (std::fabs(low - high) < kZeroTolerance) {
    out.trimmedMean = high;
    out.winsorizedSD = 0;
    return out;
  }
  double s1 = 0;
  for (int e = lowIndex + 1; e < t; ++e) s1 += freq_[e] * values_[e];
  s1 += (cLow - g) * low + (cHigh - g) * high;
  out.trimmedMean = s1 / h;
  // The winsorized sample: cLow cases at low, cHigh at high, the entries between as they
  // are. Its variance is summed about its mean rather than as S2 - S1^2/n, which loses
  // the digits of data in small units far from zero; as low and high differ it is
  // positive, however small.
  const double winsorizedMean = (s1 + (low + high) * g) / n;
  auto square = [winsorizedMean](double v) { return (v - winsorizedMean) * (v - winsorizedMean); };
  double ss = cLow * square(low) + cHigh * square(high);
  for (int e = lowIndex + 1; e < t; ++e) ss += freq_[e] * square(values_[e]);
  out.winsorizedSD = std::sqrt(ss / (n - 1));
  return out;
}

SignedRanks ValueTable::SignedRankSums(double reference, int n) {
  SignedRanks out;
  double tolerance = kZeroTolerance;
  if (Binned()) {
    for (int k = 0; k < count_; ++k) values_[k] = (k + 0.5) * binWidth_ + minimum_;
    tolerance = 0.5 * binWidth_;
  }
  for (int k = 0; k < count_; ++k) {
    if (std::fabs(values_[k] - reference) >= tolerance) continue;
    n -= freq_[k];
    for (int e = k; e + 1 < count_; ++e) {
      values_[e] = values_[e + 1];
      freq_[e] = freq_[e + 1];
    }
    --count_;
    break;
  }
  out.n = n;
  double w = n * (n + 1) / 2.0;
  double smallest = 0, largest = 0;
  bool any = false;
  for (int k = 0; k < count_; ++k) {
    if (freq_[k] == 0) continue;
    if (!any || values_[k] < smallest) smallest = values_[k];
    if (!any || values_[k] > largest) largest = values_[k];
    any = true;
  }
  if (!any) return out;
  if (reference < smallest) {
    out.rankSumPlus = w;
    out.countPlus = n;
    return out;
  }
  if (reference > largest) return out;
  for (int k = 0; k < count_; ++k) {
    marks_[k] = values_[k] > reference ? 1 : 0;
    if (marks_[k]) out.countPlus += freq_[k];
    values_[k] = std::fabs(values_[k] - reference);
  }
  if (count_ > 1) SortValuesWithIntsAndBytes(values_, freq_, marks_, 0, count_ - 1);
  double c = 0;
  int k = 0;
  while (k < count_) {
    int end = k + 1;
    while (end < count_ && values_[end] - values_[k] < kZeroTolerance) ++end;
    double t = 0;
    for (int e = k; e < end; ++e) t += freq_[e];
    out.tieCorrection += (t * t - 1) * 0.020833333 * t;
    double rank = (2 * c + 1 + t) / 2;
    c += t;
    for (int e = k; e < end; ++e) out.rankSumPlus += freq_[e] * marks_[e] * rank;
    k = end;
  }
  return out;
}

}  // namespace tarvika
