#pragma once

#include <set>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "merge/FileMerge.h"

namespace quenmar {

/// The changes that the user wants in the settings and series entries of one merge or of several.
class MergeRequests {
 public:
  /// The arguments outlive the object.
  MergeRequests(const MergeArguments& arguments, const CommandContext& context)
      : arguments_(arguments), context_(context) {}

  /// Applies all requests. Throws `CommandError` for what cannot be done and when the user
  /// declines. With `--all`, requests that do not concern the file are skipped.
  void Apply(FileMerge& merge);

  /// @return the settings of the merge that `Apply` was called for last that have taken the new
  /// default and were given no other value since.
  [[nodiscard]] const std::set<String>& Taken() const { return taken_; }

  /// @return the requests that concerned no file, as the user has written them.
  [[nodiscard]] std::vector<std::string> Unmatched() const;

 private:
  using Names = std::vector<String>;

  [[nodiscard]] Names Known(const std::vector<std::string>& wanted, const Document& list,
                            const char* what);
  [[nodiscard]] bool Knows(const std::string& wanted, const String& name, const Document& list,
                           const char* what);
  void Add(FileMerge& merge);
  void Remove(FileMerge& merge);
  void TakeDefaults(FileMerge& merge);
  void SetValue(const std::string& request, FileMerge& merge);
  void Switch(const std::string& wanted, bool on, FileMerge& merge);
  void SwitchEntry(const std::string& wanted, bool on, FileMerge& merge);

  const MergeArguments& arguments_;
  const CommandContext& context_;
  std::set<std::string> matched_;
  std::set<String> taken_;
};

}  // namespace quenmar
