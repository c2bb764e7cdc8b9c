#pragma once
// Work cut into parts that don't depend on one another (the variables of an analysis, the
// halves of a column), run side by side. Each part writes only its own results, so the
// results are the same for any number of threads; whoever writes the report does so after
// the parts have joined, in the original order.

#include <atomic>
#include <functional>

namespace tarvika {

// Calls work(p, stop) for p = 0..parts-1: part 0 on the calling thread, the others each on
// a thread of its own (on the calling thread after part 0 when a thread can't start).
// Only part 0 may show progress or end the run; when it throws, stop becomes true, the
// other parts should return soon, and the exception passes on after all have joined. An
// exception of another part passes on from here too.
void RunParts(int parts, const std::function<void(int part, const std::atomic<bool>& stop)>& work);

// How many parts `items` independent items of `rows` rows each are cut into with
// `threads` threads: 1 when the work is too small to be worth a thread.
int PartsFor(int threads, int items, long long rows);

// The first and last item (1-based) of part p of `parts` over items 1..count.
inline int FirstOfPart(int p, int parts, int count) { return 1 + static_cast<int>(static_cast<long long>(count) * p / parts); }
inline int LastOfPart(int p, int parts, int count) { return FirstOfPart(p + 1, parts, count) - 1; }

}  // namespace tarvika
