#include "conf/LayoutWishes.h"

#include <utility>

#include "conf/ConfLine.h"
#include "conf/Functions.h"
#include "docmodel/XmlText.h"

namespace quenmar {

namespace {

/// @return the value as a `Field` has it: its entity forms are folded.
String ValueText(std::string_view written, ConfCharset charset) {
  String text = DecodeConfText(written, charset);
  return XmlUnescape(XmlEscape(text));
}

}  // namespace

bool WantedSetting::IsValue(std::string_view written, ConfCharset charset) const {
  if (written.find('&') == std::string_view::npos) return written == value;
  return ValueText(written, charset) == text;
}

bool WantedSetting::ReadsAs(std::string_view written, ConfCharset charset) const {
  return IsValue(written, charset) || ValueText(written, charset) == ReadBackValue(text);
}

LayoutWishes::LayoutWishes(const Wishes& wishes, ConfCharset charset, const Options& options,
                           const Language& language) {
  const auto encoded = [&](StringView text, StringView about) {
    return EncodeForSaving(text, about, charset, language);
  };
  // The names must not move any more.
  settings.reserve(wishes.settings.size());
  names.Reserve(wishes.settings.size());
  for (const Wishes::Setting& wish : wishes.settings) {
    // A commented-out "note" or "example" is comment text, so these two are always active.
    settings.push_back({encoded(wish.name, wish.name), encoded(wish.value, wish.name), wish.value,
                        wish.name, wish.active || IsNoteName(wish.name)});
    if (names.Number(settings.back().name) + 1 != settings.size()) settings.pop_back();
  }
  entries.reserve(wishes.entries.size());
  values.Reserve(wishes.entries.size());
  for (const Wishes::Entry& wish : wishes.entries) {
    if (wish.name.empty()) continue;  // another entry without a value would be the same
    // The file lacks an entry that cannot be encoded, and gets none that is not to be written.
    const bool written = wish.on || options.saveCommentedSeries;
    if (!written && !EncodeConfText(wish.name, charset)) continue;
    String about = wish.type + u": " + wish.name;
    std::string type = encoded(wish.type, about);
    std::string name = encoded(wish.name, about);
    entries.push_back({std::move(type), std::move(name), std::move(about), wish.on});
    if (values.Number(entries.back().name) + 1 != entries.size()) entries.pop_back();
  }
}

}  // namespace quenmar
