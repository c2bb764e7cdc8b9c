#pragma once
// The three classical analysis dialogs as parameter sets: the commands they offer, the
// variable lists and parameters they hold, their opening and reset, and the run command
// that checks the selection, writes the roles into the scratch columns, builds the
// request and hands it to the analysis of the command.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frame/analysis_request.h"
#include "frame/analysis_run.h"
#include "frame/command_info.h"
#include "frame/dialog_parameters.h"
#include "frame/report_writer.h"

namespace tarvika {

class Workspace;

struct AnalysisDialog {
  // The dialog of that kind over a command table; its command is the first of its list.
  AnalysisDialog(const CommandTable& commands, DialogKind kind);

  const CommandTable* commands;
  DialogKind kind;
  int commandCode;
  std::vector<std::string> selected;    // "Selected variables", "Dependent variables", "X variables"
  std::vector<std::string> yList;       // "Y variables"
  std::vector<std::string> grouping;    // "Grouping variable", at most two used
  std::vector<std::string> covariates;  // covariate, or the case code variable of command 26
  std::vector<std::string> excluded;    // names excluded from the relations dialog's roles
  std::string conditional;              // "Cond. grouping variable"
  std::map<std::string, std::string, std::less<>> values;  // dialog-wide parameters
  // Per-variable parameters: parameter name -> short name -> value.
  std::map<std::string, std::map<std::string, std::string>, std::less<>> perVariable;
  // The "name=value;" hypothetical values, remembered during the session.
  std::map<std::string, std::string> rememberedHypothetical;

  // The value of a parameter, or its default.
  std::string Value(std::string_view name) const;
  std::string ValueFor(std::string_view name, std::string_view variable) const;
  // Set a value given as text; false with the message when it is unknown or out of bounds.
  bool Set(std::string_view name, std::string_view value, Language lang, std::string* error);
  bool SetFor(std::string_view name, std::string_view variable, std::string_view value, Language lang,
              std::string* error);
};

// Opening: the duplicate-name check (false: the dialog closes at once), and the scale words
// of the lists translated into the session's language.
bool OpenDialog(Workspace& ws, AnalysisDialog& dialog);
// The reset button: empty target lists, forgotten hypothetical values.
void ResetDialog(AnalysisDialog& dialog);
// The source list: every variable that isn't of type string, in declaration order, less
// those already in a target list.
std::vector<std::string> SourceList(const Workspace& ws, const AnalysisDialog& dialog);
// Turns a name into a legal short name (letters, digits, "_" and "."; at most 8 characters).
std::string SanitiseVariableName(std::string_view name, std::string_view fallback);
// The name of a variable to be saved made free: the name itself when no variable has it
// (compared ignoring case); else its trailing digits cut (down to 4 characters) and a
// running number from 1 added, within 8 characters; after 100 numbers the last one tried.
std::string UniqueSaveName(const Workspace& ws, std::string_view base);

// The message that a run would refuse the selection with (the command's own checks), or
// empty; a form shows it and keeps its run button off while it is there.
std::string SelectionRefusal(const Workspace& ws, const AnalysisDialog& dialog);

struct PreparedRun {
  AnalysisRequest request;
  std::string error;  // the message of a refused selection; the tables are then unchanged
  bool ok() const { return error.empty(); }
};

// The run command up to the call of the analysis.
PreparedRun PrepareRun(Workspace& ws, AnalysisDialog& dialog);

// The whole run command: PrepareRun, then the analysis of the command (RunCommand). A
// refused selection is told to the person; a command whose analysis isn't built answers
// "Sorry, under construction." and writes nothing. A statistical table file that is
// missing is told with its message before the old report is touched; the program then
// stops (TablesMissing). A report that can't be written is told (ReportFailed).
RunResult RunAnalysis(Workspace& ws, AnalysisDialog& dialog, ReportFormat format, std::string* message = nullptr);

}  // namespace tarvika
