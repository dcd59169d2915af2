#include "compare/Renames.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "text/CaseFolding.h"

namespace quenmar {

namespace {

constexpr size_t kMostLetters = 2;  // the largest distance of two names

/// @return whether `left` becomes `right` when at most `most` letters are replaced, put in or left
/// out. Tries all ways from each differing letter on; for two letters they are few.
bool WithinLetters(StringView left, StringView right, size_t most) {
  const auto [l, r] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  left.remove_prefix(static_cast<size_t>(l - left.begin()));
  right.remove_prefix(static_cast<size_t>(r - right.begin()));
  if (left.empty() || right.empty()) return std::max(left.size(), right.size()) <= most;
  if (most == 0) return false;
  return WithinLetters(left.substr(1), right.substr(1), most - 1) ||
         WithinLetters(left.substr(1), right, most - 1) ||
         WithinLetters(left, right.substr(1), most - 1);
}

/// Calls `use` with the name and with every text that results from leaving letters out.
/// @param most how many letters at most
/// @param from the first letter that may go, so that no two letters go in both orders
template <class Use>
void WithLettersLeftOut(const String& name, size_t most, Use& use, size_t from = 0) {
  use(StringView(name));
  if (most == 0) return;
  for (size_t letter = from; letter < name.size(); ++letter) {
    String shorter = name;
    shorter.erase(letter, 1);
    WithLettersLeftOut(shorter, most - 1, use, letter);
  }
}

/// Finds names that are a few letters apart without looking at every name: such names have a
/// remainder in common when that many letters are left out of each.
class NearNames {
 public:
  /// @param names which outlive this
  explicit NearNames(const std::vector<StringView>& names) : names_(names), taken_(names.size()) {
    for (size_t i = 0; i < names.size(); ++i) {
      const auto add = [this, i](StringView rest) { rests_.emplace_back(Hash(rest), i); };
      if (IsSearched(names[i])) WithLettersLeftOut(String(names[i]), kMostLetters, add);
    }
    std::sort(rests_.begin(), rests_.end());
  }

  /// Takes the first free name that is at most `apart` letters away and has a letter in common.
  /// @return it, or nothing.
  StringView Take(StringView name, size_t apart) {
    if (!IsSearched(name)) return {};
    size_t best = names_.size();
    const auto look = [&](StringView rest) {
      const auto first = std::lower_bound(rests_.begin(), rests_.end(), Rest(Hash(rest), 0));
      for (auto hit = first; hit != rests_.end() && hit->first == first->first; ++hit) {
        const StringView near = names_[hit->second];
        if (hit->second >= best || taken_[hit->second] || first->first != Hash(rest)) continue;
        if (std::max(near.size(), name.size()) <= apart) continue;
        if (WithinLetters(near, name, apart)) best = hit->second;
      }
    };
    WithLettersLeftOut(String(name), apart, look);
    if (best == names_.size()) return {};
    taken_[best] = true;
    return names_[best];
  }

 private:
  using Rest = std::pair<size_t, size_t>;  // its hash, and the name's index

  /// Longer names are not worth the time.
  static bool IsSearched(StringView name) {
    constexpr size_t kLongest = 64;
    return name.size() <= kLongest;
  }
  static size_t Hash(StringView text) { return std::hash<StringView>()(text); }

  const std::vector<StringView>& names_;
  std::vector<bool> taken_;
  std::vector<Rest> rests_;
};

/// The names that are to be paired.
struct Names {
  std::vector<StringView> fresh;
  std::vector<StringView> obsolete;
};

/// Groups the names of fields that are not in pairs yet, each name once.
/// @param keyOf returns what the names of a group have in common
template <class Key, class KeyOf>
std::map<Key, Names> Group(const Document& newFields, const Document& deletedFields,
                           const std::map<String, String>& pairs, KeyOf keyOf) {
  std::map<Key, Names> groups;
  std::set<StringView> seen;
  for (const auto& [fresh, obsolete] : pairs) seen.insert({fresh, obsolete});
  for (const Field& field : newFields.Fields()) {
    if (seen.insert(field.Name()).second) groups[keyOf(field)].fresh.push_back(field.Name());
  }
  for (const Field& field : deletedFields.Fields()) {
    if (seen.insert(field.Name()).second) groups[keyOf(field)].obsolete.push_back(field.Name());
  }
  return groups;
}

/// Pairs names whose distance is at most `apart`, and removes the new names of these pairs.
void PairNear(std::vector<StringView>& fresh, NearNames& obsolete, size_t apart,
              std::map<String, String>& pairs) {
  std::vector<StringView> left;
  for (const StringView name : fresh) {
    const StringView old = obsolete.Take(name, apart);
    if (old.empty()) {
      left.push_back(name);
    } else {
      pairs.emplace(name, old);
    }
  }
  fresh = std::move(left);
}

}  // namespace

std::map<String, String> FindRenames(const Document& newFields, const Document& deletedFields) {
  std::map<String, String> pairs;
  const auto folded = [](const Field& field) { return ToLower(field.Name()); };
  for (const auto& [name, names] : Group<String>(newFields, deletedFields, {}, folded)) {
    const size_t count = std::min(names.fresh.size(), names.obsolete.size());
    for (size_t i = 0; i < count; ++i) pairs.emplace(names.fresh[i], names.obsolete[i]);
  }
  const auto value = [](const Field& field) { return StringView(field.Value()); };
  for (auto& [same, names] : Group<StringView>(newFields, deletedFields, pairs, value)) {
    if (names.fresh.empty() || names.obsolete.empty()) continue;
    NearNames obsolete(names.obsolete);
    for (size_t apart = 1; apart <= kMostLetters; ++apart) {
      PairNear(names.fresh, obsolete, apart, pairs);
    }
  }
  return pairs;
}

}  // namespace quenmar
