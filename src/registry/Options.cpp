#include "registry/Options.h"

namespace quenmar {

namespace {

constexpr StringView kSvnPath = u"SVNPath";
constexpr StringView kServerPath = u"ServerPath";
constexpr StringView kSort = u"Sort";
constexpr StringView kSeries = u"Series";
constexpr StringView kSaveCommentedSeries = u"SaveCommentedSeries";
constexpr StringView kAlwaysIgnoreDupParam = u"AlwaysIgnoreDupParam";

constexpr auto kRoot = RegistryRoot::kLocalMachine;
constexpr StringView kKey = u"Software\\Quenmar\\Options";

String Read(const Registry& registry, StringView name, StringView defaultText = {}) {
  return registry.RegReadString(kRoot, kKey, name, defaultText);
}

bool Write(Registry& registry, StringView name, StringView value) {
  return registry.RegWriteString(kRoot, kKey, name, value);
}

/// @return the stored boolean; `defaultValue`, which is then stored, when there is none.
bool ReadOrStore(Registry& registry, StringView name, bool defaultValue) {
  const String text = Read(registry, name);
  if (!text.empty()) return text == u"1";
  Write(registry, name, defaultValue ? u"1" : u"0");
  return defaultValue;
}

}  // namespace

Options LoadOptions(Registry& registry) {
  Options options;
  options.svnPath = Read(registry, kSvnPath);
  options.serverPath = Read(registry, kServerPath);
  options.sort = ToInteger(Read(registry, kSort, u"0"));
  const String series = Read(registry, kSeries);
  options.saveCommentedSeries =
      ReadOrStore(registry, kSaveCommentedSeries, options.saveCommentedSeries);
  options.alwaysIgnoreDupParam =
      ReadOrStore(registry, kAlwaysIgnoreDupParam, options.alwaysIgnoreDupParam);
  if (series.empty()) {
    Write(registry, kSeries, options.series);
  } else {
    options.series = series;
  }
  return options;
}

bool StoreSvnPath(Registry& registry, StringView path) { return Write(registry, kSvnPath, path); }

bool StoreServerPath(Registry& registry, StringView path) {
  return Write(registry, kServerPath, path);
}

bool StoreSort(Registry& registry, int sort) { return Write(registry, kSort, ToText(sort)); }

}  // namespace quenmar
