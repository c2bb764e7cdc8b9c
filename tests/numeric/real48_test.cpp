// The 6-byte real codec of the binary table files.

#include "numeric/real48.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>

namespace tarvika {
namespace {

TEST(Real48, KnownBytesAndExtremes) {
  EXPECT_EQ(EncodeReal48(0), Real48{});
  EXPECT_EQ(EncodeReal48(1), (Real48{0x81, 0, 0, 0, 0, 0}));
  // 2.5 = 1.25 * 2^1: exponent 130, the mantissa's second bit from the top, the sign bit.
  EXPECT_EQ(EncodeReal48(-2.5), (Real48{0x82, 0, 0, 0, 0, 0xA0}));
  EXPECT_EQ(DecodeReal48(Real48{0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}), 0);  // exponent 0 is zero

  const Real48 largest{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F};
  const double max = DecodeReal48(largest);
  EXPECT_EQ(max, std::ldexp(2 - std::ldexp(1, -39), 126));
  EXPECT_THROW(EncodeReal48(max * 1.0001), std::range_error);
  EXPECT_THROW(EncodeReal48(std::numeric_limits<double>::infinity()), std::range_error);
  EXPECT_THROW(EncodeReal48(std::nan("")), std::range_error);
  const double min = std::ldexp(1, -128);
  EXPECT_EQ(EncodeReal48(min), (Real48{1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(EncodeReal48(min / 4), Real48{});                            // below the smallest: zero
  EXPECT_EQ(DecodeReal48(EncodeReal48(std::nextafter(2.0, 0.0))), 2.0);  // rounding carries
}

TEST(Real48, RoundTrips) {
  std::mt19937_64 random(12345);
  // Every byte pattern (with a non-zero exponent) comes back unchanged, extremes included.
  for (int i = 0; i < 100000; ++i) {
    Real48 bytes;
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    if (bytes[0] == 0) bytes = Real48{};
    EXPECT_EQ(EncodeReal48(DecodeReal48(bytes)), bytes) << i;
  }
  // Doubles keep 39 bits after the leading one.
  std::uniform_real_distribution<double> mantissa(0.5, 1);
  std::uniform_int_distribution<int> exponent(-120, 120);
  for (int i = 0; i < 100000; ++i) {
    const double value = std::ldexp(random() % 2 ? mantissa(random) : -mantissa(random), exponent(random));
    EXPECT_LE(std::fabs(DecodeReal48(EncodeReal48(value)) - value), std::ldexp(std::fabs(value), -40))
        << value;
  }
}

}  // namespace
}  // namespace tarvika
