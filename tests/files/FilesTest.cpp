#include "files/Files.h"

#include <gtest/gtest.h>

#include <functional>

#include "ErrorOf.h"
#include "ScratchFolder.h"
#include "files/Folder.h"

namespace quenmar {
namespace {

using Write = std::function<void(const Path&, std::string_view)>;

TEST(Files, HoldExactlyTheBytesWrittenLast) {
  const ScratchFolder folder;
  const std::string large(200'001, 'x');
  const Path file = folder / PathFromText(u"\u00F1 \u4E2D\U0001F600.conf");
  const auto replace = [](const Path& path, std::string_view bytes) { ReplaceBytes(path, bytes); };
  for (const auto& write : {Write(replace), Write(WriteInPlace), Write(replace)}) {
    for (const std::string& bytes : {large, std::string("a\r\n\n\r\x1A\0\xFF", 8), large}) {
      write(file, bytes);
      EXPECT_EQ(ReadBytes(file), bytes);
    }
  }
  CopyBeside(file, large, folder / "copy");
  EXPECT_EQ(ReadBytes(folder / "copy"), large);
  std::filesystem::remove(folder / "copy");
  const std::filesystem::directory_iterator only(folder.Folder());
  EXPECT_EQ(PathText(only->path()), PathText(file));
}

TEST(Files, FailuresCarryTheSystemsWordsAndLeaveNothingBehind) {
  const ScratchFolder folder;
  const Path taken = folder / "taken";
  std::filesystem::create_directory(taken);
  const std::function<void()> actions[] = {[&] { (void)ReadBytes(folder / "missing"); },
                                           [&] { (void)ReadBytes(taken); },
                                           [&] { ReplaceBytes(taken, "x"); },
                                           [&] { WriteInPlace(taken, "x"); },
                                           [&] { CopyBeside(taken, "x", taken); },
                                           [&] { ReplaceBytes(folder / "none" / "file", "x"); },
                                           [&] { ReplaceBytes({}, "x"); }};
  for (const auto& failing : actions) {
    EXPECT_NE(ErrorOf(failing), 0);
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Folder()), {}), 1);
}

TEST(Files, AStampFollowsTimeAndSize) {
  const ScratchFolder folder;
  const Path file = folder / "file";
  EXPECT_EQ(StampOf(file), FileStamp());
  ReplaceBytes(file, "one");
  const FileStamp first = StampOf(file);
  EXPECT_EQ(first, StampOf(file));
  EXPECT_EQ(first.size, 3U);
  std::filesystem::last_write_time(file, {});
  const FileStamp second = StampOf(file);
  EXPECT_TRUE(second.time != first.time && second.size == first.size);
}

}  // namespace
}  // namespace quenmar
