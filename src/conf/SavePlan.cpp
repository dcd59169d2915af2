#include "conf/SavePlan.h"

#include <utility>

namespace quenmar {

void SavePlan::Compare(const ConfFile& before, const Document& settings,
                       const Document& distribution, const Options& options,
                       const Language& language) {
  ConfFile after(before.FilePath(), std::move(bytes), charset);
  changes = ListSaveChanges(before, after, options.series);
  warnings = ListSaveWarnings(settings, distribution, changes,
                              CharsetWarning(after.Bytes(), charset, language));
  bytes = std::move(after).TakeBytes();
}

}  // namespace quenmar
