#include "conf/SavePlan.h"

#include <unordered_set>
#include <utility>

#include "conf/ConfWriter.h"
#include "conf/Layout.h"
#include "conf/LineDiff.h"

namespace quenmar {

namespace {

Wishes WishesOf(const SaveRequest& request) {
  Wishes wishes;
  std::unordered_set<StringView> seen;  // a further field of a name is a further line of it
  for (const Field& field : request.settings.Fields()) {
    const StringView name = field.Name();
    if (!seen.insert(name).second) continue;
    wishes.settings.push_back({String(name), String(field.Value()), request.isActive(name)});
  }
  const SeriesGroups& series = request.series;
  for (int group = 0; group < series.GroupCount(); ++group) {
    for (int item = 0; item < series.ItemCount(group); ++item) {
      wishes.entries.push_back(
          {series.Type(group), series.List(group, item), series.Selected(group, item)});
    }
  }
  return wishes;
}

ConfFile FileAfter(const SaveRequest& request, const Options& options, const Language& language) {
  const Path& path = request.server.FilePath();
  if (request.layout == Layout::kSettings) {
    const ConfCharset charset =
        CharsetForSaving(request.server.Encoding(), request.distribution.Encoding());
    return {path, ConfFileBytes(request.settings, request.series, charset, options, language),
            charset};
  }
  const bool onServer = request.layout == Layout::kServer;
  LaidOut laidOut = LayOut(onServer ? request.server : request.distribution,
                           onServer ? request.distribution : request.server, WishesOf(request),
                           options, language);
  return {path, std::move(laidOut.bytes), laidOut.charset};
}

}  // namespace

SavePlan SavePlan::Of(const SaveRequest& request, const ConfFile& before, const Options& options,
                      const Language& language) {
  SavePlan plan;
  ConfFile after = FileAfter(request, options, language);
  plan.changes = ListSaveChanges(before, after, options.series, request.layout);
  plan.warnings = ListSaveWarnings(request.settings, request.distributionSettings, plan.changes,
                                   request.layout);
  plan.warnings.charset = CharsetWarning(after.Bytes(), after.Charset(), language);
  if (request.layout == Layout::kSettings) {
    plan.diff = DiffText(plan.changes, language);
  } else {
    plan.diff = UnifiedDiff(before, after);
    for (const String& effect : WholeFileEffects(plan.changes, language)) {
      plan.diff += effect + String(kLineEnd);
    }
  }
  plan.bytes = std::move(after).TakeBytes();
  return plan;
}

}  // namespace quenmar
