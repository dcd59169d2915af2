#pragma once

#include <vector>

#include "conf/ConfFile.h"
#include "conf/LayoutWishes.h"

namespace quenmar {

/// The lines of a base text, and what happens to each. First the settings and series entries that
/// it has get their wanted values and states; then what is not wanted goes.
class LayoutBase {
 public:
  /// The arguments outlive this object.
  /// @param wishes get numbers for the names that only the base has
  /// @param charset in which the file will be saved
  LayoutBase(const ConfFile& file, LayoutWishes& wishes, StringView series, ConfCharset charset);

  /// Decides what happens to each line.
  void Decide();

  [[nodiscard]] const std::vector<ConfLine>& Lines() const { return lines_; }

  /// @return the last line of a wanted setting; `kNoLine` when the base lacks it.
  [[nodiscard]] size_t LastLineOf(size_t setting) const { return settings_[setting].last; }

  [[nodiscard]] bool HasEntry(size_t entry) const { return entries_[entry].first != kNoLine; }

  [[nodiscard]] bool IsRemoved(size_t line) const { return fates_[line].removed; }

  [[nodiscard]] bool IsChanged(size_t line) const {
    return fates_[line].value != nullptr || fates_[line].active == lines_[line].commented;
  }

  /// @return a changed line.
  [[nodiscard]] std::string ChangedLine(size_t line) const;

 private:
  struct Fate {
    bool removed = false;
    bool active = false;                 // of a setting or series entry, afterwards
    const std::string* value = nullptr;  // which the line gets; none when it keeps its own
    size_t name = kNoLine;               // the number of its setting or series entry
    size_t next = kNoLine;
  };

  /// The lines of one setting or series entry.
  struct NameLines {
    size_t first = kNoLine;
    size_t last = kNoLine;
    bool active = false;
  };

  void Number();
  void Append(std::vector<NameLines>& all, size_t line);
  [[nodiscard]] std::vector<size_t> ValueLines() const;
  void ChangeSettings();
  void Switch(const NameLines& lines, bool active);
  void GiveValue(size_t line, const WantedSetting& wanted);
  void SwitchEntries();
  void RemoveUnwanted();
  void RemoveComments();
  void RemoveBlankLines();
  void CorrectValues();

  /// Calls `take` with every line of a setting or series entry.
  template <class Take>
  void ForEach(const NameLines& lines, Take take) {
    for (size_t line = lines.first; line != kNoLine; line = fates_[line].next) take(line);
  }

  LayoutWishes& wishes_;
  ConfCharset charset_;
  std::vector<ConfLine> lines_;
  std::vector<Fate> fates_;
  std::vector<NameLines> settings_;
  std::vector<NameLines> entries_;
};

}  // namespace quenmar
