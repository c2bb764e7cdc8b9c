#pragma once
// Export of the workspace for other programs: the SPSS pair (a fixed-column data file and
// the syntax that reads it), an SPSS data file (".sav") with labels and missing codes, and
// the data table as tab-delimited text. Files are UTF-8 and are written through a
// temporary file renamed over the target.

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace tarvika {

class Workspace;

// A variable as it goes out: its SPSS name and the columns its cells need.
struct ExportColumn {
  std::string name;   // the short name made legal for SPSS
  bool isString = false;
  int width = 1;      // bytes of the widest cell (a numeric one with "." as separator)
  int decimals = 0;   // numeric: the most decimals of a cell
  int start = 1;      // first column in the fixed-column data file
};

// A short name made legal for SPSS: characters SPSS doesn't take in names become "_", a
// name that doesn't begin with a letter gets "V" in front (and then at most 8 characters),
// a final "." becomes "_", and a reserved word of SPSS ("to", "by", ...) gets "V" in front.
std::string SpssName(std::string_view shortName);

// The layout of every variable, in order; SPSS names that came out equal (ignoring case)
// become the first five characters, "_" and a number from "00".
std::vector<ExportColumn> ExportLayout(const Workspace& ws);

// The fixed-column data file and its syntax; false after telling the person.
bool ExportToSpss(Workspace& ws, const std::string& dataPath, const std::string& syntaxPath);

// The syntax text that reads dataPath (for the tests and ExportToSpss).
std::string SpssSyntax(const Workspace& ws, const std::vector<ExportColumn>& layout, const std::string& dataPath);

// An SPSS data file; timestamp, when given, replaces the time of writing (for files that
// must come out byte for byte the same). False after telling the person.
bool ExportSav(Workspace& ws, const std::string& path, std::optional<std::time_t> timestamp = std::nullopt);

// The data table with its header row of names, tab-delimited; false after telling the person.
bool ExportTabDelimited(Workspace& ws, const std::string& path);

}  // namespace tarvika
