#pragma once
// What the commands that derive variables share (transform, random, recode, count), beside
// the editing commands' helpers: the options --out and --in-place, and one run of an edit
// between the load and a save that happens only when the edit went through.

#include <CLI/CLI.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli_context.h"
#include "editing_cli.h"
#include "workspace/workspace.h"

namespace tarvika::cli {

struct EditOptions {
  std::string project;
  std::string out;
  bool inPlace = false;
};

// The positional project and the options --out and --in-place.
void AddEditOptions(CLI::App* cmd, EditOptions& options);

// Loads the project (OpenForEditing), runs `edit` and writes the project to --out (or back);
// nothing is written when `edit` returns false. The exit status.
int EditProject(CliContext& context, const EditOptions& options, const std::function<bool(Workspace&)>& edit);

// A number of a parameter, held to four decimals, either decimal separator; tells
// "NAME: not a number: TEXT" and returns nullopt.
std::optional<double> ParameterNumber(Workspace& ws, std::string_view name, std::string_view text);

}  // namespace tarvika::cli
