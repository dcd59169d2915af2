#pragma once

#include <set>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "merge/FileMerge.h"

namespace quenmar {

/// What the user asks of the settings and series entries of one merge or of many.
class MergeRequests {
 public:
  /// The arguments outlive the object.
  MergeRequests(const MergeArguments& arguments, const CommandContext& context)
      : arguments_(arguments), context_(context) {}

  /// Applies all requests. Throws `CommandError` for what cannot be done and when the user
  /// declines. Of many files, each does what concerns it.
  void Apply(FileMerge& merge);

  /// @return the settings of the merge that `Apply` was called for last that have taken the new
  /// default and were given no other value since.
  [[nodiscard]] const std::set<String>& Taken() const { return taken_; }

  /// @return what was asked for and concerned no file, each as the user has written it.
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
  std::set<String> taken_;  // see `Taken`
};

}  // namespace quenmar
