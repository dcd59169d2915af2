/// The commands of the console program. Each gets its parsed arguments and a `CommandContext`, and
/// returns the exit status. `EndApplication` and `FileError` are left to the caller.
#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "cli/Console.h"
#include "cli/TerminalMessages.h"
#include "conf/ConfReader.h"
#include "files/Files.h"
#include "merge/SeenFiles.h"
#include "registry/Language.h"
#include "registry/Options.h"

namespace quenmar {

/// What every command works with.
struct CommandContext {
  const ConsoleStreams& streams;
  const Options& options;
  const Language& language;
  TerminalMessages& messages;
  SeenFiles& seen;           ///< the old distribution's files
  bool fixLineEnds = false;  ///< reading repairs bare LF line ends in the file

  /// @param mayRepair false where nothing may be written: a repair then happens in memory
  [[nodiscard]] ConfReader::BareLineFeeds BareLineFeeds(bool mayRepair = true) const;

  /// Passes on trees that the command has finished with; see `ConsoleStreams::leftovers`.
  void Leave(std::shared_ptr<const void> trees) const {
    if (streams.leftovers != nullptr) streams.leftovers->push_back(std::move(trees));
  }
};

/// Why nothing is merged when the user answers No.
inline constexpr const char* kDeclined = "declined, the file was not saved";

/// Something the user asked for cannot be done; `what` is the sentence to show.
class CommandError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct CheckArguments {
  Path distribution;
  Path server;
  std::vector<std::string> files;  ///< names; all of the distribution's when empty
  bool json = false;
  std::optional<Path> base;  ///< folder of the old distribution's files
};
int RunCheck(const CheckArguments& arguments, const CommandContext& context);

struct CompareArguments {
  Path distribution;
  Path server;
  bool sort = false;
};
int RunCompare(const CompareArguments& arguments, const CommandContext& context);

struct DumpArguments {
  Path file;
  std::string xml;  ///< "settings", "series", or empty for JSON
};
int RunDump(const DumpArguments& arguments, const CommandContext& context);

struct MergeArguments {
  Path distribution;
  Path server;
  std::string file;  ///< a name; empty with `all`
  std::vector<std::string> restore;
  std::vector<std::string> add;
  std::vector<std::string> remove;
  std::vector<std::string> set;        ///< NAME=VALUE
  std::vector<std::string> switchOn;   ///< NAME or TYPE:VALUE
  std::vector<std::string> switchOff;  ///< likewise
  std::optional<std::string> output;   ///< another file than the server's; "-" is `out`
  std::optional<Path> base;            ///< folder of the old distribution's files
  std::optional<Layout> layout;        ///< the stored one when nothing is given
  bool all = false;                    ///< every file of the distribution
  bool restoreAll = false;
  bool addMandatory = false;
  bool addAll = false;
  bool takeDefaults = false;
  bool dryRun = false;
};
int RunMerge(const MergeArguments& arguments, const CommandContext& context);

/// Reads a file; bare LF line ends end lines, unless they are to be repaired.
/// @param notes receives the findings, if not null
/// @return whether the file was read to its end.
[[nodiscard]] bool ReadConfFile(const Path& file, std::shared_ptr<Document>& settings,
                                std::shared_ptr<Document>& series, const CommandContext& context,
                                ConfReader::Comments comments, ConfNotes* notes = nullptr);

/// @return the names of the distribution's files, sorted. Throws `CommandError` when there are
/// none.
[[nodiscard]] std::vector<Path> DistributionFiles(const Path& distribution);

/// @return the path of `file` in `folder`. Throws `CommandError` when `file` is not a name
/// without a folder.
[[nodiscard]] Path FileIn(const Path& folder, const Path& file);

/// Throws `CommandError` unless `folder` is one.
void RequireFolder(const Path& folder);

/// @return the path that an argument names.
[[nodiscard]] Path ArgumentPath(const std::string& argument);

}  // namespace quenmar
