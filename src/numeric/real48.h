#pragma once
// The 6-byte real of the binary table files: byte 0 is the exponent biased by 129 (0 means
// the value 0), bytes 1 to 5 hold the 39-bit mantissa after the hidden leading 1, least
// significant byte first, and the top bit of byte 5 is the sign.

#include <array>
#include <cstdint>

namespace tarvika {

using Real48 = std::array<std::uint8_t, 6>;

double DecodeReal48(const Real48& bytes);

// The nearest 6-byte real (ties to even). Magnitudes below the smallest one, 2^-128, become
// 0; NaN, infinities and magnitudes beyond the largest, about 1.7e38, throw
// std::range_error.
Real48 EncodeReal48(double value);

}  // namespace tarvika
