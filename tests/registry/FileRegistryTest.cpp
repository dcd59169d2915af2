#include "registry/FileRegistry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "ScratchFolder.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

constexpr auto kRoot = RegistryRoot::kLocalMachine;
constexpr StringView kOptionsKey = u"Software\\Quenmar\\Options";
const std::string kSection = "\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\r\n";
const std::string kHead = "REGEDIT4\r\n" + kSection;
std::string Utf16(const String& text) { return "\xFF\xFE" + ToUtf16Le(text); }

class FileRegistryTest : public ::testing::Test {
 protected:
  static bool Set(const Path& path, StringView value = u"new") {
    return FileRegistry(path).RegWriteString(kRoot, kOptionsKey, u"x", value);
  }
  [[nodiscard]] String ReadFrom(const std::string& content) const {
    ReplaceBytes(file_, content);
    return FileRegistry(file_).RegReadString(kRoot, kOptionsKey, u"x", u"default");
  }

  ScratchFolder folder_;
  Path file_ = folder_ / "registry.reg";
};

TEST_F(FileRegistryTest, ReadsWhatAnImportWouldGive) {
  const std::pair<std::string, String> cases[] = {
      {kHead + " \"X\" \t=  \"a\"\t\n", u"a"},
      {kHead + "\"x\"=\"a\" ; why\r\n", u"a"},
      {kHead + R"("x"="C:\\dir\\ \"q\" C:\dir")", u"C:\\dir\\ \"q\" C:\\dir"},
      {kHead + "\"x\"=\"caf\xE9 \x80\"\r\n", u"caf\u00E9 \u20AC"},
      {kHead + "\"x\"=\"a\"\r\n\"x\"=\"b\"\r\n", u"b"},
      {kHead + "\"x\"=\"a\"\r\n\"x\"=-\r\n", u"default"},
      {kHead + "\"x\"=\"a\"\r\n[Other]\r\n\"x\"=\"b\"\r\n" + kSection + R"("y"="c")", u"a"},
      {kHead + "\"x\"=\"a\"\r\n[-HKEY_LOCAL_MACHINE\\software\\QUENMAR]\r\n", u"default"},
      {kHead + "\"x\"=\"a\"\r\n[-HKEY_LOCAL_MACHINE\\Software\\Quen]\r\n", u"a"},
      {"REGEDIT4\n[-HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Options]\n\"x\"=\"a\"\n", u"default"},
      {kHead + "\"x\"=dword:00000001\r\n", u"default"},
      {kHead + "\"x\"=hex(2):61,\\\r\n  00\r\n", u"default"},
      {kHead + "\"x\"=\"open\r\n", u"default"},
      {kHead + "\"x\"=\"a\" b\r\n", u"default"},
      {kHead + "; \"x\"=\"a\"\r\n", u"default"},
      {kHead + "\"y\"=hex:\\\r\n\"x\"=\"a\"\r\n", u"a"},
      {"", u"default"},
  };
  for (const auto& [content, value] : cases) EXPECT_EQ(ReadFrom(content), value) << content;
}

TEST_F(FileRegistryTest, AWriteTouchesOneValueOnly) {
  const std::string line = "\"x\"=\"new\"\r\n";
  const std::string other =
      "; note \x81\xE9\n\r\n[Other]\n\"x\"=\"other\"\n\"y\"=hex:00,\\\n  01\n";
  const String wide = u"Windows Registry Editor Version 5.00\r\n" + FromUtf8(kSection);
  const std::pair<std::string, std::string> cases[] = {
      {"", kHead + line},
      {"REGEDIT4", "REGEDIT4\r\n" + kSection + line},
      {kHead + other, kHead + line + other},
      {kHead + "\"y\"=\"1\"\n\n" + other, kHead + "\"y\"=\"1\"\n" + line + "\n" + other},
      {kHead + "\"X\" = \"old\"\n; end\n" + other, kHead + line + "; end\n" + other},
      {kHead + "\"x\"=dword:01\n" + other, kHead + line + other},
      {kHead + "\"x\"=hex:61,\\\r\n  62,\\\r\n  63\r\n" + R"("y"="")", kHead + line + R"("y"="")"},
      {kHead + "\"x\"=\"1\"\n" + other + "\"x\"=\"\"\n", kHead + line + other + "\"x\"=\"\"\n"},
      {kHead + "\"x\"=\"1\"\n\"x\"=\"2\"\n", kHead + "\"x\"=\"1\"\n" + line},
      {kHead + R"("y"="1")", kHead + "\"y\"=\"1\"\r\n" + line},
      {"REGEDIT4\n" + other, "REGEDIT4\n" + other + kSection + line},
      {Utf16(wide + u"\"x\"=\"\u4E2D\"\r\n"), Utf16(wide + u"\"x\"=\"new\"\r\n")},
  };
  for (const auto& [content, after] : cases) {
    ReplaceBytes(file_, content);
    EXPECT_TRUE(Set(file_));
    EXPECT_EQ(ReadBytes(file_), after) << content;
    EXPECT_EQ(ReadFrom(after), u"new");
  }
  // The encoding stays unless text would be lost.
  ReplaceBytes(file_, kHead + "\"y\"=\"\xE9\"\r\n");
  EXPECT_TRUE(Set(file_, u"\u4E2D"));
  EXPECT_EQ(ReadBytes(file_), Utf16(wide + u"\"y\"=\"\u00E9\"\r\n\"x\"=\"\u4E2D\"\r\n"));
}

TEST_F(FileRegistryTest, AWriteKeepsWhatOthersWroteMeanwhile) {
  FileRegistry registry(file_);
  FileRegistry(file_).RegWriteString(kRoot, kOptionsKey, u"y", u"theirs");
  EXPECT_TRUE(registry.RegWriteString(kRoot, kOptionsKey, u"x", u"ours"));
  EXPECT_EQ(registry.RegReadString(kRoot, kOptionsKey, u"y"), u"theirs");
}

TEST_F(FileRegistryTest, RefusesTextThatNoLineCanHold) {
  for (const StringView text : {StringView(u"a\rb"), StringView(u"a\nb"), StringView(u"a\0b", 3)}) {
    FileRegistry registry(file_);
    EXPECT_FALSE(registry.RegWriteString(kRoot, kOptionsKey, u"x", text)) << ToUtf8(text);
    EXPECT_FALSE(registry.RegWriteString(kRoot, kOptionsKey, text, u"x")) << ToUtf8(text);
    EXPECT_FALSE(registry.RegWriteString(kRoot, text, u"x", u"x")) << ToUtf8(text);
  }
  EXPECT_FALSE(std::filesystem::exists(file_));
}

TEST_F(FileRegistryTest, WhatIsNoRegistryFileIsReportedAndNeverOverwritten) {
  for (const std::string& content :
       {std::string("\"x\"=\"a\"\r\n"), std::string("REGEDIT\r\n"), "\xEF\xBB\xBF" + kHead,
        "\n" + kHead, Utf16(u"REGEDIT4\r\n") + "x"}) {
    EXPECT_EQ(ReadFrom(content), u"default") << content;
    EXPECT_TRUE(Contains(FileRegistry(file_).ErrorText(), PathText(file_)));
    EXPECT_TRUE(!Set(file_) && ReadBytes(file_) == content) << content;
  }
}

TEST_F(FileRegistryTest, CreatesMissingFoldersWherePossible) {
  ReplaceBytes(file_, kHead);
  const std::tuple<Path, bool, bool> cases[] = {{folder_ / "a" / "b" / "registry.reg", false, true},
                                                {file_ / "registry.reg", false, false},
                                                {folder_.Folder(), true, false},
                                                {Path(), false, false}};
  for (const auto& [path, reported, stored] : cases) {
    EXPECT_EQ(!FileRegistry(path).ErrorText().empty(), reported) << path;
    EXPECT_EQ(Set(path), stored) << path;
  }
}

}  // namespace
}  // namespace quenmar
