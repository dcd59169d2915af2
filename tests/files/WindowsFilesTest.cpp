// Protected and busy files, drives and long paths, as only Windows has them.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <functional>

#include "ScratchFolder.h"
#include "files/FileError.h"
#include "files/Files.h"
#include "files/Folder.h"

namespace quenmar {
namespace {

/// Another program that has the file open, for as long as it lives.
class Busy {
 public:
  Busy(const Path& file, DWORD sharing)
      : handle_(::CreateFileW(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0,
                              nullptr)) {}
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;
  ~Busy() { ::CloseHandle(handle_); }

 private:
  HANDLE handle_;
};

/// @return the number of the failure, 0 for none; it comes with what the system says to it.
DWORD ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const FileError& error) {
    const auto number = static_cast<DWORD>(error.Number());
    std::wstring buffer(1000, L'\0');
    buffer.resize(::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                   nullptr, number, 0, buffer.data(), 1000, nullptr));
    const String text(buffer.begin(), buffer.end());
    EXPECT_FALSE(error.Description().empty());
    EXPECT_EQ(text.substr(0, error.Description().size()), error.Description());
    return number;
  }
  return 0;
}

/// @return the failure of writing to the file, be it in its place or by a new one.
DWORD WriteError(const Path& file) {
  const DWORD number = ErrorOf([&file] { WriteInPlace(file, "new"); });
  EXPECT_EQ(ErrorOf([&file] { ReplaceBytes(file, "new"); }), number);
  return number;
}

TEST(WindowsFiles, AReadOnlyFileKeepsItsContent) {
  const ScratchFolder folder;
  const Path file = folder / "file";
  WriteInPlace(file, "old");
  ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
  if (std::FILE* const open = ::_wfopen(file.c_str(), L"r+")) {
    std::fclose(open);
    GTEST_SKIP() << "Wine lets root write to any file";
  }
  EXPECT_EQ(WriteError(file), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(ErrorOf([&file] { CopyBeside(file, "new", file); }), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_EQ(ReadBytes(file), "old");
  ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(WindowsFiles, ABusyFileKeepsItsContent) {
  const ScratchFolder folder;
  const Path file = folder / "file";
  WriteInPlace(file, "old");
  {
    const Busy reader(file, FILE_SHARE_READ);
    EXPECT_EQ(WriteError(file), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(ReadBytes(file), "old");
  }
  {
    const Busy reader(file, 0);
    EXPECT_EQ(WriteError(file), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(ErrorOf([&file] { (void)ReadBytes(file); }), DWORD{ERROR_SHARING_VIOLATION});
  }
  EXPECT_EQ(ReadBytes(file), "old");
}

TEST(WindowsFiles, WhatCannotBeReplacedIsWrittenInPlace) {
  const ScratchFolder folder;
  const Path file = folder / "file";
  const Path link = folder / "link";
  for (const std::string bytes : {"longer", "", "new"}) {
    WriteInPlace(file, "old");
    {
      const Busy reader(file, FILE_SHARE_READ | FILE_SHARE_WRITE);
      EXPECT_EQ(ErrorOf([&] { ReplaceBytes(file, bytes); }), 0U);
    }
    EXPECT_EQ(ReadBytes(file), bytes);
  }
  ASSERT_NE(::CreateHardLinkW(link.c_str(), file.c_str(), nullptr), 0);
  ReplaceBytes(file, "both");
  EXPECT_EQ(ReadBytes(link), "both");
}

TEST(WindowsFiles, ACopyIsWholeOrNotMade) {
  const ScratchFolder folder;
  const Path file = folder / "file";
  const Path copy = folder / "copy";
  WriteInPlace(file, "old");
  const auto copyError = [&] { return ErrorOf([&] { CopyBeside(file, "copied", copy); }); };
  ASSERT_NE(::CreateHardLinkW(copy.c_str(), file.c_str(), nullptr), 0);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(copyError(), 0U);
    EXPECT_EQ(ReadBytes(copy), "copied");
    EXPECT_EQ(ReadBytes(file), "old");
  }
  {
    const Busy reader(copy, FILE_SHARE_READ);
    EXPECT_NE(copyError(), 0U);
  }
  ::DeleteFileW(copy.c_str());
  std::filesystem::create_directory(copy);
  EXPECT_NE(copyError(), 0U);
  EXPECT_EQ(KindOf(copy), FileKind::kFolder);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Folder()), {}), 2);
}

TEST(WindowsFiles, AMissingDriveIsToldAndListsNothing) {
  std::wstring root = L"A:\\";
  while (::GetDriveTypeW(root.c_str()) != DRIVE_NO_ROOT_DIR) ASSERT_LE(++root.front(), L'Z');
  const Path drive = root;
  EXPECT_EQ(KindOf(drive / "x.conf"), FileKind::kMissing);
  String trouble;
  EXPECT_TRUE(EntriesEndingIn(u".conf", drive, trouble).empty());
  EXPECT_FALSE(trouble.empty());
  EXPECT_NE(ErrorOf([&drive] { (void)ReadBytes(drive / "x.conf"); }), 0U);
  EXPECT_NE(ErrorOf([&drive] { WriteInPlace(drive / "x.conf", "x"); }), 0U);
}

TEST(WindowsFiles, PathsMayBeLong) {
  const ScratchFolder scratch;
  const std::wstring prefix = LR"(\\?\)";
  Path folder = scratch.Folder();
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
  String trouble;
  const auto entries = EntriesEndingIn(u".conf", folder, trouble);
  EXPECT_TRUE(trouble.empty());
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].name, "a.CONF");
  ::DeleteFileW((prefix + folder.native() + L"\\copy").c_str());
  for (::DeleteFileW((prefix + file.native()).c_str()); folder != scratch.Folder();
       folder = folder.parent_path()) {
    ::RemoveDirectoryW((prefix + folder.native()).c_str());
  }
}

TEST(WindowsFiles, OneFolderHasSeveralNames) {
  const ScratchFolder folder;
  const std::wstring name = folder.Folder().native();
  const Path other = folder / "other";
  std::filesystem::create_directory(other);
  EXPECT_TRUE(IsSame(name, name + L"\\"));
  EXPECT_TRUE(IsSame(name, LR"(\\?\)" + name));
  EXPECT_TRUE(IsSame(name, other / ".."));
  EXPECT_FALSE(IsSame(name, other));
  EXPECT_FALSE(IsSame(name + L"x", name + L"x"));  // stands nowhere
}

}  // namespace
}  // namespace quenmar
