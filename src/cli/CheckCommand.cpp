#include <algorithm>
#include <optional>
#include <ostream>
#include <utility>

#include "cli/ChangesText.h"
#include "cli/CheckReport.h"
#include "cli/Commands.h"
#include "compare/ChangeComparison.h"
#include "conf/ConfFolder.h"
#include "conf/ConfWriter.h"
#include "conf/SaveChanges.h"
#include "conf/SaveWarnings.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

std::vector<Path> FilesToCheck(const CheckArguments& arguments) {
  std::vector<Path> files;
  for (const std::string& file : arguments.files) files.push_back(ArgumentPath(file));
  if (!files.empty()) return files;
  String trouble;
  files = ListConfFiles(arguments.distribution, trouble);
  if (files.empty() && trouble.empty()) trouble = u"no .conf file in it";
  if (!trouble.empty()) {
    throw CommandTrouble(ToUtf8(PathText(arguments.distribution) + u": " + trouble));
  }
  std::sort(files.begin(), files.end());
  return files;
}

void Summarize(const ChangeComparison& comparison, const Document& distribution,
               FileReport& report) {
  const Fields& fresh = comparison.NewFields().Fields();
  for (int i = 0; i < fresh.Count(); ++i) {
    const auto field = fresh.Field(i);
    const bool mandatory = comparison.IsMandatory(field->Name());
    report.fresh.push_back({field->Name(), field->Value(), mandatory});
  }
  const Fields& actual = comparison.ActualFields().Fields();
  for (int i = 0; i < actual.Count(); ++i) {
    const auto field = actual.Field(i);
    const String original = distribution.Fields().Field(field->Name())->Value();
    const String value = field->Value();
    if (value != original) report.changed.push_back({field->Name(), value, original});
  }
  const Fields& obsolete = comparison.DeletedFields().Fields();
  for (int i = 0; i < obsolete.Count(); ++i) {
    const auto field = obsolete.Field(i);
    report.obsolete.push_back({field->Name(), field->Value()});
  }
  report.freshSeries = SeriesEntriesOf(comparison.NewSeries());
  report.obsoleteSeries = SeriesEntriesOf(comparison.DeletedSeries());
}

/// Takes part in reading without a user: duplicates are accepted, and everything is told in the
/// report instead.
class NoUser final : public MessageBoxes {
 public:
  Button Show(const String& /*text*/, int style) override {
    const bool question = (style & message_style::kButtons) != message_style::kOk;
    return question ? Button::kYes : Button::kOk;
  }
};

FileFinding Describe(const Finding& finding, const Path& path, const String& trouble) {
  using Kind = Finding::Kind;
  const auto as = [&](const char* kind, String text) {
    return FileFinding{kind, PathText(path), finding.line, std::move(text)};
  };
  switch (finding.kind) {
    case Kind::kBareLineFeed:
      return as("line-feed", u"this is the first line that ends in a bare line feed");
    case Kind::kDuplicate:
      return as("duplicate", u"the setting " + finding.text + u" has been set before");
    case Kind::kRejectedName:
      return as("name", trouble + u": " + finding.text);
    case Kind::kUtf8:
      return as("charset", u"the file is UTF-8 text");
    case Kind::kNoText:
      return as("bytes", u"this is the first line with bytes that are no UTF-8 text");
  }
  return {};
}

/// One version of a file, read without asking or writing.
struct Version {
  std::shared_ptr<Document> settings = std::make_shared<Document>();
  std::shared_ptr<Document> series = std::make_shared<Document>();
  ConfNotes notes;
};

/// Compares the two versions of one file.
class Examination {
 public:
  Examination(const Path& file, const CheckArguments& arguments, const CommandContext& context)
      : file_(file), arguments_(arguments), context_(context) {
    report_.file = PathText(file);
  }

  FileReport Run() {
    Version distribution;
    Version server;
    bool onServer = true;
    bool complete = false;
    try {
      const Path serverFile = FileIn(arguments_.server, file_);
      onServer = !IsMissing(serverFile);
      const bool first = Read(FileIn(arguments_.distribution, file_), distribution);
      complete = (!onServer || Read(serverFile, server)) && first;
    } catch (const CommandTrouble& trouble) {
      report_.findings.push_back({"error", {}, 0, FromUtf8(trouble.what())});
    }
    if (!complete) {
      report_.status = FileStatus::kFailed;
      return std::move(report_);
    }
    Compare(distribution, server);
    if (!onServer) {
      report_.status = FileStatus::kNew;
    } else if (report_.HasDifferences()) {
      report_.status = FileStatus::kDifferent;
    }
    if (onServer) ListWhatASaveChanges(distribution, server);
    return std::move(report_);
  }

 private:
  bool Read(const Path& path, Version& version) {
    NoUser nobody;
    const ConfReader reader(context_.options, context_.language, nobody, context_.BareLineFeeds());
    const bool complete =
        reader.LoadConfFile(path, version.settings, version.series, &version.notes);
    for (const Finding& finding : version.notes.findings) {
      report_.findings.push_back(Describe(finding, path, version.notes.trouble));
    }
    if (!complete && version.notes.troubleLine == 0) {
      report_.findings.push_back({"error", PathText(path), 0, version.notes.trouble});
    }
    return complete;
  }

  void Compare(const Version& distribution, const Version& server) {
    comparison_.emplace(
        ConfDocuments{distribution.settings, server.settings, distribution.series, server.series},
        context_.options.IsSorted());
    comparison_->FillResultTrees();
    Summarize(*comparison_, *distribution.settings, report_);
    const Fields& actual = comparison_->ActualFields().Fields();
    for (int i = 0; i < actual.Count(); ++i) {
      const auto field = actual.Field(i);
      const String& name = field->Name();
      if (actual.IndexOf(name) == i && comparison_->IsMandatory(name) &&
          !server.notes.activeNames.contains(name)) {
        report_.inactive.push_back({name, field->Value()});
      }
    }
  }

  /// What a merge without any wish would change in the server's file.
  void ListWhatASaveChanges(const Version& distribution, const Version& server) {
    const auto tell = [this](const String& text) {
      report_.findings.push_back({"save", {}, 0, text});
    };
    AddMissingSeries(*distribution.series, *server.series);
    const SeriesGroups groups(*server.series);
    if (groups.GroupCount() > SeriesGroups::kMostGroups) {
      tell(context_.language.Text(Message::kTooManySeries));
      return;
    }
    const ConfWriter writer(context_.options, context_.language, context_.messages);
    const std::vector<String> lines = writer.ConfFileLines(comparison_->ActualFields(), groups);
    try {
      const ConfCharset charset = CharsetForSaving(server.notes, distribution.notes);
      const std::string bytes = writer.EncodeLines(lines, charset);
      for (const std::string& effect :
           EffectsOf(ListSaveChanges(server.notes.bytes, lines, bytes, context_.options.series),
                     context_.language)) {
        tell(FromUtf8(effect));
      }
      const String warning = CharsetWarning(bytes, charset, context_.language);
      if (!warning.empty()) tell(warning);
    } catch (const RuntimeError& error) {
      tell(error.Description());
    }
  }

  const Path& file_;
  const CheckArguments& arguments_;
  const CommandContext& context_;
  std::optional<ChangeComparison> comparison_;
  FileReport report_;
};

}  // namespace

int RunCheck(const CheckArguments& arguments, const CommandContext& context) {
  RequireFolder(arguments.distribution);
  RequireFolder(arguments.server);
  CheckReport summary;
  Json list = Json::array();
  for (const Path& file : FilesToCheck(arguments)) {
    const FileReport report = Examination(file, arguments, context).Run();
    summary.Count(report);
    if (arguments.json) {
      list.push_back(ReportJson(report));
    } else {
      PrintReport(report, context.streams.out, context.streams.colours);
      context.streams.out.flush();  // in step with messages about the next file
    }
  }
  if (arguments.json) {
    context.streams.out << list.dump(1) << '\n';
  } else {
    summary.Print(context.streams.out);
  }
  return summary.Status();
}

}  // namespace quenmar
