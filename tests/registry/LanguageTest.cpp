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
    Message message;
    StringView text;
  };
  const std::vector<Case> cases = {
      {Message::kWindowTitle, u"Talsk/Orvanth .conf Editor"},
      {Message::kNotOnServer, u"The %1 file is not found in you game folder, please use %2"},
      {Message::kSelectDistributionFolder,
       u"Please, select the \"conf-dist\" or \"conf-tmpl\" inside your SVN root folder."},
      {Message::kSelectDifferentFolder, u"Please, select a diferent folder."},
      {Message::kAdd, u"Add       ->"},
      {Message::kRemove, u"<-        Remove"},
      {Message::kRestore, u"Restore     ->"},
      {Message::kError, u"Error: "},
      {Message::kDuplicateSetting,
       u"Parameter %1 is duplicated (in %2 file) \\n\\n Ignore and continue the process?"},
      {Message::kOptional, u"Optional"},
  };
  const Language language;
  for (const auto& [message, text] : cases) EXPECT_EQ(language.Text(message), text);
  EXPECT_TRUE(Contains(language.Text(Message::kObsoleteSettingsHelp), u"don't exists"));
  EXPECT_TRUE(Contains(language.Text(Message::kFixLineEnds), u"This file contain LF"));
}

TEST(LanguageTest, GridTitlesSetTheColumnWidths) {
  const Language language;
  std::vector<size_t> widths;
  for (const StringView title : Split(language.Text(Message::kGridColumns), u'|'))
    widths.push_back(title.size());
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
  EXPECT_EQ(language.Text(Message::kWindowTitle), u"Editor de .conf");
  EXPECT_EQ(language.Text(Message::kClose), u"Cerrar");
  EXPECT_EQ(language.Text(Message::kEdit), u"");
  EXPECT_EQ(language.Text(Message::kSortParameterList), u"Sort Parameter List");
  EXPECT_EQ(language.Text(Message::kOptional), u"Opcional");
}

TEST(LanguageTest, LoadingWritesNothing) {
  const ScratchFolder folder;
  const Language language = Language::LoadLanguage(FileRegistry(folder / "registry.reg"));
  EXPECT_EQ(language.Text(Message::kPath), u"Path");
  EXPECT_FALSE(std::filesystem::exists(folder / "registry.reg"));
}

}  // namespace
}  // namespace quenmar
