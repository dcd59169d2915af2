#include "registry/Language.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "ScratchFolder.h"
#include "registry/FileRegistry.h"

namespace quenmar {
namespace {

TEST(LanguageTest, BuiltInTextsStandLetterForLetter) {
  struct Case {
    MessageKey key;
    StringView text;
  };
  const std::vector<Case> cases = {
      {LNG1, u"Talsk/Orvanth .conf Editor"},
      {LNG11, u"The %1 file is not found in you game folder, please use %2"},
      {LNG15, u"Please, select the \"conf-dist\" or \"conf-tmpl\" inside your SVN root folder."},
      {LNG19, u"Please, select a diferent folder."},
      {LNG32, u"Add       ->"},
      {LNG35, u"<-        Remove"},
      {LNG36, u"Restore     ->"},
      {LNG42, u"Error: "},
      {LNG46, u"Parameter %1 is duplicated (in %2 file) \\n\\n Ignore and continue the process?"},
      {LNG48, u"Optional"},
  };
  const Language language;
  for (const auto& [key, text] : cases) EXPECT_EQ(language.Text(key), text) << "LNG" << key;
  EXPECT_TRUE(Contains(language.Text(LNG27), u"don't exists"));
  EXPECT_TRUE(Contains(language.Text(LNG43), u"This file contain LF"));
}

TEST(LanguageTest, GridTitlesSetTheColumnWidths) {
  const Language language;
  std::vector<size_t> widths;
  for (const StringView title : Split(language.Text(LNG23), u'|')) widths.push_back(title.size());
  EXPECT_EQ(widths, (std::vector<size_t>{43, 40, 39, 18}));
}

TEST(LanguageTest, StoredTextsReplaceBuiltInOnes) {
  const ScratchFolder folder;
  const Path file = folder / "registry.reg";
  ReplaceBytes(file,
               "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quenmar\\Language]\r\n"
               "\"LNG1\"=\"Editor de .conf\"\r\n\"LNG9\"=\"Cerrar\"\r\n\"LNG8\"=\"\"\r\n"
               "\"LNG7\"=dword:00000001\r\n\"LNG48\"=\"Opcional\"\r\n");
  const Language language = Language::LoadLanguage(FileRegistry(file));
  EXPECT_EQ(language.Text(LNG1), u"Editor de .conf");
  EXPECT_EQ(language.Text(LNG9), u"Cerrar");
  EXPECT_EQ(language.Text(LNG8), u"");
  EXPECT_EQ(language.Text(LNG7), u"Sort Parameter List");
  EXPECT_EQ(language.Text(LNG48), u"Opcional");
}

TEST(LanguageTest, LoadingWritesNothing) {
  const ScratchFolder folder;
  const Language language = Language::LoadLanguage(FileRegistry(folder / "registry.reg"));
  EXPECT_EQ(language.Text(LNG2), u"Path");
  EXPECT_FALSE(std::filesystem::exists(folder / "registry.reg"));
}

}  // namespace
}  // namespace quenmar
