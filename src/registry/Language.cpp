#include "registry/Language.h"

#include <algorithm>

namespace quenmar {

namespace {

constexpr StringView kKey = u"Software\\Quenmar\\Language";

// Wording, misspellings and runs of blanks are those that users and translations know.
constexpr auto kDefaults = std::to_array<StringView>({
    // LNG1
    u"Talsk/Orvanth .conf Editor",
    u"Path",
    u"SVN Conf:",
    u"Server Conf:",
    u"Config File:",
    u"Check Changes",
    u"Sort Parameter List",
    u"Edit",
    u"Close",
    u"Select a config file from the list.",
    // LNG11
    u"The %1 file is not found in you game folder, please use %2",
    u"Editing: %1",
    u"Editing %1",
    u"The %1 file is a new config file, copy in your project config folder?",
    u"Please, select the \"conf-dist\" or \"conf-tmpl\" inside your SVN root folder.",
    u"Please, don't select the same folder.",
    u"The SVN Folder is wrong, there are not .conf files in the path: %1",
    u"Please, select your \"conf\" folder inside your Server Root.",
    u"Please, select a diferent folder.",
    u"Apply Changes?",
    // LNG21
    u"Ignore Changes?",
    u"Sorry, this tool only works with 10 series",
    // The column titles of the parameter grid; the blanks set the widths of its columns.
    u"Parameter                                  |"
    u"Actual Value                            |"
    u"Original Value                         |"
    u"Type              ",
    u"Apply",
    u"The %1 parameter is mandatory, delete anyway?",
    u"This is the new Parameter list from your SVN folder. Your server need ALL checked "
    u"parameters. The unchecked parameters are optional.",
    u"This list show parameters that don't exists in the SVN configuration. All parameter in this "
    u"list will be deleted when press Apply. Press Restore button to recover any custom parameter.",
    u"[x] New Settings / [ ] optional settings:",
    u"Original Value:",
    u"Actual Value:",
    // LNG31
    u"Help",
    u"Add       ->",
    u"NonStandard / Obsolete Settings:",
    u"Select All",
    u"<-        Remove",
    u"Restore     ->",
    u"Value",
    u"Parameters:",
    u"Changes",
    u"Current Fields",
    // LNG41
    u"Saved!",
    u"Error: ",
    u"This file contain LF as line ending, do you want to fix? (This tool is compatible with "
    u"CR+LF)",
    u"Error, can't read from file %1",
    u"Error, lines must end with Cr+Lf, fix it and retry.",
    u"Parameter %1 is duplicated (in %2 file) \\n\\n Ignore and continue the process?",
    u"Mandatory",
    u"Optional",
    u"The file has changed on the disk since it was read. Save anyway?",
    u"The file %1 is unchanged.",
    // LNG51
    u"The file %1 is damaged: writing it failed, and so did putting its old content back.",
    u"The copy %1 could not be made: %2",
    u"This is UTF-16 text. Configuration files are UTF-8 or Windows-1252 text; please convert it.",
    u"The setting %1 has a character that the file's character set (%2) lacks.",
    u"%1, line %2: %3",
    u"Values that will be read back otherwise: %1",
    u"Comment lines that will be lost: %1",
    u"Commented-out settings that become active: %1",
    u"Mandatory settings that are still missing: %1",
    u"order of lines changes",
    // LNG61
    u"lines are reformatted",
    u"line ends become CR LF",
    u"the byte order mark goes",
    u"Read again, the saved file will be taken for %1 text.",
    u"This will be read back as: %1",
});

}  // namespace

Language::Language() {
  static_assert(kDefaults.size() == kLastMessage);
  std::copy(kDefaults.begin(), kDefaults.end(), texts_.begin());
}

Language Language::LoadLanguage(const Registry& registry) {
  Language language;
  for (int key = LNG1; key <= kLastMessage; ++key) {
    String& text = language.texts_.at(static_cast<size_t>(key - LNG1));
    text = registry.RegReadString(RegistryRoot::kLocalMachine, kKey, u"LNG" + ToText(key), text);
  }
  return language;
}

const String& Language::Text(MessageKey key) const {
  return texts_.at(static_cast<size_t>(key - LNG1));
}

}  // namespace quenmar
