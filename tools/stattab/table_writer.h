#pragma once
// Writes the statistical table files of the program folder from exact computations.

#include <filesystem>
#include <string>
#include <string_view>

namespace tarvika::stattab {

// Writes "FTAB.TXT", "ftab.mst", "CTABW.MST", "WILC.MST", "SIGN.MST" and "tstab.txt" into
// the folder (which must exist), replacing files of the same names.
void WriteStatTables(const std::filesystem::path& folder);

// The bytes of one of those files. "tstab.txt" takes half a minute: 1,368 quantiles.
std::string TableFileBytes(std::string_view name);
// One line of "tstab.txt", with its line end: the error df, then q times 100 for k = 2 to
// 20 at 0.10, at 0.05, at 0.01.
std::string StudentizedRangeLine(int df);

}  // namespace tarvika::stattab
