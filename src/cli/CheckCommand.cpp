#include <ostream>

#include "cli/CheckReport.h"
#include "cli/Commands.h"
#include "cli/OldVersions.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

std::vector<Path> FilesToCheck(const CheckArguments& arguments) {
  if (arguments.files.empty()) return DistributionFiles(arguments.distribution);
  std::vector<Path> files;
  for (const std::string& file : arguments.files) files.push_back(ArgumentPath(file));
  return files;
}

FileReport Examine(const Path& file, const CheckArguments& arguments,
                   const CommandContext& context) {
  try {
    const Path serverFile = FileIn(arguments.server, file);
    return FileReport::Of(arguments.distribution, arguments.server, file, context.options,
                          context.language, context.BareLineFeeds(),
                          FindOldFile(OldFileIn(arguments.base, file), &context.seen, serverFile));
  } catch (const CommandError& error) {
    FileReport report;
    report.file = PathText(file);
    report.status = FileStatus::kFailed;
    report.warnings.push_back(FromUtf8(error.what()));
    return report;
  }
}

bool LacksOldVersion(const FileReport& report) {
  const bool compared =
      report.status == FileStatus::kSame || report.status == FileStatus::kDifferent;
  return compared && !report.oldKnown;
}

void PrintUnknown(size_t files, std::ostream& out) {
  if (files == 0) return;
  out << "Old version not known (" << files << (files == 1 ? " file): " : " files): ")
      << kOldUnknown << '\n';
}

}  // namespace

int RunCheck(const CheckArguments& arguments, const CommandContext& context) {
  RequireFolder(arguments.distribution);
  RequireFolder(arguments.server);
  if (arguments.base) RequireFolder(*arguments.base);
  CheckReport summary;
  std::vector<Path> withoutOldVersion;
  Json list = Json::array();
  for (const Path& file : FilesToCheck(arguments)) {
    const FileReport report = Examine(file, arguments, context);
    summary.Count(report);
    if (LacksOldVersion(report)) withoutOldVersion.push_back(file);
    if (arguments.json) {
      list.push_back(ReportJson(report, context.language));
    } else {
      PrintReport(report, context.language, context.streams.out, context.streams.colours);
      context.streams.out.flush();  // in step with messages about the next file
    }
  }
  if (arguments.json) {
    context.streams.out << list.dump(1) << '\n';
  } else {
    summary.Print(context.streams.out);
    if (!arguments.base) PrintUnknown(withoutOldVersion.size(), context.streams.out);
  }
  if (arguments.base) ReportUnknown(withoutOldVersion, arguments.base, context.streams.err);
  return summary.Status();
}

}  // namespace quenmar
