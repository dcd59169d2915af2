#include "registry/Options.h"

#include <algorithm>
#include <array>

namespace quenmar {

namespace {

constexpr StringView kSvnPath = u"SVNPath";
constexpr StringView kServerPath = u"ServerPath";
constexpr StringView kSort = u"Sort";
constexpr StringView kSeries = u"Series";
constexpr StringView kSaveCommentedSeries = u"SaveCommentedSeries";
constexpr StringView kAlwaysIgnoreDupParam = u"AlwaysIgnoreDupParam";

constexpr StringView kLayout = u"Layout";

constexpr std::array<StringView, 3> kLayoutNames = {u"settings", u"server", u"distribution"};

constexpr auto kRoot = RegistryRoot::kLocalMachine;
constexpr StringView kOptionsKey = u"Software\\Quenmar\\Options";

String Read(const Registry& registry, StringView name, StringView defaultText = {}) {
  return registry.RegReadString(kRoot, kOptionsKey, name, defaultText);
}

bool Write(Registry& registry, StringView name, StringView value) {
  return registry.RegWriteString(kRoot, kOptionsKey, name, value);
}

/// @return the stored boolean; `defaultValue` when there is none.
bool ReadBoolean(const Registry& registry, StringView name, bool defaultValue) {
  const String text = Read(registry, name);
  return text.empty() ? defaultValue : text == u"1";
}

void StoreIfMissing(Registry& registry, StringView name, StringView value) {
  if (Read(registry, name).empty()) Write(registry, name, value);
}

}  // namespace

std::optional<Layout> LayoutNamed(StringView name) {
  const auto* const hit = std::find(kLayoutNames.begin(), kLayoutNames.end(), name);
  if (hit == kLayoutNames.end()) return std::nullopt;
  return static_cast<Layout>(hit - kLayoutNames.begin());
}

StringView NameOf(Layout layout) { return kLayoutNames.at(static_cast<size_t>(layout)); }

Options ReadOptions(const Registry& registry) {
  Options options;
  options.svnPath = Read(registry, kSvnPath);
  options.serverPath = Read(registry, kServerPath);
  options.sort = ToInteger(Read(registry, kSort, u"0"));
  const String series = Read(registry, kSeries);
  if (!series.empty()) options.series = series;
  options.saveCommentedSeries =
      ReadBoolean(registry, kSaveCommentedSeries, options.saveCommentedSeries);
  options.alwaysIgnoreDupParam =
      ReadBoolean(registry, kAlwaysIgnoreDupParam, options.alwaysIgnoreDupParam);
  options.layout = LayoutNamed(Read(registry, kLayout)).value_or(Layout::kSettings);
  return options;
}

Options LoadOptions(Registry& registry) {
  const Options defaults;
  StoreIfMissing(registry, kSaveCommentedSeries, defaults.saveCommentedSeries ? u"1" : u"0");
  StoreIfMissing(registry, kAlwaysIgnoreDupParam, defaults.alwaysIgnoreDupParam ? u"1" : u"0");
  StoreIfMissing(registry, kSeries, defaults.series);
  return ReadOptions(registry);
}

bool StoreSvnPath(Registry& registry, StringView path) { return Write(registry, kSvnPath, path); }

bool StoreServerPath(Registry& registry, StringView path) {
  return Write(registry, kServerPath, path);
}

bool StoreSort(Registry& registry, int sort) { return Write(registry, kSort, ToText(sort)); }

bool StoreLayout(Registry& registry, Layout layout) {
  return Write(registry, kLayout, NameOf(layout));
}

}  // namespace quenmar
