#pragma once
// The tolerance of every zero test and every equality test on floating-point values in the
// program: two values closer than this are the same value, a variance not above it is none.

namespace tarvika {

inline constexpr double kZeroTolerance = 0.00000001;

}  // namespace tarvika
