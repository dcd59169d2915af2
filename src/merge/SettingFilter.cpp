#include "merge/SettingFilter.h"

#include <algorithm>

#include "text/CaseFolding.h"

namespace quenmar {

SettingFilter::SettingFilter(StringView text, Choice choice)
    : text_(ToLower(Trim(text))), choice_(choice) {}

bool SettingFilter::Shows(const Item& item) const {
  return IsChosen(item) && (IsIn(item.name) || IsIn(item.value) || IsIn(item.comment));
}

bool SettingFilter::IsChosen(const Item& item) const {
  switch (choice_) {
    case Choice::kAll:
      return true;
    case Choice::kChanged:
      return item.IsChanged();
    case Choice::kDefaults:
      return item.newDefault;
    case Choice::kNotInDistribution:
      return !item.inDistribution;
    case Choice::kCommentedOut:
      return item.commentedOut;
  }
  return true;
}

bool SettingFilter::IsIn(StringView text) const {
  const auto equal = [](char16_t left, char16_t small) { return ToLower(left) == small; };
  return text_.empty() ||
         std::search(text.begin(), text.end(), text_.begin(), text_.end(), equal) != text.end();
}

}  // namespace quenmar
