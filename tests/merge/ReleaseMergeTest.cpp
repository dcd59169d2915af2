// Merges that know the distribution's file as it was.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "merge/FileMerge.h"

namespace quenmar {
namespace {

using ::testing::HasSubstr;
using Kind = DefaultChange::Kind;
using List = FileMerge::List;
using Purpose = FileMerge::Purpose;

constexpr const char* kOld = "a: 1\r\nb: 1\r\n//c: 1\r\nd: 1\r\nf: 1\r\nnpc: x\r\n";
constexpr const char* kNew = "a: 2\r\nb: 2\r\nc: 2\r\nd: 1\r\ne: 2\r\nf: 2\r\n";
constexpr const char* kServer = "// Mine\r\na: 1\r\nb: 9\r\n//c: 1\r\nd: 8\r\nnpc: x\r\n";

class ReleaseMergeTest : public ::testing::Test {
 protected:
  ReleaseMergeTest() {
    for (const char* name : {"dist", "conf"}) std::filesystem::create_directory(folder_ / name);
    WriteFile(folder_ / "dist/a.conf", kNew);
    WriteFile(server_, kServer);
    EXPECT_EQ(seen_.Keep(server_, {folder_ / "dist/a.conf", kOld}), u"");
  }

  std::unique_ptr<FileMerge> Open(Purpose purpose = Purpose::kCompare,
                                  Layout layout = Layout::kSettings) {
    FileMerge::Request request;
    request.distribution = folder_ / "dist/a.conf";
    request.server = server_;
    request.purpose = purpose;
    request.layout = layout;
    request.base = base_;
    request.seen = &seen_;
    return FileMerge::Open(request, {options_, language_, messages_});
  }

  static std::string Shown(const FileMerge& merge) {
    std::string text;
    EXPECT_FALSE(merge.DefaultChangeOf(u"d") || merge.DefaultChangeOf(u"f"));
    for (const DefaultChange& change : merge.DefaultChanges()) {
      EXPECT_EQ(merge.DefaultChangeOf(change.name).value().kind, change.kind);
      text += ToUtf8(change.name) + (change.kind == Kind::kDefault ? " default;" : " both;");
    }
    for (const WithdrawnEntry& entry : merge.WithdrawnEntries()) text += ToUtf8(entry.name) + ";";
    return text;
  }

  std::string Seen() { return seen_.Find(server_)->Bytes(); }

  ScratchFolder folder_;
  Path server_ = folder_ / "conf/a.conf";
  Options options_;
  Language language_;
  ScriptedMessages messages_;
  SeenFiles seen_{folder_ / "state"};
  std::optional<Path> base_;
};

TEST_F(ReleaseMergeTest, TakesNewDefaultsInOneStepAndLeavesTheStates) {
  struct Case {
    Purpose purpose;
    Layout layout;
    const char* saved;
  };
  const Case kCases[] = {
      {Purpose::kCompare, Layout::kSettings, "a: 2\r\nb: 9\r\nc: 2\r\nd: 8\r\nnpc: x\r\n"},
      {Purpose::kCompare, Layout::kServer,
       "// Mine\r\na: 2\r\nb: 9\r\n//c: 2\r\nd: 8\r\nnpc: x\r\n"},
      {Purpose::kEdit, Layout::kServer, "// Mine\r\na: 2\r\nb: 9\r\n//c: 2\r\nd: 8\r\nnpc: x\r\n"}};
  for (const auto& [purpose, layout, saved] : kCases) {
    const auto merge = Open(purpose, layout);
    ASSERT_TRUE(merge && merge->KnowsOldVersion());
    const std::string before = merge->Plan().bytes;
    EXPECT_EQ(Shown(*merge), "a default;b both;c default;x;");
    EXPECT_EQ(merge->TakeUntouchedDefaults(), 2);
    EXPECT_EQ(Shown(*merge), "b both;x;");
    EXPECT_EQ(merge->TakeUntouchedDefaults(), 0);
    EXPECT_EQ(merge->Plan().bytes, saved);
    merge->Undo();
    EXPECT_FALSE(merge->CanUndo() || merge->IsModified());
    EXPECT_EQ(Shown(*merge), "a default;b both;c default;x;");
    EXPECT_EQ(merge->Plan().bytes, before);
  }
}

TEST_F(ReleaseMergeTest, WhatTheUserDoesChangesWhatIsTold) {
  const auto merge = Open(Purpose::kCompare, Layout::kServer);
  merge->SetValue(List::kActual, u"a", u"7");
  merge->SetValue(List::kActual, u"c", u"7");
  merge->Add({u"f"});
  merge->SetValue(List::kActual, u"f", u"1");
  messages_.Answer({Button::kYes});
  merge->Remove({u"b"});
  merge->SetEntry(0, 0, false);
  EXPECT_EQ(Shown(*merge), "a both;c both;");
  EXPECT_TRUE(merge->IsWantedActive(u"c"));
  EXPECT_EQ(merge->TakeDefaults({u"a", u"c", u"d", u"none"}), 2) << "one by one also a both";
  EXPECT_FALSE(merge->IsWantedActive(u"c")) << "the new default is not the user's hand";
  EXPECT_EQ(Shown(*merge), "");
  EXPECT_THAT(merge->Plan().bytes, HasSubstr("a: 2\r\n//c: 2\r\n"));
}

TEST_F(ReleaseMergeTest, SavesKeepTheDistributionsFileAndLooksDoNot) {
  auto merge = Open();
  merge->Close();
  EXPECT_EQ(Seen(), kOld) << "what is left to do would not be told any more";
  merge = Open(Purpose::kEdit);
  EXPECT_TRUE(merge->Save(merge->Plan()));
  EXPECT_EQ(Seen(), kOld) << "nobody saw the new settings";
  std::string filtered;
  for (int index = 0; index < merge->ServerSettings().Fields().Count(); ++index) {
    filtered += merge->IsShown(index, {u"", SettingFilter::Choice::kDefaults}) ? 'x' : '-';
  }
  EXPECT_EQ(filtered, "xxx-");
  merge = Open();
  EXPECT_TRUE(merge->Save(merge->Plan()));
  EXPECT_EQ(Seen(), kNew);
  EXPECT_NE(Shown(*merge), "") << "the window is still open";

  WriteFile(folder_ / "dist/a.conf", "z: 1\r\n");
  merge = Open();
  merge->Restore({u"a"});
  merge->Close();
  EXPECT_EQ(Seen(), kNew) << "unsaved changes are no answer";
  merge->Undo();
  merge->Close();
  EXPECT_EQ(Seen(), "z: 1\r\n");
  EXPECT_TRUE(Open()->DefaultChanges().empty());
}

TEST_F(ReleaseMergeTest, OnlyAnOldVersionThatTheUserNamesMustBeReadable) {
  base_ = folder_ / "base.conf";
  EXPECT_FALSE(Open()->KnowsOldVersion()) << "a release that had no such file";
  WriteFile(*base_, "a: 0\r\n");
  EXPECT_EQ(Shown(*Open()), "a both;");
  WriteFile(*base_, std::string("\xFF\xFE\x61\0", 4));
  EXPECT_FALSE(Open());
  base_.reset();
  WriteFile(seen_.EntryOf(server_), "damaged");
  const auto merge = Open();
  ASSERT_TRUE(merge);
  EXPECT_FALSE(merge->KnowsOldVersion());
  EXPECT_EQ(messages_.shown.size(), 2U);
}

TEST_F(ReleaseMergeTest, AStateFolderThatTakesNothingFailsNoSave) {
  WriteFile(folder_ / "file", "");
  seen_ = SeenFiles(folder_ / "file");
  for (const char* const value : {"1", "2"}) {
    const auto merge = Open();
    merge->SetValue(List::kActual, u"a", FromUtf8(value));
    EXPECT_TRUE(merge->Save(merge->Plan()));
  }
  ASSERT_EQ(messages_.shown.size(), 3U);
  EXPECT_EQ(messages_.shown[0].text, "Saved!");
  EXPECT_THAT(messages_.shown[1].text,
              HasSubstr("The distribution's file could not be remembered: "));
  EXPECT_EQ(messages_.shown[2].text, "Saved!") << "told once";
}

}  // namespace
}  // namespace quenmar
