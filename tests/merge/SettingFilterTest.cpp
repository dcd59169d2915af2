#include "merge/SettingFilter.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "text/Charset.h"

namespace quenmar {
namespace {

using Choice = SettingFilter::Choice;

TEST(SettingFilter, ShowsWhatIsChosenAndContainsTheText) {
  const std::vector<SettingFilter::Item> items = {
      {u"max_level", u"99", u"99", u"The highest Level."},
      {u"rate", u"200", u"100", u"In percent."},
      {u"own", u"Niño", u"", u"", false},
      {u"pin_code", u"yes", u"yes", u"", true, true, true},
  };
  const std::tuple<StringView, Choice, std::vector<StringView>> cases[] = {
      {u"", Choice::kAll, {u"max_level", u"rate", u"own", u"pin_code"}},
      {u"  ", Choice::kChanged, {u"rate"}},
      {u"", Choice::kNotInDistribution, {u"own"}},
      {u"", Choice::kCommentedOut, {u"pin_code"}},
      {u"", Choice::kDefaults, {u"pin_code"}},
      {u"LEVEL", Choice::kAll, {u"max_level"}},        // name
      {u" highest l ", Choice::kAll, {u"max_level"}},  // comment
      {u"NIÑO", Choice::kAll, {u"own"}},               // value
      {u"100", Choice::kAll, {}},                      // not the distribution's value
      {u"e", Choice::kCommentedOut, {u"pin_code"}},
      {u"percents", Choice::kAll, {}},
  };
  for (const auto& [text, choice, names] : cases) {
    const SettingFilter filter(text, choice);
    std::vector<StringView> shown;
    for (const auto& item : items) {
      if (filter.Shows(item)) shown.push_back(item.name);
    }
    EXPECT_EQ(shown, names);
    EXPECT_EQ(filter.ShowsAll(), shown.size() == items.size()) << ToUtf8(text);
  }
  EXPECT_TRUE(SettingFilter().ShowsAll());
}

}  // namespace
}  // namespace quenmar
