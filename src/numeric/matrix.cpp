#include "numeric/matrix.h"

namespace tarvika {

void SweepMatrix::Pivot(int k) {
  const double pivot = (*this)(k, k);
  for (int i = 0; i < n_; ++i) {
    if (i == k) continue;
    const double aik = (*this)(i, k);
    if (aik == 0) continue;
    for (int j = 0; j < n_; ++j) {
      if (j != k) (*this)(i, j) -= aik * (*this)(k, j) / pivot;
    }
  }
  for (int i = 0; i < n_; ++i) {
    if (i == k) continue;
    (*this)(i, k) /= pivot;
    (*this)(k, i) /= pivot;
  }
  (*this)(k, k) = -1 / pivot;
}

}  // namespace tarvika
