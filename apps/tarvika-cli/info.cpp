// tarvika-cli info PROJECT: the variables of a project file with their declarations, and
// the number of cases.

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>

#include "cli_context.h"
#include "lang/utf8.h"
#include "workspace/project_file.h"
#include "workspace/workspace.h"

namespace tarvika::cli {

namespace {

struct Column {
  int index;
  std::string_view english, hungarian;
};

constexpr Column kColumns[] = {
    {kShortName, "Short name", "Rövid név"},
    {kLongName, "Long name", "Hosszú név"},
    {kType, "Type", "Típus"},
    {kGroupType, "Group type", "Csop. típus"},
    {kGroupLabels, "Group labels", "Csoportnevek"},
    {kMissing, "Missing", "Hiányzó"},
};

// Columns are as wide as their widest cell up to this; a longer cell runs over into the next
// column, so one huge cell doesn't pad every other row to its width.
constexpr std::size_t kMaxColumnWidth = 40;

void PrintInfo(const Workspace& ws) {
  const VariableTable& vars = ws.vars;
  auto cell = [&](const Column& col, int r) {
    return r == 0 ? ws.Text(col.english, col.hungarian) : vars.GetCell(col.index, r);
  };
  std::size_t width[std::size(kColumns)] = {};
  for (std::size_t k = 0; k < std::size(kColumns); ++k) {
    for (int r = 0; r < vars.RowCount(); ++r) {
      width[k] = std::max(width[k], std::min(Utf8Length(cell(kColumns[k], r)), kMaxColumnWidth));
    }
  }
  std::string out = fmt::format("{}{}\n{}{}\n\n", ws.Text("Variables: ", "Változók: "),
                                ws.NumberOfVariables(), ws.Text("Cases: ", "Esetek: "), ws.NumberOfCases());
  for (int r = 0; r < vars.RowCount(); ++r) {
    std::string line = PadRight(r == 0 ? "#" : std::to_string(r), 5);
    for (std::size_t k = 0; k < std::size(kColumns); ++k)
      line += PadRight(cell(kColumns[k], r), width[k]) + "  ";
    while (!line.empty() && line.back() == ' ') line.pop_back();
    out += line + '\n';
  }
  std::fwrite(out.data(), 1, out.size(), stdout);
}

}  // namespace

void RegisterInfo(CLI::App& app, CliContext& context) {
  auto* cmd = app.add_subcommand("info", "List the variables of a project file with their declarations");
  auto path = std::make_shared<std::string>();
  cmd->add_option("project", *path, "The project file (.msw)")->required();
  cmd->callback([&context, path] {
    auto session = StartSession(context);
    if (!session) return;
    Workspace& ws = session->ws;
    if (LoadProject(ws, *path) != LoadResult::Loaded) {
      context.exitCode = kInputError;
      return;
    }
    PrintInfo(ws);
  });
}

}  // namespace tarvika::cli
