#include "SampleFiles.h"

#include <array>
#include <string_view>

namespace quenmar {

namespace {

constexpr std::string_view kEnd = "\r\n";

/// A name as such files have them; the order of the names is not that of the numbers.
std::string NameOf(int number) {
  static constexpr std::array<std::string_view, 8> kAreas = {
      "zone", "guild_storage", "item", "monster", "party", "trade", "login", "weather"};
  static constexpr std::array<std::string_view, 7> kWhats = {
      "rate", "limit", "delay_seconds", "allowed", "message", "maximum_level", "cost"};
  const auto index = static_cast<size_t>(number);
  std::string name(kAreas[index % kAreas.size()]);
  name.append("_").append(kWhats[index % kWhats.size()]);
  return name + "_" + std::to_string(number);
}

void AppendComments(std::string& file, int number) {
  file.append(kEnd).append("// Block ").append(std::to_string(number)).append(" of the settings.");
  file.append(kEnd).append(
      "// 0: switched off, 1: everybody,\t2: supporters only (caf\xE9, b\xFCro)");
  file.append(kEnd).append("// Takes effect at the next start of the server.").append(kEnd);
}

void AppendSetting(std::string& file, const std::string& name, const std::string& value) {
  file.append(name).append(": ").append(value).append(kEnd);
}

}  // namespace

SampleFiles MakeSampleFiles(int settings) {
  SampleFiles files;
  for (int i = 0; i < settings; ++i) {
    if (i % 10 == 0) {
      AppendComments(files.distribution, i / 10);
      AppendComments(files.server, i / 10);
    }
    const std::string value = std::to_string(i * 37 % 1000);
    const std::string ownValue = i % 3 == 0 ? value + "0 // our own" : value;
    const bool onlyDistribution = i % 40 == 7;
    const bool onlyServer = i % 40 == 27;
    if (!onlyServer) AppendSetting(files.distribution, NameOf(i), value);
    if (!onlyDistribution) AppendSetting(files.server, NameOf(i), ownValue);
    if (i % 25 == 0) {
      const std::string script = "npc/town/guard_" + std::to_string(i) + ".txt";
      AppendSetting(files.distribution, "npc", script);
      AppendSetting(files.server, i % 50 == 0 ? "npc" : "//npc", script);
    }
  }
  return files;
}

}  // namespace quenmar
