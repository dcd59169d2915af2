#pragma once

#include <array>

#include "registry/Registry.h"
#include "text/String.h"

namespace quenmar {

/// Every caption and message, named after what it says. Their keys in the registry are in one table
/// with the texts.
enum class Message {
  kWindowTitle,
  kPath,
  kDistributionFolder,
  kServerFolder,
  kConfigFile,
  kCheckChanges,
  kSortParameterList,
  kEdit,
  kClose,
  kSelectFile,
  kNotOnServer,
  kEditingFrame,
  kEditingTitle,
  kCopyNewFile,
  kSelectDistributionFolder,
  kSameFolder,
  kNoConfFiles,
  kSelectServerFolder,
  kSelectDifferentFolder,
  kApplyChanges,
  kIgnoreChanges,
  kTooManySeries,
  kGridColumns,
  kApply,
  kRemoveMandatory,
  kNewSettingsHelp,
  kObsoleteSettingsHelp,
  kNewSettings,
  kOriginalValue,
  kActualValue,
  kHelp,
  kAdd,
  kObsoleteSettings,
  kSelectAll,
  kRemove,
  kRestore,
  kValue,
  kParameters,
  kChanges,
  kCurrentFields,
  kSaved,
  kError,
  kFixLineEnds,
  kCannotRead,
  kLineEndsNotFixed,
  kDuplicateSetting,
  kMandatory,
  kOptional,
  kChangedOnDisk,
  kFileUnchanged,
  kFileDamaged,
  kNoCopy,
  kUtf16Text,
  kCharacterLacking,
  kPlaceInFile,
  kValuesReadBack,
  kCommentsLost,
  kSettingsActivated,
  kMandatoryMissing,
  kOrderChanges,
  kLinesReformatted,
  kLineEndsChange,
  kMarkGoes,
  kReadAsOtherCharset,
  kReadBackAs,
  kWhenSaving,
  kSettingsOnly,
  kKeepServerLines,
  kKeepDistributionLines,
  kSettingsOnlyHint,
  kKeepServerLinesHint,
  kKeepDistributionLinesHint,
  kCommentedOut,
  kBecomesActive,
  kSwitchSetting,
  kCannotSwitchOff,
  kColumnFile,
  kColumnState,
  kColumnNew,
  kColumnChanged,
  kColumnInactive,
  kColumnObsolete,
  kColumnDefaults,
  kColumnSeries,
  kColumnRemarks,
  kStateSame,
  kStateDiffers,
  kStateNewFile,
  kStateUnreadable,
  kNoFilesYet,
  kRemarkLineEnds,
  kRemarkDuplicates,
  kRemarkCharset,
  kRemarkBytes,
  kFind,
  kShowAll,
  kShowChanged,
  kShowNotInDistribution,
  kShowCommentedOut,
  kCountOf,
  kSetToOriginal,
  kDistributionComment,
  kEdited,
  kPerhapsRenamed,
  kTakeOldValue,
  kAddMandatory,
  kNotAdded,
  kAddMissing,
  kShowDefaults,
  kOldDefault,
  kNewDefault,
  kTakeNewDefault,
  kTakeAllDefaults,
  kDefaultMark,
  kBothMark,
  kNotRemembered,
  kLineEndsBecomeLf,
  kMarkComes,
  kCharsetChanges,
  kEntryWithdrawn,
  kNothingToDo,
};

/// How many messages there are.
inline constexpr size_t kMessages = static_cast<size_t>(Message::kNothingToDo) + 1;

/// Every caption and message that the user sees, so that a translation needs no new build.
///
/// The texts may contain the placeholders %1, %2 and %3, and a backslash followed by n for a line
/// break.
class Language {
 public:
  /// The built-in English texts.
  Language();

  /// @return the built-in texts, each replaced by the string value of its name in the registry, an
  /// empty one included. Nothing is written.
  [[nodiscard]] static Language LoadLanguage(const Registry& registry);

  [[nodiscard]] const String& Text(Message message) const;

 private:
  std::array<String, kMessages> texts_;
};

}  // namespace quenmar
