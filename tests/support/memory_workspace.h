#pragma once
// A workspace filled in memory for the tests of the analysis frame and the analyses, with
// its own program folder under the temporary directory.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "frame/report_writer.h"
#include "workspace/workspace.h"

namespace tarvika::testing {

struct Declared {
  Declared(std::string n, std::string l = "", std::string lab = "", std::string g = "none", std::string mis = "",
           std::string t = "num=0_0;")
      : name(std::move(n)), longName(std::move(l)), labels(std::move(lab)), groupType(std::move(g)),
        missing(std::move(mis)), type(std::move(t)) {}
  std::string name;
  std::string longName;
  std::string labels;  // "1=a;/2=b;/"
  std::string groupType;
  std::string missing;
  std::string type;
};

struct MemoryWorkspace {
  MemoryWorkspace(const std::vector<Declared>& variables, const std::vector<std::vector<std::string>>& rows,
                  Language lang = Language::English, char separator = '.', const std::string& folder = "frame")
      : ws(user, lang, separator) {
    int n = static_cast<int>(variables.size());
    int m = static_cast<int>(rows.size());
    ws.data.Resize(n + 1, m + 1);
    ws.vars.SetRowCount(n + 1);
    for (int v = 1; v <= n; ++v) {
      const Declared& d = variables[v - 1];
      ws.vars.SetCell(kIndex, v, std::to_string(v));
      ws.vars.SetCell(kShortName, v, d.name);
      ws.vars.SetCell(kLongName, v, d.longName);
      ws.vars.SetCell(kType, v, d.type);
      ws.vars.SetCell(kGroupLabels, v, d.labels);
      ws.vars.SetCell(kGroupType, v, d.groupType);
      ws.vars.SetCell(kMissing, v, d.missing);
      ws.data.SetCell(v, 0, d.name);
    }
    for (int r = 1; r <= m; ++r) {
      ws.data.SetCell(0, r, std::to_string(r));
      for (int v = 1; v <= n && v <= static_cast<int>(rows[r - 1].size()); ++v) ws.data.SetCell(v, r, rows[r - 1][v - 1]);
    }
    // One folder per process and test: ctest runs the tests in parallel processes.
    programFolder = std::filesystem::temp_directory_path() /
                    ("tarvika_test_" + folder + "_" + std::to_string(::getpid()) + "_" +
                     ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::remove_all(programFolder);
    std::filesystem::create_directories(programFolder / "output");
    ws.programFolder = programFolder.string();
    ws.SetCurrentFile("/data/survey.msw");
  }
  ~MemoryWorkspace() {
    std::error_code ec;
    std::filesystem::remove_all(programFolder, ec);
  }

  // The bytes of a file of the output folder, and its text read back into UTF-8.
  std::string RawOutput(const std::string& name) const {
    std::ifstream in(programFolder / "output" / name, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
  }
  std::string Output(const std::string& name) const { return FromReportEncoding(RawOutput(name)); }

  ScriptedChannel user;
  Workspace ws;
  std::filesystem::path programFolder;
};

// The lines of a text with CR LF line ends; a final line end gives no empty last line.
inline std::vector<std::string> CrLfLines(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find("\r\n", start);
    if (end == std::string::npos) {
      lines.push_back(text.substr(start));
      break;
    }
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

}  // namespace tarvika::testing
