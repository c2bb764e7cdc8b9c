#include "lang/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "lang/cp1250.h"

namespace tarvika {

InputFile::InputFile(const std::string& path, std::size_t block) {
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) {
    error_ = std::strerror(errno);
    return;
  }
  struct stat st;
  if (::fstat(fd_, &st) != 0 || S_ISDIR(st.st_mode)) {
    error_ = S_ISDIR(st.st_mode) ? std::strerror(EISDIR) : std::strerror(errno);
    ::close(fd_);
    fd_ = -1;
    return;
  }
  ::posix_fadvise(fd_, 0, 0, POSIX_FADV_SEQUENTIAL);
  // A small regular file is read at once; one more byte sees its end.
  std::size_t size = block;
  if (S_ISREG(st.st_mode) && static_cast<std::size_t>(st.st_size) < block) size = static_cast<std::size_t>(st.st_size) + 1;
  buf_.resize(std::max<std::size_t>(size, 1));
}

InputFile::~InputFile() {
  if (fd_ >= 0) ::close(fd_);
}

bool InputFile::Fill() {
  if (eof_ || fd_ < 0) return false;
  if (begin_ > 0) {
    std::memmove(buf_.data(), buf_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  if (end_ == buf_.size()) buf_.resize(buf_.size() * 2);  // one line fills the buffer
  ssize_t got;
  do {
    got = ::read(fd_, buf_.data() + end_, buf_.size() - end_);
  } while (got < 0 && errno == EINTR);
  lf_ = kStale;
  if (got < 0) error_ = std::strerror(errno);
  if (got <= 0) {
    eof_ = true;
    return false;
  }
  end_ += static_cast<std::size_t>(got);
  return true;
}

bool InputFile::NextRaw(std::string_view& line) {
  for (;;) {
    const char* base = buf_.data();
    // memchr may not be given the null data of an empty buffer, even for no bytes.
    if (lf_ == kStale || lf_ < begin_) {
      const void* p = end_ > begin_ ? std::memchr(base + begin_, '\n', end_ - begin_) : nullptr;
      lf_ = p != nullptr ? static_cast<std::size_t>(static_cast<const char*>(p) - base) : end_;
    }
    const void* cr = lf_ > begin_ ? std::memchr(base + begin_, '\r', lf_ - begin_) : nullptr;
    std::size_t stop = cr != nullptr ? static_cast<std::size_t>(static_cast<const char*>(cr) - base) : lf_;
    // A CR as the last byte read may be the first half of CR LF: read on before deciding.
    bool crAtEdge = cr != nullptr && stop + 1 == end_ && !eof_;
    if (stop < end_ && !crAtEdge) {
      line = std::string_view(base + begin_, stop - begin_);
      std::size_t next = stop + 1;
      if (base[stop] == '\r' && next < end_ && base[next] == '\n') ++next;
      begin_ = next;
      return true;
    }
    if (!Fill()) {
      if (begin_ == end_ || Failed()) return false;
      base = buf_.data();
      std::size_t last = base[end_ - 1] == '\r' ? end_ - 1 : end_;
      line = std::string_view(base + begin_, last - begin_);
      begin_ = end_;
      return true;
    }
  }
}

bool InputFile::Next(std::string& line, FileEncoding encoding) {
  std::string_view raw;
  if (!NextRaw(raw)) return false;
  line.clear();
  if (encoding == FileEncoding::Windows1250) {
    AppendCp1250AsUtf8(raw, line);
  } else {
    line.assign(raw);
  }
  return true;
}

std::optional<std::vector<std::string>> ReadLines(const std::string& path, FileEncoding encoding, std::string* error) {
  InputFile file(path);
  std::vector<std::string> lines;
  for (std::string line; file.IsOpen() && file.Next(line, encoding);) lines.push_back(std::move(line));
  if (!file.IsOpen() || file.Failed()) {
    if (error != nullptr) *error = file.Error();
    return std::nullopt;
  }
  return lines;
}

}  // namespace tarvika
