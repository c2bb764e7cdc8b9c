#pragma once
// What the project file tests share: a fresh folder per test, files written and read as
// bytes, headers as the program writes them, and a workspace with every kind of declaration.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/workspace.h"

namespace tarvika {

namespace fs = std::filesystem;

inline std::string ReadBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

inline void WriteBytes(const fs::path& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// A header in the form the program writes, for n numeric variables a, b, c, ...
inline std::string Header(int n, int m, std::string_view extra = "") {
  std::string s = "<Tarvika_for_windows>=2.0;\r\n<variables>=" + std::to_string(n) +
                  ";\r\n<cases>=" + std::to_string(m) + ";\r\n";
  s += extra;
  for (int i = 1; i <= n; ++i) {
    s += "#=" + std::to_string(i) + ";\r\n<name>=" + std::string(1, static_cast<char>('a' + i - 1)) +
         ";\r\n$num=0_0;\r\n<labels>=;\r\n<missing>=;\r\n";
  }
  return s + "<datamatrix>=;\r\n";
}

class ProjectFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dir = fs::temp_directory_path() /
          ("tarvika_project_" + std::to_string(::getpid()) + "_" +
           std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(dir);
    fs::create_directories(dir);
    ws.programFolder = dir.string();
    ws.hooks.progress = [this](std::string_view text, std::string_view) { progress.emplace_back(text); };
  }
  void TearDown() override { fs::remove_all(dir); }

  std::string Write(const std::string& name, std::string_view bytes) {
    WriteBytes(dir / name, bytes);
    return (dir / name).string();
  }
  std::string Cell(int c, int r) const { return std::string(ws.data.GetCell(c, r)); }
  std::string Decl(int col, int r) const { return std::string(ws.vars.GetCell(col, r)); }

  fs::path dir;
  ScriptedChannel user;
  Workspace ws{user, Language::English, '.'};
  std::vector<std::string> progress;
};

// The workspace of the round trip: Hungarian letters, empty cells, a help text of two
// lines, labels of codes and of intervals, missing codes, each group type.
inline void FillRoundTrip(Workspace& ws) {
  ws.data.Resize(5, 4);
  ws.vars.SetRowCount(5);
  const char* names[] = {"", "kor", "nem", "jövedel", "megj"};
  const char* longs[] = {"", "Életkor (év)", "Nem", "Havi jövedelem", "Megjegyzés: ő, ű, Ő, Ű, á"};
  const char* types[] = {"", "num=0_120;", "num=0_0", "num=0_1000000;", "string=40;"};
  const char* groupTypes[] = {"", "nincs", "kódokkal", "övezetekkel", "none"};
  const char* labels[] = {"", "", "1=férfi;/2=nő;/", "0_1000=alacsony;/1000_5000=közepes;/", ""};
  const char* missing[] = {"", "99", "9/99/999", "900_999/-1", ""};
  for (int i = 1; i <= 4; ++i) {
    ws.vars.SetCell(kIndex, i, std::to_string(i));
    ws.vars.SetCell(kShortName, i, names[i]);
    ws.vars.SetCell(kLongName, i, longs[i]);
    ws.vars.SetCell(kType, i, types[i]);
    ws.vars.SetCell(kGroupType, i, groupTypes[i]);
    ws.vars.SetCell(kGroupLabels, i, labels[i]);
    ws.vars.SetCell(kMissing, i, missing[i]);
    ws.data.SetCell(i, 0, names[i]);
  }
  ws.vars.SetCell(kHelp, 1, "Első sor\r\nmásodik sor");
  ws.vars.SetCell(kRole, 1, "x");  // scratch: never saved
  const char* cells[][4] = {
      {"34", "1", "1250.5", "Őszi űrlap, árvíztűrő"}, {"", "2", "", ""}, {"71", "", "999", "ŐŰ"}};
  for (int r = 1; r <= 3; ++r) {
    ws.data.SetCell(0, r, std::to_string(r));
    for (int c = 1; c <= 4; ++c) ws.data.SetCell(c, r, cells[r - 1][c - 1]);
  }
}

}  // namespace tarvika
