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

/// A blank line and a comment line.
void AppendComment(std::string& file, int number) {
  file.append(kEnd).append("// ").append(std::to_string(number));
  file.append(": 0 is off, 1 is on,\t2 for supporters only (caf\xE9).").append(kEnd);
}

void AppendSetting(std::string& file, const std::string& name, const std::string& value) {
  file.append(name).append(": ").append(value).append(kEnd);
}

}  // namespace

SampleFiles MakeSampleFiles(int settings) {
  SampleFiles files;
  for (int i = 0; i < settings; ++i) {
    const std::string value = std::to_string(i * 37 % 1000);
    const bool onlyDistribution = i % 40 == 7;
    const bool onlyServer = i % 40 == 27;
    if (!onlyServer) {
      AppendComment(files.distribution, i);
      AppendSetting(files.distribution, NameOf(i), value);
    }
    if (!onlyDistribution) {
      if (!onlyServer && i % 25 != 24) AppendComment(files.server, i);
      std::string ours = value;
      if (i % 3 == 0) ours += '0';
      if (i % 15 == 0) ours += " // our own";
      AppendSetting(files.server, NameOf(i), ours);
    }
    if (i % 25 == 0) {
      const std::string script = "npc/town/guard_" + std::to_string(i) + ".txt";
      AppendSetting(files.distribution, "npc", script);
      AppendSetting(files.server, i % 50 == 0 ? "npc" : "//npc", script);
    }
  }
  return files;
}

}  // namespace quenmar
