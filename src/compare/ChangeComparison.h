/// The comparison of a distribution file with the server's file of the same name, and the merge
/// under the user's control. Runs without any user interface; windows and console share it.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "conf/ConfDocuments.h"
#include "conf/MessageBoxes.h"
#include "conf/SeriesGroups.h"
#include "docmodel/Document.h"
#include "registry/Language.h"

namespace quenmar {

/// Six result trees and the moves between three of them. `ActualFields` is the merge result, which
/// the conf writer gets. Every comparison needs a new object. Call each `Fill...` operation once,
/// in the order of their declaration.
class ChangeComparison {
 public:
  /// @param documents the four trees, read to their ends; shared, and only `FillSeries` changes
  /// them
  /// @param sorted whether result trees are kept sorted by name
  ChangeComparison(ConfDocuments documents, bool sorted);

  /// Builds `NewFields` and `NewSeries`: what the distribution has and the server lacks.
  void FillNewFields();

  /// Builds `ActualFields` (the distribution's settings that the server has, in the distribution's
  /// order with the server's values) and `ActualSeries` (all series entries; "Disabled" is whether
  /// the server has an entry that the distribution has).
  void FillActualFields();

  /// Builds `DeletedFields` and `DeletedSeries`: what only the server has.
  void FillDeletedFields();

  /// Runs the three operations above.
  void FillResultTrees();

  /// Adds the distribution's missing series entries to the shared server series document as
  /// commented-out ones, sorts the shared server settings document, and makes the check lists. With
  /// an eleventh kind of series, shows Message::kTooManySeries and throws `EndApplication`: no part
  /// of such a file may be saved.
  [[nodiscard]] SeriesGroups FillSeries(MessageBoxes& messages, const Language& language);

  [[nodiscard]] const Document& NewFields() const { return newFields_; }
  [[nodiscard]] const Document& NewSeries() const { return newSeries_; }
  [[nodiscard]] const Document& ActualFields() const { return actualFields_; }
  [[nodiscard]] const Document& ActualSeries() const { return actualSeries_; }
  [[nodiscard]] const Document& DeletedFields() const { return deletedFields_; }
  [[nodiscard]] const Document& DeletedSeries() const { return deletedSeries_; }

  /// @return whether there is anything to move: `NewFields` or `DeletedFields` is not empty.
  [[nodiscard]] bool HasListChanges() const;

  /// @return whether the server needs the setting of that name; see `quenmar::IsMandatory`.
  [[nodiscard]] bool IsMandatory(StringView name) const;

  /// Moves fields from `NewFields` to the end of `ActualFields`, with their values there. Names
  /// that `NewFields` lacks are ignored, as in the other moves; afterwards the three trees are
  /// sorted if they are kept sorted.
  /// @return how many fields were moved.
  int Add(const std::vector<String>& names);

  /// Moves fields from `ActualFields` to the end of `DeletedFields`. Before a mandatory one goes,
  /// asks Message::kRemoveMandatory (Yes, No, Cancel; No is the default): No keeps it, Cancel keeps
  /// all further ones too.
  /// @return how many fields were moved.
  int Remove(const std::vector<String>& names, MessageBoxes& messages, const Language& language);

  /// Moves fields from `DeletedFields` back to the end of `ActualFields`.
  /// @return how many fields were moved.
  int Restore(const std::vector<String>& names);

  /// Gives every field of that name in `NewFields` another value: the file must not have two.
  /// @return false when there is no such field.
  bool SetNewValue(StringView name, StringView value);

  /// The same for `ActualFields`.
  /// @return false when there is no such field.
  bool SetActualValue(StringView name, StringView value);

  /// The same for many names, reading the tree once.
  void SetActualValues(const std::map<StringView, SharedText>& values);

  /// The names and values of a tree.
  using Values = std::vector<std::pair<SharedText, SharedText>>;

  /// What the moves and values change.
  struct Lists {
    Values newFields;
    Values actualFields;
    Values deletedFields;
  };
  [[nodiscard]] Lists CaptureLists() const;
  void SetLists(const Lists& lists);

 private:
  int Move(const std::vector<String>& names, Document& from, Document& to);
  void SortLists();

  ConfDocuments documents_;
  bool sorted_;
  Document newFields_;
  Document newSeries_;
  Document actualFields_;
  Document actualSeries_;
  Document deletedFields_;
  Document deletedSeries_;
};

}  // namespace quenmar
