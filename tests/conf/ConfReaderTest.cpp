#include "conf/ConfReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <tuple>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "conf/EndApplication.h"

namespace quenmar {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
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

  [[nodiscard]] std::string Name() const { return ToUtf8(PathText(path_)); }

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

/// @return for each field "name=value{comments|on}", "|off" where it is commented out.
std::string Brief(const Document& settings) {
  String text = FromWindows1252(Fields1252(settings));
  for (const auto& [full, brief] : {std::pair(u"Comments=", u""),
                                    {u";Disabled=1;", u"|on"},
                                    {u";Disabled=0;", u"|off"},
                                    {u"}\n", u"} "}}) {
    text = ReplaceAll(text, full, brief);
  }
  return ToWindows1252(text).value();
}

TEST_F(ConfReaderTest, TurnsLinesIntoSettings) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"empty file", "", ""},
      {"last line without an end", "a: 1\r\nb:2", "a=1{|on} b=2{|on} "},
      {"CR alone ends a line", "a: 1\rb: 2\r", "a=1{|on} b=2{|on} "},
      {"outer spaces go, inner ones and case stay", "  My_Key :x\r\n  Key:  a b  \r\n",
       "Key=a b{My_Key :x|on} "},
      {"name with a space or a digit first is a comment",
       "my key: 1\r\n1abc: 2\r\n_x: 3\r\nk: 4\r\n", "k=4{my key: 1~1abc: 2~_x: 3|on} "},
      {"value keeps further colons", "url: a:b\r\n", "url=a:b{|on} "},
      {"empty value", "a:\r\nb: //x\r\n", "a={|on} b={b:  x|on} "},
      {"space behind the slashes makes a comment", "// a: 1\r\nb: 2\r\n", "b=2{a: 1|on} "},
      {"remark", "// x\r\na: 1 // remark\r\n", "a=1{x~a: 1   remark|on} "},
      {"tab", "a: 1\t2\r\n", "a=1{a: 1 2|on} "},
      {"remark and tab add the line twice", "a: 1\t2 // r\r\n", "a=1{a: 1 2   r~a: 1 2   r|on} "},
      {"tab inside the remark adds it once", "a: 1 //\tr\r\n", "a=1{a: 1   r|on} "},
      {"remark on a commented-out line", "//a: 1 // r\r\n", "a=1{a: 1   r|off} "},
      {"name may hold a tab", "a\tb: 1\r\n", "a\tb=1{|on} "},
      {"neighbours share a block, a blank line ends it", "// x\r\na: 1\r\nb: 2\r\n   \r\nc: 3\r\n",
       "a=1{x|on} b=2{x|on} c=3{|on} "},
      {"a line of tabs is a comment", "// x\r\na: 1\r\n\t\r\nb: 2\r\n", "a=1{x|on} b=2{ |on} "},
      {"note and example", "// x\r\na: 1\r\n//Note: n\r\n//eXample:e\r\nb: 2\r\nnote: 3\r\n",
       "a=1{x|on} b=2{x~Note: n~eXample:e|on} "
       "note=3{x~Note: n~eXample:e|on} "},
      {"active line behind a commented-out one", "//a: 1\r\n// y\r\na: 2\r\n", "a=2{~a: 2|off} "},
      {"commented line behind a commented-out one", "//a: 1\r\n// y\r\n//a: 2\r\n//a: 3\r\n",
       "a=1{~y~|off} "},
      {"commented line behind an active one", "// x\r\na: 1\r\n//a: 2\r\n",
       "a=1{x|onx|off} a=2{} "},
      {"NUL, 0x1A and the whole code page are text", "a: \x1A\x81\x80\xFF\r\n",
       "a=\x1A\x81\x80\xFF{|on} "},
      {"entity forms fold", "a: x&lt;y&z\r\n", "a=x<y&z{|on} "},
  };
  for (const auto& [what, content, settings] : cases) {
    SCOPED_TRACE(what);
    EXPECT_TRUE(Load(content));
    EXPECT_EQ(Brief(*settings_), settings);
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
  EXPECT_EQ(Brief(*settings_), "a=1{~a: 2   t|off} b=1{~b: 2|off} ");
  const std::string question = "Parameter a is duplicated (in " + Name() +
                               " file) \r\n\r\n Ignore and continue the process?";
  EXPECT_THAT(messages_.shown, ElementsAre(Shown{question, kYesNoQuestion}));

  messages_.Answer({Button::kNo});
  EXPECT_FALSE(Load("a: 1\r\nnpc: x\r\na: 2\r\nb: 3\r\n"));
  EXPECT_EQ(Values(*settings_), "a=1");
  EXPECT_EQ(Values(*series_), "x=");

  options_.alwaysIgnoreDupParam = true;
  EXPECT_TRUE(Load("a: 1\r\na: 2\r\na: 3\r\n"));
  EXPECT_EQ(Fields1252(*settings_), "a=1{Comments=~a: 2~a: 3;Disabled=0;}\n");
  EXPECT_THAT(messages_.shown, SizeIs(2));
}

TEST_F(ConfReaderTest, RepairsBareLineFeeds) {
  messages_.Answer({Button::kYes});
  // The line before the bare LF is read a second time; CR LF becomes CR CR LF; the first line of
  // the repaired file is not trimmed.
  EXPECT_TRUE(Load(" npc: a\r\n// x\r\nb: 2\nc: 3\n"));
  EXPECT_EQ(ReadFile(path_), " npc: a\r\r\n// x\r\r\nb: 2\r\nc: 3\r\n");
  EXPECT_EQ(Fields1252(*settings_), "b=2{Comments=;Disabled=1;}\nc=3{Comments=;Disabled=1;}\n");
  EXPECT_EQ(Values(*series_), "a=");
  const std::string question =
      "This file contain LF as line ending, do you want to fix? (This tool is compatible with "
      "CR+LF)\r\n" +
      Name();
  EXPECT_THAT(messages_.shown, ElementsAre(Shown{question, kYesNoQuestion}));
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
  EXPECT_TRUE(Load("a: 1\r\nb: 2\n")) << "no line is read twice where nobody is asked";
  EXPECT_EQ(Values(*settings_), "a=1 b=2");
  EXPECT_EQ(ReadFile(path_), "a: 1\r\r\nb: 2\r\n");
  EXPECT_EQ(notes_.file.Bytes(), ReadFile(path_));
  EXPECT_TRUE(notes_.findings.empty()) << "those of the readings before are gone";
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
  const std::string mark = "\xEF\xBB\xBF";
  EXPECT_EQ(value("a: x\r\n"), "x, ascii");
  EXPECT_EQ(value("a: caf\xC3\xA9\r\n"), "café, utf-8");
  EXPECT_EQ(value(mark + "a: 1\r\n"), "1, utf-8");
  EXPECT_EQ(value("a: caf\xC3\xA9\r\nb: \xE9\r\n"), "cafÃ©");
  EXPECT_EQ(value("b: 1\r\n" + mark + "a: 2\r\n"), ", utf-8") << "a mark within is text";
  // In a marked file the bytes that are no UTF-8 survive all the same.
  EXPECT_EQ(value(mark + "a: \xE9\xC3\xA9\r\n"), "\xEF\xBF\xBDé, utf-8");
  EXPECT_EQ(EncodeConfText(settings_->Fields().Field(0)->Value(), ConfCharset::kUtf8),
            "\xE9\xC3\xA9");
  for (const std::string utf16 : {"\xFF\xFE", "\xFE\xFF:"}) {
    EXPECT_FALSE(Load(utf16));
    EXPECT_THAT(messages_.shown.back().text, StartsWith("Error: This is UTF-16 text."));
    EXPECT_EQ(ReadFile(path_), utf16);
  }
}

TEST_F(ConfReaderTest, NotesWhatIsOdd) {
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
  EXPECT_EQ(notes_.errorLine, 3);
  EXPECT_EQ(notes_.reason, u"Illegal character in name");
  EXPECT_THAT(notes_.active, ElementsAre(false, true, true));
}

TEST_F(ConfReaderTest, ReportsALineEndRepairThatFails) {
  // The question's answer comes after the file has changed under the reader's feet.
  struct Meddler : ScriptedMessages {
    Button ShowWithDetails(const String& text, int style, const String& details,
                           const String& offer) override {
      if (shown.empty()) meddle();
      Answer({Button::kYes});
      return ScriptedMessages::ShowWithDetails(text, style, details, offer);
    }
    std::function<void()> meddle;
  };
  const std::pair<const char*, Shown> cases[] = {
      {"/none", {"Error, can't read from file " + Name(), 0}},
#ifndef _WIN32
      // A character outside the code page cannot come from a file, so only the disk can refuse.
      {"/proc/version", {"Error, lines must end with Cr+Lf, fix it and retry.", 16}},
#endif
  };
  for (const auto& [target, said] : cases) {
    Meddler meddler;
    meddler.meddle = [&, link = target] {
      std::filesystem::remove(path_);
      if (std::filesystem::exists(link)) std::filesystem::create_symlink(link, path_);
    };
    WriteFile(path_, "a: 1\nb: 2\n");
    const ConfReader reader(options_, language_, meddler);
    EXPECT_FALSE(reader.LoadConfFile(path_, settings_, series_));
    EXPECT_EQ(meddler.shown.at(1), said);
    std::filesystem::remove(path_);
  }
}

TEST_F(ConfReaderTest, TurnsFailuresIntoOneMessage) {
  EXPECT_FALSE(LoadAgain());
  EXPECT_TRUE(settings_ && series_);
  std::filesystem::create_directory(path_);
  EXPECT_FALSE(LoadAgain());
  std::filesystem::remove(path_);
  EXPECT_FALSE(Load("a: 1\r\nb\"c: 2\r\nd: 3\r\n"));
  EXPECT_EQ(Brief(*settings_), "a=1{|on} ={} ");
  EXPECT_FALSE(Load("a: 1\r\n//npc: my file.txt\r\n"));
  EXPECT_EQ(Values(*settings_), "a=1");
  const std::string in = "\r\n" + Name();
  const std::string ends[] = {in, in, "Illegal character in name" + in + ", line 2: b\"c: 2",
                              "Name don't allow spaces" + in + ", line 2: //npc: my file.txt"};
  ASSERT_EQ(messages_.shown.size(), std::size(ends));
  for (size_t i = 0; i < std::size(ends); ++i) {
    EXPECT_THAT(messages_.shown[i].text, AllOf(StartsWith("Error: "), EndsWith(ends[i])));
    EXPECT_EQ(messages_.shown[i].style, 0);
  }
}

}  // namespace
}  // namespace quenmar
