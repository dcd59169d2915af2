// Protected and busy files, drives and long paths, as only Windows has them.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>

#include "ErrorOf.h"
#include "ScratchFolder.h"
#include "files/Files.h"
#include "files/Folder.h"

namespace quenmar {
namespace {

/// Another program that has the file open, for as long as it lives.
struct Busy {
  Busy(const Path& file, DWORD sharing)
      : handle(::CreateFileW(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0,
                             nullptr)) {}
  ~Busy() { ::CloseHandle(handle); }
  HANDLE handle;
};

/// @return the failure of writing to the file, be it in its place or by a new one.
int WriteError(const Path& file) {
  const int number = ErrorOf([&file] { WriteInPlace(file, "new"); });
  EXPECT_EQ(ErrorOf([&file] { ReplaceBytes(file, "new"); }), number);
  return number;
}

class WindowsFiles : public ::testing::Test {
 protected:
  void SetUp() override { WriteInPlace(file_, "old"); }

  ScratchFolder folder_;
  Path file_ = folder_ / "file";
  Path copy_ = folder_ / "copy";
};

TEST_F(WindowsFiles, AReadOnlyFileKeepsItsContent) {
  ::SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
  if (std::FILE* const open = ::_wfopen(file_.c_str(), L"r+")) {
    std::fclose(open);
    GTEST_SKIP() << "Wine lets root write to any file";
  }
  EXPECT_EQ(WriteError(file_), ERROR_ACCESS_DENIED);
  EXPECT_EQ(ErrorOf([this] { CopyBeside(file_, "new", file_); }), ERROR_ACCESS_DENIED);
  EXPECT_EQ(ReadBytes(file_), "old");
  ::SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(WindowsFiles, ABusyFileKeepsItsContentUnlessItIsShared) {
  for (const DWORD sharing : {DWORD{0}, DWORD{FILE_SHARE_READ}}) {
    const Busy reader(file_, sharing);
    EXPECT_EQ(WriteError(file_), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(ErrorOf([this] { (void)ReadBytes(file_); }),
              sharing == 0 ? ERROR_SHARING_VIOLATION : 0);
  }
  EXPECT_EQ(ReadBytes(file_), "old");
  for (const std::string bytes : {"longer", "", "new"}) {
    {
      const Busy reader(file_, FILE_SHARE_READ | FILE_SHARE_WRITE);
      EXPECT_EQ(ErrorOf([&] { ReplaceBytes(file_, bytes); }), 0);
    }
    EXPECT_EQ(ReadBytes(file_), bytes);
  }
}

TEST_F(WindowsFiles, ACopyIsWholeOrNotMade) {
  const auto copyError = [this] { return ErrorOf([this] { CopyBeside(file_, "copied", copy_); }); };
  ASSERT_NE(::CreateHardLinkW(copy_.c_str(), file_.c_str(), nullptr), 0);
  ReplaceBytes(file_, "both");
  EXPECT_EQ(ReadBytes(copy_), "both");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(copyError(), 0);
    EXPECT_EQ(ReadBytes(copy_), "copied");
    EXPECT_EQ(ReadBytes(file_), "both");
  }
  {
    const Busy reader(copy_, FILE_SHARE_READ);
    EXPECT_NE(copyError(), 0);
  }
  ::DeleteFileW(copy_.c_str());
  std::filesystem::create_directory(copy_);
  EXPECT_NE(copyError(), 0);
  EXPECT_EQ(KindOf(copy_), FileKind::kFolder);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Folder()), {}), 2);
}

TEST_F(WindowsFiles, AMissingDriveIsReportedAndListsNothing) {
  std::wstring root = L"A:\\";
  while (::GetDriveTypeW(root.c_str()) != DRIVE_NO_ROOT_DIR) ASSERT_LE(++root.front(), L'Z');
  const Path drive = root;
  EXPECT_EQ(KindOf(drive / "x.conf"), FileKind::kMissing);
  String reason;
  EXPECT_TRUE(EntriesEndingIn(u".conf", drive, reason).empty());
  EXPECT_FALSE(reason.empty());
  EXPECT_NE(ErrorOf([&drive] { (void)ReadBytes(drive / "x.conf"); }), 0);
  EXPECT_NE(ErrorOf([&drive] { WriteInPlace(drive / "x.conf", "x"); }), 0);
}

TEST_F(WindowsFiles, PathsMayBeLong) {
  const std::wstring prefix = LR"(\\?\)";
  Path folder = folder_.Folder();
  while (folder.native().size() < 400) {
    folder /= std::wstring(50, L'\u00E9');
    ASSERT_NE(::CreateDirectoryW((prefix + folder.native()).c_str(), nullptr), 0);
  }
  const Path file = folder / "a.CONF";
  for (int i = 0; i < 2; ++i) {
    ReplaceBytes(file, "x");
    WriteInPlace(file, "x");
  }
  EXPECT_EQ(ReadBytes(file), "x");
  CopyBeside(file, "x", folder / "copy");
  EXPECT_EQ(KindOf(folder), FileKind::kFolder);
  EXPECT_EQ(KindOf(file), FileKind::kFile);
  EXPECT_TRUE(IsMissing(folder / "b.conf"));
  String reason;
  const auto entries = EntriesEndingIn(u".conf", folder, reason);
  EXPECT_TRUE(reason.empty());
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].name, "a.CONF");
  ::DeleteFileW((prefix + folder.native() + L"\\copy").c_str());
  for (::DeleteFileW((prefix + file.native()).c_str()); folder != folder_.Folder();
       folder = folder.parent_path()) {
    ::RemoveDirectoryW((prefix + folder.native()).c_str());
  }
}

TEST_F(WindowsFiles, OneFolderHasSeveralNames) {
  const std::wstring name = folder_.Folder().native();
  const Path other = folder_ / "other";
  std::filesystem::create_directory(other);
  EXPECT_TRUE(IsSame(name, name + L"\\"));
  EXPECT_TRUE(IsSame(name, LR"(\\?\)" + name));
  EXPECT_TRUE(IsSame(name, other / ".."));
  EXPECT_FALSE(IsSame(name, other));
  EXPECT_FALSE(IsSame(name + L"x", name + L"x"));  // there is none
}

}  // namespace
}  // namespace quenmar
