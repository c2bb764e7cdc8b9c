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

// What tells one version of a file from another: a save writes a new file (a new inode)
// and renames it into place, and any other writer changes the size or the time.
struct FileIdentity {
  unsigned long long device = 0, inode = 0, size = 0;
  long long modifiedSeconds = 0, modifiedNanoseconds = 0;
  bool operator==(const FileIdentity&) const = default;
};

// The identity of the file at path (links followed), or of an open file.
std::optional<FileIdentity> IdentityOf(const std::string& path);
std::optional<FileIdentity> IdentityOfOpenFile(int fd);

// The path with its symbolic links followed to the file they lead to (which need not exist
// yet); the path itself when it is no link.
std::string FollowLinks(const std::string& path);

// Removes what interrupted saves left beside target: its temporary files
// ("<target>.saving-XXXXXX") that no running save holds.
void RemoveStaleTemporaries(const std::string& target);

// A file written beside its target and renamed over it only when complete. A target
// without write permission gets it; a target that is a symbolic link stays one, and the
// file it leads to is replaced. The temporary file is "<file>.saving-XXXXXX", locked while
// it is written, so that a later save can tell an interrupted one's leftovers and remove them.
class AtomicFile {
 public:
  explicit AtomicFile(std::string target) : target_(std::move(target)) {}
  ~AtomicFile();
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  // The file must still be this version when it is replaced (nullopt: no condition).
  // Commit refuses otherwise and changedMeanwhile() tells so.
  void RequireUnchanged(std::optional<FileIdentity> identity) { required_ = identity; }

  bool Open();
  bool Write(std::string_view bytes);
  // sync: wait until the bytes and the rename are on the disk (for the project itself; the
  // small settings files go without).
  bool Commit(bool sync);
  const std::string& error() const { return error_; }
  bool changedMeanwhile() const { return changedMeanwhile_; }
  // After Open: the file that is replaced (the target, or where its links lead).
  const std::string& file() const { return file_; }
  // After a Commit: the identity of the file written.
  const std::optional<FileIdentity>& written() const { return written_; }

 private:
  bool Fail();
  bool Replace(bool sync);

  std::string target_;
  std::string file_;
  std::string temp_;
  std::string error_;
  std::optional<FileIdentity> required_;
  std::optional<FileIdentity> written_;
  bool changedMeanwhile_ = false;
  int fd_ = -1;
  bool committed_ = false;
};

}  // namespace tarvika
