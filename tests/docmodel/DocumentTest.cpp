#include "docmodel/Document.h"

#include <gtest/gtest.h>

#include "docmodel/xDocParent.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

TEST(Documents, AreNewWithDefaultsAndWithoutAParent) {
  Document document;
  EXPECT_FALSE(document.Busy() || document.StopOnLoadError());
  document.SetVersion(u"");
  document.SetEncoding(u"");
  EXPECT_EQ(document.Name() + document.Version() + document.Encoding(), u"1.0ISO-8859-1");
  xDocParent::SetParent(std::make_shared<Document>());
  EXPECT_EQ(xDocParent::Parent(), nullptr);
}

template <class Element>
void ExpectNameRules(StringView source, StringView blank, StringView illegal) {
  Element element;
  for (const StringView name : {u"", u"\t=&'\u00A0\u4E2D"}) element.SetName(name);
  for (const StringView name : {u" ", u"a b", u"< >\"", u"<", u"x>", u"a\"b"}) {
    const bool hasBlank = Contains(name, u" ");
    try {
      element.SetName(name);
      ADD_FAILURE() << ToUtf8(name);
    } catch (const DocError& error) {
      EXPECT_EQ(error.Number(), hasBlank ? 32 : 33);
      EXPECT_EQ(error.Source(), source);
      EXPECT_EQ(error.Description(), hasBlank ? blank : illegal);
    }
    EXPECT_EQ(element.Name(), u"\t=&'\u00A0\u4E2D") << "not kept";
  }
}

TEST(Names, AreRejectedInTheWordsOfTheirClass) {
  constexpr StringView kBlank = u"Name don't allow spaces";
  ExpectNameRules<Document>(u"xDocument.Name", kBlank, u"Illegal character in name");
  ExpectNameRules<Field>(u"Name", kBlank, u"Illegal character in name");
  ExpectNameRules<Parameter>(u"Name", u"Parameter Name don't allow spaces",
                             u"Illegal character in parameter name");
}

TEST(Values, OfFieldsFoldEntityFormsAndThoseOfParametersDoNot) {
  for (const StringView written : {u"a<b & c>d", u"&quot;'\"", u"&amp;lt;", u"&lt;", u"&&", u""}) {
    Field field;
    field.SetValue(written);
    EXPECT_EQ(field.Value(), written == u"&lt;" ? u"<" : written);
    field.Parameters().AddParameter(u"p", written);
    EXPECT_EQ(field.Parameters().Parameter(0)->Value(), written);
  }
}

/// A tree of nodes with different versions: n1 [a2 [A3, deep4], N5], m6 [a7], N8.
class Tree : public ::testing::Test {
 protected:
  static std::shared_ptr<Document> Add(Document& parent, StringView name, StringView mark) {
    const auto child = parent.Childs().Child(parent.Childs().AddChild(name));
    child->SetVersion(mark);
    return child;
  }

  Tree() {
    n1_->Parameters().AddParameter(u"K", u"x");
    n1_->Fields().AddField(u"f", u"1");
    n1_->Fields().AddField(u"f", u"2");
    Add(*a2_, u"A", u"3");
    Add(*a2_, u"deep", u"4")->Parameters().AddParameter(u"e", u"a=b'");
    Add(*n1_, u"N", u"5");
    Add(*Add(root_, u"m", u"6"), u"a", u"7")->Parameters().AddParameter(u"k", u"X");
    Add(root_, u"N", u"8");
  }

  /// @return the marks of all nodes found, the first of which a search has to give.
  [[nodiscard]] String Found(StringView name, StringView sParameters, bool ignoreCase = true,
                             bool multiLevelSearch = false) const {
    String marks;
    const auto all = root_.GetChilds(name, sParameters, ignoreCase, multiLevelSearch);
    for (const auto& node : all) marks += node->Version();
    const auto first = root_.Childs().SearchChild(name, sParameters, ignoreCase, multiLevelSearch);
    EXPECT_TRUE(all.empty() ? first->Name().empty() : first == all.front());
    return marks;
  }

  Document root_;
  std::shared_ptr<Document> n1_ = Add(root_, u"n", u"1");
  std::shared_ptr<Document> a2_ = Add(*n1_, u"a", u"2");
};

TEST_F(Tree, IsSearchedForNodesThatSatisfyEveryCondition) {
  const std::vector<std::pair<StringView, StringView>> cases = {
      {u"", u"18"},    {u"k=x", u"1"},      {u"K='x'", u"1"},   {u"k=X", u""},
      {u"k=", u"8"},   {u".f='1'", u"1"},   {u".f=2", u""},     {u".F=1", u""},
      {u".F=", u"18"}, {u"k=x,.f=1", u"1"}, {u"k=x,.f=3", u""}, {u"none=,k=x", u"1"},
      {u"f=1", u""}};
  for (const auto& [conditions, marks] : cases) {
    EXPECT_EQ(Found(u"n", conditions), marks) << ToUtf8(conditions);
  }
  EXPECT_EQ(Found(u"deep", u"e=a=b'", true, true), u"4");
}

TEST_F(Tree, IsSearchedDeeperOnlyWhereNoNodeQualifies) {
  EXPECT_EQ(Found(u"N", u"", false, true), u"8");
  EXPECT_EQ(Found(u"a", u"", true, true), u"27");
  EXPECT_EQ(Found(u"A", u"", false, true), u"3");
  EXPECT_EQ(Found(u"A", u"k=X", true, true), u"7");
  EXPECT_EQ(root_.SearchChild(u"a", u"", true)->Name(), u"");
}

TEST_F(Tree, LosesAndReplacesTheFirstMatch) {
  Documents& childs = root_.Childs();
  EXPECT_FALSE(childs.RemoveChild(u"n", u"k=y") || childs.RemoveChild(0, u"k=y"));
  EXPECT_TRUE(childs.RemoveChild(u"n", u"k="));
  EXPECT_EQ(Found(u"n", u""), u"1");
  const auto other = std::make_shared<Document>();
  EXPECT_FALSE(childs.SetChild(u"absent", other) || childs.SetChild(2, other));
  EXPECT_THROW(childs.SetChild(-1, other), DocError);
  EXPECT_TRUE(childs.SetChild(u"N", other) && childs.Child(0) == other);
}

TEST_F(Tree, PassesStopOnLoadErrorDownOnlyWhereItChanges) {
  root_.SetStopOnLoadError(true);
  EXPECT_TRUE(root_.StopOnLoadError() && n1_->StopOnLoadError() && a2_->StopOnLoadError());
  a2_->SetStopOnLoadError(false);
  root_.SetStopOnLoadError(true);
  EXPECT_FALSE(a2_->StopOnLoadError());
}

TEST(Attributes, AreTakenOffTheFrontOnePairAtATime) {
  String rest = u" a=\"1\"\tb = 'say \"x\"'\r\nc=\"\" d=x e=\"open";
  String name, value, pairs;
  while (Document::GetNextParameter(rest, name, value)) pairs += name + u":" + value + u";";
  EXPECT_EQ(pairs, u"a:1;b:say \"x\";c:;");
  for (const StringView text : {u" d=x e=\"open", u"", u"a", u"a=", u"a=\"1'"}) {
    EXPECT_FALSE(Document::GetNextParameter(rest = text, name, value));
    EXPECT_EQ(rest + name + value, String(text) + u"c");
  }
}

}  // namespace
}  // namespace quenmar
