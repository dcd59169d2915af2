#include "compare/ChangeComparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ScriptedMessages.h"
#include "Trees.h"
#include "conf/ConfReader.h"

namespace quenmar {
namespace {

using ::testing::SizeIs;

class ChangeComparisonTest : public ::testing::Test {
 protected:
  /// Reads the two texts and runs the three fills.
  void Compare(std::string_view distribution, std::string_view server, bool sorted = false) {
    const auto read = [](std::string_view text, auto& settings, auto& series) {
      settings = std::make_shared<Document>();
      series = std::make_shared<Document>();
      ASSERT_TRUE(ReadQuietly({"a.conf", std::string(text)}, Options(), *settings, *series));
    };
    read(distribution, documents_.distribution, documents_.distributionSeries);
    read(server, documents_.server, documents_.serverSeries);
    comparison_ = std::make_unique<ChangeComparison>(documents_, sorted);
    comparison_->FillResultTrees();
  }

  Language language_;
  ScriptedMessages messages_;
  ConfDocuments documents_;
  std::unique_ptr<ChangeComparison> comparison_;
};

constexpr const char* kDistribution = "z: 1\r\nkey: 2\r\n//opt: 3\r\nm: 4\r\nc: 5\r\n";
constexpr const char* kServer = "own: 9\r\nc: 50\r\nKey: 20\r\nm: 40\r\n//old: 8\r\n";

TEST_F(ChangeComparisonTest, SortsSettingsIntoThreeTrees) {
  Compare(kDistribution, kServer);
  EXPECT_EQ(Fields1252(comparison_->NewFields()), "z=1{}\nkey=2{}\nopt=3{}\n");
  EXPECT_EQ(Fields1252(comparison_->ActualFields()), "m=40{}\nc=50{}\n");
  EXPECT_EQ(Fields1252(comparison_->DeletedFields()), "own=9{}\nKey=20{}\nold=8{}\n");
  EXPECT_TRUE(comparison_->HasListChanges() && comparison_->IsMandatory(u"key"));
  EXPECT_FALSE(comparison_->IsMandatory(u"opt") || comparison_->IsMandatory(u"own"));

  Compare(kDistribution, kServer, true);
  EXPECT_EQ(Values(comparison_->NewFields()), "key=2 opt=3 z=1");
  EXPECT_EQ(Values(comparison_->ActualFields()), "m=40 c=50");
  EXPECT_EQ(Values(comparison_->DeletedFields()), "Key=20 old=8 own=9");

  Compare("a: 1\r\n", "a: 2\r\n");
  EXPECT_FALSE(comparison_->HasListChanges());
}

TEST_F(ChangeComparisonTest, SortsSeriesIntoThreeTrees) {
  Compare("npc: b\r\nnpc: x\r\n//map: a\r\n", "map: own\r\n//npc: b\r\n");
  EXPECT_EQ(Fields1252(comparison_->NewSeries()),
            "x={Type=npc;Disabled=1;}\na={Type=map;Disabled=0;}\n");
  EXPECT_EQ(Fields1252(comparison_->ActualSeries()),
            "b={Type=npc;Disabled=1;}\nx={Type=npc;Disabled=0;}\na={Type=map;Disabled=0;}\n"
            "own={Type=map;Disabled=1;}\n");
  EXPECT_EQ(Fields1252(comparison_->DeletedSeries()), "own={Type=map;Disabled=1;}\n");
  EXPECT_EQ(Values(*documents_.serverSeries), "own= b=");

  Compare("npc: b\r\nnpc: a\r\n", "", true);
  EXPECT_EQ(Values(comparison_->NewSeries()), "a= b=");
}

TEST_F(ChangeComparisonTest, MovesFieldsWithTheirValues) {
  Compare(kDistribution, kServer);
  EXPECT_TRUE(comparison_->SetNewValue(u"z", u"11"));
  EXPECT_TRUE(comparison_->SetActualValue(u"m", u"41"));
  EXPECT_FALSE(comparison_->SetNewValue(u"m", u"0") || comparison_->SetActualValue(u"z", u"0"));
  EXPECT_EQ(comparison_->Add({u"z", u"own", u"z"}), 1);
  EXPECT_EQ(comparison_->Restore({u"own", u"m"}), 1);
  EXPECT_EQ(Values(comparison_->ActualFields()), "m=41 c=50 z=11 own=9");
  EXPECT_EQ(Values(comparison_->NewFields()), "key=2 opt=3");

  // Optional and server-only settings go without a question.
  EXPECT_EQ(comparison_->Remove({u"own"}, messages_, language_), 1);
  messages_.Answer({Button::kNo, Button::kYes, Button::kCancel});
  EXPECT_EQ(comparison_->Remove({u"m", u"c", u"z", u"z"}, messages_, language_), 1);
  EXPECT_EQ(Values(comparison_->ActualFields()), "m=41 z=11");
  EXPECT_EQ(Values(comparison_->DeletedFields()), "Key=20 old=8 own=9 c=50");
  ASSERT_THAT(messages_.shown, SizeIs(3));
  EXPECT_EQ(messages_.shown[0],
            (ScriptedMessages::Shown{"The m parameter is mandatory, delete anyway?", 291}));

  Compare(kDistribution, kServer, true);
  EXPECT_EQ(comparison_->Add({u"key"}), 1);
  EXPECT_EQ(Values(comparison_->ActualFields()), "c=50 key=2 m=40");
}

TEST_F(ChangeComparisonTest, OffersMissingSeriesAsCommentedOut) {
  Compare("npc: b\r\n//map: a\r\nnpc: c\r\n", "z: 1\r\nnpc: own\r\na: 2\r\n//npc: c\r\nmap: m\r\n");
  const SeriesGroups groups = comparison_->FillSeries(messages_, language_);
  EXPECT_EQ(Fields1252(*documents_.serverSeries),
            "own={Type=npc;Disabled=1;}\nc={Type=npc;Disabled=0;}\nm={Type=map;Disabled=1;}\n"
            "b={Type=npc;Disabled=0;}\na={Type=map;Disabled=0;}\n");
  EXPECT_EQ(Values(*documents_.server), "a=2 z=1");
  ASSERT_EQ(groups.GroupCount(), 2);
  EXPECT_EQ(groups.TabCaption(0), u"npc(3)");
  EXPECT_EQ(groups.TabCaption(1), u"map(2)");
  EXPECT_TRUE(groups.Selected(0, 0) && !groups.Selected(0, 1) && !groups.Selected(0, 2));
  EXPECT_EQ(groups.List(0, 2), u"b");
}

}  // namespace
}  // namespace quenmar
