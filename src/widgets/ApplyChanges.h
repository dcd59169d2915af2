#pragma once

#include "conf/SeriesView.h"
#include "widgets/FileContext.h"

namespace quenmar {

/// What the Apply buttons do: asks, with the lines that would change at hand, and saves the
/// server's file.
/// @return whether the file was saved.
[[nodiscard]] bool ApplyChanges(const FileContext& context, const Document& settings,
                                const SeriesView& series);

}  // namespace quenmar
