#include "text/Charset.h"

#include <gtest/gtest.h>

#include <numeric>

#include "text/CaseFolding.h"

namespace quenmar {
namespace {

std::string AllBytes() {
  std::string bytes(256, '\0');
  std::iota(bytes.begin(), bytes.end(), '\0');
  return bytes;
}

TEST(Charset, EveryByteSurvivesTheWayThroughTextAndNoOtherCharacterFits) {
  const String text = FromWindows1252(AllBytes());
  EXPECT_EQ(text.substr(0x7F, 0x22),
            u"\x7F\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D"
            u"\u017D\x8F\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A"
            u"\u0153\x9D\u017E\u0178\xA0");
  EXPECT_EQ(ToWindows1252(text), AllBytes());
  EXPECT_TRUE(FitsWindows1252(text));
  for (const StringView other : {u"\x80", u"\x9F", u"a\u0100b", u"\u20AB", u"\U0001F600"}) {
    EXPECT_EQ(ToWindows1252(other), std::nullopt) << ToUtf8(other);
    EXPECT_FALSE(FitsWindows1252(other)) << ToUtf8(other);
  }
}

TEST(Charset, UnicodeIsReadAndWrittenInEveryLength) {
  const std::string bytes =
      "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
  const String text = u"\x7F\x80\u07FF\u0800\uD7FF\uE000\U00010000\U0010FFFF";
  EXPECT_EQ(FromUtf8(bytes), text);
  EXPECT_EQ(ToUtf8(text), bytes);
  EXPECT_TRUE(IsUtf8(bytes));
  EXPECT_EQ(ToUtf8KeepingBytes(FromUtf8KeepingBytes(bytes)), bytes);
  EXPECT_EQ(ToUtf8KeepingBytes(u"a\xDC7F"), std::nullopt);
  EXPECT_EQ(ToUtf8KeepingBytes(u"\xD83D"), std::nullopt);
  EXPECT_EQ(ToUtf8(u"\xD83D\xD83D\xDE00\xDE00"), "\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf16Le(u"a\xD812"), std::string("a\0\x12\xD8", 4));
  EXPECT_EQ(FromUtf16Le(ToUtf16Le(text) + "x"), text);
}

TEST(Charset, EachByteOutsideWellFormedUtf8IsReplacedByItself) {
  for (const std::string bytes :
       {"\x80", "\xC0\xAF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
        "\xE2\x82", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFE\xFF"}) {
    const String replaced(bytes.size(), 0xFFFD);
    EXPECT_EQ(FromUtf8(bytes), replaced);
    EXPECT_EQ(FromUtf8("a" + bytes + "\xC3\xA9"), u"a" + replaced + u"\u00E9");
    EXPECT_FALSE(IsUtf8("a" + bytes));
    const String kept = FromUtf8KeepingBytes("\xC3\xA9" + bytes + "a");
    EXPECT_EQ(kept.size(), bytes.size() + 2);
    EXPECT_EQ(ToUtf8KeepingBytes(kept), "\xC3\xA9" + bytes + "a");
  }
}

TEST(CaseFolding, PairsExactlyTheLettersThatTheCodePageHasInBothCases) {
  const String capitals = u"ABCDEFGHIJKLMNOPQRSTUVWXYZŠŒŽŸÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞ";
  const String smalls = u"abcdefghijklmnopqrstuvwxyzšœžÿàáâãäåæçèéêëìíîïðñòóôõöøùúûüýþ";
  EXPECT_EQ(ToLower(capitals), smalls);
  EXPECT_TRUE(EqualIgnoringCase(capitals, smalls));
  for (const char16_t other : FromWindows1252(AllBytes()) + u"\u0391\u0130\u0131\u212A") {
    EXPECT_TRUE(ToLower(other) == other || Contains(capitals, {&other, 1}));
  }
  EXPECT_FALSE(EqualIgnoringCase(u"abc", u"ABCD"));
}

}  // namespace
}  // namespace quenmar
