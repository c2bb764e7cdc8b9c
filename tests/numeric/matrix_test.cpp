// The sweep against R's solve() of a 3 by 3 correlation matrix:
// m <- matrix(c(1,.5,.3, .5,1,.2, .3,.2,1), 3); solve(m).

#include "numeric/matrix.h"

#include <gtest/gtest.h>

namespace tarvika {
namespace {

const std::vector<std::vector<double>> kR = {{1, 0.5, 0.3}, {0.5, 1, 0.2}, {0.3, 0.2, 1}};

SweepMatrix Loaded() {
  SweepMatrix a(3);
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) a(i, j) = kR[i][j];
  }
  return a;
}

TEST(SweepMatrix, SweepingEveryPivotGivesTheNegativeInverseAndSweepingAgainRestores) {
  SweepMatrix a = Loaded();
  for (int k = 0; k < 3; ++k) a.Pivot(k);
  const double inverse[3][3] = {{1.411764705882353, -0.6470588235294117, -0.2941176470588235},
                                {-0.647058823529412, 1.338235294117647, -0.0735294117647059},
                                {-0.294117647058823, -0.0735294117647059, 1.1029411764705881}};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) EXPECT_NEAR(a(i, j), -inverse[i][j], 1e-12) << i << "," << j;
  }
  for (int k = 2; k >= 0; --k) a.Pivot(k);
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) EXPECT_NEAR(a(i, j), kR[i][j], 1e-12);
  }
}

}  // namespace
}  // namespace tarvika
