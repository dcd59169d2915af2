#include "conf/SeriesGroups.h"

#include <algorithm>

namespace quenmar {

SeriesGroups::SeriesGroups(const Document& series) {
  for (int i = 0; i < series.Fields().Count(); ++i) {
    const auto entry = series.Fields().Field(i);
    const bool active = entry->Parameters().Parameter(1)->Value() == u"1";
    GroupOf(entry->Parameters().Parameter(0)->Value()).items.push_back({entry->Name(), active});
  }
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

void AddMissingSeries(const Document& distributionSeries, Document& serverSeries) {
  for (int i = 0; i < distributionSeries.Fields().Count(); ++i) {
    const auto offered = distributionSeries.Fields().Field(i);
    if (!serverSeries.Fields().Field(offered->Name())->Name().empty()) continue;
    const int index = serverSeries.Fields().AddField(offered->Name(), {});
    Parameters& parameters = serverSeries.Fields().Field(index)->Parameters();
    parameters.AddParameter(u"Type", offered->Parameters().Parameter(0)->Value());
    parameters.AddParameter(u"Disabled", u"0");
  }
}

}  // namespace quenmar
