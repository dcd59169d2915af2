#include "conf/Functions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ScratchFolder.h"
#include "ScriptedMessages.h"
#include "Trees.h"
#include "conf/ConfFolder.h"
#include "conf/FolderCheck.h"

namespace quenmar {
namespace {

constexpr auto kSlash = static_cast<char16_t>(Path::preferred_separator);

TEST(Functions, TextFilesKeepEveryCharacterOrStay) {
  const ScratchFolder folder;
  const Path file = folder / "f";
  EXPECT_TRUE(WriteTextFile(file, u"\n\u20AC\x81"));
  EXPECT_FALSE(WriteTextFile(file, u"\u0416") || WriteTextFile(folder / "missing/f", u"x"));
  EXPECT_EQ(ReadFile(file), "\n\x80\x81");
  String text;
  EXPECT_TRUE(ReadTextFile(file, text));
  EXPECT_FALSE(ReadTextFile(folder / "missing", text));
  EXPECT_EQ(text, u"\n\u20AC\x81");
}

TEST(Functions, MessagesBreakLinesAndFillPlaceholders) {
  ScriptedMessages messages;
  EXPECT_EQ(ShowMessage(messages, u"a\\nb\nc %2 %1", 64, {u"one", u"t\\no"}), Button::kOk);
  EXPECT_EQ(messages.shown.at(0), (ScriptedMessages::Shown{"a\r\nb\nc t\\no one", 64}));
  ShowMessage(messages, u"%1 %2 %3 %", 0, {u"a %1 or %2.conf", u"b"});
  EXPECT_EQ(messages.shown.at(1).text, "a %1 or %2.conf b %3 %");
}

TEST(Functions, SmallHelpers) {
  String text;
  EXPECT_EQ(NotAvailable(text), u"** n/a **");
  EXPECT_EQ(text, u"** n/a **");
  text = u" ";
  EXPECT_EQ(NotAvailable(text), u" ");

  EXPECT_EQ(TabLabel(u"npc (3)(4)"), u"npc ");
  EXPECT_EQ(TabLabel(u"map"), u"map");

  CheckList list = {{u"A"}, {u"a"}, {u"a"}};
  SelectListItem(u"a", list);
  SelectListItem(u"b", list);
  EXPECT_TRUE(!list[0].checked && list[1].checked && !list[2].checked);

  for (const char16_t letter : {u'A', u'Z', u'a', u'z'}) EXPECT_TRUE(IsLetter(String(1, letter)));
  for (const char16_t other : {u'@', u'[', u'`', u'{', u'_', u'0', u' ', u'\u00E9'}) {
    EXPECT_FALSE(IsLetter(String(1, other)));
  }
  EXPECT_FALSE(IsLetter({}));
}

TEST(ConfFolder, ListsConfigurationFilesOnly) {
  const ScratchFolder folder;
  for (const char* name : {"a.conf", "B.CONF", ".conf", "c.conf.bak", "conf"}) {
    WriteFile(folder / name, "");
  }
  std::filesystem::create_directory(folder / "d.conf");
  EXPECT_THAT(ListConfFiles(folder.Folder()),
              ::testing::UnorderedElementsAre(Path("a.conf"), Path("B.CONF"), Path(".conf")));
  EXPECT_THAT(ListConfFiles(folder / "missing"), ::testing::IsEmpty());
}

TEST(Functions, PathsGetOneSeparator) {
  EXPECT_EQ(JoinPath(u"a", u"b") + JoinPath(u"/", u"b"), String(u"a") + kSlash + u"b/b");
#ifdef _WIN32
  EXPECT_EQ(JoinPath(u"C:", u"x"), u"C:\\x");
  EXPECT_EQ(JoinPath(u"C:/conf/", u"x"), u"C:/conf/x");
  EXPECT_EQ(JoinPath(u"C:\\conf\\", u"x"), u"C:\\conf\\x");
  EXPECT_EQ(JoinPath(u"\\\\server\\conf", u"x"), u"\\\\server\\conf\\x");
#else
  EXPECT_EQ(JoinPath(u"a\\", u"b"), u"a\\/b");  // no separator here
#endif
}

}  // namespace
}  // namespace quenmar
