#include "conf/SaveChanges.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "text/Charset.h"

namespace quenmar {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr StringView kSeries = u"{npc}{map}";

/// @return each change as "kind name old>new", with "//" before the name of a commented-out line.
std::vector<std::string> Changes(StringView oldText, const std::vector<String>& newLines) {
  const char* const kKinds[] = {"added", "removed", "changed", "activated", "on", "off"};
  std::vector<std::string> lines;
  const SaveChanges result = ListSaveChanges(oldText, newLines, kSeries);
  for (const SaveChange& change : result.changes) {
    lines.push_back(std::string(kKinds[static_cast<size_t>(change.kind)]) +
                    (change.commented ? " //" : " ") + ToUtf8(change.name) + " " +
                    ToUtf8(change.oldValue) + ">" + ToUtf8(change.newValue));
  }
  if (result.lostCommentLines > 0) lines.push_back(std::to_string(result.lostCommentLines));
  return lines;
}

TEST(SaveChanges, ComparesSettingsAsTheTextHasThem) {
  EXPECT_THAT(Changes(u"a:1\r\n\r\n  b: 2\r\n", {u"b: 2", u"a: 1"}), IsEmpty());
  EXPECT_THAT(Changes(u"a: 1 // r\r\nb: 2\t3\r\nc: &lt;\r\n", {u"a: 1", u"b: 2", u"c: <"}),
              ElementsAre("changed a 1 // r>1", "changed b 2\t3>2", "changed c &lt;><"));
  EXPECT_THAT(
      Changes(u"// x\r\n//a: 1\r\n//b: 5\r\ngone: 3\r\n", {u"n: 0", u"a: 2"}),
      ElementsAre("added n >0", "activated a 1>2", "removed //b 5>", "removed gone 3>", "1"));
  // Of duplicates the first goes on; a commented-out line beside an active one is a comment.
  EXPECT_THAT(Changes(u"a: 1\r\n//a: 9\r\na: 2\r\n//Note: x\r\n", {u"a: 1"}),
              ElementsAre("removed a 2>", "2"));
  EXPECT_THAT(Changes(u"a: 1\nb: 2\n", {u"a: 1", u"b: 3"}), ElementsAre("changed b 2>3"));
  EXPECT_THAT(Changes(u"", {u"a: 1"}), ElementsAre("added a >1"));
}

TEST(SaveChanges, ComparesSeriesByKindAndValue) {
  EXPECT_THAT(Changes(u"npc: a // r\r\nnpc: b\r\n//npc: c\r\nmap: d\r\n//map: e\r\nnpc: f\r\n",
                      {u"npc: a", u"//npc: b", u"npc: c", u"//map: d2", u"//map: e", u"map: f"}),
              ElementsAre("changed npc a // r>a", "off //npc b>b", "on npc c>c", "added //map >d2",
                          "added map >f", "removed map d>", "removed npc f>"));
  EXPECT_THAT(Changes(u"//npc: a\r\nnpc: a\r\n//npc: b\r\n", {u"npc: a"}),
              ElementsAre("removed //npc b>", "1"));
}

TEST(SaveChanges, ReadAsADifferenceOfTexts) {
  const SaveChanges changes =
      ListSaveChanges(u"// x\r\na: 1\r\n//b: 2\r\ngone: 3\r\nnpc: c\r\n//npc: d\r\n",
                      {u"a: 9", u"b: 2", u"new: 4", u"//npc: c", u"npc: d", u"//npc: e"}, kSeries);
  EXPECT_EQ(ToUtf8(DiffText(changes)),
            "- a: 1\r\n+ a: 9\r\n- //b: 2\r\n+ b: 2\r\n+ new: 4\r\n- npc: c\r\n+ //npc: c\r\n"
            "- //npc: d\r\n+ npc: d\r\n+ //npc: e\r\n- gone: 3\r\n- // (1)\r\n");
  EXPECT_EQ(DiffText({}), u"");
}

}  // namespace
}  // namespace quenmar
