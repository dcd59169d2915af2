// Links, permissions, owners, devices and full disks, as POSIX systems have them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <functional>
#include <optional>

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

/// Lets no file grow beyond `most` bytes for as long as it lives, as a full disk would.
struct SizeLimit {
  explicit SizeLimit(rlim_t most) : before(Set(most)) {}
  SizeLimit(const SizeLimit&) = delete;
  SizeLimit& operator=(const SizeLimit&) = delete;
  ~SizeLimit() { Set(before); }
  static rlim_t Set(rlim_t most) {
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const rlim_t was = std::exchange(limit.rlim_cur, most);
    ::setrlimit(RLIMIT_FSIZE, &limit);
    return was;
  }
  rlim_t before;
};

/// Something mounted at a path for as long as it lives.
class Mount {
 public:
  Mount(const char* what, Path where, const char* type, unsigned long flags, const char* options)
      : where_(std::move(where)),
        mounted_(::mount(what, where_.c_str(), type, flags, options) == 0) {}
  Mount(const Mount&) = delete;
  Mount& operator=(const Mount&) = delete;
  ~Mount() {
    if (mounted_) ::umount2(where_.c_str(), MNT_DETACH);
  }
  explicit operator bool() const { return mounted_; }

 private:
  Path where_;
  bool mounted_;
};

/// @return the system's number for the failure, below 0 when it damaged a file; 0 for success.
int ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const FileDamaged& error) {
    return -error.Number();
  } catch (const FileError& error) {
    return error.Number();
  }
  return 0;
}

int ErrorAsUser(const std::function<void()>& action) {
  const Unprivileged unprivileged;
  return ErrorOf(action);
}

int ReplaceError(const Path& path, const std::string& bytes = "new") {
  return ErrorOf([&] { ReplaceBytes(path, bytes); });
}

struct stat StatusOf(const Path& file) {
  struct stat status {};
  EXPECT_EQ(::lstat(file.c_str(), &status), 0);
  return status;
}

/// What makes `ReplaceBytes` write: a new file, or the old one in place.
enum class Way { kRename, kHardLink, kLockedFolder };
constexpr auto kWays = {Way::kRename, Way::kHardLink, Way::kLockedFolder};

class PosixFiles : public ::testing::Test {
 protected:
  static void Make(const Path& file, mode_t mode, uid_t owner = Unprivileged::User(),
                   const std::string& bytes = "old") {
    WriteInPlace(file, bytes);
    ASSERT_EQ(::chmod(file.c_str(), mode) + ::chown(file.c_str(), owner, ::getegid()), 0);
  }
  /// @return the permissions in octal digits, and the content.
  static std::string State(const Path& file) {
    const auto mode = static_cast<unsigned>(fs::status(file).permissions()) % 512;
    return std::to_string(mode / 64) + std::to_string(mode / 8 % 8) + std::to_string(mode % 8) +
           ReadBytes(file);
  }
  void SetFolderMode(mode_t mode) const { ::chmod(folder_.Folder().c_str(), mode); }

  /// @return the failure of giving the file other content that way.
  int ReplaceBy(Way way, const std::string& bytes) const {
    if (way == Way::kHardLink && !fs::exists(copy_)) fs::create_hard_link(file_, copy_);
    if (way != Way::kLockedFolder) return ReplaceError(file_, bytes);
    SetFolderMode(0555);
    const int error = ErrorAsUser([&] { ReplaceBytes(file_, bytes); });
    SetFolderMode(0777);
    return error;
  }

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

TEST_F(PosixFiles, AFileThatMayNotGrowKeepsTheOldContent) {
  const std::string old(3000, 'o');
  for (const Way way : kWays) {
    // The new end does not fit; the limit comes when a part is overwritten already, also growing.
    for (const auto& [limit, size] : {std::pair(5000, 6000), {1000, 2000}, {1000, 4000}}) {
      Make(file_, 0644, Unprivileged::User(), old);
      std::optional<SizeLimit> tight(limit);
      const int error = ReplaceBy(way, std::string(static_cast<size_t>(size), 'n'));
      tight.reset();
      EXPECT_EQ(error, EFBIG);
      EXPECT_TRUE(State(file_) == "644" + old) << static_cast<int>(way) << ' ' << size;
      fs::remove(copy_);
      EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Folder()), {}), 1) << "a leftover";
    }
  }
}

TEST_F(PosixFiles, OldBytesThatCannotBePutBackAreTold) {
  Make(file_, 0644, Unprivileged::User(), std::string(3000, 'o'));
  fs::create_hard_link(file_, copy_);
  const auto ignored = std::signal(SIGXFSZ, [](int) { SizeLimit::Set(0); });
  std::optional<SizeLimit> tight(1000);
  const int error = ReplaceError(file_, std::string(2000, 'n'));
  tight.reset();
  std::signal(SIGXFSZ, ignored);
  EXPECT_EQ(error, -EFBIG);
  EXPECT_EQ(ReadBytes(file_), std::string(1000, 'n') + std::string(2000, 'o'));
}

TEST_F(PosixFiles, AFullDiskKeepsTheOldContent) {
  const Mount disk("quenmar-test", folder_.Folder(), "tmpfs", 0, "size=256k");
  if (!disk) GTEST_SKIP() << "mounting a small disk: " << std::strerror(errno);
  constexpr size_t kKiB = 1024;
  const std::string old(150 * kKiB, 'o');
  for (const Way way : kWays) {
    Make(file_, 0644, Unprivileged::User(), old);
    EXPECT_EQ(ReplaceBy(way, std::string(300 * kKiB, 'n')), ENOSPC);
    EXPECT_TRUE(State(file_) == "644" + old) << static_cast<int>(way);
    // There is room for the new bytes, yet not for both: only renaming needs that.
    EXPECT_EQ(ReplaceBy(way, std::string(200 * kKiB, 'n')), way == Way::kRename ? ENOSPC : 0);
    EXPECT_EQ(ReadBytes(file_).size(), (way == Way::kRename ? 150 : 200) * kKiB);
    fs::remove(copy_);
  }
  Make(copy_, 0644, ::getuid(), "older");
  EXPECT_EQ(ErrorOf([&] { CopyBeside(file_, old, copy_); }), ENOSPC);
  EXPECT_EQ(ReadBytes(copy_), "older");
  // A file with holes runs out of room half-way, although it need not grow.
  Make(file_, 0644, ::getuid(), "");
  fs::resize_file(file_, 300 * kKiB);
  fs::remove(copy_);
  EXPECT_EQ(ReplaceBy(Way::kHardLink, std::string(300 * kKiB, 'n')), ENOSPC);
  EXPECT_TRUE(ReadBytes(file_) == std::string(300 * kKiB, '\0'));
  const Mount oneFile("quenmar-test", folder_.Folder(), "tmpfs", 0, "nr_inodes=2");
  Make(file_, 0644);
  EXPECT_EQ(ReplaceError(file_), ENOSPC);
  EXPECT_EQ(State(file_), "644old");
}

TEST_F(PosixFiles, AWriteProtectionIsRespected) {
  Make(file_, 0444);
  SetFolderMode(0777);
  EXPECT_EQ(ErrorAsUser([&] { ReplaceBytes(file_, "new"); }), EACCES);
  EXPECT_EQ(State(file_), "444old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Folder()), {}), 1);
}

TEST_F(PosixFiles, WhatCannotBeReplacedIsWrittenInPlace) {
  for (const std::string bytes : {"longer", "", "new"}) {
    for (const Way way : {Way::kHardLink, Way::kLockedFolder}) {
      Make(file_, 0640);
      EXPECT_EQ(ReplaceBy(way, bytes), 0);
      EXPECT_EQ(State(file_), "640" + bytes);
      EXPECT_EQ(ReadBytes(copy_), bytes);
    }
  }
  SetFolderMode(0555);
  EXPECT_EQ(ErrorAsUser([&] { ReplaceBytes(folder_ / "other", "new"); }), EACCES);
  if (::geteuid() != 0) GTEST_SKIP() << "the rest needs files of another user, and mounting";
  Make(folder_ / "foreign", 0666, 0);
  SetFolderMode(01777);
  EXPECT_EQ(ErrorAsUser([&] { ReplaceBytes(folder_ / "foreign", "new"); }), 0);
  EXPECT_EQ(State(folder_ / "foreign"), "666new");
  Make(folder_ / "point", 0600);
  const Mount mount((folder_ / "foreign").c_str(), folder_ / "point", nullptr, MS_BIND, nullptr);
  if (!mount) GTEST_SKIP() << "mounting a file: " << std::strerror(errno);
  EXPECT_EQ(ReplaceError(folder_ / "point", "newer"), 0);
  EXPECT_EQ(State(folder_ / "foreign"), "666newer");
}

TEST_F(PosixFiles, ACopyIsWholeOrNotMade) {
  const Path other = folder_ / "other";
  struct Case {
    const char* what;
    std::function<void()> make;
    mode_t folderMode;
    int error;
  };
  const Case cases[] = {
      {"nothing", [] {}, 0777, 0},
      {"an older copy", [&] { Make(copy_, 0666); }, 0777, 0},
      {"a link to the file", [&] { fs::create_symlink("file", copy_); }, 0777, 0},
      {"a link to another file", [&] { fs::create_symlink("other", copy_); }, 0777, 0},
      {"a link to nothing", [&] { fs::create_symlink("nothing", copy_); }, 0777, 0},
      {"a hard link to the file", [&] { fs::create_hard_link(file_, copy_); }, 0777, 0},
      {"a hard link to another file", [&] { fs::create_hard_link(other, copy_); }, 0777, 0},
      {"a folder", [&] { fs::create_directory(copy_); }, 0777, EISDIR},
      {"a pipe", [&] { ASSERT_EQ(::mkfifo(copy_.c_str(), 0666), 0); }, 0777, EEXIST},
      {"a read-only file", [&] { Make(copy_, 0444); }, 0777, EACCES},
      {"a file in a locked folder", [&] { Make(copy_, 0666); }, 0555, EACCES},
      {"nothing in a locked folder", [] {}, 0555, EACCES},
      {"a foreign file in a sticky folder", [&] { Make(copy_, 0666, 0); }, 01777, EPERM},
  };
  for (const Case& test : cases) {
    if (test.error == EPERM && ::geteuid() != 0) continue;  // only root gives files away
    SCOPED_TRACE(test.what);
    Make(file_, 0640);
    Make(other, 0644);
    test.make();
    SetFolderMode(test.folderMode);
    const auto inode = [&] {
      return fs::exists(fs::symlink_status(copy_)) ? StatusOf(copy_).st_ino : 0;
    };
    const auto before = inode();
    const int error = ErrorAsUser([&] { CopyBeside(file_, "old", copy_); });
    SetFolderMode(0777);
    EXPECT_EQ(error, test.error);
    EXPECT_EQ(inode() == before, error != 0);
    if (error == 0) {
      EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(copy_)));
      EXPECT_EQ(State(copy_), "640old");
    }
    EXPECT_EQ(State(file_) + State(other), "640old644old");
    fs::remove_all(copy_);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Folder()), {}), 2) << "a leftover";
  }
}

/// An access control list as the system keeps it: the owner writes, user 1234 reads, others do not.
const std::string kList(
    "\2\0\0\0"
    "\1\0\6\0\xFF\xFF\xFF\xFF"
    "\2\0\4\0\xD2\4\0\0"
    "\4\0\0\0\xFF\xFF\xFF\xFF"
    "\x10\0\4\0\xFF\xFF\xFF\xFF"
    "\x20\0\0\0\xFF\xFF\xFF\xFF",
    44);

bool SetAttribute(const Path& file, const char* name, const std::string& value) {
  return ::setxattr(file.c_str(), name, value.data(), value.size(), 0) == 0;
}

std::string Attribute(const Path& file, const char* name) {
  std::string value(100, '\0');
  const ssize_t size = ::getxattr(file.c_str(), name, value.data(), value.size());
  return size < 0 ? "none" : value.substr(0, static_cast<size_t>(size));
}

TEST_F(PosixFiles, ExtendedAttributesAndTheGroupStay) {
  constexpr auto kAccess = "system.posix_acl_access";
  Make(file_, 0640);
  Make(copy_, 0640);
  if (!SetAttribute(file_, "user.x", "1") || !SetAttribute(file_, kAccess, kList) ||
      !SetAttribute(folder_.Folder(), "system.posix_acl_default", kList)) {
    GTEST_SKIP() << "the disk keeps no extended attributes: " << std::strerror(errno);
  }
  const bool administrator = ::geteuid() == 0 && SetAttribute(file_, "security.x", "2");
  // New files get the folder's group and list of their own accord.
  ASSERT_EQ(::chown(folder_.Folder().c_str(), ::geteuid(), administrator ? 1 : ::getegid()), 0);
  SetFolderMode(02777);
  const auto replace = [this] {
    for (const Path& file : {file_, copy_}) {
      const struct stat before = StatusOf(file);
      ReplaceBytes(file, "new");
      EXPECT_NE(StatusOf(file).st_ino, before.st_ino) << "written in place";
      EXPECT_EQ(StatusOf(file).st_gid, before.st_gid);
      EXPECT_EQ(StatusOf(file).st_mode, before.st_mode);
    }
    EXPECT_EQ(Attribute(file_, kAccess), kList);
    EXPECT_EQ(Attribute(file_, "user.x"), "1");
    EXPECT_EQ(Attribute(copy_, kAccess), "none");
  };
  replace();
  EXPECT_EQ(Attribute(file_, "security.x"), administrator ? "2" : "none");
  {
    const Unprivileged unprivileged;  // who may not set the security label
    replace();
    CopyBeside(file_, "new", copy_);
  }
  EXPECT_EQ(Attribute(copy_, kAccess), kList);
  EXPECT_EQ(StatusOf(copy_).st_gid, StatusOf(file_).st_gid);
}

TEST_F(PosixFiles, PipesAndDevicesAreWrittenNotReplaced) {
  ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0);
  const int reader = ::open(file_.c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_EQ(ReplaceError(file_), 0);
  std::string received(9, '\0');
  EXPECT_EQ(::read(reader, received.data(), received.size()), 3);
  ::close(reader);
  EXPECT_TRUE(fs::is_fifo(file_));
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  EXPECT_EQ(ReplaceError("/dev/fd/" + std::to_string(ends[1])), 0) << "a pipe without a name";
  EXPECT_EQ(::read(ends[0], received.data(), received.size()), 3);
  for (const int end : ends) ::close(end);
  if (!fs::is_character_file("/dev/full")) GTEST_SKIP() << "no device that is always full";
  const Unprivileged unprivileged;  // whatever goes wrong, the device stays
  EXPECT_EQ(ReplaceError("/dev/full"), ENOSPC);
}

TEST_F(PosixFiles, OwnersStayAndABackUpThatCannotKeepThemIsPrivate) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator gives files away";
  Make(file_, 0660);
  ReplaceBytes(file_, "old");
  EXPECT_EQ(StatusOf(file_).st_uid, Unprivileged::User());
  Make(file_, 0660, 0);
  SetFolderMode(0777);
  const auto save = [this] {
    CopyBeside(file_, "old", copy_);
    ReplaceBytes(file_, "new");
  };
  EXPECT_EQ(ErrorAsUser(save), 0);  // a member of the group, yet not the owner
  EXPECT_EQ(State(copy_) + State(file_), "600old660new");
  EXPECT_EQ(StatusOf(file_).st_uid, 0U);
}

}  // namespace
}  // namespace quenmar
