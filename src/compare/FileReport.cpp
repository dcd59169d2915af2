#include "compare/FileReport.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

#include "compare/ChangeComparison.h"
#include "conf/ConfSetting.h"
#include "conf/Functions.h"
#include "conf/NoUser.h"
#include "conf/SavePlan.h"

namespace quenmar {

namespace {

/// One version of a file.
struct Version {
  std::shared_ptr<Document> settings = std::make_shared<Document>();
  std::shared_ptr<Document> series = std::make_shared<Document>();
  ConfNotes notes;
};

std::vector<SeriesEntry> EntriesOf(const Document& series) {
  std::vector<SeriesEntry> entries;
  for (const Field& entry : series.Fields()) {
    entries.push_back({String(TypeOf(entry)), String(entry.Name())});
  }
  return entries;
}

/// Compares the two versions of one file.
class Examination {
 public:
  Examination(const Options& options, const Language& language,
              ConfReader::BareLineFeeds bareLineFeeds)
      : options_(options), language_(language), bareLineFeeds_(bareLineFeeds) {}

  FileReport Run(const Path& distributionFile, const Path& serverFile, const OldFile& old) {
    const bool lacking = IsMissing(serverFile);
    const bool first = Read(distributionFile, distribution_);
    const bool second = lacking || Read(serverFile, server_);
    if (!first || !second || !ReadOldVersion(old)) {
      report_.status = FileStatus::kFailed;
      return std::move(report_);
    }
    Compare();
    if (lacking) {
      report_.status = FileStatus::kNew;
    } else {
      if (report_.HasDifferences()) report_.status = FileStatus::kDifferent;
      ListWhatASaveChanges();
    }
    return std::move(report_);
  }

 private:
  bool Read(const Path& path, Version& version) {
    NoUser nobody;
    const ConfReader reader(options_, language_, nobody, bareLineFeeds_,
                            ConfReader::Comments::kLeftOut);
    ConfNotes& notes = version.notes;
    const bool complete = reader.LoadConfFile(path, version.settings, version.series, &notes);
    for (const Finding& finding : notes.findings) {
      report_.findings.push_back({path, finding, notes.reason});
    }
    if (!complete && notes.errorLine == 0) {
      report_.findings.push_back({path, {0, Finding::Kind::kUnreadable, notes.reason}, {}});
    }
    return complete;
  }

  /// @return false where it is needed and cannot be read.
  bool ReadOldVersion(const OldFile& found) {
    ConfNotes notes;
    old_ = OldVersion::Read(found, options_, language_, notes);
    report_.oldKnown = old_.has_value();
    if (notes.reason.empty()) return true;
    const Finding whole{0, Finding::Kind::kUnreadable, notes.reason};
    report_.findings.push_back(
        {found.path, notes.errorLine > 0 ? notes.findings.back() : whole, notes.reason});
    return !found.named;
  }

  void Compare() {
    comparison_.emplace(ConfDocuments{distribution_.settings, server_.settings,
                                      distribution_.series, server_.series},
                        options_.IsSorted(options_.layout));
    comparison_->FillResultTrees();
    for (const Field& field : comparison_->NewFields().Fields()) {
      const bool mandatory = comparison_->IsMandatory(field.Name());
      report_.fresh.push_back({String(field.Name()), String(field.Value()), mandatory});
    }
    for (const Field& field : comparison_->DeletedFields().Fields()) {
      report_.obsolete.push_back({String(field.Name()), String(field.Value())});
    }
    report_.newSeries = EntriesOf(comparison_->NewSeries());
    report_.newSeriesWait = options_.saveCommentedSeries && !report_.newSeries.empty();
    report_.obsoleteSeries = EntriesOf(comparison_->DeletedSeries());
    ListKept();
    if (!old_) return;
    report_.release = FindReleaseChanges(*old_, {*distribution_.settings, *distribution_.series},
                                         {comparison_->ActualFields(), *server_.series});
  }

  void ListKept() {
    std::set<StringView> seen;
    for (const Field& field : comparison_->ActualFields().Fields()) {
      const StringView name = field.Name();
      const auto original = distribution_.settings->Fields().Field(name);
      if (field.Value() != original->Value()) {
        report_.changed.push_back({String(name), String(field.Value()), String(original->Value())});
      }
      if (!seen.insert(name).second || !comparison_->IsMandatory(name)) continue;
      if (!IsActiveOnServer(name)) {
        report_.inactive.push_back({String(name), String(field.Value())});
      }
    }
  }

  [[nodiscard]] bool IsActiveOnServer(StringView name) const {
    const int index = server_.settings->Fields().IndexOf(name);
    return server_.notes.active.at(static_cast<size_t>(index)) != 0;
  }

  /// What a merge without any option would change in the server's file.
  void ListWhatASaveChanges() {
    const SeriesGroups groups = SeriesGroups::OfBoth(*distribution_.series, *server_.series);
    if (groups.TooMany()) {
      report_.warnings.push_back(language_.Text(Message::kTooManySeries));
      return;
    }
    try {
      const SavePlan plan =
          SavePlan::Of({options_.layout, distribution_.notes.file, server_.notes.file,
                        *distribution_.settings, comparison_->ActualFields(), groups,
                        [this](StringView name) { return IsActiveOnServer(name); }},
                       server_.notes.file, options_, language_);
      report_.save = plan.changes;
      if (!plan.warnings.charset.empty()) report_.warnings.push_back(plan.warnings.charset);
    } catch (const RuntimeError& error) {
      report_.warnings.push_back(error.Description());
    }
  }

  const Options& options_;
  const Language& language_;
  ConfReader::BareLineFeeds bareLineFeeds_;
  Version distribution_;
  Version server_;
  std::optional<OldVersion> old_;
  std::optional<ChangeComparison> comparison_;
  FileReport report_;
};

/// Adds a text to a list that does not have it.
void AddOnce(std::vector<String>& list, const String& text) {
  if (std::find(list.begin(), list.end(), text) == list.end()) list.push_back(text);
}

String Joined(const std::vector<String>& words) {
  String joined;
  for (const String& word : words) joined += (joined.empty() ? u"" : u", ") + word;
  return joined;
}

/// @return the finding in a few words; a duplicate's are its name.
String Words(const ReportedFinding& reported, const Language& language) {
  switch (reported.finding.kind) {
    case Finding::Kind::kBareLineFeed:
      return language.Text(Message::kRemarkLineEnds);
    case Finding::Kind::kUtf8:
      return language.Text(Message::kRemarkCharset);
    case Finding::Kind::kNoText:
      return language.Text(Message::kRemarkBytes);
    case Finding::Kind::kRejectedName:
      return reported.reason + u": " + reported.finding.text;
    case Finding::Kind::kDuplicate:
    case Finding::Kind::kUnreadable:
      break;
  }
  return reported.finding.text;
}

}  // namespace

FileReport FileReport::Of(const Path& distributionFolder, const Path& serverFolder,
                          const Path& name, const Options& options, const Language& language,
                          ConfReader::BareLineFeeds bareLineFeeds, const OldFile& old) {
  FileReport report = Examination(options, language, bareLineFeeds)
                          .Run(distributionFolder / name, serverFolder / name, old);
  report.file = PathText(name);
  return report;
}

bool FileReport::HasDifferences() const {
  return !fresh.empty() || !changed.empty() || !obsolete.empty() || !newSeries.empty() ||
         !obsoleteSeries.empty() || !inactive.empty();
}

size_t FileReport::MandatoryCount() const {
  return static_cast<size_t>(std::count_if(
      fresh.begin(), fresh.end(), [](const NewSetting& setting) { return setting.mandatory; }));
}

bool FileReport::NeedsWork() const {
  const bool toMend =
      std::any_of(findings.begin(), findings.end(), [](const ReportedFinding& reported) {
        const Finding::Kind kind = reported.finding.kind;
        return kind == Finding::Kind::kDuplicate || kind == Finding::Kind::kNoText;
      });
  return status == FileStatus::kNew || status == FileStatus::kFailed || toMend || !fresh.empty() ||
         !obsolete.empty() || !inactive.empty() || newSeriesWait || !release.Empty();
}

std::vector<String> FileReport::Remarks(const Language& language) const {
  std::vector<String> remarks;
  std::vector<String> duplicates;
  for (const ReportedFinding& reported : findings) {
    const bool duplicate = reported.finding.kind == Finding::Kind::kDuplicate;
    AddOnce(duplicate ? duplicates : remarks, Words(reported, language));
  }
  if (!duplicates.empty()) {
    remarks.push_back(
        FinishedText(language.Text(Message::kRemarkDuplicates), {Joined(duplicates)}));
  }
  for (const String& warning : warnings) AddOnce(remarks, warning);
  return remarks;
}

size_t FileReport::DefaultCount(DefaultChange::Kind kind) const {
  return static_cast<size_t>(
      std::count_if(release.defaults.begin(), release.defaults.end(),
                    [kind](const DefaultChange& change) { return change.kind == kind; }));
}

}  // namespace quenmar
