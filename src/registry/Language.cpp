#include "registry/Language.h"

#include <array>

namespace quenmar {

namespace {

constexpr StringView kLanguageKey = u"Software\\Quenmar\\Language";

/// A message as it is stored: its key is the name of its value in the registry.
struct MessageEntry {
  Message message;
  StringView key;
  StringView text;
};

// Wording, misspellings and runs of blanks are those that users and translations know.
constexpr auto kEntries = std::to_array<MessageEntry>({
    {Message::kWindowTitle, u"LNG1", u"Talsk/Orvanth .conf Editor"},
    {Message::kPath, u"LNG2", u"Path"},
    {Message::kDistributionFolder, u"LNG3", u"SVN Conf:"},
    {Message::kServerFolder, u"LNG4", u"Server Conf:"},
    {Message::kConfigFile, u"LNG5", u"Config File:"},
    {Message::kCheckChanges, u"LNG6", u"Check Changes"},
    {Message::kSortParameterList, u"LNG7", u"Sort Parameter List"},
    {Message::kEdit, u"LNG8", u"Edit"},
    {Message::kClose, u"LNG9", u"Close"},
    {Message::kSelectFile, u"LNG10", u"Select a config file from the list."},
    {Message::kNotOnServer, u"LNG11",
     u"The %1 file is not found in you game folder, please use %2"},
    {Message::kEditingFrame, u"LNG12", u"Editing: %1"},
    {Message::kEditingTitle, u"LNG13", u"Editing %1"},
    {Message::kCopyNewFile, u"LNG14",
     u"The %1 file is a new config file, copy in your project config folder?"},
    {Message::kSelectDistributionFolder, u"LNG15",
     u"Please, select the \"conf-dist\" or \"conf-tmpl\" inside your SVN root folder."},
    {Message::kSameFolder, u"LNG16", u"Please, don't select the same folder."},
    {Message::kNoConfFiles, u"LNG17",
     u"The SVN Folder is wrong, there are not .conf files in the path: %1"},
    {Message::kSelectServerFolder, u"LNG18",
     u"Please, select your \"conf\" folder inside your Server Root."},
    {Message::kSelectDifferentFolder, u"LNG19", u"Please, select a diferent folder."},
    {Message::kApplyChanges, u"LNG20", u"Apply Changes?"},
    {Message::kIgnoreChanges, u"LNG21", u"Ignore Changes?"},
    {Message::kTooManySeries, u"LNG22", u"Sorry, this tool only works with 10 series"},
    // The column titles of the parameter grid; the blanks set the widths of its columns.
    {Message::kGridColumns, u"LNG23",
     u"Parameter                                  |"
     u"Actual Value                            |"
     u"Original Value                         |"
     u"Type              "},
    {Message::kApply, u"LNG24", u"Apply"},
    {Message::kRemoveMandatory, u"LNG25", u"The %1 parameter is mandatory, delete anyway?"},
    {Message::kNewSettingsHelp, u"LNG26",
     u"This is the new Parameter list from your SVN folder. Your server need ALL checked "
     u"parameters. The unchecked parameters are optional."},
    {Message::kObsoleteSettingsHelp, u"LNG27",
     u"This list show parameters that don't exists in the SVN configuration. All parameter in this "
     u"list will be deleted when press Apply. Press Restore button to recover any custom "
     u"parameter."},
    {Message::kNewSettings, u"LNG28", u"[x] New Settings / [ ] optional settings:"},
    {Message::kOriginalValue, u"LNG29", u"Original Value:"},
    {Message::kActualValue, u"LNG30", u"Actual Value:"},
    {Message::kHelp, u"LNG31", u"Help"},
    {Message::kAdd, u"LNG32", u"Add       ->"},
    {Message::kObsoleteSettings, u"LNG33", u"NonStandard / Obsolete Settings:"},
    {Message::kSelectAll, u"LNG34", u"Select All"},
    {Message::kRemove, u"LNG35", u"<-        Remove"},
    {Message::kRestore, u"LNG36", u"Restore     ->"},
    {Message::kValue, u"LNG37", u"Value"},
    {Message::kParameters, u"LNG38", u"Parameters:"},
    {Message::kChanges, u"LNG39", u"Changes"},
    {Message::kCurrentFields, u"LNG40", u"Current Fields"},
    {Message::kSaved, u"LNG41", u"Saved!"},
    {Message::kError, u"LNG42", u"Error: "},
    {Message::kFixLineEnds, u"LNG43",
     u"This file contain LF as line ending, do you want to fix? (This tool is compatible with "
     u"CR+LF)"},
    {Message::kCannotRead, u"LNG44", u"Error, can't read from file %1"},
    {Message::kLineEndsNotFixed, u"LNG45", u"Error, lines must end with Cr+Lf, fix it and retry."},
    {Message::kDuplicateSetting, u"LNG46",
     u"Parameter %1 is duplicated (in %2 file) \\n\\n Ignore and continue the process?"},
    {Message::kMandatory, u"LNG47", u"Mandatory"},
    {Message::kOptional, u"LNG48", u"Optional"},
    {Message::kChangedOnDisk, u"LNG49",
     u"The file has changed on the disk since it was read. Save anyway?"},
    {Message::kFileUnchanged, u"LNG50", u"The file %1 is unchanged."},
    {Message::kFileDamaged, u"LNG51",
     u"The file %1 is damaged: writing it failed, and so did putting its old content back."},
    {Message::kNoCopy, u"LNG52", u"The copy %1 could not be made: %2"},
    {Message::kUtf16Text, u"LNG53",
     u"This is UTF-16 text. Configuration files are UTF-8 or Windows-1252 text; please convert "
     u"it."},
    {Message::kCharacterLacking, u"LNG54",
     u"The setting %1 has a character that the file's character set (%2) lacks."},
    {Message::kPlaceInFile, u"LNG55", u"%1, line %2: %3"},
    {Message::kValuesReadBack, u"LNG56", u"Values that will be read back otherwise: %1"},
    {Message::kCommentsLost, u"LNG57", u"Comment lines that will be lost: %1"},
    {Message::kSettingsActivated, u"LNG58", u"Commented-out settings that become active: %1"},
    {Message::kMandatoryMissing, u"LNG59", u"Mandatory settings that are still missing: %1"},
    {Message::kOrderChanges, u"LNG60", u"order of lines changes"},
    {Message::kLinesReformatted, u"LNG61", u"lines are reformatted"},
    {Message::kLineEndsChange, u"LNG62", u"line ends become CR LF"},
    {Message::kMarkGoes, u"LNG63", u"the byte order mark goes"},
    {Message::kReadAsOtherCharset, u"LNG64",
     u"Read again, the saved file will be taken for %1 text."},
    {Message::kReadBackAs, u"LNG65", u"This will be read back as: %1"},
    {Message::kWhenSaving, u"LNG66", u"When saving:"},
    {Message::kSettingsOnly, u"LNG67", u"Settings only"},
    {Message::kKeepServerLines, u"LNG68", u"Keep this file's comments"},
    {Message::kKeepDistributionLines, u"LNG69", u"New release's comments"},
    {Message::kSettingsOnlyHint, u"LNG70",
     u"Writes settings and series entries in the program's own form. Comments are lost."},
    {Message::kKeepServerLinesHint, u"LNG71",
     u"Keeps the server's file as it is and changes only what you change."},
    {Message::kKeepDistributionLinesHint, u"LNG72",
     u"Takes the distribution's file, comments included, with the server's values in it."},
    {Message::kCommentedOut, u"LNG73", u"commented out"},
    {Message::kBecomesActive, u"LNG74", u"commented out, becomes active when saved"},
    {Message::kSwitchSetting, u"LNG75", u"Switch On or Off"},
    {Message::kCannotSwitchOff, u"LNG76",
     u"The setting %1 cannot be commented out: it would be a comment."},
    {Message::kColumnFile, u"LNG77", u"File"},
    {Message::kColumnState, u"LNG78", u"State"},
    {Message::kColumnNew, u"LNG79", u"New"},
    {Message::kColumnChanged, u"LNG80", u"Changed"},
    {Message::kColumnInactive, u"LNG81", u"Inactive"},
    {Message::kColumnObsolete, u"LNG82", u"Obsolete"},
    {Message::kColumnDefaults, u"LNG83", u"Defaults"},
    {Message::kColumnSeries, u"LNG84", u"Series"},
    {Message::kColumnRemarks, u"LNG85", u"Remarks"},
    {Message::kStateSame, u"LNG86", u"same"},
    {Message::kStateDiffers, u"LNG87", u"differs"},
    {Message::kStateNewFile, u"LNG88", u"new file"},
    {Message::kStateUnreadable, u"LNG89", u"cannot be read"},
    {Message::kNoFilesYet, u"LNG90", u"Choose both folders to see what their files need."},
    {Message::kRemarkLineEnds, u"LNG91", u"line feeds"},
    {Message::kRemarkDuplicates, u"LNG92", u"duplicates: %1"},
    {Message::kRemarkCharset, u"LNG93", u"text in UTF-8"},
    {Message::kRemarkBytes, u"LNG94", u"bytes that are no text"},
    {Message::kFind, u"LNG95", u"Find:"},
    {Message::kShowAll, u"LNG96", u"All"},
    {Message::kShowChanged, u"LNG97", u"Only changed"},
    {Message::kShowNotInDistribution, u"LNG98", u"Not in the distribution"},
    {Message::kShowCommentedOut, u"LNG99", u"Only commented out"},
    {Message::kCountOf, u"LNG100", u"%1 of %2"},
    {Message::kSetToOriginal, u"LNG101", u"Set to Original Value"},
    {Message::kDistributionComment, u"LNG102", u"The distribution's comment:"},
    {Message::kEdited, u"LNG103", u"edited since the last save"},
    {Message::kPerhapsRenamed, u"LNG104", u"perhaps renamed from %1"},
    {Message::kTakeOldValue, u"LNG105", u"Take Old Value Over"},
    {Message::kAddMandatory, u"LNG106", u"Add Mandatory"},
    {Message::kNotAdded, u"LNG107", u"New values that were typed and not added: %1"},
    {Message::kAddMissing, u"LNG108", u"Add Missing Settings"},
    {Message::kShowDefaults, u"LNG109", u"Changed by the release"},
    {Message::kOldDefault, u"LNG110", u"Old default: %1"},
    {Message::kNewDefault, u"LNG111", u"New default: %1"},
    {Message::kTakeNewDefault, u"LNG112", u"Take New Default"},
    {Message::kTakeAllDefaults, u"LNG113", u"Take All Untouched"},
    {Message::kDefaultMark, u"LNG114", u"the release has changed this default"},
    {Message::kBothMark, u"LNG115", u"you and the release have both changed this"},
    {Message::kNotRemembered, u"LNG116", u"The distribution's file could not be remembered: %1"},
    {Message::kLineEndsBecomeLf, u"LNG117", u"line ends become LF"},
    {Message::kMarkComes, u"LNG118", u"a byte order mark comes"},
    {Message::kCharsetChanges, u"LNG119", u"the character set becomes %1"},
    {Message::kEntryWithdrawn, u"LNG120", u"the release has withdrawn this entry"},
    {Message::kNothingToDo, u"LNG121", u"nothing to do"},
});

/// A message's number is its place in the table.
constexpr bool InOrder() {
  for (size_t i = 0; i < kEntries.size(); ++i) {
    if (static_cast<size_t>(kEntries[i].message) != i) return false;
  }
  return kEntries.size() == kMessages;
}
static_assert(InOrder());

}  // namespace

Language::Language() {
  for (size_t i = 0; i < kMessages; ++i) texts_[i] = kEntries[i].text;
}

Language Language::LoadLanguage(const Registry& registry) {
  Language language;
  for (size_t i = 0; i < kMessages; ++i) {
    String& text = language.texts_[i];
    text = registry.RegReadString(RegistryRoot::kLocalMachine, kLanguageKey, kEntries[i].key, text);
  }
  return language;
}

const String& Language::Text(Message message) const {
  return texts_.at(static_cast<size_t>(message));
}

}  // namespace quenmar
