#pragma once
// The project file (".msw"): the variable table and the data table as one text file,
// Windows-1250 on disk. Also the companion files "default.var" and "last.mod" of the
// program folder.

#include <string>
#include <string_view>
#include <vector>

#include "workspace/data_matrix.h"
#include "workspace/variable_table.h"

namespace tarvika {

class Workspace;

enum class LoadResult {
  Loaded,       // the whole file was read
  Damaged,      // a damaged file: what was read so far stays in the tables
  NotAProject,  // wrong first line: the workspace is untouched
  Unreadable,   // the file could not be opened: the workspace is untouched
  Refused,      // no case or variable, or more than a workspace holds: told, the workspace untouched
};

// Replaces the workspace by the file, tells the person about failures, and updates the
// title, the suggested output file and "last.mod". The caller then validates declarations.
// After a damaged file the project is untitled (the title holds no path), so that a Save
// asks for a new name instead of writing the partial tables over the file.
LoadResult LoadProject(Workspace& ws, const std::string& path);

// Writes the workspace to path (through a temporary file renamed over the target; through a
// symbolic link, the file it leads to); false after telling the person when it could not be
// written, and the old file is intact. An empty path (an untitled project) is refused, and so
// is a file that another program changed after this workspace read or wrote it.
// Characters that Windows-1250 cannot hold are written as "?" and the cells are named.
bool SaveProject(Workspace& ws, const std::string& path);

// The file read for merging: its own two tables, the workspace untouched.
enum class MergeMode { AddCases, AddVariables };

struct MergeSource {
  LoadResult result = LoadResult::Unreadable;
  DataMatrix data;
  VariableTable vars;
  std::string title;  // the merge window's title, set when the file was read
};

MergeSource ReadMergeSource(Workspace& ws, const std::string& path, MergeMode mode);

// The path with its extension replaced by ext (ext includes the dot).
std::string WithExtension(const std::string& path, std::string_view ext);

// Where derived files of a project are suggested: "_imp" before the extension.
std::string SuggestedOutputFile(const std::string& path);

// "default.var" of the program folder: type, group labels and group type of the default
// variable, into row 0 of the variable table. A missing file is created with the defaults.
void LoadDefaultVariable(Workspace& ws);
// Stores a change of the default variable in the file and in row 0.
bool SaveDefaultVariable(Workspace& ws, std::string_view type, std::string_view labels,
                         std::string_view groupType);

// "last.mod" of the program folder: one full path per line; empty when there is no file.
std::vector<std::string> LoadRecentFiles(const Workspace& ws);
bool StoreRecentFiles(const Workspace& ws, const std::vector<std::string>& files);
// The list the "Last edited files" window shows: newest first (a load adds its path at the
// end of "last.mod"), each path once ignoring case, only files that still exist.
std::vector<std::string> RecentFilesToShow(const Workspace& ws);

}  // namespace tarvika
