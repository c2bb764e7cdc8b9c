#include "workspace/text_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "lang/cp1250.h"

namespace tarvika {

namespace fs = std::filesystem;

std::string KeyOf(std::string_view line) {
  std::size_t eq = line.find('=');
  std::string key;
  if (eq == std::string_view::npos) return key;
  for (char c : line.substr(0, eq)) {
    if (c != '&') key.push_back(c);
  }
  return key;
}

std::string_view ValueOf(std::string_view line) {
  std::size_t eq = line.find('=');
  if (eq == std::string_view::npos) return {};
  std::string_view rest = line.substr(eq + 1);
  return rest.substr(0, rest.find(';'));
}

bool WriteTextLines(const std::string& path, const std::vector<std::string>& lines, std::string* error) {
  std::string bytes;
  for (const std::string& line : lines) {
    AppendUtf8AsCp1250(line, bytes);
    bytes.append("\r\n");
  }
  AtomicFile out(path);
  bool ok = out.Open() && out.Write(bytes) && out.Commit(false);
  if (!ok && error != nullptr) *error = out.error();
  return ok;
}

namespace {

constexpr std::string_view kTemporaryMark = ".saving-";

FileIdentity FromStat(const struct stat& st) {
  FileIdentity id;
  id.device = st.st_dev;
  id.inode = st.st_ino;
  id.size = static_cast<unsigned long long>(st.st_size);
  id.modifiedSeconds = st.st_mtim.tv_sec;
  id.modifiedNanoseconds = st.st_mtim.tv_nsec;
  return id;
}

std::string FolderOf(const std::string& path) {
  std::string folder = fs::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

}  // namespace

std::optional<FileIdentity> IdentityOf(const std::string& path) {
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) return std::nullopt;
  return FromStat(st);
}

std::optional<FileIdentity> IdentityOfOpenFile(int fd) {
  struct stat st;
  if (::fstat(fd, &st) != 0) return std::nullopt;
  return FromStat(st);
}

std::string FollowLinks(const std::string& path) {
  fs::path p(path);
  std::error_code ec;
  for (int hop = 0; hop < 40 && fs::is_symlink(fs::symlink_status(p, ec)); ++hop) {
    fs::path next = fs::read_symlink(p, ec);
    if (ec) break;
    p = next.is_absolute() ? next : p.parent_path() / next;
  }
  fs::path full = fs::weakly_canonical(p, ec);
  return ec ? p.string() : full.string();
}

void RemoveStaleTemporaries(const std::string& target) {
  const std::string prefix = fs::path(target).filename().string() + std::string(kTemporaryMark);
  std::vector<fs::path> candidates;
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(FolderOf(target), ec)) {
    std::string name = entry.path().filename().string();
    if (name.size() == prefix.size() + 6 && name.compare(0, prefix.size(), prefix) == 0) candidates.push_back(entry.path());
  }
  for (const fs::path& candidate : candidates) {
    int fd = ::open(candidate.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) continue;
    struct stat st;
    // A save that is still running holds its file locked.
    if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && ::flock(fd, LOCK_EX | LOCK_NB) == 0) ::unlink(candidate.c_str());
    ::close(fd);
  }
}

AtomicFile::~AtomicFile() {
  if (fd_ >= 0) ::close(fd_);
  if (!temp_.empty() && !committed_) ::unlink(temp_.c_str());
}

bool AtomicFile::Open() {
  file_ = FollowLinks(target_);
  RemoveStaleTemporaries(file_);
  std::string pattern = file_ + std::string(kTemporaryMark) + "XXXXXX";
  fd_ = ::mkostemp(pattern.data(), O_CLOEXEC);
  if (fd_ < 0) return Fail();
  temp_ = pattern;
  ::flock(fd_, LOCK_EX);  // held until the rename: the file of a running save is not stale
  return true;
}

bool AtomicFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    ssize_t put = ::write(fd_, bytes.data(), bytes.size());
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return Fail();
    bytes.remove_prefix(static_cast<std::size_t>(put));
  }
  return true;
}

bool AtomicFile::Commit(bool sync) {
  struct stat st;
  mode_t mode;
  if (::stat(file_.c_str(), &st) == 0) {
    mode = (st.st_mode & 07777) | S_IWUSR;
  } else {
    mode_t mask = ::umask(0);
    ::umask(mask);
    mode = 0666 & ~mask;
  }
  if (::fchmod(fd_, mode) != 0 || (sync && ::fsync(fd_) != 0)) return Fail();
  written_ = IdentityOfOpenFile(fd_);
  // A second descriptor keeps the lock while the written one is closed and checked.
  int lock = ::dup(fd_);
  int fd = fd_;
  fd_ = -1;
  bool ok = ::close(fd) == 0 ? Replace(sync) : Fail();
  if (lock >= 0) ::close(lock);
  return ok;
}

bool AtomicFile::Replace(bool sync) {
  // Saves into one folder take turns here, so that the check and the rename are one step.
  int folder = ::open(FolderOf(file_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) ::flock(folder, LOCK_EX);
  bool ok = true;
  if (required_) {
    auto now = IdentityOf(file_);
    if (now && *now != *required_) {
      changedMeanwhile_ = true;
      error_ = "The file was changed by another program.";
      ok = false;
    }
  }
  if (ok && ::rename(temp_.c_str(), file_.c_str()) != 0) ok = Fail();
  if (ok) {
    committed_ = true;
    // The rename itself is on the disk only when the folder is.
    if (sync && folder >= 0 && ::fsync(folder) != 0) ok = Fail();
  }
  if (folder >= 0) ::close(folder);
  return ok;
}

bool AtomicFile::Fail() {
  error_ = std::strerror(errno);
  return false;
}

}  // namespace tarvika
