#include "merge/MergeFixture.h"

namespace quenmar {
namespace {

/// A file that is edited.
class SettingMarks : public MergeFixture {
 protected:
  SettingMarks()
      : MergeFixture(
            "// A\r\na: 1\r\n// B\r\nb: 2\r\n// &lt;C>\r\nc: 3\r\n",
            "// A\r\na: 1\r\n\r\n//b: 9\r\n// mine\r\nc: 4\r\n\r\nown: Ni\xF1o\r\nnote: 6\r\n") {
    Open(Purpose::kEdit);
  }

  /// @return for each setting: "a" active, "c" commented out, "b" becomes active, and then "!"
  /// where the value is changed and "*" where it is edited.
  [[nodiscard]] std::string Marks() const {
    std::string marks;
    int index = 0;
    for (const Field& field : merge_->ServerSettings().Fields()) {
      if (index > 0) marks += ' ';
      marks += "acb"[static_cast<int>(merge_->StateOf(field.Name()))];
      if (merge_->IsChanged(index)) marks += '!';
      if (merge_->IsEdited(index++)) marks += '*';
    }
    return marks;
  }
};

TEST_F(SettingMarks, SayWhatIsChangedAndEdited) {
  EXPECT_EQ(Marks(), "a c! a! a a");
  merge_->SetServerValue(0, u"7");
  merge_->SetServerValue(1, u"8");
  EXPECT_EQ(Marks(), "a!* b!* a! a a");
  ASSERT_TRUE(Save());
  EXPECT_EQ(Marks(), "a! a! a! a a");
  merge_->Undo();
  EXPECT_EQ(Marks(), "a! c!* a! a a");
  merge_->Redo();
  EXPECT_EQ(merge_->SwitchSettings({u"a", u"note", u"c"}, false), std::vector<String>{u"note"});
  EXPECT_EQ(Marks(), "c!* a! c!* a a");
  EXPECT_EQ(merge_->ResetServerValues({0, 1, 2, 3}), 3);
  EXPECT_EQ(Marks(), "c* a* c* a a");
  for (int i = 0; i < 2; ++i) merge_->Undo();
  EXPECT_EQ(Marks(), "a! a! a! a a");
}

TEST_F(SettingMarks, KnowThatTheProgramsOwnFormActivates) {
  Open(Purpose::kEdit, Layout::kSettings);
  EXPECT_EQ(Marks(), "a b! a! a a");
  EXPECT_TRUE(merge_->SwitchSetting(u"a", false));
  EXPECT_FALSE(merge_->IsModified());
  ASSERT_TRUE(Save());
  EXPECT_EQ(Marks(), "a a! a! a a");
}

TEST_F(SettingMarks, AreWhatAFilterLooksAt) {
  EXPECT_EQ(merge_->DistributionComment(u"a"), u"");  // as on the server
  EXPECT_EQ(merge_->DistributionComment(u"c"), u"<C>");
  using Choice = SettingFilter::Choice;
  const std::tuple<StringView, Choice, const char*> cases[] = {
      {u" ", Choice::kAll, "01234"},
      {u"OWN", Choice::kAll, "3"},
      {u" NI\u00D1O ", Choice::kAll, "3"},
      {u"Mine", Choice::kAll, "2"},
      {u"<c>", Choice::kAll, "2"},
      {u"2", Choice::kAll, ""},  // only the distribution's value
      {u" ", Choice::kChanged, "12"},
      {u"", Choice::kNotInDistribution, "34"},
      {u"", Choice::kCommentedOut, "1"},
      {u"9", Choice::kCommentedOut, "1"},
      {u"a", Choice::kCommentedOut, ""}};
  for (const auto& [text, choice, rows] : cases) {
    EXPECT_EQ(Rows({text, choice}), rows) << ToUtf8(text);
  }
}

}  // namespace
}  // namespace quenmar
