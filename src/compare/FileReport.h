#pragma once

#include <vector>

#include "compare/ReleaseChanges.h"
#include "conf/ConfReader.h"
#include "conf/SaveChanges.h"
#include "files/Files.h"
#include "registry/Language.h"
#include "registry/Options.h"
#include "text/String.h"

namespace quenmar {

enum class FileStatus {
  kSame,       ///< nothing is new, changed, obsolete or inactive
  kDifferent,  ///< something is new, changed, obsolete or inactive
  kNew,        ///< the server lacks the file
  kFailed,     ///< one of its versions, or an old one that was named, could not be read
};

/// A setting that only the distribution has.
struct NewSetting {
  String name;
  String value;
  bool mandatory;
};

/// A setting whose two values differ.
struct ChangedSetting {
  String name;
  String actual;
  String original;
};

/// A setting of the server: one that the distribution lacks, or a mandatory one that the server has
/// commented out.
struct ServerSetting {
  String name;
  String value;
};

struct ReportedFinding {
  Path path;  ///< of the version that it is about
  Finding finding;
  String reason;  ///< why a name was rejected, in words
};

/// The report on one configuration file in its two versions, and in a third, older one where that
/// is known. Nothing is asked and, unless repairs are wanted, nothing is written.
struct FileReport {
  String file;  ///< the name
  FileStatus status = FileStatus::kSame;
  std::vector<NewSetting> fresh;
  std::vector<ChangedSetting> changed;
  std::vector<ServerSetting> obsolete;
  std::vector<ServerSetting> inactive;
  std::vector<SeriesEntry> newSeries;
  /// Whether a save adds `newSeries`, commented out. If not, they stay new and are no work.
  bool newSeriesWait = false;
  std::vector<SeriesEntry> obsoleteSeries;

  /// These settings are also in `changed`, and these entries in `obsoleteSeries`: both compare the
  /// two present versions only.
  ReleaseChanges release;
  bool oldKnown = false;  ///< there was an old version, without which `release` is empty

  std::vector<ReportedFinding> findings;
  SaveChanges save;  ///< what a merge without any option would change in the server's file
  std::vector<String> warnings;  ///< what else to know about such a merge, or why there is none

  /// Compares two files.
  /// @param name of the file in both folders
  /// @param bareLineFeeds how bare LF line ends are read; no question is asked
  /// @param old the distribution's file as it was when the server's was saved last; the report
  ///   fails where the user has named it and it cannot be read
  [[nodiscard]] static FileReport Of(const Path& distributionFolder, const Path& serverFolder,
                                     const Path& name, const Options& options,
                                     const Language& language,
                                     ConfReader::BareLineFeeds bareLineFeeds,
                                     const OldFile& old = {});

  [[nodiscard]] bool HasDifferences() const;

  /// @return how many of the new settings are mandatory.
  [[nodiscard]] size_t MandatoryCount() const;

  /// @return whether the user has something to do: something is new, obsolete, commented out
  /// although mandatory, or changed by the release, or a version has errors. Own values, own series
  /// entries, line feeds and character sets do not count.
  [[nodiscard]] bool NeedsWork() const;

  /// @return the findings about both versions, each in a few words and once, then `warnings`.
  [[nodiscard]] std::vector<String> Remarks(const Language& language) const;

  /// @return how many of the defaults that the release has changed are of a kind.
  [[nodiscard]] size_t DefaultCount(DefaultChange::Kind kind) const;
};

}  // namespace quenmar
