#include "pattern/agglomeration.h"

#include <sys/mman.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace tarvika {

template <typename T>
void TriangleStore<T>::Allocate(std::size_t count) {
  constexpr std::size_t kPage = 2 << 20;
  const std::size_t bytes = std::max<std::size_t>((count * sizeof(T) + kPage - 1) / kPage * kPage, kPage);
  data_ = static_cast<T*>(std::aligned_alloc(kPage, bytes));
  if (data_ == nullptr) throw std::bad_alloc();
  madvise(data_, bytes, MADV_HUGEPAGE);
}
template class TriangleStore<double>;
template class TriangleStore<float>;

namespace {

constexpr double kFar = std::numeric_limits<double>::max();

// The lower triangle by rows: the distances of b to all earlier patterns lie side by side.
std::size_t Slot(int a, int b) { return static_cast<std::size_t>(b) * (b - 1) / 2 + a; }

}  // namespace

Agglomeration::Agglomeration(const PatternSet& set, LinkageMethod method, DistanceType type, double beta,
                             bool singlePrecision, const std::function<void(int, int)>& progress)
    : set_(set), method_(method), type_(type), beta_(beta), single_(singlePrecision), n_(set.D) {
  const std::size_t slots = static_cast<std::size_t>(n_) * (n_ - 1) / 2;
  if (single_) {
    d32_.Allocate(slots);
  } else {
    d64_.Allocate(slots);
  }
  // The distances with their mean over the pairs of cases first; then, in a second pass
  // over the stored values, the squares around the mean and the scaling of the method.
  const double pairs = 0.5 * set.N * (set.N - 1.0);  // of cases
  double sum = 0;
  for (int b = 1; b < n_; ++b) {
    if (progress && b % 500 == 0) progress(b, n_);
    double row = 0;
    for (int a = 0; a < b; ++a) {
      const double d = type == DistanceType::Ased ? Ased(set.Pattern(a), set.Pattern(b), set.weight.data(), set.V)
                                                  : Distance(set.Pattern(a), set.Pattern(b), set.weight, type);
      row += set.multiplicity[a] * d;
      SetD(a, b, d);
    }
    sum += row * set.multiplicity[b];
  }
  summary_.mean = pairs > 0 ? sum / pairs : 0;
  const double factor = method == LinkageMethod::Median ? set.V : 1.0;
  double ss = 0;
  for (int b = 0; b < n_; ++b) {
    const double nb = set.multiplicity[b];
    ss += 0.5 * nb * (nb - 1) * summary_.mean * summary_.mean;
    double row = 0;
    for (int a = 0; a < b; ++a) {
      // In single precision the summary takes the distance afresh.
      const double d = single_ ? Distance(set.Pattern(a), set.Pattern(b), set.weight, type) : D(a, b);
      row += set.multiplicity[a] * (d - summary_.mean) * (d - summary_.mean);
      const double na = set.multiplicity[a];
      SetD(a, b, method == LinkageMethod::Ward ? d * na * nb / (na + nb) : factor * d);
    }
    ss += row * nb;
  }
  summary_.sd = ss > kPatternZero && pairs > 1 ? std::sqrt(ss / (pairs - 1)) : 0;
  const int V = set.V;
  active_.resize(n_);
  size_ = set.multiplicity;
  distinct_.assign(n_, 1);
  mean_ = set.x;
  min_ = set.x;
  max_ = set.x;
  ss_.assign(static_cast<std::size_t>(n_) * V, 0);
  label_.resize(n_);
  members_.resize(n_);
  for (int p = 0; p < n_; ++p) {
    active_[p] = p;
    label_[p] = p;
    members_[p] = {p};
  }
  if (type == DistanceType::Pearson) {
    similarity_.resize(n_);
    for (int p = 0; p < n_; ++p) similarity_[p] = 0.5 * size_[p] * (size_[p] - 1.0);
  }
  nn_.assign(n_, -1);
  nnd_.assign(n_, kFar);
  mnn_.assign(n_, -1);
  mnnd_.assign(n_, kFar);
  for (int b = 1; b < n_; ++b) RecomputeNeighbour(b);
  for (int b = 0; b < n_; ++b) RecomputeMeanNeighbour(b);
}

double Agglomeration::D(int a, int b) const {
  const std::size_t s = Slot(a, b);
  return single_ ? static_cast<double>(d32_[s]) : d64_[s];
}

void Agglomeration::SetD(int a, int b, double d) {
  const std::size_t s = Slot(a, b);
  if (single_) {
    d32_[s] = static_cast<float>(d);
  } else {
    d64_[s] = d;
  }
}

void Agglomeration::Prefetch(int k, int p, int q) const {
  if (k <= p) return;
  const std::size_t sp = Slot(p, k), sq = k > q ? Slot(q, k) : sp;
  if (single_) {
    __builtin_prefetch(d32_.data() + sp);
    __builtin_prefetch(d32_.data() + sq);
  } else {
    __builtin_prefetch(d64_.data() + sp);
    __builtin_prefetch(d64_.data() + sq);
  }
}

void Agglomeration::RecomputeNeighbour(int b) {
  nn_[b] = -1;
  nnd_[b] = kFar;
  for (int a : active_) {
    if (a >= b) break;
    const double d = D(a, b);
    if (d < nnd_[b]) {
      nnd_[b] = d;
      nn_[b] = a;
    }
  }
}

double Agglomeration::MeanDistance(int a, int b) const {
  const int V = set_.V;
  return Ased(mean_.data() + static_cast<std::size_t>(a) * V, mean_.data() + static_cast<std::size_t>(b) * V,
              set_.weight.data(), V);
}

void Agglomeration::RecomputeMeanNeighbour(int b) {
  mnn_[b] = -1;
  mnnd_[b] = kFar;
  for (int a : active_) {
    if (a >= b) break;
    const double d = MeanDistance(a, b);
    if (d < mnnd_[b]) {
      mnnd_[b] = d;
      mnn_[b] = a;
    }
  }
}

std::pair<int, int> Agglomeration::NextPair() const {
  int bestPlace = -1;
  double best = kFar;
  for (int place = 1; place < K(); ++place) {
    const int b = active_[place];
    if (nnd_[b] < best) {
      best = nnd_[b];
      bestPlace = place;
    }
  }
  if (bestPlace < 0) bestPlace = 1;  // every distance infinite: the first pair
  const int b = active_[bestPlace];
  const int a = nn_[b] >= 0 ? nn_[b] : active_[0];
  const int aPlace = static_cast<int>(std::lower_bound(active_.begin(), active_.end(), a) - active_.begin());
  return {aPlace, bestPlace};
}

double Agglomeration::ClosestMeans() const {
  if (K() < 2) return 0;
  double best = kFar;
  for (int place = 1; place < K(); ++place) best = std::min(best, mnnd_[active_[place]]);
  return best;
}

double Agglomeration::Fuse() {
  const auto [pPlace, qPlace] = NextPair();
  const int p = active_[pPlace], q = active_[qPlace];
  const int V = set_.V;
  const double np = size_[p], nq = size_[q];
  const double dpq = D(p, q);
  last_ = {p, q, size_[p], size_[q], dpq};

  // The growth of the within sum of squares, over all variables with no weights.
  double essPlus = 0;
  const double factor = np * nq / (np + nq);
  for (int v = 0; v < V; ++v) {
    const double diff = mean_[static_cast<std::size_t>(p) * V + v] - mean_[static_cast<std::size_t>(q) * V + v];
    essPlus += factor * diff * diff;
  }

  // Lance-Williams: the new distances of the fused cluster, kept by place for the
  // neighbour pass below.
  fresh_.resize(active_.size());
  constexpr std::size_t kAhead = 16;  // the later rows are far apart: ask for them early
  for (std::size_t place = 0; place < active_.size(); ++place) {
    if (place + kAhead < active_.size()) Prefetch(active_[place + kAhead], p, q);
    const int k = active_[place];
    if (k == p || k == q) continue;
    const double dkp = k < p ? D(k, p) : D(p, k);
    const double dkq = k < q ? D(k, q) : D(q, k);
    const double nk = size_[k];
    double d = 0;
    switch (method_) {
      case LinkageMethod::Average: d = (np * dkp + nq * dkq) / (np + nq); break;
      case LinkageMethod::Single: d = 0.5 * (dkp + dkq - std::fabs(dkp - dkq)); break;
      case LinkageMethod::Complete: d = 0.5 * (dkp + dkq + std::fabs(dkp - dkq)); break;
      case LinkageMethod::Centroid: {
        const double wp = np / (np + nq), wq = nq / (np + nq);
        d = wp * dkp + wq * dkq - wp * wq * dpq;
        break;
      }
      case LinkageMethod::Median: d = 0.5 * (dkp + dkq) - 0.25 * dpq; break;
      case LinkageMethod::Ward: d = ((nk + np) * dkp + (nk + nq) * dkq - nk * dpq) / (np + nq + nk); break;
      case LinkageMethod::BetaFlexible: d = 0.5 * (1 - beta_) * (dkp + dkq) + beta_ * dpq; break;
    }
    fresh_[place] = d;
    if (k < p) {
      SetD(k, p, d);
    } else {
      SetD(p, k, d);
    }
  }
  fresh_.erase(fresh_.begin() + qPlace);

  // The statistics of the fused cluster.
  for (int v = 0; v < V; ++v) {
    const std::size_t ip = static_cast<std::size_t>(p) * V + v, iq = static_cast<std::size_t>(q) * V + v;
    const double diff = mean_[ip] - mean_[iq];
    mean_[ip] = (np * mean_[ip] + nq * mean_[iq]) / (np + nq);
    ss_[ip] += ss_[iq] + factor * diff * diff;
    min_[ip] = std::min(min_[ip], min_[iq]);
    max_[ip] = std::max(max_[ip], max_[iq]);
  }
  size_[p] += size_[q];
  distinct_[p] += distinct_[q];
  ssCluster_ += essPlus;
  if (type_ == DistanceType::Pearson) {
    // Each pair of patterns meets once here, so the sums cost one pass over the pairs in all.
    double cross = 0;
    for (int a : members_[p]) {
      for (int b : members_[q]) {
        cross += static_cast<double>(set_.multiplicity[a]) * set_.multiplicity[b] *
                 (1 - Distance(set_.Pattern(a), set_.Pattern(b), set_.weight, type_));
      }
    }
    similarity_[p] += similarity_[q] + cross;
  }
  for (int m : members_[q]) label_[m] = p;
  members_[p].insert(members_[p].end(), members_[q].begin(), members_[q].end());
  members_[q].clear();
  members_[q].shrink_to_fit();
  active_.erase(active_.begin() + qPlace);

  // Nearest earlier clusters: the fused one from scratch; a later one when its neighbour
  // was fused and the new distance doesn't keep it; the others only compare.
  RecomputeNeighbour(p);
  for (std::size_t place = pPlace + 1; place < active_.size(); ++place) {
    const int b = active_[place];
    const double d = fresh_[place];
    if (nn_[b] == p || nn_[b] == q) {
      if (d <= nnd_[b]) {
        nn_[b] = p;
        nnd_[b] = d;
      } else {
        RecomputeNeighbour(b);
      }
    } else if (d < nnd_[b] || (d == nnd_[b] && p < nn_[b])) {
      nn_[b] = p;
      nnd_[b] = d;
    }
  }
  // Nearest means among the earlier clusters: the same.
  RecomputeMeanNeighbour(p);
  for (std::size_t place = pPlace + 1; place < active_.size(); ++place) {
    const int b = active_[place];
    const double d = MeanDistance(p, b);
    if (mnn_[b] == p || mnn_[b] == q) {
      if (d <= mnnd_[b]) {
        mnn_[b] = p;
        mnnd_[b] = d;
      } else {
        RecomputeMeanNeighbour(b);
      }
    } else if (d < mnnd_[b]) {
      mnn_[b] = p;
      mnnd_[b] = d;
    }
  }
  return essPlus;
}

std::vector<int> Agglomeration::Labels() const {
  std::vector<int> placeOf(n_, -1);
  for (int place = 0; place < K(); ++place) placeOf[active_[place]] = place;
  std::vector<int> labels(n_);
  for (int p = 0; p < n_; ++p) labels[p] = placeOf[label_[p]];
  return labels;
}

Partition Agglomeration::Current() const {
  const int V = set_.V;
  Partition partition;
  partition.clusterOfPattern = Labels();
  for (int id : active_) {
    Cluster c;
    c.size = size_[id];
    c.distinct = distinct_[id];
    c.firstPattern = id;
    const auto at = mean_.begin() + static_cast<std::ptrdiff_t>(id) * V;
    c.mean.assign(at, at + V);
    c.min.assign(min_.begin() + static_cast<std::ptrdiff_t>(id) * V, min_.begin() + static_cast<std::ptrdiff_t>(id + 1) * V);
    c.max.assign(max_.begin() + static_cast<std::ptrdiff_t>(id) * V, max_.begin() + static_cast<std::ptrdiff_t>(id + 1) * V);
    if (type_ == DistanceType::Pearson) c.pairSimilarity = similarity_[id];
    c.variance.resize(V);
    for (int v = 0; v < V; ++v) {
      c.variance[v] = c.size > 1 ? std::max(0.0, ss_[static_cast<std::size_t>(id) * V + v]) / (c.size - 1) : 0;
    }
    partition.clusters.push_back(std::move(c));
  }
  return partition;
}

}  // namespace tarvika
