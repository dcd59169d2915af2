#include "conf/ConfReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "conf/EndApplication.h"

namespace quenmar {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using Shown = ScriptedMessages::Shown;

constexpr int kYesNoQuestion = 36;

class ConfReaderTest : public ::testing::Test {
 protected:
  bool Load(std::string_view content) {
    WriteFile(path_, content);
    return LoadAgain();
  }

  bool LoadAgain() {
    return ConfReader(options_, language_, messages_, bareLineFeeds_)
        .LoadConfFile(path_, settings_, series_, &notes_);
  }

  ScratchFolder folder_;
  Path path_ = folder_ / "map.conf";
  Options options_;
  Language language_;
  ScriptedMessages messages_;
  ConfReader::BareLineFeeds bareLineFeeds_ = ConfReader::BareLineFeeds::kAsk;
  ConfNotes notes_;
  std::shared_ptr<Document> settings_;
  std::shared_ptr<Document> series_;
};

struct SettingsCase {
  const char* what;
  const char* content;
  const char* settings;
};

TEST_F(ConfReaderTest, TurnsLinesIntoSettings) {
  const SettingsCase kCases[] = {
      {"empty file", "", ""},
      {"last line without an end", "a: 1\r\nb:2",
       "a=1{Comments=;Disabled=1;}\nb=2{Comments=;Disabled=1;}\n"},
      {"CR alone ends a line", "a: 1\rb: 2\r",
       "a=1{Comments=;Disabled=1;}\nb=2{Comments=;Disabled=1;}\n"},
      {"outer spaces go, inner ones and case stay", "  My_Key :x\r\n  Key:  a b  \r\n",
       "Key=a b{Comments=My_Key :x;Disabled=1;}\n"},
      {"name with a space or a digit first is a comment",
       "my key: 1\r\n1abc: 2\r\n_x: 3\r\nk: 4\r\n",
       "k=4{Comments=my key: 1~1abc: 2~_x: 3;Disabled=1;}\n"},
      {"value keeps further colons", "url: a:b\r\n", "url=a:b{Comments=;Disabled=1;}\n"},
      {"empty value", "a:\r\nb: //x\r\n",
       "a={Comments=;Disabled=1;}\nb={Comments=b:  x;Disabled=1;}\n"},
      {"commented-out setting", "//a: 1\r\n", "a=1{Comments=;Disabled=0;}\n"},
      {"space behind the slashes makes a comment", "// a: 1\r\nb: 2\r\n",
       "b=2{Comments=a: 1;Disabled=1;}\n"},
      {"remark", "// x\r\na: 1 // remark\r\n", "a=1{Comments=x~a: 1   remark;Disabled=1;}\n"},
      {"tab", "a: 1\t2\r\n", "a=1{Comments=a: 1 2;Disabled=1;}\n"},
      {"remark and tab add the line twice", "a: 1\t2 // r\r\n",
       "a=1{Comments=a: 1 2   r~a: 1 2   r;Disabled=1;}\n"},
      {"tab inside the remark adds it once", "a: 1 //\tr\r\n",
       "a=1{Comments=a: 1   r;Disabled=1;}\n"},
      {"remark on a commented-out line", "//a: 1 // r\r\n", "a=1{Comments=a: 1   r;Disabled=0;}\n"},
      {"name may hold a tab", "a\tb: 1\r\n", "a\tb=1{Comments=;Disabled=1;}\n"},
      {"neighbours share a block, a blank line ends it", "// x\r\na: 1\r\nb: 2\r\n   \r\nc: 3\r\n",
       "a=1{Comments=x;Disabled=1;}\nb=2{Comments=x;Disabled=1;}\nc=3{Comments=;Disabled=1;}\n"},
      {"a line of tabs is a comment", "// x\r\na: 1\r\n\t\r\nb: 2\r\n",
       "a=1{Comments=x;Disabled=1;}\nb=2{Comments= ;Disabled=1;}\n"},
      {"note and example", "// x\r\na: 1\r\n//Note: n\r\n//eXample:e\r\nb: 2\r\nnote: 3\r\n",
       "a=1{Comments=x;Disabled=1;}\nb=2{Comments=x~Note: n~eXample:e;Disabled=1;}\n"
       "note=3{Comments=x~Note: n~eXample:e;Disabled=1;}\n"},
      {"active line behind a commented-out one", "//a: 1\r\n// y\r\na: 2\r\n",
       "a=2{Comments=~a: 2;Disabled=0;}\n"},
      {"commented line behind a commented-out one", "//a: 1\r\n// y\r\n//a: 2\r\n//a: 3\r\n",
       "a=1{Comments=~y~;Disabled=0;}\n"},
      {"commented line behind an active one", "// x\r\na: 1\r\n//a: 2\r\n",
       "a=1{Comments=x;Disabled=1;Comments=x;Disabled=0;}\na=2{}\n"},
      {"NUL, 0x1A and the whole code page are text", "a: \x1A\x81\x80\xFF\r\n",
       "a=\x1A\x81\x80\xFF{Comments=;Disabled=1;}\n"},
      {"entity forms fold", "a: x&lt;y&z\r\n", "a=x<y&z{Comments=;Disabled=1;}\n"},
  };
  for (const SettingsCase& test : kCases) {
    SCOPED_TRACE(test.what);
    EXPECT_TRUE(Load(test.content));
    EXPECT_EQ(Fields1252(*settings_), test.settings);
    EXPECT_EQ(series_->Fields().Count(), 0);
  }
  EXPECT_THAT(messages_.shown, IsEmpty());

  EXPECT_TRUE(Load(std::string_view("a: 1\0b\r\nc: 2\r\n", 14)));
  EXPECT_EQ(settings_->Fields().Field(0)->Value(), String(u"1\0b", 3));
}

TEST_F(ConfReaderTest, KeepsSeriesByTheirValues) {
  EXPECT_TRUE(
      Load("// x\r\nnpc: a.txt\r\nnpc: a.txt\r\n//npc: b.txt\r\nNpc: b.txt // r\r\nmap: a.txt\r\n"
           "//map: m\r\nz: 1\r\n"));
  EXPECT_EQ(
      Fields1252(*series_),
      "a.txt={Type=npc;Disabled=1;}\nb.txt={Type=npc;Disabled=1;}\nm={Type=map;Disabled=0;}\n");
  EXPECT_EQ(Fields1252(*settings_), "z=1{Comments=;Disabled=1;}\n");

  // A known entry keeps the comment block for the next line.
  EXPECT_TRUE(Load("npc: a\r\n// x\r\nnpc: a\r\nz: 1\r\n"));
  EXPECT_EQ(Fields1252(*settings_), "z=1{Comments=x;Disabled=1;}\n");

  EXPECT_TRUE(Load("npc:\r\n//npc: // gone\r\n"));
  EXPECT_EQ(Fields1252(*series_), "={Type=npc;Disabled=1;}\n={Type=npc;Disabled=0;}\n");

  options_.series = u"{NPC}{drop}";
  EXPECT_TRUE(Load("npc: a\r\nDROP: b\r\nmap: c\r\n"));
  EXPECT_EQ(Values(*series_), "b=");
  EXPECT_EQ(Values(*settings_), "npc=a map=c");
}

TEST_F(ConfReaderTest, AsksAboutActiveDuplicates) {
  messages_.Answer({Button::kYes});
  // The accepted duplicate makes later active lines of commented-out settings keep their values.
  EXPECT_TRUE(Load("a: 1\r\na: 2 // t\r\n//b: 1\r\nb: 2\r\n"));
  EXPECT_EQ(Fields1252(*settings_),
            "a=1{Comments=~a: 2   t;Disabled=0;}\nb=1{Comments=~b: 2;Disabled=0;}\n");
  EXPECT_THAT(messages_.shown,
              ElementsAre(Shown{"Parameter a is duplicated (in " + ToUtf8(PathText(path_)) +
                                    " file) \r\n\r\n Ignore and continue the process?",
                                kYesNoQuestion}));

  messages_.Answer({Button::kNo});
  EXPECT_FALSE(Load("a: 1\r\nnpc: x\r\na: 2\r\nb: 3\r\n"));
  EXPECT_EQ(Values(*settings_), "a=1");
  EXPECT_EQ(Values(*series_), "x=");

  options_.alwaysIgnoreDupParam = true;
  EXPECT_TRUE(Load("a: 1\r\na: 2\r\na: 3\r\n"));
  EXPECT_EQ(Fields1252(*settings_), "a=1{Comments=~a: 2~a: 3;Disabled=0;}\n");
  EXPECT_THAT(messages_.shown, SizeIs(2));
}

TEST_F(ConfReaderTest, LeavesABackslashNInThePathOfAQuestion) {
#ifndef _WIN32
  path_ = folder_ / "a\\new.conf";
  messages_.Answer({Button::kNo});
  EXPECT_FALSE(Load("a: 1\r\na: 2\r\n"));
  EXPECT_THAT(messages_.shown.at(0).text, ::testing::HasSubstr("a\\new.conf file) \r\n"));
#else
  GTEST_SKIP() << "no backslash can stand in a file name";
#endif
}

TEST_F(ConfReaderTest, RepairsBareLineFeeds) {
  messages_.Answer({Button::kYes});
  // The line before the bare LF is read a second time; CR LF becomes CR CR LF; the first line of
  // the repaired file is not trimmed.
  EXPECT_TRUE(Load(" npc: a\r\n// x\r\nb: 2\nc: 3\n"));
  EXPECT_EQ(ReadFile(path_), " npc: a\r\r\n// x\r\r\nb: 2\r\nc: 3\r\n");
  EXPECT_EQ(Fields1252(*settings_), "b=2{Comments=;Disabled=1;}\nc=3{Comments=;Disabled=1;}\n");
  EXPECT_EQ(Values(*series_), "a=");
  EXPECT_THAT(messages_.shown,
              ElementsAre(Shown{"This file contain LF as line ending, do you want to fix? (This "
                                "tool is compatible with CR+LF)\r\n" +
                                    ToUtf8(PathText(path_)),
                                kYesNoQuestion}));
  EXPECT_TRUE(LoadAgain());

  messages_.Answer({Button::kNo});
  EXPECT_THROW((void)Load("a: 1\n"), EndApplication);
  EXPECT_EQ(ReadFile(path_), "a: 1\n");

  messages_.Answer({Button::kCancel});
  EXPECT_FALSE(LoadAgain());
  EXPECT_EQ(ReadFile(path_), "a: 1\n");

  bareLineFeeds_ = ConfReader::BareLineFeeds::kRepairInMemory;
  EXPECT_TRUE(LoadAgain());
  EXPECT_EQ(Values(*settings_), "a=1");
  EXPECT_EQ(ReadFile(path_), "a: 1\n");

  bareLineFeeds_ = ConfReader::BareLineFeeds::kRepairInFile;
  EXPECT_TRUE(LoadAgain());
  EXPECT_EQ(ReadFile(path_), "a: 1\r\n");
  EXPECT_EQ(notes_.file.Bytes(), "a: 1\r\n");
  EXPECT_TRUE(Load("a: 1\r\nb: 2\n")) << "no line is read twice where nobody is asked";
  EXPECT_EQ(Values(*settings_), "a=1 b=2");
  EXPECT_EQ(ReadFile(path_), "a: 1\r\r\nb: 2\r\n");
}

TEST_F(ConfReaderTest, TakesBareLineFeedsForLineEnds) {
  bareLineFeeds_ = ConfReader::BareLineFeeds::kEndLines;
  const std::string content = " a: 1\n// x\r\nb: 2\r c: 3\n\nd: 4\r\n\n\re: 5";
  EXPECT_TRUE(Load(content));
  EXPECT_EQ(Fields1252(*settings_),
            "a=1{Comments=;Disabled=1;}\nb=2{Comments=x;Disabled=1;}\n"
            "c=3{Comments=x;Disabled=1;}\nd=4{Comments=;Disabled=1;}\n"
            "e=5{Comments=;Disabled=1;}\n");
  EXPECT_EQ(ReadFile(path_), content);
  EXPECT_THAT(messages_.shown, IsEmpty());
}

TEST_F(ConfReaderTest, KnowsTheCharacterSet) {
  const auto value = [this](std::string_view content) {
    EXPECT_TRUE(Load(content));
    EXPECT_EQ(notes_.file.Bytes(), content);
    return ToUtf8(settings_->Fields().Field(u"a")->Value()) +
           (notes_.file.Encoding().ascii                  ? ", ascii"
            : notes_.file.Charset() == ConfCharset::kUtf8 ? ", utf-8"
                                                          : "");
  };
  EXPECT_EQ(value("a: x\r\n"), "x, ascii");
  EXPECT_EQ(value("a: caf\xC3\xA9\r\n"), "café, utf-8");
  EXPECT_EQ(value("\xEF\xBB\xBF"
                  "a: 1\r\n"),
            "1, utf-8");
  EXPECT_EQ(value("a: caf\xC3\xA9\r\nb: \xE9\r\n"), "cafÃ©");
  EXPECT_EQ(value("b: 1\r\n\xEF\xBB\xBF"
                  "a: 2\r\n"),
            ", utf-8")
      << "a mark within is text";
  // In a marked file the bytes that are no UTF-8 survive all the same.
  EXPECT_EQ(value("\xEF\xBB\xBF"
                  "a: \xE9\xC3\xA9\r\n"),
            "\xEF\xBF\xBDé, utf-8");
  EXPECT_EQ(EncodeConfText(settings_->Fields().Field(0)->Value(), ConfCharset::kUtf8),
            "\xE9\xC3\xA9");
  for (const std::string& utf16 : {std::string("\xFF\xFE"
                                               "a\0:\0",
                                               6),
                                   std::string("\xFE\xFF")}) {
    EXPECT_FALSE(Load(utf16));
    EXPECT_THAT(messages_.shown.back().text, StartsWith("Error: This is UTF-16 text."));
    EXPECT_EQ(ReadFile(path_), utf16);
  }
}

TEST_F(ConfReaderTest, NotesWhatIsWorthTelling) {
  using Kind = Finding::Kind;
  const auto findings = [this](std::string_view content) {
    (void)Load(content);
    std::vector<std::string> list;
    for (const Finding& finding : notes_.findings) {
      list.push_back(std::to_string(finding.line) + "BDNUX"[static_cast<int>(finding.kind)] +
                     ToUtf8(finding.text));
    }
    return list;
  };
  static_assert(static_cast<int>(Kind::kNoText) == 4);
  options_.alwaysIgnoreDupParam = true;
  bareLineFeeds_ = ConfReader::BareLineFeeds::kEndLines;
  EXPECT_THAT(findings("a: 1\r\nb: 2\n//a: 2\na: 3\na: 4\n"), ElementsAre("2B", "4Da", "5Da"));
  EXPECT_THAT(findings("//a: 1\r\na: 2\r\na: 3\rb:\xC3\xA9"), ElementsAre("3Da", "4U"));
  EXPECT_THAT(findings("\xEF\xBB\xBF"
                       "a: 1\r\nb: \xE9\r\n"),
              ElementsAre("1U", "2X"));
  EXPECT_THAT(findings("//b: 1\r\na: 1\r\n x\"y: 2 \r\n"), ElementsAre("3Nx\"y: 2"));
  EXPECT_EQ(notes_.troubleLine, 3);
  EXPECT_EQ(notes_.trouble, u"Illegal character in name");
  EXPECT_THAT(notes_.active, ElementsAre(false, true, true));
}

TEST_F(ConfReaderTest, ReportsALineEndRepairThatFails) {
  // The question's answer comes after the file has changed under the reader's feet.
  struct Meddler : MessageBoxes {
    Button Show(const String& text, int style) override {
      shown.push_back({ToUtf8(text), style});
      if (shown.size() == 1) meddle();
      return Button::kYes;
    }
    std::vector<Shown> shown;
    std::function<void()> meddle;
  } meddler;
  WriteFile(path_, "a: 1\nb: 2\n");
  const ConfReader reader(options_, language_, meddler);
  meddler.meddle = [this] { std::filesystem::remove(path_); };
  EXPECT_FALSE(reader.LoadConfFile(path_, settings_, series_));
  EXPECT_EQ(meddler.shown.at(1),
            (Shown{"Error, can't read from file " + ToUtf8(PathText(path_)), 0}));

  // A character outside the code page cannot come from a file, so only the disk can refuse.
#ifndef _WIN32
  WriteFile(path_, "a: 1\n");
  meddler.shown.clear();
  meddler.meddle = [this] {
    std::filesystem::remove(path_);
    std::filesystem::create_symlink("/proc/version", path_);
  };
  EXPECT_FALSE(reader.LoadConfFile(path_, settings_, series_));
  EXPECT_EQ(meddler.shown.at(1),
            (Shown{"Error, lines must end with Cr+Lf, fix it and retry.", 16}));
#endif
}

TEST_F(ConfReaderTest, TurnsFailuresIntoOneMessage) {
  EXPECT_FALSE(LoadAgain());
  EXPECT_THAT(messages_.shown.at(0).text, StartsWith("Error: "));
  EXPECT_EQ(messages_.shown.at(0).style, 0);
  ASSERT_TRUE(settings_ && series_);

  std::filesystem::create_directory(path_);
  EXPECT_FALSE(LoadAgain());
  EXPECT_THAT(messages_.shown.at(1).text,
              ::testing::AllOf(StartsWith("Error: "),
                               ::testing::EndsWith("\r\n" + ToUtf8(PathText(path_)))));
  std::filesystem::remove(path_);

  EXPECT_FALSE(Load("a: 1\r\nb\"c: 2\r\nd: 3\r\n"));
  const std::string file = ToUtf8(PathText(path_));
  EXPECT_EQ(messages_.shown.at(2).text,
            "Error: Illegal character in name\r\n" + file + ", line 2: b\"c: 2");
  EXPECT_EQ(Fields1252(*settings_), "a=1{Comments=;Disabled=1;}\n={}\n");

  EXPECT_FALSE(Load("a: 1\r\n//npc: my file.txt\r\n"));
  EXPECT_EQ(messages_.shown.at(3).text,
            "Error: Name don't allow spaces\r\n" + file + ", line 2: //npc: my file.txt");
  EXPECT_EQ(Values(*settings_), "a=1");
}

}  // namespace
}  // namespace quenmar
