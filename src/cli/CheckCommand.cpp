#include <algorithm>
#include <ostream>

#include "cli/CheckReport.h"
#include "cli/Commands.h"
#include "conf/ConfFolder.h"
#include "text/Charset.h"
#include "updater/ChangeComparison.h"

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

FileReport Summarize(const ChangeComparison& comparison, const Document& distribution) {
  FileReport report;
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
  return report;
}

FileReport Examine(const Path& file, const CheckArguments& arguments,
                   const CommandContext& context) {
  FileReport failed;
  failed.file = PathText(file);
  failed.status = FileStatus::kFailed;
  ConfDocuments documents{nullptr, std::make_shared<Document>(), nullptr,
                          std::make_shared<Document>()};
  const bool onServer = !IsMissing(arguments.server / file);
  if (!ReadConfFile(arguments.distribution / file, documents.distribution,
                    documents.distributionSeries, context) ||
      (onServer &&
       !ReadConfFile(arguments.server / file, documents.server, documents.serverSeries, context))) {
    return failed;
  }
  ChangeComparison comparison(documents, context.options.IsSorted());
  comparison.FillResultTrees();
  FileReport report = Summarize(comparison, *documents.distribution);
  report.file = PathText(file);
  if (!onServer) {
    report.status = FileStatus::kNew;
  } else if (report.HasDifferences()) {
    report.status = FileStatus::kDifferent;
  }
  return report;
}

}  // namespace

int RunCheck(const CheckArguments& arguments, const CommandContext& context) {
  RequireFolder(arguments.distribution);
  RequireFolder(arguments.server);
  CheckReport summary;
  Json list = Json::array();
  for (const Path& file : FilesToCheck(arguments)) {
    const FileReport report = Examine(file, arguments, context);
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
