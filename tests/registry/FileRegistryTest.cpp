#include "registry/FileRegistry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "ScratchFolder.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

using ::testing::HasSubstr;

constexpr auto kRoot = RegistryRoot::kLocalMachine;
constexpr StringView kKey = u"Software\\Quenmar\\Options";
const std::string kHead = "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\r\n";

class FileRegistryTest : public ::testing::Test {
 protected:
  [[nodiscard]] String ReadFrom(const std::string& content) const {
    ReplaceBytes(file_, content);
    return FileRegistry(file_).RegReadString(kRoot, kKey, u"x", u"default");
  }
  /// @return the file after setting x to the text new.
  [[nodiscard]] std::string SetIn(const std::string& content) const {
    ReplaceBytes(file_, content);
    EXPECT_TRUE(FileRegistry(file_).RegWriteString(kRoot, kKey, u"x", u"new"));
    return ReadBytes(file_);
  }
  static std::string Utf16(StringView text) { return "\xFF\xFE" + ToUtf16Le(text); }

  ScratchFolder folder_;
  Path file_ = folder_ / "registry.reg";
};

TEST_F(FileRegistryTest, ReadsWhatAnImportWouldGive) {
  struct Case {
    std::string content;
    String value;
  };
  const std::vector<Case> cases = {
      {kHead + R"("x"="a")", u"a"},
      {kHead + " \"X\" \t=  \"a\"\t\n", u"a"},
      {kHead + "\"x\"=\"a\" ; why\r\n", u"a"},
      {kHead + R"("x"="C:\\dir\\ \"q\" C:\dir")", u"C:\\dir\\ \"q\" C:\\dir"},
      {kHead + "\"x\"=\"caf\xE9 \x80\"\r\n", u"caf\u00E9 \u20AC"},
      {kHead + "\"x\"=\"a\"\r\n\"x\"=\"b\"\r\n", u"b"},
      {kHead + "\"x\"=\"a\"\r\n\"x\"=-\r\n", u"default"},
      {kHead + "\"x\"=\"a\"\r\n[Other]\r\n\"x\"=\"b\"\r\n" + kHead.substr(10) + R"("y"="c")", u"a"},
      {kHead + "\"x\"=\"a\"\r\n[-HKEY_LOCAL_MACHINE\\software\\QUENMAR]\r\n", u"default"},
      {"REGEDIT4\n[-HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\n\"x\"=\"a\"\n", u"default"},
      {kHead + "\"x\"=dword:00000001\r\n", u"default"},
      {kHead + "\"x\"=hex(2):61,\\\r\n  00\r\n", u"default"},
      {kHead + "\"x\"=\"open\r\n", u"default"},
      {kHead + "\"x\"=\"a\" b\r\n", u"default"},
      {kHead + "; \"x\"=\"a\"\r\n", u"default"},
      {kHead + "\"y\"=hex:\\\r\n\"x\"=\"a\"\r\n", u"a"},
      {Utf16(u"Windows Registry Editor Version 5.00\r\n"
             u"[HKEY_LOCAL_MACHINE\\SOFTWARE\\Quenmar\\Options]\r\n\"x\"=\"\u4E2D\"\r\n"),
       u"\u4E2D"},
      {"", u"default"},
  };
  for (const auto& [content, value] : cases) EXPECT_EQ(ReadFrom(content), value) << content;
}

TEST_F(FileRegistryTest, AWriteTouchesOneValueOnly) {
  const std::string line = "\"x\"=\"new\"\r\n";
  const std::string other =
      "; note \x81\xE9\n\r\n[Other]\n\"x\"=\"other\"\n\"y\"=hex:00,\\\n  01\n";
  struct Case {
    std::string content;
    std::string after;
  };
  const std::vector<Case> cases = {
      {"", kHead + line},
      {"REGEDIT4", "REGEDIT4\r\n" + kHead.substr(10) + line},
      {kHead + other, kHead + line + other},
      {kHead + "\"y\"=\"1\"\n\n" + other, kHead + "\"y\"=\"1\"\n" + line + "\n" + other},
      {kHead + "\"X\" = \"old\"\n; end\n" + other, kHead + line + "; end\n" + other},
      {kHead + "\"x\"=dword:01\n" + other, kHead + line + other},
      {kHead + "\"x\"=hex:61,\\\r\n  62,\\\r\n  63\r\n" + R"("y"="")", kHead + line + R"("y"="")"},
      {kHead + "\"x\"=\"1\"\n" + other + "\"x\"=\"\"\n", kHead + line + other + "\"x\"=\"\"\n"},
      {kHead + "\"x\"=\"1\"\n\"x\"=\"2\"\n", kHead + "\"x\"=\"1\"\n" + line},
      {kHead + R"("y"="1")", kHead + "\"y\"=\"1\"\r\n" + line},
      {"REGEDIT4\n" + other, "REGEDIT4\n" + other + kHead.substr(10) + line},
  };
  for (const auto& [content, after] : cases) EXPECT_EQ(SetIn(content), after) << content;
}

TEST_F(FileRegistryTest, KeepsTheEncodingUnlessTextWouldBeLost) {
  const String body =
      u"\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\r\n\"x\"=\"new\"\r\n";
  const String wide = u"Windows Registry Editor Version 5.00" + body;
  EXPECT_EQ(SetIn(Utf16(ReplaceAll(wide, u"new", u"\u4E2D"))), Utf16(wide));

  FileRegistry registry(file_);
  ReplaceBytes(file_, kHead + "\"y\"=\"\xE9\"\r\n");
  EXPECT_TRUE(registry.RegWriteString(kRoot, kKey, u"x", u"\u4E2D"));
  EXPECT_EQ(ReadBytes(file_),
            Utf16(ReplaceAll(wide, u"\"x\"=\"new\"", u"\"y\"=\"\u00E9\"\r\n\"x\"=\"\u4E2D\"")));
  EXPECT_EQ(FileRegistry(file_).RegReadString(kRoot, kKey, u"x"), u"\u4E2D");
}

TEST_F(FileRegistryTest, AWriteKeepsWhatOthersWroteMeanwhile) {
  FileRegistry registry(file_);
  FileRegistry(file_).RegWriteString(kRoot, kKey, u"y", u"theirs");
  EXPECT_TRUE(registry.RegWriteString(kRoot, kKey, u"x", u"ours"));
  EXPECT_EQ(registry.RegReadString(kRoot, kKey, u"y"), u"theirs");
  EXPECT_EQ(FileRegistry(file_).RegReadString(kRoot, kKey, u"y"), u"theirs");
}

TEST_F(FileRegistryTest, RefusesTextThatNoLineCanHold) {
  FileRegistry registry(file_);
  const std::vector<StringView> texts = {u"a\rb", u"a\nb", StringView(u"a\0b", 3)};
  for (const StringView text : texts) {
    const bool stored = registry.RegWriteString(kRoot, kKey, u"x", text) ||
                        registry.RegWriteString(kRoot, kKey, text, u"x") ||
                        registry.RegWriteString(kRoot, text, u"x", u"x");
    EXPECT_FALSE(stored) << ToUtf8(text);
  }
  EXPECT_FALSE(std::filesystem::exists(file_));
}

TEST_F(FileRegistryTest, WhatIsNoRegistryFileIsReportedAndNeverOverwritten) {
  const std::vector<std::string> damaged = {"\"x\"=\"a\"\r\n", "REGEDIT\r\n",
                                            "\xEF\xBB\xBF" + kHead, "\n" + kHead,
                                            Utf16(u"REGEDIT4\r\n") + "x"};
  for (const std::string& content : damaged) {
    EXPECT_EQ(ReadFrom(content), u"default") << content;
    FileRegistry registry(file_);
    EXPECT_THAT(ToUtf8(registry.Trouble()), HasSubstr(ToUtf8(PathText(file_))));
    const bool stored = registry.RegWriteString(kRoot, kKey, u"x", u"new");
    EXPECT_TRUE(!stored && ReadBytes(file_) == content) << content;
  }
}

TEST_F(FileRegistryTest, AFolderInTheFilesPlaceIsReported) {
  FileRegistry registry(folder_.Folder());
  EXPECT_NE(registry.Trouble(), u"");
  EXPECT_FALSE(registry.RegWriteString(kRoot, kKey, u"x", u"new"));
}

TEST_F(FileRegistryTest, CreatesMissingFoldersWherePossible) {
  FileRegistry nested(folder_ / "a" / "b" / "registry.reg");
  EXPECT_EQ(nested.Trouble(), u"");
  EXPECT_TRUE(nested.RegWriteString(kRoot, kKey, u"x", u"new"));

  ReplaceBytes(file_, kHead);
  FileRegistry belowFile(file_ / "registry.reg");
  EXPECT_FALSE(belowFile.RegWriteString(kRoot, kKey, u"x", u"new"));

  FileRegistry nowhere{Path()};
  EXPECT_EQ(nowhere.Trouble(), u"");
  EXPECT_FALSE(nowhere.RegWriteString(kRoot, kKey, u"x", u"new"));
  EXPECT_EQ(nowhere.RegReadString(kRoot, kKey, u"x", u"default"), u"default");
}

}  // namespace
}  // namespace quenmar
