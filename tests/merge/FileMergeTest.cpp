#include "conf/EndApplication.h"
#include "merge/MergeFixture.h"

namespace quenmar {
namespace {

using ::testing::SizeIs;

constexpr const char* kDistribution =
    "// Both.\r\nneed: 1\r\n//may: 2\r\n// Keep &amp; hold.\r\nkeep: 3\r\n//off: 4\r\n\r\n"
    "map: home\r\nmap: inn\r\n";
constexpr const char* kServer =
    "// Mine.\r\nown: 9\r\n\r\n// A &lt; B\r\nkeep: 30\r\n\r\n//off: 5\r\nmap: home\r\n"
    "//map: farm\r\n";

class FileMergeTest : public MergeFixture {
 protected:
  FileMergeTest() : MergeFixture(kDistribution, kServer) {}

  /// @return the server's settings, or the new, the actual and the obsolete ones; whether "off" is
  /// wanted active; the selected entries.
  std::string Shown() {
    const bool edits = request_.purpose == Purpose::kEdit;
    std::string text = edits ? Values(merge_->ServerSettings()) : Lists();
    text += merge_->IsWantedActive(u"off") ? " | on" : " |";
    for (int item = 0; item < 3; ++item) {
      if (merge_->Series().Selected(0, item)) text += " " + ToUtf8(merge_->Series().List(0, item));
    }
    return text;
  }

  /// Does what the letters of a script say.
  void Do(std::string_view script) {
    for (const char act : script) {
      if (act == 'a') merge_->Add({u"may", u"x", u"need"});
      if (act == 'd') merge_->Remove({u"off"});
      if (act == 'b') merge_->Restore({u"off", u"own"});
      if (act == 'n') merge_->SetValue(List::kNew, u"need", u"x");
      if (act == '5') merge_->SetValue(List::kKept, u"off", u"5");
      if (act == '6') merge_->SetValue(List::kKept, u"off", u"6");
      if (act == '7') merge_->SetServerValue(2, u"7");
      if (act == '8') merge_->SetServerValue(2, u"8");
      if (act == 'o') merge_->ResetServerValues({0, 1, 2});
      if (act == 'e') merge_->SetEntry(0, 0, !merge_->Series().Selected(0, 0));
      if (act == '+') merge_->SwitchSetting(u"off", true);
      if (act == '-') merge_->SwitchSetting(u"off", false);
      if (act == '.') merge_->EndTyping();
      if (act == 's') (void)Save();
      if (act == 'u') merge_->Undo();
      if (act == 'r') merge_->Redo();
    }
  }
};

TEST_F(FileMergeTest, EveryOperationIsAStep) {
  const std::tuple<Purpose, const char*, const char*> cases[] = {
      {Purpose::kCompare, "a", " | keep=30 off=5 may=2 need=1 | own=9 | home"},
      {Purpose::kCompare, "d", "need=1 may=2 | keep=30 | own=9 off=5 | home"},
      {Purpose::kCompare, "b", "need=1 may=2 | keep=30 off=5 own=9 |  | home"},
      {Purpose::kCompare, "n", "need=x may=2 | keep=30 off=5 | own=9 | home"},
      {Purpose::kCompare, "656", "need=1 may=2 | keep=30 off=6 | own=9 | on home"},
      {Purpose::kCompare, "+", "need=1 may=2 | keep=30 off=5 | own=9 | on home"},
      {Purpose::kCompare, "e", "need=1 may=2 | keep=30 off=5 | own=9 |"},
      {Purpose::kEdit, "e", "own=9 keep=30 off=5 | farm home"},
      {Purpose::kEdit, "+", "own=9 keep=30 off=5 | on home"},
      {Purpose::kEdit, "787", "own=9 keep=30 off=7 | on home"},
      {Purpose::kEdit, "o", "own=9 keep=3 off=4 | on home"}};
  for (const auto& [purpose, act, left] : cases) {
    SCOPED_TRACE(left);
    Open(purpose);
    const std::string opened = Shown();
    for (const char* const again : {act, "r", "uur"}) {
      Do(again);
      EXPECT_EQ(Shown(), left);
      EXPECT_TRUE(merge_->CanUndo() && !merge_->CanRedo());
      Do("u");
      EXPECT_EQ(Shown(), opened);
      EXPECT_TRUE(!merge_->CanUndo() && merge_->CanRedo());
    }
  }
}

TEST_F(FileMergeTest, WhatChangesNothingIsNoStep) {
  Open();
  messages_.Answer({Button::kNo});
  EXPECT_EQ(merge_->Add({u"keep"}) + merge_->Remove({u"keep"}) + merge_->Restore({}), 0);
  EXPECT_FALSE(merge_->SetValue(List::kKept, u"own", u"1"));
  EXPECT_FALSE(merge_->SwitchSetting(u"NOTE", false));
  merge_->SetEntry(0, 0, true);
  Do("-");
  EXPECT_FALSE(merge_->CanUndo());
  Open(Purpose::kEdit);
  merge_->SetServerValue(0, u"9");
  EXPECT_EQ(merge_->ResetServerValues({0}), 0);  // the distribution has none
  EXPECT_FALSE(merge_->CanUndo());
}

TEST_F(FileMergeTest, TypingIsOneStepUntilSomethingElseHappens) {
  Open();
  const std::string opened = Shown();
  for (const char* const script : {"656.5u", "656s5u", "656eu5u", "656n5uu"}) {
    Do(script);
    EXPECT_EQ(Values(merge_->Tree(List::kKept)), "keep=30 off=6") << script;
    Do("u");
    EXPECT_EQ(Shown(), opened) << script;
  }
}

TEST_F(FileMergeTest, ComparesWithWhatIsSavedAndOpened) {
  // The last characters are the number of the unsaved step, and "+" where "off" is wanted active.
  for (const std::string script :
       {"0-",     "a1-",    "62+",     "e4-",      "+8+",        "n0-",    "6n2+",    "6.52-",
        "6u0-",   "6s0+",   "6su2-",   "6sur0+",   "e6su2-",     "6esu4+", "6esuu4-", "nsu0-",
        "6sue4-", "6sun2-", "6sueu2-", "6snsuu2-", "6suesuer4-", "652-",   "6-8-",    "+652+",
        "+-8-",   "6-u2+",  "db1-",    "6db1+",    "6s52+"}) {
    SCOPED_TRACE(script);
    WriteFile(conf_, kServer);
    Open();
    Do(script.substr(0, script.size() - 2));
    const auto unsaved = static_cast<int>(merge_->UnsavedStep().value_or(FileMerge::Step()));
    const char* const off = merge_->IsWantedActive(u"off") ? "+" : "-";
    EXPECT_EQ(std::to_string(unsaved) + off, script.substr(script.size() - 2));
  }
  Open(Purpose::kCompare, Layout::kSettings);
  EXPECT_TRUE(merge_->IsWantedActive(u"off"));
}

TEST_F(FileMergeTest, ForgetsTheOldestSteps) {
  Open();
  Do("6");
  for (int i = 0; i < 500; ++i) Do("e");
  for (int i = 0; i < 500; ++i) Do("u");
  EXPECT_TRUE(!merge_->CanUndo() && merge_->IsModified());
  EXPECT_EQ(Values(merge_->Tree(List::kKept)), "keep=30 off=6");
}

TEST_F(FileMergeTest, BeginsMissingFilesWithTheDistributions) {
  std::filesystem::remove(conf_);
  Open(Purpose::kEdit);
  EXPECT_EQ(Values(merge_->ServerSettings()), "need=1 may=2 keep=3 off=4");
  EXPECT_TRUE(Save() && !IsMissing(conf_));
  for (const bool begun : {true, false}) {  // in which a copy would be worth nothing
    request_.begun = begun;
    EXPECT_TRUE(FileMerge::CopyToServer(dist_, conf_, with_));
    EXPECT_EQ(ReadFile(conf_), kDistribution);
    Open(Purpose::kCompare, Layout::kSettings);
    Do("es");
    EXPECT_EQ(IsMissing(copy_), begun);
  }
  EXPECT_FALSE(FileMerge::CopyToServer(dist_, folder_ / "no/a.conf", with_));
  EXPECT_TRUE(messages_.shown.back().text.starts_with("Error: "));
}

TEST_F(FileMergeTest, OpensNothingThatWasNotRead) {
  std::string series;
  for (int kind = 0; kind <= SeriesGroups::kMostGroups; ++kind) {
    options_.series += u"{k" + ToText(kind) + u"}";
    series += "k" + std::to_string(kind) + ": v" + std::to_string(kind) + "\r\n";
  }
  for (const auto& [distribution, server] :
       {std::pair("a<b: 1\r\n", "a: 1\r\n"), std::pair("a: 1\r\n", "a<b: 1\r\n"),
        std::pair(series.c_str(), "")}) {
    Write(distribution, server);
    messages_.shown.clear();
    Open(Purpose::kEdit);
    EXPECT_EQ(merge_, nullptr);
    EXPECT_THAT(messages_.shown, SizeIs(1));
  }
  EXPECT_THROW(Open(Purpose::kCompare), EndApplication);
  WriteFile(dist_, series.substr(0, series.rfind('k')));
  for (const Purpose purpose : {Purpose::kEdit, Purpose::kCompare}) {
    Open(purpose);
    EXPECT_EQ(merge_->Series().GroupCount(), SeriesGroups::kMostGroups);
  }
}

TEST_F(FileMergeTest, WritesWhatIsPlanned) {
  Open(Purpose::kCompare, Layout::kSettings);
  Do("a");
  const SavePlan plan = merge_->Plan();
  EXPECT_TRUE(merge_->PlanOver({conf_, plan.bytes}).changes.Empty());
  WriteFile(conf_, "theirs: 1\r\n");
  EXPECT_EQ(merge_->Plan().changes.changes.back().name, u"theirs");  // of what is on the disk
  for (const bool agreed : {false, true}) {
    messages_.Answer({agreed ? Button::kYes : Button::kNo});
    EXPECT_EQ(merge_->Save(plan), agreed);
    EXPECT_EQ(merge_->IsModified(), !agreed);
    EXPECT_EQ(ReadFile(conf_), agreed ? plan.bytes : "theirs: 1\r\n");
  }
}

TEST_F(FileMergeTest, LinesOfOneName) {
  const std::string twice = "a: 1\r\n//a: 2\r\nb: 3\r\n";
  for (const auto& [layout, left] :
       {std::pair(Layout::kSettings, "a=1 a=9 b=3"), std::pair(Layout::kServer, "a=9 a=9 b=3")}) {
    Write(twice, twice);
    Open(Purpose::kEdit, layout);
    EXPECT_TRUE(merge_->IsWantedActive(u"a"));  // as any of them
    merge_->SetServerValue(1, u"9");
    EXPECT_EQ(Values(merge_->ServerSettings()), left);
    merge_->Undo();
    EXPECT_EQ(Values(merge_->ServerSettings()), "a=1 a=2 b=3");
  }
  Write(twice, "b: 3\r\n");
  Open();
  merge_->SetValue(List::kNew, u"a", u"9");
  EXPECT_EQ(merge_->Add({u"a"}), 1);
  EXPECT_EQ(Values(merge_->Tree(List::kNew)), "a=9");
}

TEST_F(FileMergeTest, ShowsTheCommentOfEitherFile) {
  Open();
  EXPECT_EQ(merge_->Comment(u"keep"), u"Keep &amp; hold.");
  EXPECT_EQ(merge_->Comment(u"own"), u"Mine.");
  EXPECT_TRUE(merge_->IsMandatory(u"keep") && !merge_->IsMandatory(u"may"));
  Open(Purpose::kEdit);
  EXPECT_EQ(merge_->Comment(u"keep"), u"A < B");
}

}  // namespace
}  // namespace quenmar
