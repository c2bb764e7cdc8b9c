#pragma once
// SPSS data files (".sav", also compressed, read through ReadStat) and portable files
// (".por", read by their published format) into an ImportTable. What is kept: the cells (system-missing as empty cells),
// names (a name over 8 characters is cut to 5 and "***", and goes in front of the long
// name), variable labels as long names, value labels of numeric variables as code groups,
// user-missing codes and ranges as the missing declaration, string variables, dates as
// "YYYY-MM-DD" text.

#include <string>

#include "exchange/import_table.h"

namespace tarvika {

class Workspace;

// What a read found that the person is told after the import.
struct SpssReadNotes {
  int cases = 0;
  bool namesCut = false;    // some name ended in "***"
  int longLabelVariables = 0;  // variables with a value label over 12 characters
};

// Throws ImportError with the message for a missing, damaged or foreign file.
SpssReadNotes ReadSavFile(Workspace& ws, const std::string& path, ImportTable& table);
SpssReadNotes ReadPorFile(Workspace& ws, const std::string& path, ImportTable& table);

// The warning about cut names and long labels; empty when there is nothing to say.
std::string SpssReadWarning(const Workspace& ws, const SpssReadNotes& notes);

}  // namespace tarvika
