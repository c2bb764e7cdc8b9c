#pragma once
// The one way the program reads text files: project files, the settings files, reports,
// language and help files, and the files of the importers. A file is read in big blocks and
// handed out line by line without the line ends; a line ends at CR LF, LF or CR, the last
// line may have no end, and lines of any length are read. Lines come as the bytes of the
// file or as UTF-8 from the file's encoding.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvika {

// How the bytes of a text file are to be understood.
enum class FileEncoding {
  Windows1250,  // the project files, the settings files and the reports
  Utf8,         // the language and help files
};

class InputFile {
 public:
  static constexpr std::size_t kBlock = 1 << 20;

  // Opens the file for reading; a folder counts as a file that can't be opened. block is
  // the size of the reads (smaller files are read in one).
  explicit InputFile(const std::string& path, std::size_t block = kBlock);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  bool IsOpen() const { return fd_ >= 0; }
  // The open descriptor, for questions about the file itself (its kind, size, identity).
  int fd() const { return fd_; }
  // Why the file could not be opened or read ("No such file or directory"); empty while
  // all is well.
  const std::string& Error() const { return error_; }
  bool Failed() const { return !error_.empty(); }

  // The next line as the bytes of the file; false at the end of the file and after a read
  // error. The view stays valid until the next call.
  bool NextRaw(std::string_view& line);
  // The next line as UTF-8.
  bool Next(std::string& line, FileEncoding encoding);

 private:
  static constexpr std::size_t kStale = static_cast<std::size_t>(-1);

  bool Fill();

  int fd_ = -1;
  std::string error_;
  std::vector<char> buf_;
  std::size_t begin_ = 0;    // first unread byte
  std::size_t end_ = 0;      // end of the bytes read
  std::size_t lf_ = kStale;  // the next LF at or after begin_, end_ when none was read
  bool eof_ = false;
};

// All lines of a text file as UTF-8; nullopt when it can't be opened or read, with the
// reason in *error when given.
std::optional<std::vector<std::string>> ReadLines(const std::string& path, FileEncoding encoding,
                                                  std::string* error = nullptr);

}  // namespace tarvika
