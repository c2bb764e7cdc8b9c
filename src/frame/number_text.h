#pragma once
// Numbers as the report tables and new data cells print them (with a dot; DataCell with
// the table's separator).

#include <string>

namespace tarvika {

// Decimals by size: 4 below 0.09995, 3 below 0.9995, 2 below 99.995, 1 below 999999.95,
// else 0. DecimalsOrWhole gives 0 for a whole value.
int Decimals(double x);
int DecimalsOrWhole(double x);
// x with d decimals and a dot; a value that rounds to zero prints without a sign.
std::string Fixed(double x, int d);
// x held to four decimals, trailing zeros and a trailing point cut ("2.5", "-3").
std::string Trimmed4(double x);
// A new cell of the data table: at most 4 decimals, at most 8 characters, the table's
// decimal separator.
std::string DataCell(double x, char separator);

}  // namespace tarvika
