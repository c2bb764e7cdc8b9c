#pragma once
// The sweep kernel of the regression: a square work matrix swept on pivots (inverses arise
// by sweeping, there is no general inverse). The determinant of the test of independence
// stands beside the correlation matrices (stats/correlation_matrix.h).

#include <vector>

namespace tarvika {

// A square matrix held row by row, sized once; Pivot allocates nothing.
class SweepMatrix {
 public:
  explicit SweepMatrix(int size) : n_(size), a_(static_cast<std::size_t>(size) * size, 0.0) {}
  int Size() const { return n_; }
  double& operator()(int i, int j) { return a_[static_cast<std::size_t>(i) * n_ + j]; }
  double operator()(int i, int j) const { return a_[static_cast<std::size_t>(i) * n_ + j]; }
  // One sweep on pivot k (0-based): the rest less the product of row and column k over the
  // pivot, row and column k divided by it, and the pivot replaced by -1/pivot. A second
  // sweep on the same pivot undoes the first. The pivot is not checked: the caller never
  // sweeps on a tolerance below its own bound.
  void Pivot(int k);

 private:
  int n_;
  std::vector<double> a_;
};

}  // namespace tarvika
