#include "text/Charset.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "text/CaseFolding.h"

namespace quenmar {
namespace {

std::string AllBytes() {
  std::string bytes(256, '\0');
  std::iota(bytes.begin(), bytes.end(), '\0');
  return bytes;
}

TEST(Charset, EveryByteSurvivesTheWayThroughText) {
  const String text = FromWindows1252(AllBytes());
  EXPECT_EQ(text.substr(0x80, 0x20),
            u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\x8D"
            u"\u017D\x8F\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A"
            u"\u0153\x9D\u017E\u0178");
  EXPECT_EQ(text[0x7F], 0x7F);
  EXPECT_EQ(text[0xA0], 0xA0);
  EXPECT_EQ(text[0xFF], 0xFF);
  EXPECT_EQ(ToWindows1252(text), AllBytes());
  EXPECT_TRUE(FitsWindows1252(text));
}

TEST(Charset, CharactersOutsideTheCodePageAreRefusedNotReplaced) {
  const std::vector<StringView> lacking = {u"\x80", u"\x9F",   u"a\u0100b",    u"\u20AB",
                                           u"\xFFFD", u"\u4141", u"\U0001F600"};
  for (const StringView text : lacking) {
    EXPECT_EQ(ToWindows1252(text), std::nullopt) << ToUtf8(text);
    EXPECT_FALSE(FitsWindows1252(text)) << ToUtf8(text);
  }
}

TEST(Charset, Utf8OfEveryLengthIsReadAndWritten) {
  const std::string bytes = "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"
                            "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
  const String text = u"\x7F\x80\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF";
  EXPECT_EQ(FromUtf8(bytes), text);
  EXPECT_EQ(ToUtf8(text), bytes);
}

TEST(Charset, EachByteOutsideWellFormedUtf8IsReplacedByItself) {
  struct Case {
    const char* what;
    std::string bytes;
    String text;
  };
  const std::vector<Case> cases = {
      {"lone trail byte", "a\x80z", u"a\xFFFDz"},
      {"overlong slash", "\xC0\xAF", u"\xFFFD\xFFFD"},
      {"overlong, three bytes", "\xE0\x9F\xBF", u"\xFFFD\xFFFD\xFFFD"},
      {"overlong, four bytes", "\xF0\x8F\xBF\xBF", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
      {"surrogate", "\xED\xA0\x80", u"\xFFFD\xFFFD\xFFFD"},
      {"beyond U+10FFFF", "\xF4\x90\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
      {"no lead byte", "\xF5\xFE\xFF", u"\xFFFD\xFFFD\xFFFD"},
      {"cut short at the end", "z\xE2\x82", u"z\xFFFD\xFFFD"},
      {"cut short by a letter", "\xE2\x82z", u"\xFFFD\xFFFDz"},
      {"cut short by a sequence", "\xE2\xC3\xA9", u"\xFFFD\xE9"},
  };
  for (const auto& [what, bytes, text] : cases) EXPECT_EQ(FromUtf8(bytes), text) << what;
}

TEST(Charset, OnlyPairedSurrogatesAreWrittenAsUtf8) {
  const String text = {u'a', 0xD83D, 0xD83D, 0xDE00, 0xDE00, 0xD83D};
  EXPECT_EQ(ToUtf8(text), "a\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Charset, Utf16KeepsEveryCharacterAndDropsAnOddByte) {
  const String text = {u'a', 0x0000, 0xD800, 0xFFFF, 0x4E2D};
  const std::string bytes("a\0\0\0\0\xD8\xFF\xFF\x2D\x4E", 10);
  EXPECT_EQ(ToUtf16Le(text), bytes);
  EXPECT_EQ(FromUtf16Le(bytes + "x"), text);
}

TEST(CaseFolding, PairsExactlyTheLettersThatTheCodePageHasInBothCases) {
  const String capitals = FromWindows1252(
      "ABCDEFGHIJKLMNOPQRSTUVWXYZ\x8A\x8C\x8E\x9F\xC0\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\xC9\xCA\xCB"
      "\xCC\xCD\xCE\xCF\xD0\xD1\xD2\xD3\xD4\xD5\xD6\xD8\xD9\xDA\xDB\xDC\xDD\xDE");
  const String smalls = FromWindows1252(
      "abcdefghijklmnopqrstuvwxyz\x9A\x9C\x9E\xFF\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xE7\xE8\xE9\xEA\xEB"
      "\xEC\xED\xEE\xEF\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF8\xF9\xFA\xFB\xFC\xFD\xFE");
  EXPECT_EQ(ToLower(capitals), smalls);
  EXPECT_TRUE(EqualIgnoringCase(capitals, smalls));

  String others = FromWindows1252(AllBytes()) + u"\u0391\u0130\u0131\u212A\u4E2D";
  std::erase_if(others, [&](char16_t c) { return Contains(capitals, StringView(&c, 1)); });
  EXPECT_EQ(ToLower(others), others);
  EXPECT_FALSE(EqualIgnoringCase(u"abc", u"abcd"));
  EXPECT_FALSE(EqualIgnoringCase(u"stra\u00DFe", u"STRASSE"));
}

}  // namespace
}  // namespace quenmar
