#include "conf/ConfWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/resource.h>
#endif

#include <chrono>
#include <random>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "conf/ConfLine.h"
#include "conf/ConfReader.h"
#include "conf/SeriesGroups.h"

namespace quenmar {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Shown = ScriptedMessages::Shown;

/// Groups with captions of any form.
struct Captioned : SeriesView {
  struct Group {
    String caption;
    CheckList items;
  };
  explicit Captioned(std::vector<Group> list) : groups(std::move(list)) {}
  [[nodiscard]] int GroupCount() const override { return static_cast<int>(groups.size()); }
  [[nodiscard]] String TabCaption(int group) const override { return At(group).caption; }
  [[nodiscard]] int ItemCount(int group) const override {
    return static_cast<int>(At(group).items.size());
  }
  [[nodiscard]] String List(int group, int item) const override {
    return At(group).items.at(static_cast<size_t>(item)).text;
  }
  [[nodiscard]] bool Selected(int group, int item) const override {
    return At(group).items.at(static_cast<size_t>(item)).checked;
  }
  [[nodiscard]] const Group& At(int group) const { return groups.at(static_cast<size_t>(group)); }
  std::vector<Group> groups;
};

class ConfWriterTest : public ::testing::Test {
 protected:
  bool Save(const SeriesView& series = SeriesGroups()) {
    return ConfWriter(options_, language_, messages_).SaveConfFile(path_, settings_, series);
  }

  bool Save(OpenedFile& file) {
    return ConfWriter(options_, language_, messages_)
        .SaveBytes(file,
                   ConfFileBytes(settings_, SeriesGroups(), file.charset, options_, language_));
  }

  ScratchFolder folder_;
  Path path_ = folder_ / "map.conf";
  Path copy_ = folder_ / "map.conf.bak";
  Options options_;
  Language language_;
  ScriptedMessages messages_;
  Document settings_;
};

TEST_F(ConfWriterTest, WritesSettingsThenSeries) {
  settings_.Fields().AddField(u"b", u"1 & 2");
  settings_.Fields().AddField(u"a", u"");
  settings_.Fields().Field(0)->Parameters().AddParameter(u"Comments", u"lost");
  settings_.Fields().Field(0)->Parameters().AddParameter(u"Disabled", u"0");
  settings_.Fields().AddField(u"\u20AC", u"\u00E9\u0081");
  const Captioned series({{u"npc (2)", {{u"x", true}, {u"y", false}}},
                          {u"map", {{u"m", true}}},
                          {u"import(1)", {{u"z", false}}}});

  EXPECT_TRUE(Save(series));
  EXPECT_EQ(ReadFile(path_),
            "b: 1 & 2\r\na: \r\n\x80: \xE9\x81\r\n"
            "npc : x\r\n//npc : y\r\nmap: m\r\n//import: z\r\n");
  options_.saveCommentedSeries = false;
  EXPECT_TRUE(Save(series));
  EXPECT_THAT(ReadFile(path_), ::testing::EndsWith("\r\nnpc : x\r\nmap: m\r\n"));
  EXPECT_THAT(messages_.shown, ElementsAre(Shown{"Saved!", 64}, Shown{"Saved!", 64}));
}

TEST_F(ConfWriterTest, NothingToWriteGivesAnEmptyFile) {
  EXPECT_TRUE(Save());
  EXPECT_EQ(ReadFile(path_), "");
  EXPECT_FALSE(std::filesystem::exists(copy_));
  EXPECT_THAT(messages_.shown, ElementsAre(Shown{"Saved!", 64}));
}

TEST_F(ConfWriterTest, OneOpeningKeepsWhatWasThereBeforeItsFirstSave) {
  WriteFile(path_, "first\n");
  settings_.Fields().AddField(u"a", u"2");
  OpenedFile file = OpenedFile::FromDisk(path_);
  for (const StringView value : {u"2", u"2", u"3"}) {
    settings_.Fields().Field(0)->SetValue(value);
    EXPECT_TRUE(Save(file));
    EXPECT_EQ(ReadFile(path_), "a: " + ToUtf8(value) + "\r\n");
    EXPECT_EQ(ReadFile(copy_), "first\n");
  }
  // The next opening has its own; one that changes nothing makes none and leaves the file alone.
  const auto time = std::filesystem::last_write_time(path_) - std::chrono::hours(1);
  std::filesystem::last_write_time(path_, time);
  EXPECT_TRUE(Save());
  EXPECT_EQ(std::filesystem::last_write_time(path_), time);
  EXPECT_EQ(ReadFile(copy_), "first\n");
  settings_.Fields().Field(0)->SetValue(u"4");
  EXPECT_TRUE(Save());
  EXPECT_EQ(ReadFile(copy_), "a: 3\r\n");
  EXPECT_THAT(messages_.shown, ::testing::Each(Shown{"Saved!", 64}));
}

TEST_F(ConfWriterTest, TellsACopyThatCannotBeMadeAfterTheSave) {
  WriteFile(path_, "mine\n");
  std::filesystem::create_directory(copy_);
  EXPECT_TRUE(Save());
  EXPECT_EQ(ReadFile(path_), "");
  ASSERT_EQ(messages_.shown.size(), 2U);
  EXPECT_EQ(messages_.shown[0].text, "Saved!");
  EXPECT_THAT(messages_.shown[1].text,
              StartsWith("The copy " + ToUtf8(PathText(copy_)) + " could not be made: "));
}

#ifndef _WIN32
TEST_F(ConfWriterTest, AFailedSaveLeavesTheCopyOfAnEarlierOne) {
  WriteFile(path_, "// x\n");
  WriteFile(copy_, "precious\n");
  OpenedFile file = OpenedFile::FromDisk(path_);
  settings_.Fields().AddField(u"a", String(2000, u'x'));
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit tight = {1000, before.rlim_max};
  for (const bool inPlace : {false, true}) {
    if (inPlace) std::filesystem::create_hard_link(path_, folder_ / "other");
    ::setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_FALSE(Save(file)) << "a full disk";
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(ReadFile(path_) + ReadFile(copy_), "// x\nprecious\n");
  }
  EXPECT_TRUE(Save(file));
  EXPECT_EQ(ReadFile(copy_), "// x\n");
}
#endif

TEST_F(ConfWriterTest, AsksBeforeItReplacesWhatSomebodyElseHasWritten) {
  WriteFile(path_, "read\n");
  settings_.Fields().AddField(u"a", u"2");
  OpenedFile file = OpenedFile::FromDisk(path_);
  const Shown question{"The file has changed on the disk since it was read. Save anyway?\r\n" +
                           ToUtf8(PathText(path_)),
                       4 + 32 + 256};
  const auto answer = [&](Button button) {
    messages_.Answer({button});
    messages_.shown.clear();
    const bool saved = Save(file);
    EXPECT_EQ(messages_.shown.at(0), question);
    return saved;
  };
  WriteFile(path_, "theirs\n");
  EXPECT_FALSE(answer(Button::kNo));
  EXPECT_FALSE(answer(Button::kCancel));
  EXPECT_EQ(ReadFile(path_), "theirs\n");
  EXPECT_FALSE(std::filesystem::exists(copy_));
  EXPECT_TRUE(answer(Button::kYes));
  EXPECT_EQ(ReadFile(copy_), "theirs\n");
  std::filesystem::remove(path_);
  EXPECT_TRUE(answer(Button::kYes));
  EXPECT_EQ(ReadFile(path_), "a: 2\r\n");
  EXPECT_TRUE(Save(file)) << "what was saved is what is known";
}

TEST_F(ConfWriterTest, WritesTheCharacterSetOfTheFile) {
  settings_.Fields().AddField(u"a", u"\u00E9\u20AC");
  for (const auto& [before, after] :
       {std::pair("b: 1\n", "a: \xE9\x80\r\n"), std::pair("b: \xE9\n", "a: \xE9\x80\r\n"),
        std::pair("b: \xC3\xA9\n", "a: \xC3\xA9\xE2\x82\xAC\r\n"),
        std::pair("\xEF\xBB\xBF", "a: \xC3\xA9\xE2\x82\xAC\r\n")}) {
    WriteFile(path_, before);
    EXPECT_TRUE(Save());
    EXPECT_EQ(ReadFile(path_), after);
  }
  const ConfEncoding ascii = EncodingOf("a: 1");
  const ConfEncoding windows1252 = EncodingOf("a: \xE9");
  const ConfEncoding utf8 = EncodingOf("a: \xC3\xA9");
  EXPECT_EQ(CharsetForSaving(ascii, utf8), ConfCharset::kUtf8);
  EXPECT_EQ(CharsetForSaving(windows1252, utf8), ConfCharset::kWindows1252);
  EXPECT_EQ(CharsetForSaving(utf8, windows1252), ConfCharset::kUtf8);
}

TEST_F(ConfWriterTest, RefusesCharactersThatTheFileCannotHold) {
  WriteFile(path_, "mine\n");
  settings_.Fields().AddField(u"good", u"1");
  settings_.Fields().AddField(u"motd", u"\u0416");
  EXPECT_FALSE(Save());
  EXPECT_EQ(ReadFile(path_), "mine\n");
  EXPECT_FALSE(std::filesystem::exists(copy_));
  EXPECT_EQ(messages_.shown.at(0).text,
            "Error: The setting motd has a character that the file's character set (Windows-1252) "
            "lacks.\r\nThe file " +
                ToUtf8(PathText(path_)) + " is unchanged.");
}

TEST_F(ConfWriterTest, ReportsWhatTheDiskRefuses) {
  settings_.Fields().AddField(u"a", u"1");
  path_ = folder_ / "missing" / "map.conf";
  EXPECT_FALSE(Save());
  path_ = folder_.Folder();
  EXPECT_FALSE(Save());
#ifdef _WIN32
  // Another program has the file open for itself.
  path_ = folder_ / "map.conf";
  WriteFile(path_, "mine\r\n");
  std::FILE* const busy = ::_wfsopen(path_.c_str(), L"r", 0x20 /* others may read */);
  EXPECT_FALSE(Save());
  std::fclose(busy);
  EXPECT_EQ(ReadFile(path_), "mine\r\n");
  EXPECT_EQ(messages_.shown.size(), 3);
#else
  path_ = "/dev/full";
  EXPECT_FALSE(Save());
  EXPECT_EQ(messages_.shown.at(2),
            (Shown{"Error: No space left on device\r\nThe file /dev/full is unchanged.", 0}));
#endif
  for (const Shown& shown : messages_.shown) EXPECT_THAT(shown.text, StartsWith("Error: "));
}

TEST_F(ConfWriterTest, TellsBeforehandWhatAValueWillBeReadBackAs) {
  const std::pair<const char16_t*, const char16_t*> rows[] = {{u" a b ", u"a b"},
                                                              {u"http://x", u"http:"},
                                                              {u"a\tb // c", u"a"},
                                                              {u"// a", u""},
                                                              {u"&lt;&amp;lt; /", u"<&amp;lt; /"},
                                                              {u"1 /&gt;/ 2", u"1 />/ 2"},
                                                              {u"a & b: c", u"a & b: c"}};
  for (const auto& [value, expected] : rows) {
    EXPECT_EQ(ReadBackValue(value), expected);
    settings_.Fields().RemoveField(0);
    settings_.Fields().AddField(u"a", value);
    ASSERT_TRUE(Save());
    std::shared_ptr<Document> settings;
    std::shared_ptr<Document> series;
    ASSERT_TRUE(ConfReader(options_, language_, messages_).LoadConfFile(path_, settings, series));
    EXPECT_EQ(settings->Fields().Field(u"a")->Value(), expected);
  }
}

TEST_F(ConfWriterTest, WhatWasWrittenReadsBackAndWritesTheSameBytes) {
  std::mt19937 random(7);
  const auto pick = [&random](const auto& list) { return list[random() % std::size(list)]; };
  const char* const kNames[] = {"a", "B", "b_2", "npc", "Map", "import", "note", "z9"};
  const char* const kValues[] = {"1",    "",    "x y",          "a//b",   "t\tu",
                                 "&lt;", "<&>", "\xE9\x80\x81", "p/q.txt"};
  const char* const kStarts[] = {"", "", "//", "// ", " "};
  options_.alwaysIgnoreDupParam = true;
  for (int round = 0; round < 200; ++round) {
    std::string content;
    for (auto line = random() % 12; line > 0; --line) {
      content += std::string(pick(kStarts)) + pick(kNames) + ": " + pick(kValues) + "\r\n";
    }
    std::string written;
    // A first reading may leave two fields of one name, which a second one joins; otherwise nothing
    // may change once the file was written.
    bool joined = false;
    for (int pass = 0; pass < 3; ++pass) {
      WriteFile(path_, pass == 0 ? content : written);
      std::shared_ptr<Document> settings;
      std::shared_ptr<Document> series;
      ConfNotes notes;
      if (!ConfReader(options_, language_, messages_)
               .LoadConfFile(path_, settings, series, &notes)) {
        break;
      }
      const std::string bytes = ConfFileBytes(*settings, SeriesGroups(*series),
                                              notes.file.Charset(), options_, language_);
      if (pass == 2 || (pass == 1 && !joined)) {
        EXPECT_EQ(bytes, written) << content;
      }
      for (int i = 0; i < settings->Fields().Count(); ++i) {
        joined |= settings->Fields().IndexOf(settings->Fields().Field(i)->Name()) != i;
      }
      written = bytes;
    }
  }
}

}  // namespace
}  // namespace quenmar
