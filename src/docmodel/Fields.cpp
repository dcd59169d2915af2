#include "docmodel/Fields.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

#include "text/CaseFolding.h"

namespace quenmar {

namespace {

using Hash = std::uint16_t;

/// Takes four characters at a time: every lookup begins with it.
Hash HashOf(StringView name) {
  constexpr std::uint64_t kOddConstant = 0x9E3779B97F4A7C15U;  // 2^64 divided by the golden ratio
  constexpr size_t kAtATime = sizeof(std::uint64_t) / sizeof(char16_t);
  std::uint64_t hash = name.size();
  const auto mix = [&hash](std::uint64_t characters) {
    hash = (hash ^ characters) * kOddConstant;
    hash ^= hash >> 32U;
  };
  for (; name.size() >= kAtATime; name.remove_prefix(kAtATime)) {
    std::uint64_t characters = 0;
    std::memcpy(&characters, name.data(), sizeof characters);
    mix(characters);
  }
  for (const char16_t character : name) mix(character);
  return static_cast<Hash>(hash ^ (hash >> 16U));
}

/// As many hashes as one instruction compares.
using Lanes [[gnu::vector_size(16)]] = Hash;
constexpr size_t kLanes = sizeof(Lanes) / sizeof(Hash);

/// @return where from `start` on the first block of `kBlock` hashes begins that contains `wanted`
/// or is not complete. The hashes of a block are compared without a branch in between.
template <size_t kBlock>
size_t SkipBlocks(const std::vector<Hash>& hashes, Hash wanted, size_t start) {
  const Lanes pattern = Lanes{} + wanted;
  size_t i = start;
  for (; i + kBlock <= hashes.size(); i += kBlock) {
    Lanes hits{};
#pragma GCC unroll 32
    for (size_t k = 0; k < kBlock; k += kLanes) {
      Lanes some;
      std::memcpy(&some, hashes.data() + i + k, sizeof some);
      hits |= some == pattern;
    }
    const auto words = std::bit_cast<std::array<std::uint64_t, 2>>(hits);
    if ((words[0] | words[1]) != 0) break;
  }
  return i;
}

/// @return the first position from `start` on that is `wanted`, or the size of `hashes`.
size_t FindHash(const std::vector<Hash>& hashes, Hash wanted, size_t start) {
  size_t i = SkipBlocks<256>(hashes, wanted, start);
  i = SkipBlocks<32>(hashes, wanted, i);
  while (i < hashes.size() && hashes[i] != wanted) ++i;
  return i;
}

}  // namespace

Fields::~Fields() {
  for (const Pointer& field : elements_) field->owner_ = nullptr;
}

int Fields::IndexOf(StringView name) const {
  if (next_ < elements_.size() && elements_[next_]->isFirst_ && elements_[next_]->Name() == name) {
    return static_cast<int>(next_++);
  }
  const Hash hash = HashOf(name);
  for (size_t i = FindHash(hashes_, hash, 0); i < hashes_.size();
       i = FindHash(hashes_, hash, i + 1)) {
    if (elements_[i]->Name() != name) continue;
    elements_[i]->isFirst_ = true;
    next_ = i + 1;
    return static_cast<int>(i);
  }
  missing_ = name;
  missingHash_ = hash;
  return kNone;
}

int Fields::Find(const NameOrIndex& nameOrIndex) const {
  return nameOrIndex.IsName() ? IndexOf(nameOrIndex.Name()) : PositionOf(nameOrIndex.Index());
}

Fields::Pointer Fields::Field(const NameOrIndex& nameOrIndex) const {
  return At(Find(nameOrIndex));
}

int Fields::AddField(SharedText name, SharedText value) {
  // Grow first, then name: callers that catch a rejected name find the unnamed element in place.
  quenmar::Field& added = *elements_.emplace_back(MakeNew());
  hashes_.push_back(0);  // of an empty name
  added.owner_ = this;
  added.SetName(std::move(name));
  added.SetValue(std::move(value));
  return Count() - 1;
}

bool Fields::RemoveField(const NameOrIndex& nameOrIndex) {
  const int position = Find(nameOrIndex);
  if (position == kNone) return false;
  elements_[static_cast<size_t>(position)]->owner_ = nullptr;
  elements_.erase(elements_.begin() + position);
  hashes_.erase(hashes_.begin() + position);
  return true;
}

Fields::Pointer Fields::SearchField(StringView fieldName, bool ignoreCase) const {
  int last = kNone;
  for (int i = 0; i < Count(); ++i) {
    const StringView name = elements_[static_cast<size_t>(i)]->Name();
    if (ignoreCase ? EqualIgnoringCase(name, fieldName) : name == fieldName) last = i;
  }
  return At(last);
}

void Fields::Sort(bool ascendent) {
  SortByName(ascendent);
  StringView previous;
  for (size_t i = 0; i < elements_.size(); ++i) {
    quenmar::Field& field = *elements_[i];
    hashes_[i] = HashOf(field.Name());
    field.isFirst_ = i == 0 || field.Name() != previous;  // equal names are neighbours now
    previous = field.Name();
  }
}

void Fields::NameChanged(quenmar::Field& field) {
  // From the end: the field that was just added is the one most often named.
  const auto hit =
      std::find_if(elements_.rbegin(), elements_.rend(),
                   [&field](const Pointer& element) { return element.get() == &field; });
  const auto position = static_cast<size_t>(elements_.rend() - hit) - 1;
  const bool wasMissing = !missing_.empty() && field.Name() == missing_;
  hashes_[position] = wasMissing ? missingHash_ : HashOf(field.Name());
  // A field behind it may have had the new name before it.
  for (size_t i = position + 1; i < elements_.size(); ++i) elements_[i]->isFirst_ = false;
  field.isFirst_ = wasMissing;
  missing_.clear();
}

}  // namespace quenmar
