#include "merge/MergeFixture.h"

namespace quenmar {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class NewSettingsTest : public MergeFixture {
 protected:
  NewSettingsTest()
      : MergeFixture("net_port: 1\r\ntwice: 2\r\n//twice: 3\r\n//may: 4\r\nkeep: 5\r\nneed: 6\r\n",
                     "Net_Port: 10\r\nkeep: 50\r\n//old: 8\r\n") {
    Open(Purpose::kCompare, Layout::kSettings);
  }

  const std::string opened_ =
      "net_port=1 twice=2 twice=3 may=4 need=6 | keep=50 | Net_Port=10 old=8";
};

TEST_F(NewSettingsTest, MandatoryOnesAreAddedInOneStep) {
  EXPECT_THAT(merge_->MissingMandatory(), ElementsAre(u"net_port", u"twice", u"need"));
  EXPECT_EQ(merge_->StateOf(u"need"), FileMerge::SettingState::kActive);
  EXPECT_EQ(merge_->AddMandatory(), 3);
  EXPECT_EQ(Lists(), "twice=3 may=4 | keep=50 net_port=1 twice=2 need=6 | Net_Port=10 old=8");
  messages_.Answer({Button::kYes});
  EXPECT_EQ(merge_->Remove({u"keep"}), 1);  // which is no new one
  EXPECT_EQ(merge_->AddMandatory(), 0);
  for (int i = 0; i < 2; ++i) merge_->Undo();
  EXPECT_EQ(Lists(), opened_);
}

TEST_F(NewSettingsTest, OldValuesAreTakenOverInOneStep) {
  EXPECT_EQ(merge_->RenamedFrom(u"net_port"), u"Net_Port");
  EXPECT_EQ(merge_->RenamedFrom(u"may"), std::nullopt);
  EXPECT_FALSE(merge_->TakeOldValue(u"may") || merge_->CanUndo());
  merge_->SetValue(List::kNew, u"net_port", u"typed");
  EXPECT_TRUE(merge_->TakeOldValue(u"net_port"));
  EXPECT_EQ(Lists(), "twice=2 twice=3 may=4 need=6 | keep=50 net_port=10 | Net_Port=10 old=8");
  EXPECT_FALSE(merge_->TakeOldValue(u"net_port"));
  for (int i = 0; i < 2; ++i) merge_->Undo();
  EXPECT_EQ(Lists(), opened_);
  EXPECT_EQ(merge_->Restore({u"Net_Port"}), 1);
  EXPECT_EQ(merge_->RenamedFrom(u"net_port"), std::nullopt);
}

TEST_F(NewSettingsTest, TypedValuesAreKnownUntilTheyAreAdded) {
  EXPECT_THAT(merge_->TypedNotAdded(), IsEmpty());
  for (const StringView name : {u"may", u"net_port"}) merge_->SetValue(List::kNew, name, u"x");
  merge_->SetValue(List::kKept, u"keep", u"x");
  EXPECT_THAT(merge_->TypedNotAdded(), ElementsAre(u"net_port", u"may"));
  merge_->Add({u"may", u"twice"});
  merge_->SetValue(List::kNew, u"net_port", u"1");
  EXPECT_THAT(merge_->TypedNotAdded(), IsEmpty());
}

}  // namespace
}  // namespace quenmar
