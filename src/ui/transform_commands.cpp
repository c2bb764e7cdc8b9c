// The Transformations entries of the window: recode and count, asked for in short prompts
// (variables, rule lines, new names) and run through the transformation core with undo.

#include "transform/recode.h"
#include "ui/main_window.h"
#include "ui/typed_lists.h"
#include "workspace/session.h"

namespace tarvika {

bool MainWindow::RunTransformCommand(const std::string& name) {
  if (name != "transform.recode" && name != "transform.count") return false;
  Workspace& ws = session_.ws;
  const bool recode = name == "transform.recode";
  std::optional<std::string> names = ws.user.AskText(
      recode ? ws.Text("Variables to recode (short names, separated by commas):", "Átkódolandó változók (rövid nevek vesszővel):")
             : ws.Text("Variables to count in (short names, separated by commas):", "Változók, amelyekben számolunk (rövid nevek vesszővel):"),
      "");
  if (!names) return true;
  std::optional<std::vector<int>> variables = TypedVariables(ws, *names);
  if (!variables) return true;
  std::optional<std::string> lines = ws.user.AskText(
      recode ? ws.Text("Rules, separated by | (e.g. (c) 1 ... 3 -> 1 | (f) Else -> same):",
                       "Szabályok | jellel elválasztva (pl. (c) 1 ... 3 -> 1 | (f) Else -> same):")
             : ws.Text("Values to count, separated by | (e.g. (a) 1 | (c) 4 ... 5):",
                       "Számolandó értékek | jellel elválasztva (pl. (a) 1 | (c) 4 ... 5):"),
      "");
  if (!lines) return true;
  std::optional<std::vector<RecodeRule>> rules = ParseRules(ws, SplitTyped(*lines, '|'), recode);
  if (!rules) return true;
  std::optional<std::string> targets = ws.user.AskText(
      recode ? ws.Text("New variables, one per recoded variable (empty: recode in place):",
                       "Új változók, átkódolt változónként egy (üres: helyben kódolás):")
             : ws.Text("Short name of the new variable:", "Az új változó rövid neve:"),
      "");
  if (!targets) return true;
  bool changed = journals_.Around(ws, [&] {
    if (!recode) return CountValues(ws, *variables, *rules, {*targets, "", Placement::End});
    std::vector<std::string> into = SplitTyped(*targets, ',');
    int done = into.empty() ? RecodeSame(ws, *variables, *rules) : RecodeDifferent(ws, *variables, into, *rules);
    return done >= 0;
  });
  if (changed) {
    ws.dataChanged = true;
    AfterGridChange(GridSelection());
  }
  return true;
}

}  // namespace tarvika
