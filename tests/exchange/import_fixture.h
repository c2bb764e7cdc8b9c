#pragma once
// A workspace with a scripted person, and files written into a temporary folder for it to
// import.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "exchange/import.h"
#include "support/temp_folder.h"
#include "workspace/workspace.h"

namespace tarvika::test {

class ImportTest : public ::testing::Test {
 protected:
  // The program folder ("last.mod" of a load) is the temporary folder.
  explicit ImportTest(char separator = '.') : ws(user, Language::English, separator) {
    ws.programFolder = folder.path().string();
  }

  std::string Write(const std::string& name, const std::string& bytes) const {
    const std::string path = (folder.path() / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  bool Import(const std::string& path, ImportOptions options = {}) { return ImportFile(ws, path, options); }

  std::string Cell(int c, int r) const { return std::string(ws.data.GetCell(c, r)); }
  std::string Decl(int column, int v) const { return std::string(ws.vars.GetCell(column, v)); }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (int v = 1; v <= ws.NumberOfVariables(); ++v) names.push_back(Decl(kShortName, v));
    return names;
  }
  std::string Told() const {
    std::string all;
    for (const std::string& m : user.told) all += m + "\n";
    return all;
  }

  TempFolder folder;
  ScriptedChannel user{Answer::Yes};
  Workspace ws;
};

}  // namespace tarvika::test
