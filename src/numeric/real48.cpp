#include "numeric/real48.h"

#include <cmath>
#include <stdexcept>

namespace tarvika {

namespace {
constexpr int kBias = 129;
constexpr int kMantissaBits = 39;
}  // namespace

double DecodeReal48(const Real48& bytes) {
  if (bytes[0] == 0) return 0;
  std::uint64_t mantissa = bytes[5] & 0x7F;
  for (int i = 4; i >= 1; --i) mantissa = (mantissa << 8) | bytes[i];
  const double magnitude =
      std::ldexp(1.0 + std::ldexp(static_cast<double>(mantissa), -kMantissaBits), bytes[0] - kBias);
  return (bytes[5] & 0x80) ? -magnitude : magnitude;
}

Real48 EncodeReal48(double value) {
  if (!std::isfinite(value)) throw std::range_error("no 6-byte real for a NaN or an infinity");
  Real48 bytes{};
  if (value == 0) return bytes;
  int exponent = 0;
  const double fraction = std::frexp(std::fabs(value), &exponent);  // in [0.5, 1)
  // |value| = 1.f * 2^(exponent - 1); the 39 bits of f rounded to nearest, ties to even.
  auto mantissa = static_cast<std::uint64_t>(std::nearbyint(std::ldexp(2 * fraction - 1, kMantissaBits)));
  int biased = exponent - 1 + kBias;
  if (mantissa >> kMantissaBits) {  // rounded up to 2.0
    mantissa = 0;
    ++biased;
  }
  if (biased < 1) return bytes;
  if (biased > 255) throw std::range_error("value beyond the range of a 6-byte real");
  bytes[0] = static_cast<std::uint8_t>(biased);
  for (int i = 1; i <= 5; ++i) {
    bytes[i] = static_cast<std::uint8_t>(mantissa & 0xFF);
    mantissa >>= 8;
  }
  if (value < 0) bytes[5] |= 0x80;
  return bytes;
}

}  // namespace tarvika
