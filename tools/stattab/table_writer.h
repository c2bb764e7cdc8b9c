#pragma once
// Writes the statistical table files of the program folder from exact computations.

#include <filesystem>

namespace tarvika::stattab {

// Writes "FTAB.TXT", "ftab.mst", "CTABW.MST", "WILC.MST", "SIGN.MST" and "tstab.txt" into
// the folder (which must exist), replacing files of the same names.
void WriteStatTables(const std::filesystem::path& folder);

}  // namespace tarvika::stattab
