// Links, permissions, owners, devices and full disks, as POSIX systems have them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <functional>
#include <sstream>
#include <tuple>

#include "DiskFaults.h"
#include "ErrorOf.h"
#include "ScratchFolder.h"
#include "files/Files.h"

namespace quenmar {
namespace {

namespace fs = std::filesystem;

/// Something mounted at a path for as long as it lives.
struct Mount {
  Mount(const char* what, Path path, const char* type, unsigned long flags, const char* options)
      : where(std::move(path)), done(::mount(what, where.c_str(), type, flags, options) == 0) {}
  ~Mount() {
    if (done) ::umount2(where.c_str(), MNT_DETACH);
  }
  Path where;
  bool done;
};

int ErrorAsUser(const std::function<void()>& action) {
  return AsUser([&] { return ErrorOf(action); });
}

int ReplaceError(const Path& path, const std::string& bytes = "new") {
  return ErrorOf([&] { ReplaceBytes(path, bytes); });
}

/// @return the status of the file itself, all zero where there is none.
struct stat StatusOf(const Path& file) {
  struct stat status {};
  (void)::lstat(file.c_str(), &status);
  return status;
}

/// What makes `ReplaceBytes` write: a new file, or the old one in place.
enum class Way { kRename, kHardLink, kLockedFolder };
constexpr auto kWays = {Way::kRename, Way::kHardLink, Way::kLockedFolder};

class PosixFiles : public ::testing::Test {
 protected:
  static void Make(const Path& file, mode_t mode, const std::string& bytes = "old",
                   uid_t owner = OrdinaryUser()) {
    WriteInPlace(file, bytes);
    ASSERT_EQ(::chmod(file.c_str(), mode) + ::chown(file.c_str(), owner, ::getegid()), 0);
  }
  /// @return the permissions in octal digits, and the content.
  static std::string State(const Path& file) {
    std::ostringstream text;
    text << std::oct << static_cast<unsigned>(fs::status(file).permissions()) % 512;
    return text.str() + ReadBytes(file);
  }
  void SetFolderMode(mode_t mode) const { ::chmod(folder_.Folder().c_str(), mode); }
  [[nodiscard]] auto FileCount() const {
    return std::distance(fs::directory_iterator(folder_.Folder()), {});
  }

  /// @return the failure of giving the file other content that way.
  int ReplaceBy(Way way, const std::string& bytes) const {
    if (way == Way::kHardLink && !fs::exists(copy_)) fs::create_hard_link(file_, copy_);
    const auto replace = [&] { return ReplaceError(file_, bytes); };
    return way == Way::kLockedFolder ? InLockedFolder(folder_.Folder(), replace) : replace();
  }

  ScratchFolder folder_;
  Path file_ = folder_ / "file", copy_ = folder_ / "copy", other_ = folder_ / "other";
};

TEST_F(PosixFiles, PermissionsStayAndAreTheDefaultElsewhere) {
  Make(file_, 0755);
  ReplaceBytes(file_, "new");
  EXPECT_EQ(State(file_), "755new");
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
    for (const auto& [limit, size] :
         {std::pair<rlim_t, size_t>(5000, 6000), {1000, 2000}, {1000, 4000}}) {
      Make(file_, 0644, old);
      const std::string bytes(size, 'n');
      EXPECT_EQ(OnFullDisk(limit, [&] { return ReplaceBy(way, bytes); }), EFBIG);
      EXPECT_TRUE(State(file_) == "644" + old) << static_cast<int>(way) << ' ' << size;
      fs::remove(copy_);
      EXPECT_EQ(FileCount(), 1) << "a leftover";
    }
  }
}

TEST_F(PosixFiles, OldBytesThatCannotBePutBackAreReported) {
  Make(file_, 0644, std::string(3000, 'o'));
  const auto ignored = std::signal(SIGXFSZ, [](int) { LimitFileSize(0); });
  const std::string bytes(2000, 'n');
  EXPECT_EQ(OnFullDisk(1000, [&] { return ReplaceBy(Way::kHardLink, bytes); }), -EFBIG);
  std::signal(SIGXFSZ, ignored);
  EXPECT_EQ(ReadBytes(file_), std::string(1000, 'n') + std::string(2000, 'o'));
}

TEST_F(PosixFiles, AFullDiskKeepsTheOldContent) {
  const Mount disk("quenmar-test", folder_.Folder(), "tmpfs", 0, "size=256k");
  if (!disk.done) GTEST_SKIP() << "mounting a small disk: " << std::strerror(errno);
  const auto filled = [](size_t kib, char c) { return std::string(kib * 1024, c); };
  const std::string old = filled(150, 'o');
  for (const Way way : kWays) {
    Make(file_, 0644, old);
    EXPECT_EQ(ReplaceBy(way, filled(300, 'n')), ENOSPC);
    EXPECT_TRUE(State(file_) == "644" + old) << static_cast<int>(way);
    // There is room for the new bytes, yet not for both: only renaming needs that.
    EXPECT_EQ(ReplaceBy(way, filled(200, 'n')), way == Way::kRename ? ENOSPC : 0);
    EXPECT_TRUE(ReadBytes(file_) == (way == Way::kRename ? old : filled(200, 'n')));
    fs::remove(copy_);
  }
  Make(copy_, 0644, "older", ::getuid());
  EXPECT_EQ(ErrorOf([&] { CopyBeside(file_, old, copy_); }), ENOSPC);
  EXPECT_EQ(ReadBytes(copy_), "older");
  // A file with holes runs out of room half-way, although it need not grow.
  Make(file_, 0644, "", ::getuid());
  fs::resize_file(file_, filled(300, 'n').size());
  fs::remove(copy_);
  EXPECT_EQ(ReplaceBy(Way::kHardLink, filled(300, 'n')), ENOSPC);
  EXPECT_TRUE(ReadBytes(file_) == filled(300, '\0'));
  const Mount oneFile("quenmar-test", folder_.Folder(), "tmpfs", 0, "nr_inodes=2");
  Make(file_, 0644);
  EXPECT_EQ(ReplaceError(file_), ENOSPC);
  EXPECT_EQ(State(file_), "644old");
}

TEST_F(PosixFiles, WhatCannotBeReplacedIsWrittenInPlaceUnlessItIsProtected) {
  for (const std::string bytes : {"longer", "", "new"}) {
    for (const Way way : {Way::kHardLink, Way::kLockedFolder}) {
      Make(file_, 0640);
      EXPECT_EQ(ReplaceBy(way, bytes), 0);
      EXPECT_EQ(State(file_), "640" + bytes);
      EXPECT_EQ(ReadBytes(copy_), bytes);
    }
  }
  EXPECT_EQ(InLockedFolder(folder_.Folder(), [&] { return ReplaceError(other_); }), EACCES);
  Make(other_, 0444);
  EXPECT_EQ(AsUser([&] { return ReplaceError(other_); }), EACCES);
  EXPECT_EQ(State(other_), "444old");
  EXPECT_EQ(FileCount(), 3) << "a leftover";
  if (::geteuid() != 0) GTEST_SKIP() << "the rest needs files of another user, and mounting";
  Make(other_, 0666, "old", 0);
  SetFolderMode(01777);
  EXPECT_EQ(AsUser([&] { return ReplaceError(other_); }), 0);
  EXPECT_EQ(State(other_), "666new");
  const Mount mount(other_.c_str(), file_, nullptr, MS_BIND, nullptr);
  if (!mount.done) GTEST_SKIP() << "mounting a file: " << std::strerror(errno);
  EXPECT_EQ(ReplaceError(file_, "newer"), 0);
  EXPECT_EQ(State(other_), "666newer");
}

TEST_F(PosixFiles, ACopyIsWholeOrNotMade) {
  const std::tuple<const char*, std::function<void()>, mode_t, int> cases[] = {
      {"nothing", [] {}, 0777, 0},
      {"an older copy", [&] { Make(copy_, 0666); }, 0777, 0},
      {"a link to another file", [&] { fs::create_symlink("other", copy_); }, 0777, 0},
      {"a link to nothing", [&] { fs::create_symlink("nothing", copy_); }, 0777, 0},
      {"a hard link to another file", [&] { fs::create_hard_link(other_, copy_); }, 0777, 0},
      {"a folder", [&] { fs::create_directory(copy_); }, 0777, EISDIR},
      {"a pipe", [&] { ASSERT_EQ(::mkfifo(copy_.c_str(), 0666), 0); }, 0777, EEXIST},
      {"a read-only file", [&] { Make(copy_, 0444); }, 0777, EACCES},
      {"a file in a locked folder", [&] { Make(copy_, 0666); }, 0555, EACCES},
      {"a foreign file in a sticky folder", [&] { Make(copy_, 0666, "old", 0); }, 01777, EPERM},
  };
  for (const auto& [what, make, folderMode, error] : cases) {
    if (error == EPERM && ::geteuid() != 0) continue;  // only root gives files away
    SCOPED_TRACE(what);
    Make(file_, 0640);
    Make(other_, 0644);
    make();
    SetFolderMode(folderMode);
    const auto before = StatusOf(copy_).st_ino;
    EXPECT_EQ(ErrorAsUser([&] { CopyBeside(file_, "old", copy_); }), error);
    SetFolderMode(0777);
    EXPECT_EQ(StatusOf(copy_).st_ino == before, error != 0);
    if (error == 0) {
      EXPECT_EQ(StatusOf(copy_).st_mode, S_IFREG | 0640U);
      EXPECT_EQ(ReadBytes(copy_), "old");
    }
    EXPECT_EQ(State(file_) + State(other_), "640old644old");
    fs::remove_all(copy_);
    EXPECT_EQ(FileCount(), 2) << "a leftover";
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
  const auto replace = [&] {
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
  EXPECT_EQ(ErrorAsUser(replace), 0);  // who may not set the security label
  EXPECT_EQ(ErrorAsUser([&] { CopyBeside(file_, "new", copy_); }), 0);
  EXPECT_EQ(Attribute(copy_, kAccess), kList);
  EXPECT_EQ(StatusOf(copy_).st_gid, StatusOf(file_).st_gid);
}

TEST_F(PosixFiles, PipesAndDevicesAreWrittenNotReplaced) {
  std::string received(9, '\0');
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  EXPECT_EQ(ReplaceError("/dev/fd/" + std::to_string(ends[1])), 0) << "a pipe without a name";
  EXPECT_EQ(::read(ends[0], received.data(), received.size()), 3);
  for (const int end : ends) ::close(end);
  if (!fs::is_character_file("/dev/full")) GTEST_SKIP() << "no device that is always full";
  // Whatever goes wrong, the device stays.
  EXPECT_EQ(AsUser([] { return ReplaceError("/dev/full"); }), ENOSPC);
}

TEST_F(PosixFiles, OwnersStayAndABackUpThatCannotKeepThemIsPrivate) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the administrator gives files away";
  Make(file_, 0660);
  ReplaceBytes(file_, "old");
  EXPECT_EQ(StatusOf(file_).st_uid, OrdinaryUser());
  Make(file_, 0660, "old", 0);
  SetFolderMode(0777);
  // A member of the group, yet not the owner.
  EXPECT_EQ(ErrorAsUser([&] { CopyBeside(file_, "old", copy_), ReplaceBytes(file_, "new"); }), 0);
  EXPECT_EQ(State(copy_) + State(file_), "600old660new");
  EXPECT_EQ(StatusOf(file_).st_uid, 0U);
}

}  // namespace
}  // namespace quenmar
