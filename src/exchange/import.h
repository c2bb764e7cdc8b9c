#pragma once
// Import of data files into the workspace: delimited text (.csv, .txt, .tsv), spreadsheets
// (.xlsx, .xls) and SPSS files (.sav, .por). The extension picks the reader.

#include <optional>
#include <string>

namespace tarvika {

class Workspace;

struct ImportOptions {
  std::optional<char> delimiter;    // text: tab, ';' or ','; default what the first line suggests
  bool headerRow = true;            // text and sheets: the first row holds the names
  std::string sheet;                // spreadsheets: the sheet's name; empty for the first
};

// Replaces the workspace by the file's content, with "N." index cells, inferred types and
// normalised names; the project is then untitled with "_imp" suggested. False after
// telling the person why ("Unsuccessful data input." and the reason): the workspace is
// as it was.
bool ImportFile(Workspace& ws, const std::string& path, const ImportOptions& options);

// Whether the extension (any case) names a file ImportFile reads.
bool IsImportable(const std::string& path);

}  // namespace tarvika
