// Saving a drawing must never leave a half-written file or a stray temporary beside it, whatever ends the
// host meanwhile, and must not replace what is no drawing file: a link is followed, a FIFO, a directory or
// a read-only file is refused.
#include "DxfTestSupport.h"

#include "host/dxf/AtomicFile.h"
#include "host/dxf/Document.h"
#include "host/dxf/FileBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

// Writes `bytes` through the atomic replacement; `error` keeps the message.
bool save(const fs::path& target, const std::string& bytes, std::string& error) {
  return dxf::replaceFileAtomically(
      target,
      [&bytes](int fd) {
        std::size_t done = 0;
        while (done < bytes.size()) {
          const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
          if (n < 0) return errno;
          done += static_cast<std::size_t>(n);
        }
        return 0;
      },
      error);
}

std::vector<std::string> entries(const fs::path& dir) {
  std::vector<std::string> names;
  for (const auto& e : fs::directory_iterator(dir)) names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(SafeSave, LinksAreFollowedAndWhatIsNoDrawingFileIsRefused) {
  const fs::path dir = dxftest::scratchDir("safe-save-targets");
  std::string error;

  // A link (relative, through a second link) keeps being a link; its final target gets the drawing.
  fs::create_directories(dir / "real");
  dxftest::writeFile(dir / "real" / "plan.dxf", "old");
  fs::create_symlink("real/plan.dxf", dir / "first-link.dxf");
  fs::create_symlink("first-link.dxf", dir / "link.dxf");
  ASSERT_TRUE(save(dir / "link.dxf", "new", error)) << error;
  EXPECT_TRUE(fs::is_symlink(dir / "link.dxf"));
  EXPECT_TRUE(fs::is_symlink(dir / "first-link.dxf"));
  EXPECT_EQ(dxftest::readFile(dir / "real" / "plan.dxf"), "new");
  // A dangling link gets its target made.
  fs::create_symlink("real/fresh.dxf", dir / "dangling.dxf");
  ASSERT_TRUE(save(dir / "dangling.dxf", "fresh", error)) << error;
  EXPECT_TRUE(fs::is_symlink(dir / "dangling.dxf"));
  EXPECT_EQ(dxftest::readFile(dir / "real" / "fresh.dxf"), "fresh");

  // A FIFO, a directory and a read-only drawing (refused even for root, who could write it) stay as they are.
  ASSERT_EQ(::mkfifo((dir / "pipe.dxf").c_str(), 0644), 0);
  EXPECT_FALSE(save(dir / "pipe.dxf", "x", error));
  EXPECT_THAT(error, HasSubstr("not a regular file"));
  EXPECT_TRUE(fs::is_fifo(dir / "pipe.dxf"));
  // A device node of our own (root may make one): a null device that must stay one.
  if (::mknod((dir / "device.dxf").c_str(), S_IFCHR | 0666, makedev(1, 3)) == 0) {
    EXPECT_FALSE(save(dir / "device.dxf", "x", error));
    EXPECT_THAT(error, HasSubstr("not a regular file"));
    EXPECT_TRUE(fs::is_character_file(dir / "device.dxf"));
    fs::remove(dir / "device.dxf");
  }
  fs::create_directories(dir / "folder.dxf");
  EXPECT_FALSE(save(dir / "folder.dxf", "x", error));
  EXPECT_THAT(error, HasSubstr("directory"));
  dxftest::writeFile(dir / "locked.dxf", "kept");
  fs::permissions(dir / "locked.dxf", fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  EXPECT_FALSE(save(dir / "locked.dxf", "x", error));
  EXPECT_THAT(error, HasSubstr("read-only"));
  EXPECT_EQ(dxftest::readFile(dir / "locked.dxf"), "kept");
  EXPECT_FALSE(save("", "x", error));
  EXPECT_THAT(error, HasSubstr("not a file name"));
  // A link to something refused is refused as well.
  fs::create_symlink("pipe.dxf", dir / "to-pipe.dxf");
  EXPECT_FALSE(save(dir / "to-pipe.dxf", "x", error));
  EXPECT_TRUE(fs::is_fifo(dir / "pipe.dxf"));

  // A drawing kept in place keeps its permissions; nothing else was left in the folder.
  fs::permissions(dir / "real" / "plan.dxf", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  ASSERT_TRUE(save(dir / "real" / "plan.dxf", "newer", error)) << error;
  EXPECT_EQ(fs::status(dir / "real" / "plan.dxf").permissions() & fs::perms::all,
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  EXPECT_EQ(entries(dir), (std::vector<std::string>{"dangling.dxf", "first-link.dxf", "folder.dxf", "link.dxf",
                                                     "locked.dxf", "pipe.dxf", "real", "to-pipe.dxf"}));
  EXPECT_EQ(entries(dir / "real"), (std::vector<std::string>{"fresh.dxf", "plan.dxf"}));
}

// Runs a save in a child process that a signal ends half-way; answers the child's wait status.
int saveEndedBy(const fs::path& target, int signal) {
  const pid_t pid = ::fork();
  if (pid == 0) {
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    std::string error;
    dxf::replaceFileAtomically(
        target,
        [signal](int fd) {
          const std::string half(1 << 16, 'x');
          if (::write(fd, half.data(), half.size()) < 0) return errno;
          ::raise(signal);
          return 0;
        },
        error);
    ::_exit(0);  // only reached when the signal did not end the process
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  return status;
}

TEST(SafeSave, NoTemporaryOutlivesAnySignalAndAFileSizeLimitFailsTheSave) {
  const fs::path dir = dxftest::scratchDir("safe-save-signals");
  const fs::path target = dir / "plan.dxf";
  dxftest::writeFile(target, "the drawing as it was");
  for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGKILL}) {
    SCOPED_TRACE(signal);
    const int status = saveEndedBy(target, signal);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
    EXPECT_EQ(entries(dir), std::vector<std::string>{"plan.dxf"});
    EXPECT_EQ(dxftest::readFile(target), "the drawing as it was");
  }

  // Beyond the file-size limit the save fails with a message, and the host lives on.
  const pid_t pid = ::fork();
  if (pid == 0) {
    const rlimit small{4096, 4096};
    ::setrlimit(RLIMIT_FSIZE, &small);
    std::string error;
    const bool saved = save(target, std::string(1 << 16, 'y'), error);
    ::_exit(!saved && error.find("too large") != std::string::npos ? 0 : 1);
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  EXPECT_EQ(entries(dir), std::vector<std::string>{"plan.dxf"});
  EXPECT_EQ(dxftest::readFile(target), "the drawing as it was");
}

}  // namespace

namespace {

// An open drawing does not lean on its file: another program may cut the file short or write over it in
// place while the drawing is open, and the drawing still saves whole.
TEST(SafeSave, AnOpenDrawingOutlivesItsFileBeingCutOrOverwritten) {
  const fs::path dir = dxftest::scratchDir("safe-save-file-changes");
  const fs::path file = dir / "plan.dxf";
  const std::string original = dxftest::readFile(dxftest::corpus().back());
  dxftest::writeFile(file, original);
  std::string error;
  auto doc = dxf::Document::load(file, error);
  ASSERT_TRUE(doc) << error;
  ASSERT_EQ(::truncate(file.c_str(), 100), 0);
  EXPECT_EQ(doc->bytes(), original);
  {
    std::FILE* f = std::fopen(file.c_str(), "r+");
    ASSERT_NE(f, nullptr);
    const std::string other(original.size(), 'x');
    std::fwrite(other.data(), 1, other.size(), f);
    std::fclose(f);
  }
  ASSERT_TRUE(doc->save(file, error)) << error;
  EXPECT_EQ(dxftest::readFile(file), original);
}

// Where the file is mapped, the program that writes over it is another process, held by the lease until
// the bytes are a private copy; it then writes, and the copy stays as the file was.
TEST(SafeSave, AMappedDrawingKeepsItsBytesWhenAnotherProcessWritesTheFile) {
  const fs::path file = dxftest::scratchDir("safe-save-lease") / "plan.dxf";
  const std::string original = dxftest::readFile(dxftest::corpus().back());
  dxftest::writeFile(file, original);
  std::string error;
  auto bytes = dxf::FileBytes::read(file, std::size_t{1} << 30, error);
  ASSERT_TRUE(bytes) << error;
  if (!bytes->leased()) GTEST_SKIP() << "no read lease on this file system";
  const pid_t writer = ::fork();
  ASSERT_GE(writer, 0);
  if (writer == 0) {
    std::FILE* f = std::fopen(file.c_str(), "w");  // truncates: waits for the lease
    const bool ok = f && std::fputs("0\nEOF\n", f) >= 0 && std::fclose(f) == 0;
    ::_exit(ok ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(writer, &status, 0), writer);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  EXPECT_EQ(dxftest::readFile(file), "0\nEOF\n");
  EXPECT_FALSE(bytes->leased());
  EXPECT_EQ(bytes->view(), original);
}

}  // namespace
