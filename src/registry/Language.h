#pragma once

#include <array>

#include "registry/Registry.h"
#include "text/String.h"

namespace quenmar {

/// The keys of the message table. They are the names of its values in the registry, too. The first
/// 48 are those that translations have known from the start.
enum MessageKey : int {
  LNG1 = 1,
  LNG2,
  LNG3,
  LNG4,
  LNG5,
  LNG6,
  LNG7,
  LNG8,
  LNG9,
  LNG10,
  LNG11,
  LNG12,
  LNG13,
  LNG14,
  LNG15,
  LNG16,
  LNG17,
  LNG18,
  LNG19,
  LNG20,
  LNG21,
  LNG22,
  LNG23,
  LNG24,
  LNG25,
  LNG26,
  LNG27,
  LNG28,
  LNG29,
  LNG30,
  LNG31,
  LNG32,
  LNG33,
  LNG34,
  LNG35,
  LNG36,
  LNG37,
  LNG38,
  LNG39,
  LNG40,
  LNG41,
  LNG42,
  LNG43,
  LNG44,
  LNG45,
  LNG46,
  LNG47,
  LNG48,
  LNG49,
  LNG50,
  LNG51,
  LNG52,
  LNG53,
  LNG54,
  LNG55,
  LNG56,
  LNG57,
  LNG58,
  LNG59,
  LNG60,
  LNG61,
  LNG62,
  LNG63,
  LNG64,
  LNG65,
  kLastMessage = LNG65
};

/// Every caption and message that the user sees, so that a translation needs no new build.
///
/// The texts may hold the placeholders %1 and %2, and a backslash followed by n for a line break.
class Language {
 public:
  /// The built-in English texts.
  Language();

  /// @return the built-in texts, each replaced by the string value of its name in the registry, an
  /// empty one included. Nothing is written.
  [[nodiscard]] static Language LoadLanguage(const Registry& registry);

  [[nodiscard]] const String& Text(MessageKey key) const;

 private:
  std::array<String, kLastMessage> texts_;
};

}  // namespace quenmar
