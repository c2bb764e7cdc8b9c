#include "editing/split_file.h"

#include <fmt/format.h>

#include "workspace/project_file.h"

namespace tarvika {

std::string CaseBoundRangeMessage(const Workspace& ws) {
  return fmt::format("{}{}{}", ws.Text("You can write integer (whole number) from 1 to ", "Csak 1 és "), ws.NumberOfCases(),
                     ws.Text("!", " közötti egész számot írhat!"));
}

namespace {

bool CheckPart(Workspace& ws, const SplitPart& part, bool first) {
  if (part.path.empty()) {
    ws.user.Tell(ws.Text("You must select a target file name!", "Ki kell választania a célállomány nevét!"));
    return false;
  }
  const int n = ws.NumberOfCases();
  if (part.firstCase < 0) {
    ws.user.Tell(first ? ws.Text("You must select a serial number to begin!", "Meg kell adnia a kezdő sorszámot!")
                       : ws.Text("You must select a starting case index", "Meg kell adnia a kezdő eset sorszámát"));
    return false;
  }
  if (part.lastCase < 0) {
    ws.user.Tell(first ? ws.Text("You must select a serial number to end!", "Meg kell adnia a záró sorszámot!")
                       : ws.Text("You must select an ending case index", "Meg kell adnia a záró eset sorszámát"));
    return false;
  }
  const int from = part.firstCase == 0 ? 1 : part.firstCase;
  const int to = part.lastCase == 0 ? n : part.lastCase;
  if (from > n || to > n || from > to) {
    ws.user.Tell(fmt::format("{}\r\n{}{}{}", CaseBoundRangeMessage(ws), ws.Text("You have ", "Az aktuális adattáblában "), n,
                             ws.Text(" rows (cases) in your current data table!", " sor (eset) van!")));
    return false;
  }
  for (int v : part.variables) {
    if (v < 1 || v > ws.NumberOfVariables()) return false;
  }
  return true;
}

bool WritePart(Workspace& ws, const SplitPart& part) {
  std::vector<int> vars = part.variables;
  if (vars.empty())
    for (int v = 1; v <= ws.NumberOfVariables(); ++v) vars.push_back(v);
  const int from = part.firstCase == 0 ? 1 : part.firstCase;
  const int to = part.lastCase == 0 ? ws.NumberOfCases() : part.lastCase;
  Workspace out(ws.user, ws.language, ws.decimalSeparator);
  out.programFolder = ws.programFolder;
  const int m = static_cast<int>(vars.size());
  out.data.Resize(0, 0);
  out.data.Resize(m + 1, to - from + 2);
  out.vars.SetRowCount(1);
  out.vars.SetRow(0, ws.vars.Row(0));
  out.vars.SetRowCount(m + 1);
  for (int j = 0; j < m; ++j) {
    std::vector<std::string> decl = ws.vars.Row(vars[j]);
    decl[kIndex] = std::to_string(j + 1);
    decl[kRole] = decl[kAttribute] = decl[kParameter] = "";
    out.vars.SetRow(j + 1, decl);
    out.data.SetCell(j + 1, 0, decl[kShortName]);
    for (int r = from; r <= to; ++r) out.data.SetCell(j + 1, r - from + 1, ws.data.GetCell(vars[j], r));
  }
  out.data.RenumberCases();
  return SaveProject(out, part.path);
}

}  // namespace

bool SplitFile(Workspace& ws, const SplitPart& first, const std::optional<SplitPart>& second) {
  if (!CheckPart(ws, first, true) || (second && !CheckPart(ws, *second, false))) return false;
  return WritePart(ws, first) && (!second || WritePart(ws, *second));
}

}  // namespace tarvika
