#include "transform/random_source.h"

#include <chrono>
#include <cmath>

namespace tarvika {

std::pair<double, double> RandomSource::NormalPair() {
  const double u1 = Uniform();
  const double r = u1 > 0 ? std::sqrt(-2 * std::log(u1)) : u1;
  const double angle = Uniform() * 6.281592654;
  return {r * std::sin(angle), r * std::cos(angle)};
}

std::uint32_t SeedFromClock() {
  const auto ticks = std::chrono::system_clock::now().time_since_epoch().count();
  return static_cast<std::uint32_t>(ticks ^ (ticks >> 32));
}

}  // namespace tarvika
