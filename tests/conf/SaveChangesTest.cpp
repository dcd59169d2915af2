#include "conf/SaveChanges.h"

#include <gtest/gtest.h>

#include <tuple>

#include "conf/ConfReader.h"
#include "conf/SaveWarnings.h"
#include "text/Charset.h"

namespace quenmar {
namespace {

constexpr StringView kSeries = u"{npc}{map}";

SaveChanges ChangesOf(std::string_view before, std::string_view after,
                      ConfCharset charset = ConfCharset::kUtf8, Layout layout = Layout::kSettings) {
  return ListSaveChanges({{}, std::string(before)}, {{}, std::string(after), charset}, kSeries,
                         layout);
}

/// @return each change as "kind name old>new", with "//" before the name of a commented-out line;
/// then the number of lost comment lines, behind "+" that of added ones, and what changes in the
/// whole file.
std::string Words(const SaveChanges& changes) {
  const char* const kKinds[] = {"added", "removed", "changed", "activated", "on", "off"};
  std::vector<std::string> words;
  for (const SaveChange& change : changes.changes) {
    words.push_back(std::string(kKinds[static_cast<size_t>(change.kind)]) +
                    (change.commented ? " //" : " ") + ToUtf8(change.name) + " " +
                    ToUtf8(change.oldValue) + ">" + ToUtf8(change.newValue));
  }
  if (changes.lostCommentLines > 0) words.push_back(std::to_string(changes.lostCommentLines));
  if (changes.addedCommentLines > 0) {
    words.push_back("+" + std::to_string(changes.addedCommentLines));
  }
  for (const String& effect : WholeFileEffects(changes, {})) words.push_back(ToUtf8(effect));
  EXPECT_EQ(changes.Empty(), words.empty());
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

TEST(SaveChanges, NoticesWhatEveryByteMeans) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      // Settings as the text has them.
      {"a: 1 // r\r\nb: 2\t3\r\nc: &lt;\r\n", "a: 1\r\nb: 2\r\nc: <\r\n",
       "changed a 1 // r>1, changed b 2\t3>2, changed c &lt;><"},
      {"// x\r\n//a: 1\r\n//b: 5\r\ngone: 3\r\n", "n: 0\r\na: 2\r\n",
       "added n >0, activated a 1>2, removed //b 5>, removed gone 3>, 1"},
      // Of duplicates the first goes on; a commented-out line beside an active one is a comment.
      {"a: 1\r\n//a: 9\r\na: 2\r\n//Note: x\r\n", "a: 1\r\n", "removed a 2>, 2"},
      {"", "a: 1\r\n", "added a >1"},
      // Series by kind and value.
      {"npc: a // r\r\nnpc: b\r\n//npc: c\r\nmap: d\r\n//map: e\r\nnpc: f\r\n",
       "npc: a\r\n//npc: b\r\nnpc: c\r\n//map: d2\r\n//map: e\r\nmap: f\r\n",
       "changed npc a // r>a, off //npc b>b, on npc c>c, added //map >d2, added map >f, "
       "removed map d>, removed npc f>"},
      {"//npc: a\r\nnpc: a\r\n//npc: b\r\n", "npc: a\r\n", "removed //npc b>, 1"},
      {"npc: a\r\n//npc: a\r\n", "//npc: a\r\n", "off //npc a>a, 1"},
      // Entries without a value stay apart: each line continues one of its own state.
      {"//npc: \r\nnpc: \r\n", "//npc: \r\nnpc: \r\n", ""},
      {"npc: \r\nnpc: \r\n", "//npc: \r\nnpc: \r\n", "off //npc >, order of lines changes"},
      // The whole file.
      {"a: 1\r\nb: 2\r\n", "b: 2\r\na: 1\r\n", "order of lines changes"},
      {"a:1\r\n  b: 2\r\n", "a: 1\r\nb: 2\r\n", "lines are reformatted"},
      {"a: 1\r\n\r\nb: 2\r\n", "a: 1\r\nb: 2\r\n", "lines are reformatted"},
      {"a: 1\nb: 2\n", "a: 1\r\nb: 2\r\n", "line ends become CR LF"},
      {"a: 1\rb: 2\r", "a: 1\r\nb: 2\r\n", "line ends become CR LF"},
      {"a: 1\r\nb: 2", "a: 1\r\nb: 2\r\n", "line ends become CR LF"},
      {"\xEF\xBB\xBF//\r\n", "//\r\n", "the byte order mark goes"},
      {"a: \xE9\r\n", "a: \xC3\xA9\r\n", "lines are reformatted"},  // character set
      {"a: 1\nb: 2\n", "a: 1\r\nb: 3\r\n", "changed b 2>3, line ends become CR LF"}};
  for (const auto& [before, after, changes] : cases) {
    EXPECT_EQ(Words(ChangesOf(before, after)), changes) << before;
  }
}

TEST(SaveChanges, OfALayoutThatKeepsLines) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"a: 1\r\n\r\nb:2\r\n", "a: 1\n", "removed b 2>, line ends become LF"},
      {"a: 1\n", "a: 1\r\n\r\nb: 2\r\n", "added b >2, line ends become CR LF"},
      {"a: 1\n", "\xEF\xBB\xBF//\na: 1\n", "+1, a byte order mark comes"},
      {"//\xE9\na: \xE9\n", "//\xC3\xA9\na:  \xC3\xA9\n",
       "lines are reformatted, the character set becomes UTF-8"},
      {"a: 1\n\n\n", "a: 1\n\n", "lines are reformatted"},
      {"", "\xEF\xBB\xBF//\na: \xC3\xA9\n", "added a >\xC3\xA9, +1"}};
  for (const auto& [before, after, changes] : cases) {
    const SaveChanges found = ChangesOf(before, after, ConfCharset::kUtf8, Layout::kServer);
    EXPECT_EQ(Words(found), changes) << before;
  }
}

TEST(SaveChanges, ReadAsADifferenceOfTexts) {
  const SaveChanges changes =
      ChangesOf("// x\ra: 1\r\n//b: 2\r\ngone: 3\r\nnpc: c\r\n//npc: d\r\n",
                "a: 9\r\nb: 2\r\nnew: 4\r\n//npc: c\r\nnpc: d\r\n//npc: e\r\n");
  EXPECT_EQ(ToUtf8(DiffText(changes, Language())),
            "- a: 1\r\n+ a: 9\r\n- //b: 2\r\n+ b: 2\r\n+ new: 4\r\n- npc: c\r\n+ //npc: c\r\n"
            "- //npc: d\r\n+ npc: d\r\n+ //npc: e\r\n- gone: 3\r\n- // (1)\r\n"
            "line ends become CR LF\r\n");
  EXPECT_EQ(DiffText({}, Language()), u"");
}

TEST(SaveWarnings, CountWhatTheUserShouldKnow) {
  Document distribution, settings, series;
  ASSERT_TRUE(ReadQuietly({{}, "a: 1\r\n//b: 2\r\nc: 3\r\n//c: 4\r\n"}, {}, distribution, series));
  for (const StringView value : {u"1", u"x//y", u"a\tb", u"&lt;", u" z"}) {
    settings.Fields().AddField(u"a", value);
  }
  const std::string bytes = "a: \xC3\xA9\r\n";
  const SaveChanges changes =
      ChangesOf("// x\r\n// y\r\n//a: 1\r\n", bytes, ConfCharset::kWindows1252);
  const Language language;
  SaveWarnings warnings = ListSaveWarnings(settings, distribution, changes, Layout::kSettings);
  warnings.charset = CharsetWarning(bytes, ConfCharset::kWindows1252, language);
  EXPECT_EQ(ToUtf8(WarningText(warnings, language)),
            "Values that will be read back otherwise: 2\r\n"
            "Comment lines that will be lost: 2\r\n"
            "Commented-out settings that become active: 1\r\n"
            "Mandatory settings that are still missing: 1\r\n"
            "Read again, the saved file will be taken for UTF-8 text.");
  EXPECT_EQ(ListSaveWarnings(settings, distribution, changes, Layout::kServer).activated, 0);
  EXPECT_EQ(WarningText({}, language), u"");
  EXPECT_EQ(OtherCharset(bytes, ConfCharset::kUtf8), std::nullopt);
  EXPECT_EQ(OtherCharset("a: 1\r\n", ConfCharset::kUtf8), std::nullopt);
  EXPECT_EQ(OtherCharset("\xE9", ConfCharset::kUtf8), ConfCharset::kWindows1252);
}

}  // namespace
}  // namespace quenmar
