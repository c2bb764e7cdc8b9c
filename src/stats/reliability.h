#pragma once
// The reliability of a scale made of k items: the scale score is the sum of the positive
// items and of K - x for each negative item; Cronbach's alpha, and per item the item-total
// and item-remainder correlations and alpha without the item. Variances divide by n - 1.

#include <vector>

#include "numeric/probability.h"

namespace tarvika {

struct ItemStatistics {
  double mean = 0, sd = 0, min = 0, max = 0;  // of the item as read (a negative item unreversed)
  double rIT = 0, rIR = 0;                    // of the reversed item with the total, the remainder
  PValue pIR;
  double alphaIfOmitted = 0;                  // 0 for k = 2
};

struct Reliability {
  int n = 0;
  double scaleMean = 0, scaleSd = 0, scaleMin = 0, scaleMax = 0;
  double itemsMin = 0, itemsMax = 0;  // over all items as read
  double alpha = 0;
  std::vector<ItemStatistics> items;
};

// rows: the complete cases, the k items as read; negative[i] marks an item reversed as K - x.
Reliability ScaleReliability(const std::vector<std::vector<double>>& rows, const std::vector<bool>& negative, double K);

}  // namespace tarvika
