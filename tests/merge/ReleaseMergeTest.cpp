// Merges that know the distribution's file as it was.
#include "merge/MergeFixture.h"

namespace quenmar {
namespace {

using ::testing::HasSubstr;

constexpr const char* kOld = "a: 1\r\nb: 1\r\n//c: 1\r\nd: 1\r\nf: 1\r\nnpc: x\r\n";
constexpr const char* kNew = "a: 2\r\nb: 2\r\nc: 2\r\nd: 1\r\ne: 2\r\nf: 2\r\n";
constexpr const char* kServerConf = "// Mine\r\na: 1\r\nb: 9\r\n//c: 1\r\nd: 8\r\nnpc: x\r\n";

class ReleaseMergeTest : public MergeFixture {
 protected:
  ReleaseMergeTest() : MergeFixture(kNew, kServerConf) {
    EXPECT_EQ(seen_.Keep(conf_, {dist_, kOld}), u"");
    request_.seen = &seen_;
  }

  std::string Shown() {
    std::string text;
    EXPECT_FALSE(merge_->DefaultChangeOf(u"d") || merge_->DefaultChangeOf(u"f"));
    for (const DefaultChange& change : merge_->DefaultChanges()) {
      EXPECT_EQ(merge_->DefaultChangeOf(change.name).value().kind, change.kind);
      text += ToUtf8(change.name) + (change.IsUntouched() ? " default;" : " both;");
    }
    for (const SeriesEntry& entry : merge_->WithdrawnEntries()) text += ToUtf8(entry.name) + ";";
    return text;
  }

  std::string Seen() { return seen_.Find(conf_)->Bytes(); }

  SeenFiles seen_{folder_ / "state"};
};

TEST_F(ReleaseMergeTest, TakesNewDefaultsInOneStepAndLeavesTheStates) {
  Open();
  EXPECT_EQ(Shown(), "a default;b both;c default;x;");
  EXPECT_EQ(merge_->TakeUntouchedDefaults(), 2);
  EXPECT_EQ(Shown(), "b both;x;");
  EXPECT_EQ(merge_->TakeUntouchedDefaults(), 0);
  EXPECT_EQ(merge_->Plan().bytes, "// Mine\r\na: 2\r\nb: 9\r\n//c: 2\r\nd: 8\r\nnpc: x\r\n");
  merge_->Undo();
  EXPECT_FALSE(merge_->CanUndo() || merge_->IsModified());
  EXPECT_EQ(merge_->Plan().bytes, kServerConf);
}

TEST_F(ReleaseMergeTest, FollowsWhatTheUserDoes) {
  Open();
  for (const StringView name : {u"a", u"c"}) merge_->SetValue(List::kKept, name, u"7");
  merge_->Add({u"f"});
  merge_->SetValue(List::kKept, u"f", u"1");
  messages_.Answer({Button::kYes});
  merge_->Remove({u"b"});
  merge_->SetEntry(0, 0, false);
  EXPECT_EQ(Shown(), "a both;c both;");
  EXPECT_TRUE(merge_->IsWantedActive(u"c"));
  EXPECT_EQ(merge_->TakeDefaults({u"a", u"c", u"d", u"none"}), 2) << "one by one also a both";
  EXPECT_FALSE(merge_->IsWantedActive(u"c")) << "the new default is not the user's hand";
  EXPECT_EQ(Shown(), "");
  EXPECT_THAT(merge_->Plan().bytes, HasSubstr("a: 2\r\n//c: 2\r\n"));
}

TEST_F(ReleaseMergeTest, SavesKeepTheDistributionsFileAndLooksDoNot) {
  Open();
  merge_->Close();
  EXPECT_EQ(Seen(), kOld) << "what is left to do would be forgotten";
  Open(Purpose::kEdit);
  EXPECT_TRUE(Save());
  EXPECT_EQ(Seen(), kOld) << "nobody saw the new settings";
  EXPECT_EQ(Rows({u"", SettingFilter::Choice::kDefaults}), "012");
  Open();
  EXPECT_TRUE(Save());
  EXPECT_EQ(Seen(), kNew);
  EXPECT_NE(Shown(), "") << "the window is still open";

  WriteFile(dist_, "z: 1\r\n");
  Open();
  merge_->Restore({u"a"});
  merge_->Close();
  EXPECT_EQ(Seen(), kNew) << "unsaved changes are no answer";
  merge_->Undo();
  merge_->Close();
  EXPECT_EQ(Seen(), "z: 1\r\n");
  Open();
  EXPECT_EQ(Shown(), "");
}

TEST_F(ReleaseMergeTest, ANamedOldVersionCountsAndADamagedOneHindersNothing) {
  request_.base = folder_ / "base.conf";
  WriteFile(*request_.base, "a: 0\r\n");
  Open();
  EXPECT_EQ(Shown(), "a both;");
  WriteFile(*request_.base, "\xFF\xFE");
  Open();
  EXPECT_EQ(merge_, nullptr) << "it is needed";
  EXPECT_EQ(messages_.shown.size(), 1U);
  messages_.shown.clear();
  request_.base.reset();
  WriteFile(seen_.EntryOf(conf_), "damaged");
  Open();
  EXPECT_FALSE(merge_->KnowsOldVersion());
  EXPECT_EQ(messages_.shown.size(), 1U);
}

TEST_F(ReleaseMergeTest, AStateFolderThatTakesNothingFailsNoSave) {
  WriteFile(folder_ / "file", "");
  seen_ = SeenFiles(folder_ / "file");
  Open();
  merge_->SetValue(List::kKept, u"a", u"1");
  EXPECT_TRUE(Save());
  ASSERT_EQ(messages_.shown.size(), 2U);
  EXPECT_THAT(messages_.shown.back().text,
              HasSubstr("The distribution's file could not be remembered: "));
}

}  // namespace
}  // namespace quenmar
