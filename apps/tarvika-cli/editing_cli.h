#pragma once
// What the editing commands of the headless program share: the project read into a
// session, variables found by name, and the result written to --out only when the
// operation succeeded.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli_context.h"

namespace tarvika::cli {

// Starts the session and loads the project with its declarations validated; nullptr (the
// exit status set) when the project can't be read.
std::unique_ptr<Session> OpenForEditing(CliContext& context, const std::string& project);

// The variable of a short name (ignoring case); 0 after telling "Unknown variable".
int VariableByName(Workspace& ws, const std::string& name);

// The variables of the short names, in order; nullopt after telling the first unknown one.
std::optional<std::vector<int>> VariablesNamed(Workspace& ws, const std::vector<std::string>& names);

// Splits "a,b,c" (and repeated options) into names.
std::vector<std::string> SplitNames(const std::vector<std::string>& given);

// Writes the workspace to out; the exit status says how it went.
void SaveResult(CliContext& context, Workspace& ws, const std::string& out);

// The --out option every editing command takes, required.
void AddOutOption(CLI::App* cmd, std::string& out);

void RegisterShapeCommands(CLI::App& app, CliContext& context);
void RegisterSortCommand(CLI::App& app, CliContext& context);
void RegisterFindCommand(CLI::App& app, CliContext& context);
void RegisterMergeSplitCommands(CLI::App& app, CliContext& context);
void RegisterVerifyCommand(CLI::App& app, CliContext& context);

}  // namespace tarvika::cli
