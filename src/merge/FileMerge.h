#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "compare/ChangeComparison.h"
#include "compare/ReleaseChanges.h"
#include "conf/ConfDocuments.h"
#include "conf/ConfReader.h"
#include "conf/ConfSetting.h"
#include "conf/ConfWriter.h"
#include "conf/SavePlan.h"
#include "conf/SeriesGroups.h"
#include "merge/History.h"
#include "merge/SeenFiles.h"
#include "merge/SettingFilter.h"

namespace quenmar {

/// What every merge works with. All references outlive it.
struct MergeContext {
  const Options& options;
  const Language& language;
  MessageBoxes& messages;
};

/// One configuration file in its two versions: opened, changed, undone, saved. The windows and the
/// console show it and pass on what the user does; it has all state but the selection.
class FileMerge {
 public:
  /// What the merge saves.
  enum class Purpose {
    kCompare,  ///< the kept settings of the comparison, in the distribution's order
    kEdit,     ///< every setting that the server's file has, in its order
  };

  struct Request {
    Path distribution;
    Path server;  ///< the server's file; where it is missing, what the distribution has is read
    Purpose purpose = Purpose::kCompare;
    bool begun = false;  ///< the server's file is a fresh copy, which needs no copy of its own
    ConfReader::BareLineFeeds bareLineFeeds = ConfReader::BareLineFeeds::kAsk;
    ConfReader::Comments comments = ConfReader::Comments::kKept;
    Layout layout = Layout::kSettings;

    /// The distribution's file as it was, instead of the one that `seen` has. It may be
    /// missing, but one that cannot be read ends the opening.
    std::optional<Path> base = {};

    /// Where the distribution's file is kept after a save that follows a comparison; outlives the
    /// merge. Null: nothing is looked up and nothing kept.
    SeenFiles* seen = nullptr;

    std::function<void(const Path&)> reading = {};  ///< is called before each file is read
  };

  /// What a step of the history did. Moves, values and switches of series entries have the numbers
  /// that the updater window's `Changed` has had from the start.
  enum class Step : std::int16_t { kNewValue = 0, kMove = 1, kValue = 2, kSeries = 4, kState = 8 };

  /// The lists of the comparison.
  enum class List { kNew, kKept, kObsolete };

  /// What a save makes of a setting's line.
  enum class SettingState { kActive, kCommentedOut, kBecomesActive };

  /// Reads both files. Failures are shown to the user here. Throws `EndApplication` when the user
  /// refuses the repair of line ends, and with more kinds of series than a comparison takes.
  /// @return nothing when the files were not read to their ends or cannot be edited.
  [[nodiscard]] static std::unique_ptr<FileMerge> Open(const Request& request,
                                                       const MergeContext& context);

  /// Gives the server the distribution's file. A failure is shown.
  /// @return whether the server has it.
  [[nodiscard]] static bool CopyToServer(const Path& distribution, const Path& server,
                                         const MergeContext& context);

  FileMerge(const FileMerge&) = delete;
  FileMerge& operator=(const FileMerge&) = delete;
  ~FileMerge() = default;

  // What there is.

  [[nodiscard]] const Document& Tree(List list) const;
  [[nodiscard]] const ChangeComparison& Comparison() const { return *comparison_; }

  /// @return the server's settings, which `Purpose::kEdit` edits.
  [[nodiscard]] const Document& ServerSettings() const { return *documents_.server; }
  [[nodiscard]] const Document& DistributionSettings() const { return *documents_.distribution; }
  [[nodiscard]] const SeriesGroups& Series() const { return series_; }
  [[nodiscard]] const ConfNotes& ServerNotes() const { return serverNotes_; }
  [[nodiscard]] Layout SaveLayout() const { return request_.layout; }

  [[nodiscard]] bool IsMandatory(StringView name) const {
    return quenmar::IsMandatory(*documents_.distribution, name);
  }

  /// @return whether the distribution's file is known as it was; without it there are neither
  /// changed defaults nor withdrawn entries.
  [[nodiscard]] bool KnowsOldVersion() const { return old_.has_value(); }

  /// @return the kept settings whose default the release has changed, with the values that a save
  /// would write now. Those that have the new default already are left out. The old version stays
  /// that of the opening, also after a save.
  [[nodiscard]] std::vector<DefaultChange> DefaultChanges() const;

  /// @return the changed default of that setting; nothing when it is not in `DefaultChanges`.
  [[nodiscard]] std::optional<DefaultChange> DefaultChangeOf(StringView name) const;

  /// @return the series entries that the release has withdrawn and that a save would leave on.
  [[nodiscard]] std::vector<SeriesEntry> WithdrawnEntries() const;

  /// @return the comment of a setting or series entry: of a compared setting the distribution's,
  /// else the server's.
  [[nodiscard]] String Comment(StringView name) const;

  /// @return the distribution's comment of a setting where it differs from `Comment`; else empty.
  [[nodiscard]] String DistributionComment(StringView name) const;

  /// @return the obsolete setting that is perhaps the same as a new one, as long as both are in
  /// their lists; see `FindRenames`.
  [[nodiscard]] std::optional<String> RenamedFrom(StringView name) const;

  /// @return the mandatory settings among the new ones, without those of a name that is kept.
  [[nodiscard]] std::vector<String> MissingMandatory() const;

  /// @return the new settings that the user has given a value and not added: a save drops it.
  [[nodiscard]] std::vector<String> TypedNotAdded() const;

  /// @return whether the saved file is to have the setting active, rather than commented out. With
  /// `Layout::kSettings` every setting is.
  [[nodiscard]] bool IsWantedActive(StringView name) const;

  /// @return what the next save makes of the setting's line in the server's file.
  [[nodiscard]] SettingState StateOf(StringView name) const;

  /// @param original the distribution's setting of that name, or one without a name
  /// @return what a setting of any list is; its texts are the arguments'.
  [[nodiscard]] SettingFilter::Item ItemOf(const Field& setting, const Field& original,
                                           StringView comment) const;

  // The server's settings with `Purpose::kEdit`, by their indexes.

  /// @return whether value or state have changed since the file was read or last saved.
  [[nodiscard]] bool IsEdited(int index) const;

  /// @return whether the value differs from the distribution's; false where that has none.
  [[nodiscard]] bool IsChanged(int index) const;

  /// @return whether the filter shows the setting.
  [[nodiscard]] bool IsShown(int index, const SettingFilter& filter) const;

  // What the user can do. Each is one step that can be undone.

  /// See `ChangeComparison`. @return how many settings were moved.
  int Add(const std::vector<String>& names);
  int Remove(const std::vector<String>& names);
  int Restore(const std::vector<String>& names);

  /// Adds all new settings that are mandatory. @return how many.
  int AddMandatory();

  /// Adds a new setting with the value of the obsolete one that is perhaps the same.
  /// @return false when there is none.
  bool TakeOldValue(StringView name);

  /// Adds all new settings. Of a name that is new twice, this and `AddMandatory` add one.
  /// @return how many.
  int AddAll();

  /// Gives a setting of a list another value. What is typed into one value is one step.
  /// @return false when there is no such setting.
  bool SetValue(List list, StringView name, StringView value);

  /// Gives the server's setting at that index another value.
  void SetServerValue(int index, StringView value);

  /// Gives the server's settings at those indexes the distribution's values, where it has them.
  /// @return how many have another value now.
  int ResetServerValues(const std::vector<int>& indexes);

  /// Gives those of a comparison's settings whose default the release has changed, of either kind,
  /// the new default. It changes their values and not whether they are active.
  /// @return how many have another value now.
  int TakeDefaults(const std::vector<String>& names);

  /// The same for every setting that has the old default: one of another value keeps it.
  int TakeUntouchedDefaults();

  /// Switches a series entry on or off.
  void SetEntry(int group, int item, bool on);

  /// Makes a setting active or comments it out. Has no effect with `Layout::kSettings`.
  /// @return false for "note" and "example", which would be comments if they were commented out.
  bool SwitchSetting(StringView name, bool active);

  /// The same for several settings in one step.
  /// @return the names of those that cannot be commented out.
  std::vector<String> SwitchSettings(const std::vector<String>& names, bool active);

  // History.

  [[nodiscard]] bool CanUndo() const { return history_.CanUndo(); }
  [[nodiscard]] bool CanRedo() const { return history_.CanRedo(); }
  void Undo();
  void Redo();

  /// Ends the step of the current typing: what is typed next is another step.
  void EndTyping() { history_.EndTyping(); }

  /// @return whether something is not saved.
  [[nodiscard]] bool IsModified() const { return UnsavedStep().has_value(); }

  /// @return the last step that is not saved.
  [[nodiscard]] std::optional<Step> UnsavedStep() const;

  // Saving.

  /// @return what a save would write now over the server's file as it is on the disk. Throws
  /// `RuntimeError` when a character cannot be written or the file cannot be read.
  [[nodiscard]] SavePlan Plan() const;

  /// The same over another content.
  [[nodiscard]] SavePlan PlanOver(const ConfFile& before) const;

  /// Writes the plan; see `ConfWriter::SaveBytes`. Afterwards nothing is unsaved, and after a
  /// comparison the distribution's file is kept in `Request::seen`. A failure of that is shown; the
  /// file is saved all the same.
  /// @return whether the server's file has the content.
  [[nodiscard]] bool Save(const SavePlan& plan);

  /// Ends a comparison. When nothing is unsaved and the server has followed every change of the
  /// release, the distribution's file is kept as after a save. Otherwise it is not, so that merely
  /// looking at a file does not end the reports about it.
  void Close();

  /// Shows why no plan could be made.
  void TellFailure(const std::exception& error) const;

 private:
  /// What the user can change.
  struct State {
    ChangeComparison::Lists lists;
    std::vector<SharedText> serverValues;
    SeriesGroups series;
    std::map<String, bool> switched;
    std::set<String> edited;
  };

  /// A setting as the server's file had it when it was read.
  struct OpenedSetting {
    String value;
    bool active;
    bool activeInFile;  // also after a save
  };

  /// A setting when the file was read or last saved.
  struct SavedSetting {
    SharedText value;
    bool wantedActive;
  };

  FileMerge(Request request, const MergeContext& context);

  [[nodiscard]] bool Read();
  [[nodiscard]] bool ReadVersion(const Path& path, std::shared_ptr<Document>& settings,
                                 std::shared_ptr<Document>& series, ConfNotes& notes) const;
  [[nodiscard]] bool ReadOldVersion();
  void RememberServer();
  void KeepSeen();
  [[nodiscard]] bool Prepare();
  void RememberSaved();

  /// Makes a change that is one step of the history, or part of the one with the same topic.
  /// @param change returns how much it has changed; nothing is no step
  template <class Change>
  int Do(Step step, const String& topic, Change change);
  [[nodiscard]] ReleaseChanges FindChanges() const;
  [[nodiscard]] bool IsKept(const Field& field) const;
  [[nodiscard]] bool IsOn(const SeriesEntry& entry) const;
  /// Gives the wanted settings their new defaults, in one step.
  template <class IsWanted>
  int GiveDefaults(IsWanted isWanted);
  /// Gives all lines of a name the same value, which they have in a file that keeps its lines.
  void GiveAllLines(const std::map<StringView, SharedText>& values);
  [[nodiscard]] State Capture() const;
  void Swap(State& state);

  [[nodiscard]] const Document& SavedSettings() const;

  Request request_;
  MergeContext context_;
  ConfDocuments documents_;
  ConfNotes distributionNotes_;
  ConfNotes serverNotes_;
  std::optional<OldVersion> old_;
  std::map<String, OpenedSetting> onServer_;
  std::vector<SavedSetting> saved_;             // for `Purpose::kEdit` only
  std::optional<ChangeComparison> comparison_;  // for `Purpose::kCompare` only
  std::map<String, String> renames_;            // as the comparison began
  SeriesGroups series_;
  std::map<String, bool> switched_;  // settings whose state the user has chosen
  std::set<String> edited_;          // settings to which the user has given a value
  History<Step, State> history_;
  OpenedFile opened_;
  bool remembered_ = false;  // in `Request::seen`, or the failure was shown
};

}  // namespace quenmar
