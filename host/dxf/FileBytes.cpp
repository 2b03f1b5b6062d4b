#include "host/dxf/FileBytes.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <new>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace dxf {

namespace {

// Closes the descriptor whatever way reading ends.
struct Descriptor {
  int fd;
  ~Descriptor() {
    if (fd >= 0) ::close(fd);
  }
};

constexpr std::size_t kHugePage = std::size_t{2} << 20;

// The leased mappings, for the lease-break signal to find by descriptor. A fixed table of atomics, since a
// signal handler may neither lock nor allocate.
enum SlotState : int { kFree, kClaimed, kLeased, kBreaking };
struct LeaseSlot {
  std::atomic<int> state{kFree};
  std::atomic<int> fd{-1};
  std::atomic<bool> privateCopy{false};
  std::atomic<bool> lost{false};  // the lease was given back before the file was mapped
  char* data = nullptr;           // null until the file is mapped
  std::size_t size = 0;
  std::size_t length = 0;
};
std::array<LeaseSlot, 64> leaseSlots;

// Another program wants to write to or truncate a leased file and waits for us: the bytes become a private
// copy at the same address (the records point into them), then the lease is given back. The file's pages
// cannot change before that, as the writer is held until we let go.
void privatize(LeaseSlot& slot) {
  const int fd = slot.fd.load();
  if (slot.data == nullptr) {
    // Not mapped yet: the mapping is given up and the file read instead (see mapLeased).
    slot.lost.store(true);
  } else if (!slot.privateCopy.load()) {
    void* copy = ::mmap(nullptr, slot.length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (copy != MAP_FAILED) {
      std::memcpy(copy, slot.data, slot.size);
      if (::mremap(copy, slot.length, slot.length, MREMAP_MAYMOVE | MREMAP_FIXED, slot.data) != MAP_FAILED)
        slot.privateCopy.store(true);
      else
        ::munmap(copy, slot.length);
    }
    // Without memory for a copy the lease is kept: the writer waits for the system's lease-break time, the
    // longest we can hold it off.
    if (!slot.privateCopy.load()) return;
  }
  ::fcntl(fd, F_SETLEASE, F_UNLCK);
}

void onLeaseBreak(int, siginfo_t* info, void*) {
  const int savedErrno = errno;
  for (LeaseSlot& slot : leaseSlots) {
    if (slot.fd.load() != info->si_fd) continue;
    int leased = kLeased;
    if (!slot.state.compare_exchange_strong(leased, kBreaking)) continue;
    if (slot.fd.load() == info->si_fd) privatize(slot);
    slot.state.store(kLeased);
  }
  errno = savedErrno;
}

// The signal the system sends when a lease must be broken: a real-time one, which nothing else here uses,
// with the descriptor in its information. Zero where it cannot be had.
int leaseSignal() {
  static const int signal = [] {
    const int candidate = SIGRTMIN + 5;
    if (candidate > SIGRTMAX) return 0;
    struct sigaction old {};
    if (::sigaction(candidate, nullptr, &old) != 0) return 0;
    if ((old.sa_flags & SA_SIGINFO) != 0 || old.sa_handler != SIG_DFL) return 0;  // someone else's
    struct sigaction action {};
    action.sa_sigaction = onLeaseBreak;
    action.sa_flags = SA_SIGINFO | SA_RESTART;
    sigemptyset(&action.sa_mask);
    return ::sigaction(candidate, &action, nullptr) == 0 ? candidate : 0;
  }();
  return signal;
}

// Keeps the signal away from a slot while its owner changes it.
void hold(LeaseSlot& slot) {
  for (int leased = kLeased; !slot.state.compare_exchange_weak(leased, kClaimed); leased = kLeased) {
  }
}

void freeSlot(LeaseSlot& slot) {
  slot.fd.store(-1);
  slot.data = nullptr;
  slot.state.store(kFree);
}

// Maps the whole file under a read lease; -1 where no lease can be had or it was lost before the mapping
// stood. Takes the descriptor over when it succeeds.
int mapLeased(int fd, std::size_t size, char*& data, std::size_t& length) {
  const int signal = leaseSignal();
  if (signal == 0) return -1;
  int slotIndex = -1;
  for (std::size_t i = 0; i < leaseSlots.size() && slotIndex < 0; ++i) {
    int free = kFree;
    if (leaseSlots[i].state.compare_exchange_strong(free, kClaimed)) slotIndex = static_cast<int>(i);
  }
  if (slotIndex < 0) return -1;
  LeaseSlot& slot = leaseSlots[static_cast<std::size_t>(slotIndex)];
  // The slot is in the signal's reach before the lease is taken, so that a writer arriving while the file
  // is being mapped is let go at once; the lease before the size, so that nobody changes the file unnoticed
  // after it was read.
  slot.data = nullptr;
  slot.privateCopy.store(false);
  slot.lost.store(false);
  slot.fd.store(fd);
  slot.state.store(kLeased);
  struct stat info {};
  void* memory = MAP_FAILED;
  if (::fcntl(fd, F_SETSIG, signal) == 0 && ::fcntl(fd, F_SETLEASE, F_RDLCK) == 0 && ::fstat(fd, &info) == 0 &&
      static_cast<std::size_t>(info.st_size) == size)
    memory = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd, 0);
  hold(slot);
  if (memory == MAP_FAILED || slot.lost.load()) {
    if (memory != MAP_FAILED) ::munmap(memory, size);
    ::fcntl(fd, F_SETLEASE, F_UNLCK);
    freeSlot(slot);
    return -1;
  }
  const std::size_t page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  slot.data = static_cast<char*>(memory);
  slot.size = size;
  slot.length = (size + page - 1) / page * page;
  slot.state.store(kLeased);
  data = slot.data;
  length = slot.length;
  return slotIndex;
}

}  // namespace

bool FileBytes::leased() const {
  return lease_ >= 0 && !leaseSlots[static_cast<std::size_t>(lease_)].privateCopy.load();
}

void FileBytes::release() {
  if (lease_ >= 0) {
    LeaseSlot& slot = leaseSlots[static_cast<std::size_t>(lease_)];
    hold(slot);  // out of the signal's reach before the mapping goes
    ::munmap(mapped_, length_);
    ::close(slot.fd.load());  // which ends the lease
    freeSlot(slot);
  } else if (mapped_) {
    ::munmap(mapped_, length_);
  }
  mapped_ = nullptr;
  lease_ = -1;
}

FileBytes::FileBytes(FileBytes&& other) noexcept
    : text_(std::move(other.text_)),
      mapped_(std::exchange(other.mapped_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      length_(std::exchange(other.length_, 0)),
      lease_(std::exchange(other.lease_, -1)) {}

FileBytes& FileBytes::operator=(FileBytes&& other) noexcept {
  if (this != &other) {
    release();
    text_ = std::move(other.text_);
    mapped_ = std::exchange(other.mapped_, nullptr);
    size_ = std::exchange(other.size_, 0);
    length_ = std::exchange(other.length_, 0);
    lease_ = std::exchange(other.lease_, -1);
  }
  return *this;
}

FileBytes::~FileBytes() { release(); }

std::optional<FileBytes> FileBytes::read(const std::filesystem::path& path, std::size_t limit, std::string& error) {
  Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC)};
  if (file.fd < 0) {
    error = std::string("cannot be opened: ") + std::strerror(errno);
    return std::nullopt;
  }
  struct stat info {};
  if (::fstat(file.fd, &info) != 0 || info.st_size < 0) {
    error = "cannot be read";
    return std::nullopt;
  }
  const auto size = static_cast<std::size_t>(info.st_size);
  if (size > limit) {
    error = "is larger than the " + std::to_string(limit >> 20) + " MiB a drawing may have";
    return std::nullopt;
  }
  FileBytes bytes;
  if (size == 0) return bytes;
  if (S_ISREG(info.st_mode)) {
    bytes.lease_ = mapLeased(file.fd, size, bytes.mapped_, bytes.length_);
    if (bytes.lease_ >= 0) {
      file.fd = -1;  // kept open for the lease while the drawing lives
      bytes.size_ = size;
      return bytes;
    }
  }
  // Whole huge pages, so that the system can back all of it with them.
  bytes.length_ = (size + kHugePage - 1) / kHugePage * kHugePage;
  void* memory = ::mmap(nullptr, bytes.length_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) {
    // No room for the drawing is a shortage of memory like any other, which the caller reports as such.
    if (errno == ENOMEM) throw std::bad_alloc();
    error = std::string("cannot be read: ") + std::strerror(errno);
    return std::nullopt;
  }
  bytes.mapped_ = static_cast<char*>(memory);
#ifdef MADV_HUGEPAGE
  ::madvise(memory, bytes.length_, MADV_HUGEPAGE);  // a hint: without huge pages it reads all the same
#endif
  // The size seen above: a file that shrinks meanwhile is refused, one that grows is read as it was.
  while (bytes.size_ < size) {
    const ssize_t n = ::read(file.fd, bytes.mapped_ + bytes.size_, size - bytes.size_);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      error = std::string("cannot be read: ") + std::strerror(errno);
      return std::nullopt;
    }
    if (n == 0) {
      error = "changed while it was read (it became shorter); open it again";
      return std::nullopt;
    }
    bytes.size_ += static_cast<std::size_t>(n);
  }
  return bytes;
}

}  // namespace dxf
