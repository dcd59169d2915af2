#include "conf/ConfWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "conf/ConfReader.h"
#include "conf/SeriesGroups.h"
#ifndef _WIN32
#include "DiskFaults.h"
#endif

namespace quenmar {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;
using Shown = ScriptedMessages::Shown;

class ConfWriterTest : public ::testing::Test {
 protected:
  bool Save(const SeriesView& series = SeriesGroups()) {
    return ConfWriter(options_, language_, messages_).SaveConfFile(path_, settings_, series);
  }

  bool Save(OpenedFile& file) {
    return ConfWriter(options_, language_, messages_)
        .SaveBytes(file, ConfFileBytes(settings_, SeriesGroups(), ConfCharset::kWindows1252,
                                       options_, language_));
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
  Document none, series;
  const std::string entries = "npc: x\r\n//npc: y\r\nmap: m\r\n//import: z\r\n";
  ASSERT_TRUE(ReadQuietly({path_, entries}, options_, none, series));

  EXPECT_TRUE(Save(SeriesGroups(series)));
  EXPECT_EQ(ReadFile(path_), "b: 1 & 2\r\na: \r\n\x80: \xE9\x81\r\n" + entries);
  options_.saveCommentedSeries = false;
  EXPECT_TRUE(Save(SeriesGroups(series)));
  EXPECT_THAT(ReadFile(path_), ::testing::EndsWith("\x81\r\nnpc: x\r\nmap: m\r\n"));
  EXPECT_THAT(messages_.shown, ElementsAre(Shown{"Saved!", 64}, Shown{"Saved!", 64}));
}

TEST_F(ConfWriterTest, NothingToWriteGivesAnEmptyFile) {
  EXPECT_TRUE(Save());
  EXPECT_TRUE(std::filesystem::exists(path_) && !std::filesystem::exists(copy_));
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

TEST_F(ConfWriterTest, ReportsACopyThatCannotBeMadeAfterTheSave) {
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
  for (const bool inPlace : {false, true}) {
    if (inPlace) std::filesystem::create_hard_link(path_, folder_ / "other");
    EXPECT_FALSE(OnFullDisk(1000, [&] { return Save(file); }));
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
}

TEST_F(ConfWriterTest, RefusesCharactersThatTheFileCannotHold) {
  WriteFile(path_, "mine\n");
  settings_.Fields().AddField(u"good", u"1");
  settings_.Fields().AddField(u"motd", u"\u0416");
  EXPECT_FALSE(Save());
  EXPECT_EQ(ReadFile(path_) + ReadFile(copy_), "mine\n");
  const std::string said =
      "Error: The setting motd has a character that the file's character set (Windows-1252) "
      "lacks.\r\nThe file " +
      ToUtf8(PathText(path_)) + " is unchanged.";
  EXPECT_EQ(messages_.shown.at(0).text, said);
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

}  // namespace
}  // namespace quenmar
