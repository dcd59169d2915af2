#include "text/String.h"

#include <gtest/gtest.h>

#include "text/Charset.h"
#include "text/SharedText.h"

namespace quenmar {
namespace {

TEST(Strings, AreTrimmedOfSpacesSplitAndReplacedInOnePass) {
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(Trim(u"  \t\u00A0 b\r\n "), u"\t\u00A0 b\r\n");
  using Pieces = std::vector<StringView>;
  EXPECT_EQ(Split(u"", u','), Pieces{u""});
  EXPECT_EQ(Split(u",a,, b,", u','), (Pieces{u"", u"a", u"", u" b", u""}));
  EXPECT_EQ(ReplaceAll(u"aaa", u"aa", u"a"), u"aa");
  EXPECT_EQ(ReplaceAll(u"\n\r\n", u"\n", u"\r\n"), u"\r\n\r\r\n");
}

TEST(Strings, ThatAreNoWholeNumberOf32BitsReadAsZero) {
  for (const int number : {0, -1, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(ToInteger(u" " + ToText(number) + u" "), number);
  }
  EXPECT_EQ(ToInteger(u"+007"), 7);
  for (const StringView text :
       {u"2147483648", u"-2147483649", u"", u" ", u"+", u"-", u"+-5", u"--5", u"++5", u"- 5", u"5x",
        u"5.0", u"0x10", u"1 2", u"\t5", u"\uFF15", u"\u0135"}) {
    EXPECT_EQ(ToInteger(text), 0) << ToUtf8(text);
  }
}

TEST(SharedTexts, KeepTheirCharactersAsLongAsThereIsACopy) {
  SharedText last(u"another text, which gives way");
  StringView view;
  {
    const SharedText text(String(u"some") + u" text");
    const SharedText copy = text;
    view = last = copy;
    EXPECT_EQ(text.View().data(), copy.View().data());
  }
  const SharedText moved = std::move(last);
  EXPECT_EQ(view, u"some text");
  EXPECT_EQ(moved.View().data(), view.data());
  EXPECT_TRUE(moved == String(view) && moved != u"some" && moved != u"some tex\u0174");
  EXPECT_TRUE(moved > u"some" && moved < SharedText(u"t") && SharedText() == StringView());
  EXPECT_TRUE(SharedText(String()).empty() && !moved.empty());
}

}  // namespace
}  // namespace quenmar
