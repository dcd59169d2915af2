#pragma once

#include <vector>

#include "conf/Functions.h"
#include "conf/SeriesView.h"
#include "docmodel/Document.h"

namespace quenmar {

/// The entries of a series document as check lists: one group per "Type", in order of first
/// appearance, captioned with the type and the number of its items, as in "npc(3)". An item is
/// checked when its entry's "Disabled" is "1", that is, when the line is active.
class SeriesGroups : public SeriesView {
 public:
  /// The number of groups that the windows have tabs for.
  static constexpr int kMostGroups = 10;

  SeriesGroups() = default;
  explicit SeriesGroups(const Document& series);

  /// Adds to the server's document every entry that only the distribution has, as one that is
  /// commented out, so that it is listed and not switched on.
  /// @return the groups of all these entries.
  [[nodiscard]] static SeriesGroups OfBoth(const Document& distributionSeries,
                                           Document& serverSeries);

  [[nodiscard]] int GroupCount() const override { return static_cast<int>(groups_.size()); }
  [[nodiscard]] bool TooMany() const { return GroupCount() > kMostGroups; }
  /// @return the name of the repeatable setting.
  [[nodiscard]] const String& Type(int group) const { return At(group).type; }
  [[nodiscard]] String TabCaption(int group) const override;
  [[nodiscard]] int ItemCount(int group) const override;
  [[nodiscard]] String List(int group, int item) const override;
  [[nodiscard]] bool Selected(int group, int item) const override;

  /// Checks or unchecks an item.
  void SetSelected(int group, int item, bool checked);

 private:
  struct Group {
    String type;
    CheckList items;
  };

  [[nodiscard]] const Group& At(int group) const { return groups_.at(static_cast<size_t>(group)); }
  [[nodiscard]] const CheckItem& At(int group, int item) const {
    return At(group).items.at(static_cast<size_t>(item));
  }
  Group& GroupOf(StringView type);

  std::vector<Group> groups_;
};

}  // namespace quenmar
