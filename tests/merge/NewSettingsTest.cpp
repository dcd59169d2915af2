#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "merge/FileMerge.h"

namespace quenmar {
namespace {

using ::testing::ElementsAre;
using List = FileMerge::List;

constexpr const char* kDistribution =
    "net_port: 1\r\ntwice: 2\r\n//twice: 3\r\n//may: 4\r\nkeep: 5\r\nneed: 6\r\n";
constexpr const char* kServer = "Net_Port: 10\r\nkeep: 50\r\n//old: 8\r\n";

class NewSettingsTest : public ::testing::Test {
 protected:
  void Open(Layout layout = Layout::kSettings) {
    WriteFile(folder_ / "d.conf", kDistribution);
    WriteFile(folder_ / "s.conf", kServer);
    FileMerge::Request request{folder_ / "d.conf", folder_ / "s.conf"};
    request.layout = layout;
    merge_ = FileMerge::Open(request, with_);
  }

  /// @return the new, the actual and the obsolete settings.
  std::string Shown() {
    std::string shown;
    for (const List list : {List::kNew, List::kActual, List::kDeleted}) {
      shown += (list == List::kNew ? "" : " | ") + Values(merge_->Tree(list));
    }
    return shown;
  }

  ScratchFolder folder_;
  Options options_;
  Language language_;
  ScriptedMessages messages_;
  const MergeContext with_{options_, language_, messages_};
  std::unique_ptr<FileMerge> merge_;
};

TEST_F(NewSettingsTest, MandatoryOnesAreAddedInOneStep) {
  Open();
  const std::string opened = Shown();
  EXPECT_THAT(merge_->MissingMandatory(), ElementsAre(u"net_port", u"twice", u"need"));
  EXPECT_EQ(merge_->AddMandatory(), 3);
  EXPECT_EQ(Shown(), "twice=3 may=4 | keep=50 net_port=1 twice=2 need=6 | Net_Port=10 old=8");
  EXPECT_THAT(merge_->MissingMandatory(), ElementsAre());
  EXPECT_EQ(merge_->AddMandatory(), 0);
  merge_->Undo();
  EXPECT_EQ(Shown(), opened);
  EXPECT_FALSE(merge_->CanUndo());
  messages_.Answer({Button::kYes});
  EXPECT_EQ(merge_->Remove({u"keep"}), 1);  // which is no new one
  EXPECT_EQ(merge_->MissingMandatory().size(), 3U);
}

TEST_F(NewSettingsTest, OldValuesAreTakenOverInOneStep) {
  Open();
  const std::string opened = Shown();
  EXPECT_EQ(merge_->RenamedFrom(u"net_port"), u"Net_Port");
  EXPECT_EQ(merge_->RenamedFrom(u"may"), std::nullopt);
  EXPECT_FALSE(merge_->TakeOldValue(u"may"));
  EXPECT_FALSE(merge_->CanUndo());
  merge_->SetValue(List::kNew, u"net_port", u"typed");
  EXPECT_TRUE(merge_->TakeOldValue(u"net_port"));
  EXPECT_EQ(Shown(), "twice=2 twice=3 may=4 need=6 | keep=50 net_port=10 | Net_Port=10 old=8");
  EXPECT_FALSE(merge_->TakeOldValue(u"net_port"));
  merge_->Undo();
  merge_->Undo();
  EXPECT_EQ(Shown(), opened);
  EXPECT_EQ(merge_->Restore({u"Net_Port"}), 1);
  EXPECT_EQ(merge_->RenamedFrom(u"net_port"), std::nullopt);
}

TEST_F(NewSettingsTest, TypedValuesAreKnownUntilTheyAreAdded) {
  Open();
  EXPECT_THAT(merge_->TypedNotAdded(), ElementsAre());
  for (const StringView name : {u"may", u"net_port"}) merge_->SetValue(List::kNew, name, u"x");
  merge_->SetValue(List::kActual, u"keep", u"x");
  EXPECT_THAT(merge_->TypedNotAdded(), ElementsAre(u"net_port", u"may"));
  merge_->Add({u"may", u"twice"});
  merge_->SetValue(List::kNew, u"net_port", u"1");
  EXPECT_THAT(merge_->TypedNotAdded(), ElementsAre());
}

TEST_F(NewSettingsTest, StatesSayWhatTheNextSaveDoes) {
  using State = FileMerge::SettingState;
  for (const auto& [layout, before, after] :
       {std::tuple(Layout::kSettings, State::kBecomesActive, State::kActive),
        std::tuple(Layout::kServer, State::kCommentedOut, State::kCommentedOut)}) {
    Open(layout);
    merge_->Restore({u"old"});
    EXPECT_EQ(merge_->StateOf(u"old"), before);
    EXPECT_EQ(merge_->StateOf(u"keep"), State::kActive);
    EXPECT_EQ(merge_->StateOf(u"may"), State::kActive);
    EXPECT_TRUE(merge_->Save(merge_->Plan()));
    EXPECT_EQ(merge_->StateOf(u"old"), after);
  }
  merge_->SwitchSetting(u"old", true);
  EXPECT_EQ(merge_->StateOf(u"old"), State::kBecomesActive);
}

}  // namespace
}  // namespace quenmar
