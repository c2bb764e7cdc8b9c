#pragma once
// Small text files of the program: "key=value;" lines, whole files written as Windows-1250
// on disk from UTF-8 in memory (lang/input_file.h reads them), and writing through a
// temporary file that is renamed over its target, so a failed save never destroys the old
// file.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvika {

// The key of a "key=value;" line: all before the first "=", with every "&" dropped; a line
// without "=" has an empty key.
std::string KeyOf(std::string_view line);
// All after the first "=" up to the first ";" after it, or to the end of the line.
std::string_view ValueOf(std::string_view line);

// Writes the lines with CR LF; on failure the reason goes to *error when given.
bool WriteTextLines(const std::string& path, const std::vector<std::string>& lines, std::string* error = nullptr);

// A file written beside its target and renamed over it only when complete. A target
// without write permission gets it.
class AtomicFile {
 public:
  explicit AtomicFile(std::string target) : target_(std::move(target)) {}
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  bool Open();
  bool Write(std::string_view bytes);
  // sync: wait until the bytes are on the disk before the rename (for the project itself;
  // the small settings files go without).
  bool Commit(bool sync);
  const std::string& error() const { return error_; }

 private:
  bool Fail();

  std::string target_;
  std::string temp_;
  std::string error_;
  int fd_ = -1;
  bool committed_ = false;
};

}  // namespace tarvika
