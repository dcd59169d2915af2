#include "files/Files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "files/FileError.h"
#include "files/NamesIn.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

TEST(Files, HoldExactlyTheBytesWrittenLast) {
  const ScratchFolder folder;
  const std::string binary("a\r\n\n\r\x1A\0\xFF", 8);
  const std::string large(200'001, 'x');
  const Path file = folder / PathFromText(u"\u00F1.conf");
  for (const auto write : {ReplaceBytes, WriteInPlace}) {
    for (const std::string& bytes : {large, binary, std::string(), large}) {
      write(file, bytes);
      EXPECT_EQ(ReadBytes(file), bytes);
    }
  }
  BackUp(file, folder / "copy");
  BackUp(file, folder / "copy");
  EXPECT_EQ(ReadBytes(folder / "copy"), large);
  EXPECT_EQ(NamesIn(folder), (Names{"copy", "\xC3\xB1.conf"}));
}

TEST(Files, FailuresCarryTheSystemsWordsAndLeaveNothingBehind) {
  const ScratchFolder folder;
  const Path taken = folder / "taken";
  std::filesystem::create_directory(taken);
  ReplaceBytes(folder / "file", "");
  const std::vector<std::function<void()>> failing = {
      [&] { (void)ReadBytes(folder / "missing"); },
      [&] { (void)ReadBytes(taken); },
      [&] { ReplaceBytes(taken, "x"); },
      [&] { WriteInPlace(taken, "x"); },
      [&] { BackUp(folder / "file", taken); },
      [&] { BackUp(folder / "missing", folder / "copy"); },
      [&] { ReplaceBytes(folder / "no folder" / "file", "x"); },
      [&] { ReplaceBytes(folder / "file" / "file", "x"); },
      [&] { ReplaceBytes({}, "x"); },
  };
  for (size_t i = 0; i < failing.size(); ++i) {
    try {
      failing[i]();
      ADD_FAILURE() << "case " << i;
    } catch (const FileError& error) {
      EXPECT_NE(error.Number(), 0) << "case " << i;
      EXPECT_NE(error.Description(), u"") << "case " << i;
    }
  }
  EXPECT_EQ(NamesIn(folder), (Names{"file", "taken"}));
}

TEST(Files, PathsAndTextNameEachOther) {
  const String text = u"conf/\u00F1 \u4E2D\U0001F600.conf";
  EXPECT_EQ(PathText(PathFromText(text)), text);
}

}  // namespace
}  // namespace quenmar
