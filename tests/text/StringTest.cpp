#include "text/String.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>
#include <vector>

#include "text/RuntimeError.h"

namespace quenmar {
namespace {

TEST(Strings, OnlySpacesAreTrimmed) {
  const std::vector<std::pair<StringView, StringView>> cases = {
      {u"", u""},          {u"   ", u""},       {u"  a b  ", u"a b"},
      {u"\ta\t", u"\ta\t"}, {u" \t ", u"\t"}, {u"\u00A0a\r\n ", u"\u00A0a\r\n"}};
  for (const auto& [text, trimmed] : cases) EXPECT_EQ(Trim(text), trimmed) << String(text);
}

TEST(Strings, SplittingKeepsEmptyPieces) {
  using Pieces = std::vector<StringView>;
  EXPECT_EQ(Split(u"", u','), Pieces{u""});
  EXPECT_EQ(Split(u"a", u','), Pieces{u"a"});
  EXPECT_EQ(Split(u",a,, b,", u','), (Pieces{u"", u"a", u"", u" b", u""}));
}

TEST(Strings, ReplacementsAreNotSearchedAgain) {
  EXPECT_EQ(ReplaceAll(u"aaa", u"aa", u"a"), u"aa");
  EXPECT_EQ(ReplaceAll(u"\n\r\n\n", u"\n", u"\r\n"), u"\r\n\r\r\n\r\n");
  EXPECT_EQ(ReplaceAll(u"%1 and %1", u"%1", u""), u" and ");
  EXPECT_EQ(ReplaceAll(u"ab", u"abc", u"x"), u"ab");
  EXPECT_EQ(ReplaceAll(u"", u"a", u"x"), u"");
}

TEST(Strings, WhatIsNoWholeNumberOf32BitsReadsAsZero) {
  const std::vector<std::pair<StringView, int>> cases = {
      {u" 42 ", 42},        {u"+7", 7},           {u"-7", -7},          {u"007", 7},
      {u"2147483647", 2147483647}, {u"-2147483648", -2147483647 - 1},   {u"2147483648", 0},
      {u"-2147483649", 0},  {u"", 0},             {u" ", 0},            {u"+", 0},
      {u"-", 0},            {u"+-5", 0},          {u"--5", 0},          {u"++5", 0},
      {u"- 5", 0},          {u"5x", 0},           {u"5.0", 0},          {u"0x10", 0},
      {u"1 2", 0},          {u"\t5", 0},          {u"\u0665", 0},       {u"\uFF15", 0},
      {u"\u0135", 0}};
  for (const auto& [text, number] : cases) EXPECT_EQ(ToInteger(text), number) << String(text);
  for (const int number : {0, -1, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(ToInteger(ToText(number)), number);
  }
}

TEST(RuntimeErrors, DescribeThemselvesLikeAnyException) {
  const RuntimeError error(33, u"Name", u"Error en funci\u00F3n");
  EXPECT_STREQ(error.what(), "Error en funci\xC3\xB3n");
  EXPECT_EQ(DescriptionOf(error), error.Description());
  EXPECT_EQ(DescriptionOf(std::runtime_error("why")), u"why");
}

}  // namespace
}  // namespace quenmar
