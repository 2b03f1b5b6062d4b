#include "host/dxf/AtomicFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace dxf {

namespace {

std::string describe(int err) { return std::strerror(err); }

}  // namespace

bool replaceFileAtomically(const std::filesystem::path& target, const std::function<int(int fd)>& write,
                           std::string& error) {
  const std::string name = target.string();
  if (target.filename().empty()) {
    error = name + ": cannot be written: not a file name";
    return false;
  }
  const std::filesystem::path dir = target.parent_path().empty() ? "." : target.parent_path();
  // A temporary in the same directory, so that the rename stays within one file system.
  std::string leaf = ".";
  leaf += target.filename().string();
  leaf += ".XXXXXX";
  const std::string pattern = (dir / leaf).string();
  std::vector<char> tmpName(pattern.begin(), pattern.end());
  tmpName.push_back('\0');
  const int fd = ::mkstemp(tmpName.data());
  if (fd < 0) {
    error = name + ": cannot be written: " + describe(errno);
    return false;
  }
  const std::string tmp(tmpName.data());

  // The new file gets the old one's permissions, or the usual ones for a new drawing.
  struct stat old {};
  const mode_t mode = (::stat(name.c_str(), &old) == 0) ? (old.st_mode & 07777) : 0644;
  int err = 0;
  if (::fchmod(fd, mode) != 0) err = errno;
  if (err == 0) err = write(fd);
  if (err == 0 && ::fsync(fd) != 0) err = errno;
  if (::close(fd) != 0 && err == 0) err = errno;
  if (err == 0 && ::rename(tmp.c_str(), name.c_str()) != 0) err = errno;
  if (err != 0) {
    ::unlink(tmp.c_str());
    error = name + ": cannot be written: " + describe(err);
    return false;
  }
  // Make the rename itself durable; a failure here leaves a complete file either way.
  const int dirFd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY);
  if (dirFd >= 0) {
    ::fsync(dirFd);
    ::close(dirFd);
  }
  return true;
}

}  // namespace dxf
