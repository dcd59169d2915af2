/// What `check` finds in one file and in sum, and how it is shown to a person and to a program.
#pragma once

#include <iosfwd>
#include <vector>

#include "cli/Console.h"
#include "cli/TreeJson.h"
#include "text/String.h"

namespace quenmar {

enum class FileStatus {
  kSame,       ///< nothing to tell
  kDifferent,  ///< something is new, changed, obsolete or inactive
  kNew,        ///< the server lacks the file
  kFailed,     ///< one of its versions could not be read
};

struct FreshSetting {
  String name;
  String value;
  bool mandatory;
};

struct ChangedSetting {
  String name;
  String actual;
  String original;
};

struct ObsoleteSetting {
  String name;
  String value;
};

struct SeriesEntry {
  String type;
  String name;
};

/// A mandatory setting that the server has commented out.
struct InactiveSetting {
  String name;
  String value;
};

/// Something in one of the two versions, or about the file as a whole, that is worth telling.
struct FileFinding {
  const char* kind;  ///< "error", "line-feed", "duplicate", "name", "charset", "bytes" or "save"
  String path;       ///< of the version that it is about; empty for what a save would change
  int line;          ///< counted from 1; 0 for the file as a whole
  String text;
};

struct FileReport {
  String file;
  FileStatus status = FileStatus::kSame;
  std::vector<FreshSetting> fresh;
  std::vector<ChangedSetting> changed;
  std::vector<ObsoleteSetting> obsolete;
  std::vector<SeriesEntry> freshSeries;
  std::vector<SeriesEntry> obsoleteSeries;
  std::vector<InactiveSetting> inactive;
  std::vector<FileFinding> findings;

  [[nodiscard]] bool HasDifferences() const;
  [[nodiscard]] size_t MandatoryCount() const;
};

/// @return type and name of every entry of a series tree.
[[nodiscard]] std::vector<SeriesEntry> SeriesEntriesOf(const Document& series);

/// @return the report as an object: `{"file","status","new","obsolete","changed","inactive",
/// "series","findings"}`.
[[nodiscard]] Json ReportJson(const FileReport& report);

/// Prints the counts and then a line for each name.
void PrintReport(const FileReport& report, std::ostream& out, bool colours);

/// The sum over all files.
class CheckReport {
 public:
  void Count(const FileReport& report);
  void Print(std::ostream& out) const;
  [[nodiscard]] ExitStatus Status() const;

 private:
  size_t files_ = 0;
  size_t different_ = 0;
  size_t lacking_ = 0;
  size_t failed_ = 0;
  size_t fresh_ = 0;
  size_t mandatory_ = 0;
  size_t changed_ = 0;
  size_t obsolete_ = 0;
  size_t inactive_ = 0;
};

}  // namespace quenmar
