#include "numeric/parallel_parts.h"

#include <algorithm>
#include <exception>

#include "lang/two_threads.h"

namespace tarvika {

void RunParts(int parts, const std::function<void(int part, const std::atomic<bool>& stop)>& work) {
  std::atomic<bool> stop{false};
  if (parts < 2) {
    work(0, stop);
    return;
  }
  std::exception_ptr sideFailed;
  auto side = [&] {
    try {
      work(1, stop);
    } catch (...) {
      sideFailed = std::current_exception();
    }
  };
  auto here = [&] {
    try {
      work(0, stop);
    } catch (...) {
      stop = true;
      throw;
    }
  };
  RunOnTwoThreads(true, side, here);
  if (sideFailed) std::rethrow_exception(sideFailed);
}

void ForEachItemInParts(int parts, int count, const std::function<void(int k)>& item) {
  RunParts(parts, [&](int part, const std::atomic<bool>&) {
    for (int k = FirstOfPart(part, parts, count) - 1; k < LastOfPart(part, parts, count); ++k) item(k);
  });
}

int PartsFor(int threads, int items, long long rows) {
  constexpr long long kWorthAThread = 65536;  // cells of work below which a thread costs more than it saves
  if (threads < 2 || items < 2 || rows * items < kWorthAThread) return 1;
  return 2;
}

}  // namespace tarvika
