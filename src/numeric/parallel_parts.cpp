#include "numeric/parallel_parts.h"

#include <algorithm>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

namespace tarvika {

void RunParts(int parts, const std::function<void(int part, const std::atomic<bool>& stop)>& work) {
  std::atomic<bool> stop{false};
  std::vector<std::exception_ptr> failed(std::max(parts, 1));
  std::vector<std::thread> helpers;
  std::vector<int> leftOver;  // parts whose thread didn't start
  for (int p = 1; p < parts; ++p) {
    try {
      helpers.emplace_back([&, p] {
        try {
          work(p, stop);
        } catch (...) {
          failed[p] = std::current_exception();
        }
      });
    } catch (const std::system_error&) {
      leftOver.push_back(p);
    }
  }
  try {
    work(0, stop);
    for (int p : leftOver) work(p, stop);
  } catch (...) {
    failed[0] = std::current_exception();
    stop = true;
  }
  for (std::thread& helper : helpers) helper.join();
  for (const std::exception_ptr& e : failed) {
    if (e) std::rethrow_exception(e);
  }
}

int PartsFor(int threads, int items, long long rows) {
  constexpr long long kWorthAThread = 65536;  // cells of work below which a thread costs more than it saves
  if (threads < 2 || items < 2 || rows * items < kWorthAThread) return 1;
  return std::min(threads, items);
}

}  // namespace tarvika
