#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "conf/ConfText.h"
#include "conf/Layout.h"
#include "registry/Language.h"
#include "registry/Options.h"
#include "text/String.h"

namespace quenmar {

inline constexpr size_t kNoLine = std::string_view::npos;  ///< also: no name, no insertion

/// Numbers names in the order in which they come.
class NameNumbers {
 public:
  /// @param name outlives this object
  /// @return its number, a new one where it has none yet.
  size_t Number(std::string_view name) {
    return numbers_.try_emplace(name, numbers_.size()).first->second;
  }

  /// @return its number; `kNoLine` where it has none.
  [[nodiscard]] size_t Find(std::string_view name) const {
    const auto hit = numbers_.find(name);
    return hit == numbers_.end() ? kNoLine : hit->second;
  }

  [[nodiscard]] size_t Count() const { return numbers_.size(); }
  void Reserve(size_t count) { numbers_.reserve(count); }

 private:
  std::unordered_map<std::string_view, size_t> numbers_;
};

/// A setting that is to be in the file, in the bytes of the file.
struct WantedSetting {
  std::string name;
  std::string value;
  StringView text;  ///< the value as text
  StringView nameText;
  bool active;

  /// @param written a line's value, in the file's bytes
  /// @return whether it is read as the wanted value, letter for letter.
  [[nodiscard]] bool IsValue(std::string_view written, ConfCharset charset) const;

  /// @return whether it is read as the wanted value will be after a save, which may be shorter: a
  /// "//" and what follows are not part of a value.
  [[nodiscard]] bool ReadsAs(std::string_view written, ConfCharset charset) const;
};

/// A series entry that is to be in the file.
struct WantedEntry {
  std::string type;
  std::string name;
  String about;  ///< for messages
  bool on;
};

/// What a file is to contain, in the bytes of its character set.
class LayoutWishes {
 public:
  /// Throws `RuntimeError` that names what the character set lacks.
  /// @param wishes outlive this object
  LayoutWishes(const Wishes& wishes, ConfCharset charset, const Options& options,
               const Language& language);
  LayoutWishes(const LayoutWishes&) = delete;  // the numbers are keyed by views of the names
  LayoutWishes& operator=(const LayoutWishes&) = delete;
  ~LayoutWishes() = default;

  /// A setting's number in `names` is its index; further names may be numbered behind them.
  std::vector<WantedSetting> settings;
  NameNumbers names;

  /// The same for series entries, which are identified by their values.
  std::vector<WantedEntry> entries;
  NameNumbers values;
};

}  // namespace quenmar
