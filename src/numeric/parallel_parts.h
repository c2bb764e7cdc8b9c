#pragma once
// An analysis's work cut into two parts that don't depend on one another (the variables of
// a pass, the pairs of a matrix), run side by side through the core's one way of starting
// a second thread (RunOnTwoThreads). Each part writes only its own results, so the results
// are those of one thread; the report is written after the parts have joined, in the
// original order.

#include <atomic>
#include <functional>

namespace tarvika {

// Calls work(0, stop) on the calling thread and, with two parts, work(1, stop) on a second
// thread (after the first when none can start). Only the first may show progress or end
// the run: when it throws, stop becomes true, the second should return soon, and the
// exception passes on once both are done. An exception of the second passes on too.
void RunParts(int parts, const std::function<void(int part, const std::atomic<bool>& stop)>& work);

// How many parts (1 or 2) `items` independent items of `rows` rows each are cut into with
// `threads` threads: 1 when the work is too small to be worth a thread.
int PartsFor(int threads, int items, long long rows);

// Calls item(k) for every k in 0..count-1, the items cut into `parts` runs of neighbours
// (RunParts): for work whose items are independent and write only their own results.
void ForEachItemInParts(int parts, int count, const std::function<void(int k)>& item);

// The first and last item (1-based) of part p of `parts` over items 1..count.
inline int FirstOfPart(int p, int parts, int count) { return 1 + static_cast<int>(static_cast<long long>(count) * p / parts); }
inline int LastOfPart(int p, int parts, int count) { return FirstOfPart(p + 1, parts, count) - 1; }

}  // namespace tarvika
