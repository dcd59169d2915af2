#pragma once

#include <cstdint>
#include <vector>

#include "text/String.h"

namespace quenmar {

/// The order of an exchange sort: for each position i and each later position j, the two are
/// exchanged when they are in the wrong order. Equal names are never exchanged, but their order can
/// change when others are exchanged across them; the result has exactly that order.
/// Names compare by their 16-bit characters.
/// @return for each position of the sorted order, the position in `names` of what is there.
[[nodiscard]] std::vector<std::uint32_t> ExchangeSortOrder(const std::vector<StringView>& names,
                                                           bool ascendent);

}  // namespace quenmar
