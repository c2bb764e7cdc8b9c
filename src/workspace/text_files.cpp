#include "workspace/text_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "lang/cp1250.h"

namespace tarvika {

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

AtomicFile::~AtomicFile() {
  if (fd_ >= 0) ::close(fd_);
  if (!temp_.empty() && !committed_) ::unlink(temp_.c_str());
}

bool AtomicFile::Open() {
  std::string pattern = target_ + ".XXXXXX";
  fd_ = ::mkostemp(pattern.data(), O_CLOEXEC);
  if (fd_ < 0) return Fail();
  temp_ = pattern;
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
  if (::stat(target_.c_str(), &st) == 0) {
    mode = (st.st_mode & 07777) | S_IWUSR;
  } else {
    mode_t mask = ::umask(0);
    ::umask(mask);
    mode = 0666 & ~mask;
  }
  if (::fchmod(fd_, mode) != 0 || (sync && ::fsync(fd_) != 0)) return Fail();
  int fd = fd_;
  fd_ = -1;
  if (::close(fd) != 0) return Fail();
  if (::rename(temp_.c_str(), target_.c_str()) != 0) return Fail();
  committed_ = true;
  return true;
}

bool AtomicFile::Fail() {
  error_ = std::strerror(errno);
  return false;
}

}  // namespace tarvika
