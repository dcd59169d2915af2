#include "docmodel/ExchangeSort.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace quenmar {

namespace {

struct Ranked {
  std::uint32_t rank;  // 0 for the names that come first; equal names share a rank
  std::uint32_t position;
};

void ExchangeSort(std::vector<Ranked>& items) {
  for (size_t i = 0; i < items.size(); ++i) {
    for (size_t j = i + 1; j < items.size(); ++j) {
      if (items[i].rank > items[j].rank) std::swap(items[i], items[j]);
    }
  }
}

}  // namespace

std::vector<std::uint32_t> ExchangeSortOrder(const std::vector<StringView>& names, bool ascendent) {
  std::vector<std::uint32_t> order(names.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
    return ascendent ? names[a] < names[b] : names[a] > names[b];
  });

  std::vector<Ranked> items(names.size());
  std::uint32_t rank = 0;
  for (size_t i = 0; i < order.size(); ++i) {
    if (i > 0 && names[order[i]] != names[order[i - 1]]) ++rank;
    items[order[i]] = {rank, order[i]};
  }
  // Names that all differ have one sorted order only; equal ones need the exchanges themselves,
  // which are done on ranks.
  if (rank + 1 >= names.size()) return order;
  ExchangeSort(items);
  std::transform(items.begin(), items.end(), order.begin(),
                 [](const Ranked& item) { return item.position; });
  return order;
}

}  // namespace quenmar
