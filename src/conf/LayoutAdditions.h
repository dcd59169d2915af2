#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "conf/ConfFile.h"
#include "conf/LayoutBase.h"
#include "conf/LayoutWishes.h"
#include "registry/Language.h"
#include "registry/Options.h"

namespace quenmar {

/// New lines at one place of the base.
struct Insertion {
  /// Where several come before the same line, they come in this order.
  enum class Kind {
    kLines,            ///< directly behind the line before
    kParagraph,        ///< separated by a blank line above
    kParagraphBefore,  ///< separated by a blank line below
    kAtEnd,            ///< lines of a type that the base lacks
  };

  size_t line;  ///< of the base, which they come before
  Kind kind;
  std::vector<std::string> lines;
};

/// What the base lacks, taken from the other text, and where it is inserted.
///
/// Only lines that stay are places: nothing is inserted behind a setting that is removed, or before
/// a paragraph whose settings are all removed. New paragraphs behind the same paragraph of the base
/// keep the order of the other text. At the end, settings come before series entries.
class LayoutAdditions {
 public:
  /// What the additions depend on. All references outlive them.
  struct Context {
    const LayoutBase& base;
    const LayoutWishes& wishes;
    ConfCharset charset;  ///< in which the file will be saved
    const Options& options;
    const Language& language;
  };

  /// @param other outlives this object
  LayoutAdditions(const Context& context, const ConfFile& other)
      : context_(context), other_(other) {}

  /// Throws `RuntimeError` that names what the character set lacks.
  /// @return what is to be inserted, in the order of the base's lines.
  [[nodiscard]] std::vector<Insertion> List();

 private:
  /// A wanted setting or series entry in the other text.
  struct Origin {
    size_t line = kNoLine;
    size_t last = kNoLine;
    bool active = false;
  };

  /// A setting behind which another one goes: one of the base, or one that was added.
  struct Anchor {
    size_t baseLine = kNoLine;
    size_t insertion = kNoLine;
  };

  [[nodiscard]] bool LacksSettings() const;
  [[nodiscard]] bool IsToBeAdded(size_t entry) const;
  [[nodiscard]] bool LacksEntries() const;
  void FindOrigins();
  [[nodiscard]] size_t NumberOf(const ConfLine& line) const;
  void PrepareParagraphs();
  void AddSettings();
  void AddSetting(size_t setting, size_t line, Anchor& anchor);
  void PlaceLine(std::string bytes, Anchor& anchor);
  void PlaceParagraph(std::vector<std::string> lines, Anchor& anchor);
  void AddEntries();
  [[nodiscard]] std::string SettingLine(size_t setting, size_t line) const;
  [[nodiscard]] std::string EntryLine(size_t entry) const;
  [[nodiscard]] std::string TypeOf(size_t entry) const;
  [[nodiscard]] ConfLine Parsed(const std::string& bytes) const;
  [[nodiscard]] std::string Brought(std::string_view bytes, StringView about) const;
  [[nodiscard]] std::optional<std::string> Encoded(std::string_view bytes) const;
  [[nodiscard]] bool IsInCharset() const;
  size_t Insert(size_t line, Insertion::Kind kind, std::vector<std::string> lines);

  Context context_;
  const ConfFile& other_;
  std::vector<ConfLine> lines_;  // of the other text
  std::vector<size_t> numbers_;  // of the wanted setting or entry that each line has
  std::vector<Origin> settings_;
  std::vector<Origin> entries_;
  std::vector<size_t> paragraphEnds_;  // for each line of the base: the line behind its paragraph
  size_t firstParagraph_ = kNoLine;    // of the base, with a setting that stays
  std::vector<Insertion> insertions_;
};

}  // namespace quenmar
