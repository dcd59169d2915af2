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
  kDifferent,  ///< something is new, changed or obsolete
  kNew,        ///< the server lacks the file
  kFailed,     ///< it could not be read, or the user declined to go on reading it
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

struct FileReport {
  String file;
  FileStatus status = FileStatus::kSame;
  std::vector<FreshSetting> fresh;
  std::vector<ChangedSetting> changed;
  std::vector<ObsoleteSetting> obsolete;
  std::vector<SeriesEntry> freshSeries;
  std::vector<SeriesEntry> obsoleteSeries;

  [[nodiscard]] bool HasDifferences() const;
  [[nodiscard]] size_t MandatoryCount() const;
};

/// @return type and name of every entry of a series tree.
[[nodiscard]] std::vector<SeriesEntry> SeriesEntriesOf(const Document& series);

/// @return the report as an object: `{"file","status","new","obsolete","changed","series"}`.
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
};

}  // namespace quenmar
