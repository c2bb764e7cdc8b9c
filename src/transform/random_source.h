#pragma once
// The random source of the generators: a 32-bit linear congruential generator, seed :=
// seed * 134775813 + 1 modulo 2^32, and normal pairs by the Box-Muller transform.
// The seed goes on from draw to draw; the same seed gives the same values.

#include <cstdint>
#include <utility>

namespace tarvika {

class RandomSource {
 public:
  explicit RandomSource(std::uint32_t seed) : seed_(seed) {}

  std::uint32_t Seed() const { return seed_; }

  // A double in [0, 1): the new seed over 2^32.
  double Uniform() {
    Step();
    return seed_ / 4294967296.0;
  }
  // An integer in [0, range): the high 32 bits of the new seed times range.
  std::uint32_t Integer(std::uint32_t range) {
    Step();
    return static_cast<std::uint32_t>((static_cast<std::uint64_t>(seed_) * range) >> 32);
  }
  // Two standard normal values: R = sqrt(-2 ln u1) (u1 itself when it is 0), the angle
  // u2 * 6.281592654, and R sin, R cos of it. The constant is the generator's own, a shade
  // below 2 pi, and stays.
  std::pair<double, double> NormalPair();

 private:
  void Step() { seed_ = seed_ * 134775813u + 1u; }
  std::uint32_t seed_;
};

// A seed from the clock, for runs where none is given.
std::uint32_t SeedFromClock();

}  // namespace tarvika
