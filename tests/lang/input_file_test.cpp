#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "lang/input_file.h"
#include "support/temp_folder.h"

namespace tarvika {
namespace {

std::string Write(const test::TempFolder& folder, const std::string& name, const std::string& bytes) {
  const std::string path = (folder.path() / name).string();
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

std::vector<std::string> RawLines(const std::string& path, std::size_t block) {
  InputFile file(path, block);
  std::vector<std::string> lines;
  for (std::string_view line; file.NextRaw(line);) lines.emplace_back(line);
  EXPECT_FALSE(file.Failed()) << file.Error();
  return lines;
}

// The line ends by their definition, one byte at a time: CR LF, LF or CR end a line, and a
// last line without an end still counts.
std::vector<std::string> SplitByHand(const std::string& text) {
  std::vector<std::string> lines;
  std::string line;
  bool open = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' || text[i] == '\n') {
      lines.push_back(line);
      line.clear();
      open = false;
      if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else {
      line.push_back(text[i]);
      open = true;
    }
  }
  if (open) lines.push_back(line);
  return lines;
}

TEST(InputFile, LineEndsOfEveryKindAtEveryBlockEdge) {
  test::TempFolder folder;
  EXPECT_EQ(RawLines(Write(folder, "mixed", "a\r\nb\nc\rd"), InputFile::kBlock),
            (std::vector<std::string>{"a", "b", "c", "d"}));
  EXPECT_EQ(RawLines(Write(folder, "blank", "\r\n\n\r\r\nx\r\n"), InputFile::kBlock),
            (std::vector<std::string>{"", "", "", "", "x"}));
  EXPECT_TRUE(RawLines(Write(folder, "empty", ""), InputFile::kBlock).empty());
  EXPECT_EQ(RawLines(Write(folder, "cr", "end\r"), InputFile::kBlock), (std::vector<std::string>{"end"}));

  // Random texts of short lines read in blocks of 1 to 9 bytes put every line end, and the
  // two halves of every CR LF, on a block edge somewhere.
  std::mt19937 random(7);
  const char alphabet[] = {'a', 'b', '\r', '\n', '\t'};
  for (int round = 0; round < 200; ++round) {
    std::string text;
    const int length = static_cast<int>(random() % 40);
    for (int i = 0; i < length; ++i) text.push_back(alphabet[random() % sizeof alphabet]);
    const std::string path = Write(folder, "random", text);
    for (std::size_t block = 1; block <= 9; ++block) {
      ASSERT_EQ(RawLines(path, block), SplitByHand(text)) << "block " << block << ", text of " << text.size();
    }
  }
}

TEST(InputFile, EncodingsAndErrors) {
  test::TempFolder folder;
  // "őrű" in Windows-1250, then in UTF-8.
  const std::string path = Write(folder, "cp", "\xF5r\xFB\r\nplain\r\n");
  EXPECT_EQ(ReadLines(path, FileEncoding::Windows1250), (std::vector<std::string>{"őrű", "plain"}));
  const std::string utf8 = Write(folder, "utf8", "őrű\nplain");
  EXPECT_EQ(ReadLines(utf8, FileEncoding::Utf8), (std::vector<std::string>{"őrű", "plain"}));

  std::string error;
  EXPECT_FALSE(ReadLines((folder.path() / "none").string(), FileEncoding::Utf8, &error));
  EXPECT_EQ(error, "No such file or directory");
  InputFile dir(folder.path().string());
  EXPECT_FALSE(dir.IsOpen());
  EXPECT_EQ(dir.Error(), "Is a directory");
  std::string_view line;
  EXPECT_FALSE(dir.NextRaw(line));
  // A file that opens but can't be read (address 0 of the process's own memory).
  EXPECT_FALSE(ReadLines("/proc/self/mem", FileEncoding::Windows1250, &error));
  EXPECT_EQ(error, "Input/output error");
}

}  // namespace
}  // namespace tarvika
