// Links, permissions, owners and devices, as only POSIX systems have them.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>

#include "ScratchFolder.h"
#include "files/FileError.h"
#include "files/Files.h"
#include "files/NamesIn.h"

namespace quenmar {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

/// Acts without the rights of the administrator for as long as it lives.
class Unprivileged {
 public:
  Unprivileged() { EXPECT_EQ(::seteuid(::geteuid() == 0 ? kNobody : ::geteuid()), 0); }
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;
  ~Unprivileged() { EXPECT_EQ(::seteuid(::getuid()), 0); }
};

/// Lets no file grow beyond `size` bytes for as long as it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit = {size, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  void (*handler_)(int);
  rlimit before_{};
};

struct stat StatusOf(const Path& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
  return status;
}

mode_t ModeOf(const Path& path) { return StatusOf(path).st_mode & 07777U; }

/// @return the system's number for the failure of `ReplaceBytes`, 0 when it succeeds.
int ReplaceError(const Path& path, const std::string& bytes = "new") {
  try {
    ReplaceBytes(path, bytes);
  } catch (const FileError& error) {
    return error.Number();
  }
  return 0;
}

class PosixFiles : public ::testing::Test {
 protected:
  void Make(const Path& file, mode_t mode) const {
    WriteInPlace(file, "old");
    ASSERT_EQ(::chmod(file.c_str(), mode), 0);
  }

  ScratchFolder folder_;
  Path file_ = folder_ / "file";
  Path copy_ = folder_ / "copy";
};

TEST_F(PosixFiles, AReplacedFileKeepsItsPermissionsAndANewOneGetsTheDefault) {
  for (const mode_t mode : {0600U, 0640U, 0755U}) {
    Make(file_, mode);
    const ino_t before = StatusOf(file_).st_ino;
    ReplaceBytes(file_, "new");
    EXPECT_EQ(ModeOf(file_), mode);
    EXPECT_NE(StatusOf(file_).st_ino, before) << "written in place";
  }
  const mode_t mask = ::umask(026);
  ReplaceBytes(copy_, "new");
  ::umask(mask);
  EXPECT_EQ(ModeOf(copy_), 0640U);
}

TEST_F(PosixFiles, LinksAreFollowedAlsoToFilesThatAreYetToBe) {
  fs::create_directory(folder_ / "below");
  fs::create_symlink("second", folder_ / "first");
  fs::create_symlink("below/target", folder_ / "second");
  for (const std::string content : {"created", "replaced"}) {
    ReplaceBytes(folder_ / "first", content);
    EXPECT_TRUE(fs::is_symlink(folder_ / "first") && fs::is_symlink(folder_ / "second"));
    EXPECT_EQ(ReadBytes(folder_ / "below" / "target"), content);
  }
  fs::create_symlink("loop", folder_ / "loop");
  EXPECT_EQ(ReplaceError(folder_ / "loop"), ELOOP);
}

TEST_F(PosixFiles, AFailedWriteKeepsTheOldContent) {
  Make(file_, 0644);
  {
    const FileSizeLimit limit(100'000);
    EXPECT_EQ(ReplaceError(file_, std::string(100'001, 'x')), EFBIG);
  }
  EXPECT_EQ(ReadBytes(file_), "old");
  EXPECT_EQ(NamesIn(folder_), Names{"file"});
}

TEST_F(PosixFiles, WhereTheFolderTakesNoFileTheOldOneIsWrittenInPlace) {
  Make(file_, 0666);
  const ino_t before = StatusOf(file_).st_ino;
  fs::permissions(folder_.Folder(), fs::perms(0555));
  {
    const Unprivileged unprivileged;
    EXPECT_EQ(ReplaceError(file_), 0);
    EXPECT_EQ(ReplaceError(copy_), EACCES);
  }
  fs::permissions(folder_.Folder(), fs::perms(0755));
  EXPECT_EQ(ReadBytes(file_), "new");
  EXPECT_EQ(StatusOf(file_).st_ino, before);
}

TEST_F(PosixFiles, AWriteProtectedFileIsNotReplaced) {
  Make(file_, 0444);
  fs::permissions(folder_.Folder(), fs::perms(0777));
  const Unprivileged unprivileged;
  EXPECT_EQ(ReplaceError(file_), EACCES);
  EXPECT_EQ(ReadBytes(file_), "old");
  EXPECT_EQ(NamesIn(folder_), Names{"file"});
}

TEST_F(PosixFiles, DevicesAreWrittenNotReplaced) {
  const Path full = "/dev/full";
  if (!fs::is_character_file(full)) GTEST_SKIP() << "no device that is always full";
  EXPECT_EQ(ReplaceError("/dev/null"), 0);
  EXPECT_EQ(ReplaceError(full), ENOSPC);
  EXPECT_TRUE(fs::is_character_file("/dev/null") && fs::is_character_file(full));
}

TEST_F(PosixFiles, ABackUpHasThePermissionsOfItsOriginal) {
  for (const mode_t mode : {0600U, 0644U}) {
    Make(file_, mode);
    BackUp(file_, copy_);
    EXPECT_EQ(ModeOf(copy_), mode);
    EXPECT_EQ(ReadBytes(copy_), "old");
  }
  Make(file_, 0600);
  Make(copy_, 0666);
  fs::permissions(folder_.Folder(), fs::perms(0555));
  BackUp(file_, copy_);
  EXPECT_EQ(ModeOf(copy_), 0600U);
  fs::permissions(folder_.Folder(), fs::perms(0755));
}

TEST_F(PosixFiles, OwnersStayAndABackUpThatCannotKeepThemIsPrivate) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator gives files away";
  Make(file_, 0664);
  ASSERT_EQ(::chown(file_.c_str(), kNobody, kNobody), 0);
  ReplaceBytes(file_, "new");
  EXPECT_EQ(StatusOf(file_).st_uid, kNobody);
  EXPECT_EQ(StatusOf(file_).st_gid, kNobody);

  ASSERT_EQ(::chown(file_.c_str(), 0, 0), 0);
  fs::permissions(folder_.Folder(), fs::perms(0777));
  {
    const Unprivileged unprivileged;  // a member of the group, yet not the owner
    BackUp(file_, copy_);
    EXPECT_EQ(ReplaceError(file_, "newer"), 0);
  }
  EXPECT_EQ(ModeOf(copy_), 0600U);
  EXPECT_EQ(ReadBytes(copy_), "new");
  EXPECT_EQ(ReadBytes(file_), "newer");
  EXPECT_EQ(StatusOf(file_).st_uid, 0U);
  EXPECT_EQ(ModeOf(file_), 0664U);
}

}  // namespace
}  // namespace quenmar
