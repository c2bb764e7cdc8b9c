#pragma once
// The one way the core shares a piece of work with a second thread: the load, the cell
// store and the data feed each split their work in two parts that touch different cells.

#include <system_error>
#include <thread>

namespace tarvika {

// Runs `side` on a second thread while `here` runs on this one, and returns when both are
// done. Without `parallel`, or when the system gives no thread, runs `here`, then `side`:
// the parts must not depend on each other's order.
template <class Side, class Here>
void RunOnTwoThreads(bool parallel, Side&& side, Here&& here) {
  std::thread helper;
  if (parallel) {
    try {
      helper = std::thread(std::ref(side));
    } catch (const std::system_error&) {
    }
  }
  try {
    here();
  } catch (...) {
    if (helper.joinable()) helper.join();
    throw;
  }
  if (helper.joinable()) {
    helper.join();
  } else {
    side();
  }
}

}  // namespace tarvika
