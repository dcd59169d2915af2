#include "conf/SeriesGroups.h"

#include <algorithm>

#include "conf/ConfSetting.h"

namespace quenmar {

SeriesGroups::SeriesGroups(const Document& series) {
  for (const Field& entry : series.Fields()) {
    GroupOf(TypeOf(entry)).items.push_back({String(entry.Name()), IsActive(entry)});
  }
}

SeriesGroups SeriesGroups::OfBoth(const Document& distributionSeries, Document& serverSeries) {
  for (const Field& offered : distributionSeries.Fields()) {
    if (serverSeries.Fields().Field(offered.Name())->Name().empty()) {
      AddSeriesEntry(serverSeries, offered.Name(), TypeOf(offered), false);
    }
  }
  return SeriesGroups(serverSeries);
}

String SeriesGroups::TabCaption(int group) const {
  return At(group).type + u"(" + ToText(ItemCount(group)) + u")";
}

int SeriesGroups::ItemCount(int group) const { return static_cast<int>(At(group).items.size()); }

String SeriesGroups::List(int group, int item) const { return At(group, item).text; }

bool SeriesGroups::Selected(int group, int item) const { return At(group, item).checked; }

void SeriesGroups::SetSelected(int group, int item, bool checked) {
  groups_.at(static_cast<size_t>(group)).items.at(static_cast<size_t>(item)).checked = checked;
}

SeriesGroups::Group& SeriesGroups::GroupOf(StringView type) {
  const auto hit = std::find_if(groups_.begin(), groups_.end(),
                                [type](const Group& group) { return group.type == type; });
  return hit != groups_.end() ? *hit : groups_.emplace_back(Group{String(type), {}});
}

}  // namespace quenmar
