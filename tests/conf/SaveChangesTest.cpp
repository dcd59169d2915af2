#include "conf/SaveChanges.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "conf/SaveWarnings.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr StringView kSeries = u"{npc}{map}";

std::string Bytes(const std::vector<String>& lines) {
  std::string bytes;
  for (const String& line : lines) bytes += ToUtf8(line) + "\r\n";
  return bytes;
}

SaveChanges ChangesOf(std::string_view before, std::string_view after,
                      ConfCharset charset = ConfCharset::kUtf8) {
  return ListSaveChanges({{}, std::string(before)}, {{}, std::string(after), charset}, kSeries);
}

/// @return each change as "kind name old>new", with "//" before the name of a commented-out line;
/// then the number of lost comment lines and a word for each change of the whole file.
std::vector<std::string> Changes(std::string_view oldBytes, const std::vector<String>& newLines) {
  const char* const kKinds[] = {"added", "removed", "changed", "activated", "on", "off"};
  std::vector<std::string> lines;
  const SaveChanges result = ChangesOf(oldBytes, Bytes(newLines));
  for (const SaveChange& change : result.changes) {
    lines.push_back(std::string(kKinds[static_cast<size_t>(change.kind)]) +
                    (change.commented ? " //" : " ") + ToUtf8(change.name) + " " +
                    ToUtf8(change.oldValue) + ">" + ToUtf8(change.newValue));
  }
  if (result.lostCommentLines > 0) lines.push_back(std::to_string(result.lostCommentLines));
  if (result.reordered) lines.emplace_back("order");
  if (result.reformatted) lines.emplace_back("form");
  if (result.otherLineEnds) lines.emplace_back("ends");
  if (result.markGoes) lines.emplace_back("mark");
  EXPECT_EQ(result.Empty(), lines.empty());
  return lines;
}

TEST(SaveChanges, ComparesSettingsAsTheTextHasThem) {
  EXPECT_THAT(Changes("a: 1 // r\r\nb: 2\t3\r\nc: &lt;\r\n", {u"a: 1", u"b: 2", u"c: <"}),
              ElementsAre("changed a 1 // r>1", "changed b 2\t3>2", "changed c &lt;><"));
  EXPECT_THAT(
      Changes("// x\r\n//a: 1\r\n//b: 5\r\ngone: 3\r\n", {u"n: 0", u"a: 2"}),
      ElementsAre("added n >0", "activated a 1>2", "removed //b 5>", "removed gone 3>", "1"));
  // Of duplicates the first goes on; a commented-out line beside an active one is a comment.
  EXPECT_THAT(Changes("a: 1\r\n//a: 9\r\na: 2\r\n//Note: x\r\n", {u"a: 1"}),
              ElementsAre("removed a 2>", "2"));
  EXPECT_THAT(Changes("", {u"a: 1"}), ElementsAre("added a >1"));
}

TEST(SaveChanges, ComparesSeriesByKindAndValue) {
  EXPECT_THAT(Changes("npc: a // r\r\nnpc: b\r\n//npc: c\r\nmap: d\r\n//map: e\r\nnpc: f\r\n",
                      {u"npc: a", u"//npc: b", u"npc: c", u"//map: d2", u"//map: e", u"map: f"}),
              ElementsAre("changed npc a // r>a", "off //npc b>b", "on npc c>c", "added //map >d2",
                          "added map >f", "removed map d>", "removed npc f>"));
  EXPECT_THAT(Changes("//npc: a\r\nnpc: a\r\n//npc: b\r\n", {u"npc: a"}),
              ElementsAre("removed //npc b>", "1"));
  // Entries without a value stay apart: each line continues one of its own state.
  EXPECT_THAT(Changes("//npc: \r\nnpc: \r\n", {u"//npc: ", u"npc: "}), IsEmpty());
  EXPECT_THAT(Changes("npc: \r\nnpc: \r\n", {u"//npc: ", u"npc: "}),
              ElementsAre("off //npc >", "order"));
  EXPECT_THAT(Changes("npc: a\r\n//npc: a\r\n", {u"//npc: a"}), ElementsAre("off //npc a>a", "1"));
}

TEST(SaveChanges, NoticesEveryOtherByte) {
  EXPECT_THAT(Changes("a: 1\r\nb: 2\r\n", {u"b: 2", u"a: 1"}), ElementsAre("order"));
  EXPECT_THAT(Changes("a:1\r\n  b: 2\r\n", {u"a: 1", u"b: 2"}), ElementsAre("form"));
  EXPECT_THAT(Changes("a: 1\r\n\r\nb: 2\r\n", {u"a: 1", u"b: 2"}), ElementsAre("form"));
  for (const char* const text : {"a: 1\nb: 2\n", "a: 1\rb: 2\r", "a: 1\r\nb: 2"}) {
    EXPECT_THAT(Changes(text, {u"a: 1", u"b: 2"}), ElementsAre("ends")) << text;
  }
  EXPECT_THAT(Changes("\xEF\xBB\xBF"
                      "a: 1\r\n",
                      {u"a: 1"}),
              ElementsAre("mark"));
  EXPECT_THAT(Changes("a: \xE9\r\n", {u"a: \u00E9"}), ElementsAre("form")) << "character set";
  EXPECT_THAT(Changes("a: 1\nb: 2\n", {u"a: 1", u"b: 3"}), ElementsAre("changed b 2>3", "ends"));
}

TEST(SaveChanges, ReadAsADifferenceOfTexts) {
  const std::vector<String> lines = {u"a: 9",     u"b: 2",   u"new: 4",
                                     u"//npc: c", u"npc: d", u"//npc: e"};
  const SaveChanges changes =
      ChangesOf("// x\ra: 1\r\n//b: 2\r\ngone: 3\r\nnpc: c\r\n//npc: d\r\n", Bytes(lines));
  EXPECT_EQ(ToUtf8(DiffText(changes, Language())),
            "- a: 1\r\n+ a: 9\r\n- //b: 2\r\n+ b: 2\r\n+ new: 4\r\n- npc: c\r\n+ //npc: c\r\n"
            "- //npc: d\r\n+ npc: d\r\n+ //npc: e\r\n- gone: 3\r\n- // (1)\r\n"
            "line ends become CR LF\r\n");
  EXPECT_EQ(DiffText({}, Language()), u"");
}

TEST(SaveWarnings, CountWhatTheUserShouldKnow) {
  Document distribution;
  for (const StringView name : {u"a", u"b", u"c", u"c"}) {
    Parameters& parameters =
        distribution.Fields().Field(distribution.Fields().AddField(name, {}))->Parameters();
    parameters.AddParameter(u"Comments", {});
    parameters.AddParameter(u"Disabled", name == u"b" ? u"0" : u"1");
  }
  Document settings;
  for (const StringView value : {u"1", u"x//y", u"&lt;", u" z"}) {
    settings.Fields().AddField(u"a", value);
  }
  const std::string bytes = "a: \xC3\xA9\r\n";
  const SaveChanges changes =
      ChangesOf("// x\r\n// y\r\n//a: 1\r\n", bytes, ConfCharset::kWindows1252);
  const Language language;
  EXPECT_EQ(ToUtf8(WarningText(
                ListSaveWarnings(settings, distribution, changes,
                                 CharsetWarning(bytes, ConfCharset::kWindows1252, language)),
                language)),
            "Values that will be read back otherwise: 1\r\n"
            "Comment lines that will be lost: 2\r\n"
            "Commented-out settings that become active: 1\r\n"
            "Mandatory settings that are still missing: 1\r\n"
            "Read again, the saved file will be taken for UTF-8 text.");
  EXPECT_EQ(WarningText({}, language), u"");
  EXPECT_EQ(OtherCharset(bytes, ConfCharset::kUtf8), std::nullopt);
  EXPECT_EQ(OtherCharset("a: 1\r\n", ConfCharset::kUtf8), std::nullopt);
  EXPECT_EQ(OtherCharset("\xE9", ConfCharset::kUtf8), ConfCharset::kWindows1252);
}

}  // namespace
}  // namespace quenmar
