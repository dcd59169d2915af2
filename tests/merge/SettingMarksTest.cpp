#include <gtest/gtest.h>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "merge/FileMerge.h"

namespace quenmar {
namespace {

/// A file that is edited.
class SettingMarks : public ::testing::Test {
 protected:
  std::unique_ptr<FileMerge> Open(Layout layout) {
    WriteFile(folder_ / "dist", "// A\r\na: 1\r\n// B\r\nb: 2\r\n// &lt;C>\r\nc: 3\r\n");
    WriteFile(folder_ / "conf",
              "// A\r\na: 1\r\n\r\n//b: 9\r\n// mine\r\nc: 4\r\n\r\nown: 5\r\nnote: 6\r\n");
    FileMerge::Request request{folder_ / "dist", folder_ / "conf", FileMerge::Purpose::kEdit};
    request.layout = layout;
    return FileMerge::Open(request, {options_, language_, messages_});
  }

  /// @return for each setting: "a" active, "c" commented out, "b" becomes active, and then "!"
  /// where the value is changed and "*" where it is edited.
  static std::string Marks(const FileMerge& merge) {
    std::string marks;
    int index = 0;
    for (const Field& field : merge.ServerSettings().Fields()) {
      if (index > 0) marks += ' ';
      marks += "acb"[static_cast<int>(merge.StateOf(field.Name()))];
      if (merge.IsChanged(index)) marks += '!';
      if (merge.IsEdited(index++)) marks += '*';
    }
    return marks;
  }

  ScratchFolder folder_;
  Options options_;
  Language language_;
  ScriptedMessages messages_;
};

TEST_F(SettingMarks, TellWhatIsChangedAndEdited) {
  const auto merge = Open(Layout::kServer);
  EXPECT_EQ(Marks(*merge), "a c! a! a a");
  merge->SetServerValue(0, u"7");
  merge->SetServerValue(1, u"8");
  EXPECT_EQ(Marks(*merge), "a!* b!* a! a a");
  ASSERT_TRUE(merge->Save(merge->Plan()));
  EXPECT_EQ(Marks(*merge), "a! a! a! a a");
  merge->Undo();
  EXPECT_EQ(Marks(*merge), "a! c!* a! a a");
  merge->Redo();
  EXPECT_EQ(merge->SwitchSettings({u"a", u"note", u"c"}, false), std::vector<String>{u"note"});
  EXPECT_EQ(Marks(*merge), "c!* a! c!* a a");
  EXPECT_EQ(merge->ResetServerValues({0, 1, 2, 3}), 3);
  EXPECT_EQ(Marks(*merge), "c* a* c* a a");
  merge->Undo();
  merge->Undo();
  EXPECT_EQ(Marks(*merge), "a! a! a! a a");
}

TEST_F(SettingMarks, KnowThatTheProgramsOwnFormActivates) {
  const auto merge = Open(Layout::kSettings);
  EXPECT_EQ(Marks(*merge), "a b! a! a a");
  EXPECT_TRUE(merge->SwitchSetting(u"a", false));
  EXPECT_FALSE(merge->IsModified());
  ASSERT_TRUE(merge->Save(merge->Plan()));
  EXPECT_EQ(Marks(*merge), "a a! a! a a");
}

TEST_F(SettingMarks, AreWhatAFilterLooksAt) {
  const auto merge = Open(Layout::kServer);
  EXPECT_EQ(ToUtf8(merge->DistributionComment(u"a")), "");  // as on the server
  EXPECT_EQ(ToUtf8(merge->DistributionComment(u"b")), "B");
  EXPECT_EQ(ToUtf8(merge->DistributionComment(u"c")), "<C>");
  using Choice = SettingFilter::Choice;
  const std::pair<SettingFilter, std::vector<int>> cases[] = {
      {{u"", Choice::kAll}, {0, 1, 2, 3, 4}},
      {{u"mine", Choice::kAll}, {2}},
      {{u"<c>", Choice::kAll}, {2}},
      {{u"", Choice::kChanged}, {1, 2}},
      {{u"", Choice::kCommentedOut}, {1}},
      {{u"", Choice::kNotInDistribution}, {3, 4}},
      {{u"5", Choice::kNotInDistribution}, {3}}};
  for (const auto& [filter, rows] : cases) {
    std::vector<int> shown;
    for (int index = 0; index < 5; ++index) {
      if (merge->IsShown(index, filter)) shown.push_back(index);
    }
    EXPECT_EQ(shown, rows);
  }
}

}  // namespace
}  // namespace quenmar
