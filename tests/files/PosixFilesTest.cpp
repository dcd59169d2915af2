// Links, permissions, owners and devices, as only POSIX systems have them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "ScratchFolder.h"
#include "files/FileError.h"
#include "files/Files.h"

namespace quenmar {
namespace {

namespace fs = std::filesystem;

/// Acts without the administrator's rights for as long as it lives.
struct Unprivileged {
  static uid_t User() { return ::getuid() == 0 ? 65534 : ::getuid(); }
  Unprivileged() { EXPECT_EQ(::seteuid(User()), 0); }
  ~Unprivileged() { EXPECT_EQ(::seteuid(::getuid()), 0); }
};

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
  static void Make(const Path& file, mode_t mode, uid_t owner = Unprivileged::User()) {
    WriteInPlace(file, "old");
    ASSERT_EQ(::chmod(file.c_str(), mode) + ::chown(file.c_str(), owner, ::getegid()), 0);
  }
  /// @return the permissions in octal digits, and the content.
  static std::string State(const Path& file) {
    const auto mode = static_cast<unsigned>(fs::status(file).permissions());
    return std::to_string(mode / 64) + std::to_string(mode / 8 % 8) + std::to_string(mode % 8) +
           ReadBytes(file);
  }
  void SetFolderMode(mode_t mode) const { ::chmod(folder_.Folder().c_str(), mode); }

  ScratchFolder folder_;
  Path file_ = folder_ / "file";
  Path copy_ = folder_ / "copy";
};

TEST_F(PosixFiles, PermissionsStayGoWithACopyAndAreTheDefaultElsewhere) {
  for (const mode_t mode : {0600U, 0755U}) {
    Make(file_, mode);
    ReplaceBytes(file_, "new");
    CopyBeside(file_, "new", copy_);
    EXPECT_EQ(State(file_), mode == 0600 ? "600new" : "755new");
    EXPECT_EQ(State(copy_), State(file_));
  }
  fs::remove(file_);
  const mode_t mask = ::umask(026);
  ReplaceBytes(file_, "new");
  ::umask(mask);
  EXPECT_EQ(State(file_), "640new");
}

TEST_F(PosixFiles, LinksAreFollowedAlsoToFilesThatAreYetToBe) {
  fs::create_directory(folder_ / "below");
  fs::create_symlink("second", folder_ / "first");
  fs::create_symlink("below/target", folder_ / "second");
  fs::create_symlink("loop", folder_ / "loop");
  for (const std::string content : {"created", "replaced"}) {
    ReplaceBytes(folder_ / "first", content);
    EXPECT_TRUE(fs::is_symlink(folder_ / "first") && fs::is_symlink(folder_ / "second"));
    EXPECT_EQ(ReadBytes(folder_ / "below" / "target"), content);
  }
  EXPECT_EQ(ReplaceError(folder_ / "loop"), ELOOP);
}

TEST_F(PosixFiles, AFailureKeepsTheOldContent) {
  Make(file_, 0644);
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit tight = {1000, before.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(RLIMIT_FSIZE, &tight);
  const int error = ReplaceError(file_, std::string(1001, 'x'));
  SetFolderMode(0555);
  int errorInPlace = 0;
  {
    const Unprivileged unprivileged;
    errorInPlace = ReplaceError(file_, std::string(1001, 'x'));
  }
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(error, EFBIG);
  EXPECT_EQ(errorInPlace, EFBIG);
  EXPECT_EQ(State(file_), "644old");
  ::chmod(file_.c_str(), 0444);
  SetFolderMode(0777);
  const Unprivileged unprivileged;
  EXPECT_EQ(ReplaceError(file_), EACCES) << "renaming passed over a write protection";
  EXPECT_EQ(State(file_), "444old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Folder()), {}), 1);
}

TEST_F(PosixFiles, AFolderThatTakesNoFileLeavesTheOldOnesToBeWrittenInPlace) {
  Make(file_, 0600);
  Make(copy_, 0666);
  SetFolderMode(0555);
  {
    const Unprivileged unprivileged;
    EXPECT_EQ(ReplaceError(file_), 0);
    EXPECT_EQ(ReplaceError(folder_ / "other"), EACCES);
    EXPECT_THROW(CopyBeside(file_, "new", copy_), FileError);
  }
  SetFolderMode(0755);
  EXPECT_EQ(State(file_) + State(copy_), "600new666old");
}

TEST_F(PosixFiles, PipesAndDevicesAreWrittenNotReplaced) {
  ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0);
  const int reader = ::open(file_.c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_EQ(ReplaceError(file_), 0);
  std::string received(9, '\0');
  EXPECT_EQ(::read(reader, received.data(), received.size()), 3);
  ::close(reader);
  EXPECT_TRUE(fs::is_fifo(file_));
  if (!fs::is_character_file("/dev/full")) GTEST_SKIP() << "no device that is always full";
  const Unprivileged unprivileged;  // whatever goes wrong, the device stays
  EXPECT_EQ(ReplaceError("/dev/full"), ENOSPC);
}

TEST_F(PosixFiles, OwnersStayAndABackUpThatCannotKeepThemIsPrivate) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator gives files away";
  const auto owner = [this] {
    struct stat status {};
    return ::stat(file_.c_str(), &status) == 0 ? status.st_uid : 1;
  };
  Make(file_, 0660);
  ReplaceBytes(file_, "old");
  EXPECT_EQ(owner(), Unprivileged::User());
  Make(file_, 0660, 0);
  SetFolderMode(0777);
  {
    const Unprivileged unprivileged;  // a member of the group, yet not the owner
    CopyBeside(file_, "old", copy_);
    EXPECT_EQ(ReplaceError(file_), 0);
  }
  EXPECT_EQ(State(copy_) + State(file_), "600old660new");
  EXPECT_EQ(owner(), 0U);
}

}  // namespace
}  // namespace quenmar
