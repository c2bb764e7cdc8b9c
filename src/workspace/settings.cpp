#include "workspace/settings.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "workspace/numbers.h"

namespace tarvika {

std::string KeyOf(std::string_view line) {
  std::size_t eq = line.find('=');
  if (eq == std::string_view::npos) return "";
  std::string key;
  for (char c : line.substr(0, eq)) {
    if (c != '&') key.push_back(c);
  }
  return key;
}

std::string ValueOf(std::string_view line) {
  std::size_t eq = line.find('=');
  if (eq == std::string_view::npos) return "";
  std::string_view rest = line.substr(eq + 1);
  return std::string(rest.substr(0, rest.find(';')));
}

std::optional<std::vector<std::string>> ReadTextLines(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::stringstream buffer;
  buffer << in.rdbuf();
  std::string text = buffer.str();
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') continue;
    lines.push_back(text.substr(start, i - start));
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    start = i + 1;
  }
  if (start < text.size()) lines.push_back(text.substr(start));
  return lines;
}

bool WriteTextLines(const std::string& path, const std::vector<std::string>& lines) {
  std::string temp = path + ".tmp";
  {
    std::ofstream out(temp, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    for (const std::string& line : lines) out << line << "\r\n";
    out.flush();
    if (!out) {
      std::remove(temp.c_str());
      return false;
    }
  }
  std::error_code ec;
  std::filesystem::rename(temp, path, ec);
  if (ec) std::remove(temp.c_str());
  return !ec;
}

namespace {
std::string InFolder(const std::string& folder, const char* name) {
  return (std::filesystem::path(folder) / name).string();
}
}  // namespace

void ReadConfig(const std::string& programFolder, ProgramSettings& settings) {
  settings.language = Language::Hungarian;
  auto lines = ReadTextLines(InFolder(programFolder, kConfigFile));
  if (!lines) return;
  for (const std::string& line : *lines) {
    std::string key = KeyOf(line), value = ValueOf(line);
    if (key == "nyelv") settings.language = value == "angol" ? Language::English : Language::Hungarian;
    if (key == "LastModEv") settings.lastModYear = value;
    if (key == "LastModHo") settings.lastModMonth = value;
    if (key == "LastModNap") settings.lastModDay = value;
    if (key == "VerNum") settings.versionNumber = value;
  }
}

std::optional<std::string> ReadRPathFile(const std::string& programFolder, ProgramSettings& settings) {
  auto lines = ReadTextLines(InFolder(programFolder, kRPathFile));
  if (!lines) return std::nullopt;
  for (const std::string& line : *lines) {
    std::string key = KeyOf(line), value = ValueOf(line);
    if (key == "R_prog_path") settings.rProgramPath = value;
    if (key == "font_size") {
      auto size = ParseWholeNumber(value);
      if (!size || *size <= 0 || *size > 1000) {
        return "r_path.cfg: font_size=" + value + " is not a positive whole number.";
      }
      settings.fontSize = static_cast<int>(*size);
    }
  }
  return std::nullopt;
}

bool WriteConfig(const std::string& programFolder, const ProgramSettings& settings) {
  return WriteTextLines(InFolder(programFolder, kConfigFile),
                        {settings.language == Language::English ? "nyelv=angol;" : "nyelv=magyar;",
                         "LastModEv=" + settings.lastModYear + ";", "LastModHo=" + settings.lastModMonth + ";",
                         "LastModNap=" + settings.lastModDay + ";", "VerNum=" + settings.versionNumber + ";"});
}

bool WriteRPathFile(const std::string& programFolder, const ProgramSettings& settings) {
  std::string font = settings.fontSize ? std::to_string(*settings.fontSize) : "";
  return WriteTextLines(InFolder(programFolder, kRPathFile),
                        {"font_size=" + font + ";", "R_prog_path=" + settings.rProgramPath + ";"});
}

}  // namespace tarvika

#include "workspace/workspace.h"

namespace tarvika {

void LoadDefaultVariable(Workspace& ws) {
  std::string path = InFolder(ws.programFolder, kDefaultVariableFile);
  auto lines = ReadTextLines(path);
  if (!lines) {
    lines = std::vector<std::string>{"num=0_0;", "", "nincs"};
    WriteTextLines(path, *lines);
  }
  lines->resize(3);
  ws.vars.SetDefaultVariable((*lines)[0], (*lines)[1], (*lines)[2]);
}

bool SaveDefaultVariable(const Workspace& ws) {
  return WriteTextLines(InFolder(ws.programFolder, kDefaultVariableFile),
                        {std::string(ws.vars.GetCell(kType, 0)), std::string(ws.vars.GetCell(kGroupLabels, 0)),
                         std::string(ws.vars.GetCell(kGroupType, 0))});
}

}  // namespace tarvika
