#include "host/dxf/AtomicFile.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace dxf {

namespace {

std::string describe(int err) { return std::strerror(err); }

// The temporary file that has a name in the directory right now, for the signal handler below.
char gTemporary[PATH_MAX];
volatile std::sig_atomic_t gTemporaryNamed = 0;

extern "C" void removeTemporaryAndDie(int signal) {
  if (gTemporaryNamed) ::unlink(gTemporary);
  // Ends the process as the signal would have: it is delivered again once this handler returns.
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

// While a drawing is written, a signal that ends the host first removes the temporary file, and a
// file-size limit makes the write fail (EFBIG) instead of ending the host. An unnamed temporary needs no
// removal: the system frees it with the process, even after SIGKILL.
class SignalsWhileSaving {
 public:
  SignalsWhileSaving() {
    struct sigaction remove {};
    remove.sa_handler = removeTemporaryAndDie;
    sigemptyset(&remove.sa_mask);
    for (std::size_t i = 0; i < kEnding; ++i) install(kSignals[i], remove);
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigemptyset(&ignore.sa_mask);
    install(SIGXFSZ, ignore);
  }
  ~SignalsWhileSaving() {
    for (std::size_t i = 0; i < kCount; ++i)
      if (saved_[i]) ::sigaction(kSignals[i], &previous_[i], nullptr);
  }
  SignalsWhileSaving(const SignalsWhileSaving&) = delete;
  SignalsWhileSaving& operator=(const SignalsWhileSaving&) = delete;

 private:
  static constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXFSZ};
  static constexpr std::size_t kCount = sizeof kSignals / sizeof kSignals[0];
  static constexpr std::size_t kEnding = kCount - 1;  // all but SIGXFSZ

  void install(int signal, const struct sigaction& action) {
    for (std::size_t i = 0; i < kCount; ++i) {
      if (kSignals[i] != signal) continue;
      // A signal the user's shell ignores (nohup) stays ignored.
      if (::sigaction(signal, nullptr, &previous_[i]) != 0) return;
      if (previous_[i].sa_handler == SIG_IGN && signal != SIGXFSZ) return;
      saved_[i] = ::sigaction(signal, &action, nullptr) == 0;
    }
  }

  struct sigaction previous_[kCount] {};
  bool saved_[kCount] = {};
};

// Names the temporary for the signal handler; false when the name does not fit.
bool announce(const std::string& name) {
  if (name.size() >= sizeof gTemporary) return false;
  gTemporaryNamed = 0;
  std::memcpy(gTemporary, name.c_str(), name.size() + 1);
  return true;
}

// Where the drawing really goes: a symbolic link is followed (to its final target, which need not exist
// yet), so that the link stays and its target is replaced.
bool resolveTarget(const std::filesystem::path& target, std::filesystem::path& resolved, std::string& why) {
  resolved = target;
  for (int hops = 0; hops < 40; ++hops) {
    std::error_code ec;
    const auto status = std::filesystem::symlink_status(resolved, ec);
    if (ec || !std::filesystem::is_symlink(status)) return true;
    const std::filesystem::path next = std::filesystem::read_symlink(resolved, ec);
    if (ec) {
      why = describe(ec.value());
      return false;
    }
    resolved = next.is_absolute() ? next : resolved.parent_path() / next;
  }
  why = describe(ELOOP);
  return false;
}

// Why an existing file must not be replaced: it is no drawing file (a device, a FIFO, a directory) or the
// user made it read-only. Empty when it may be replaced, or when it does not exist.
std::string refusal(const std::filesystem::path& file, mode_t& mode) {
  struct stat st {};
  if (::stat(file.c_str(), &st) != 0) return errno == ENOENT ? std::string() : describe(errno);
  mode = st.st_mode & 07777;
  if (S_ISDIR(st.st_mode)) return "it is a directory";
  if (!S_ISREG(st.st_mode)) return "it is not a regular file (a device, a pipe or a socket)";
  // The write bits are asked as well as the system, for whom root may write anything.
  if ((st.st_mode & 0222) == 0 || ::access(file.c_str(), W_OK) != 0) return "it is read-only";
  return {};
}

// An unnamed file in `dir`, or -1 where the file system cannot make one.
int openUnnamed(const std::filesystem::path& dir) {
#ifdef O_TMPFILE
  return ::open(dir.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
#else
  (void)dir;
  errno = EOPNOTSUPP;
  return -1;
#endif
}

// Gives the unnamed file `fd` the name `name` in its directory; false with errno set.
bool linkUnnamed(int fd, const std::string& name) {
  const std::string self = "/proc/self/fd/" + std::to_string(fd);
  if (::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) return true;
#ifdef AT_EMPTY_PATH
  if (errno == ENOENT || errno == EPERM)
    if (::linkat(fd, "", AT_FDCWD, name.c_str(), AT_EMPTY_PATH) == 0) return true;
#endif
  return false;
}

}  // namespace

bool replaceFileAtomically(const std::filesystem::path& requested, const std::function<int(int fd)>& write,
                           std::string& error) {
  const std::string name = requested.string();
  if (requested.empty() || requested.filename().empty()) {
    error = (name.empty() ? std::string("(no file name)") : name) + ": cannot be written: not a file name";
    return false;
  }
  std::filesystem::path target;
  std::string why;
  if (!resolveTarget(requested, target, why)) {
    error = name + ": cannot be written: " + why;
    return false;
  }
  mode_t mode = 0644;  // the usual permissions of a new drawing; an existing one keeps its own
  if (std::string refused = refusal(target, mode); !refused.empty()) {
    error = name + ": cannot be written: " + refused;
    return false;
  }
  const std::filesystem::path dir = target.parent_path().empty() ? "." : target.parent_path();
  const std::string finalName = target.string();
  SignalsWhileSaving signals;

  // The temporary goes in the target's directory, so that the rename stays within one file system.
  std::string leaf = ".";
  leaf += target.filename().string();
  std::string tmp;
  bool named = false;
  // Fills the open temporary and flushes it: 0 or the errno of the failure.
  auto fill = [&](int fd) {
    if (::fchmod(fd, mode) != 0) return errno;
    int err = 0;
    try {
      err = write(fd);
    } catch (...) {  // out of memory while the drawing was put together
      ::close(fd);
      if (named) ::unlink(tmp.c_str());
      gTemporaryNamed = 0;
      throw;
    }
    if (err == 0 && ::fsync(fd) != 0) err = errno;
    return err;
  };

  int err = 0;
  int fd = openUnnamed(dir);
  if (fd >= 0) {
    err = fill(fd);
    // The complete unnamed file gets a name only now, right before it replaces the target.
    bool linkFailed = false;
    for (int attempt = 0; err == 0 && !named && !linkFailed; ++attempt) {
      tmp = (dir / (leaf + "." + std::to_string(::getpid()) + "-" + std::to_string(attempt))).string();
      if (!announce(tmp)) {
        err = ENAMETOOLONG;
        break;
      }
      gTemporaryNamed = 1;
      if (linkUnnamed(fd, tmp)) {
        named = true;
      } else {
        gTemporaryNamed = 0;
        linkFailed = errno != EEXIST || attempt >= 100;
      }
    }
    if (::close(fd) != 0 && err == 0 && !linkFailed) err = errno;
    // Without /proc nor the right to link by descriptor, the drawing is written again, the named way.
    if (linkFailed) fd = -1;
  }
  if (fd < 0) {
    tmp = (dir / (leaf + ".XXXXXX")).string();
    if (!announce(tmp)) {
      error = name + ": cannot be written: " + describe(ENAMETOOLONG);
      return false;
    }
    fd = ::mkstemp(gTemporary);
    if (fd < 0) {
      error = name + ": cannot be written: " + describe(errno);
      return false;
    }
    gTemporaryNamed = 1;
    tmp = gTemporary;
    named = true;
    err = fill(fd);
    if (::close(fd) != 0 && err == 0) err = errno;
  }
  if (err == 0 && ::rename(tmp.c_str(), finalName.c_str()) != 0) err = errno;
  if (err != 0 && named) ::unlink(tmp.c_str());
  gTemporaryNamed = 0;
  if (err != 0) {
    error = name + ": cannot be written: " + describe(err);
    return false;
  }
  // Make the rename itself durable; a failure here leaves a complete file either way.
  const int dirFd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dirFd >= 0) {
    ::fsync(dirFd);
    ::close(dirFd);
  }
  return true;
}

}  // namespace dxf
