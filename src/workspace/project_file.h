#pragma once
// The project file (".msw"): the variable table and the data table as one text file,
// Windows-1250 on disk. Also the companion files "default.var" and "last.mod" of the
// program folder.

#include <string>

namespace tarvika {

class Workspace;

enum class LoadResult {
  Loaded,       // the whole file was read
  Damaged,      // a damaged file: what was read so far stays in the tables
  NotAProject,  // wrong first line: the workspace is untouched
  Unreadable,   // the file could not be opened: the workspace is untouched
};

// Replaces the workspace by the file, tells the person about failures, and updates the
// title, the suggested output file and "last.mod". The caller then validates declarations.
LoadResult LoadProject(Workspace& ws, const std::string& path);

// Writes the workspace to path (through a temporary file renamed over the target); false
// after telling the person when it could not be written, and the old file is intact.
bool SaveProject(Workspace& ws, const std::string& path);

}  // namespace tarvika
