#include <algorithm>
#include <functional>
#include <ostream>
#include <set>

#include "cli/ChangesText.h"
#include "cli/Commands.h"
#include "cli/MergeRequests.h"
#include "cli/OldVersions.h"
#include "cli/Printable.h"
#include "conf/ConfFolder.h"
#include "conf/ConfWriter.h"
#include "conf/EndApplication.h"
#include "conf/Functions.h"
#include "files/FileError.h"
#include "files/Folder.h"
#include "merge/FileMerge.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

/// One merge, from the two files to the saved one.
class Merge {
 public:
  enum class Result { kDone, kFailed, kNotWanted };

  Merge(const Path& file, const MergeArguments& arguments, const CommandContext& context)
      : arguments_(arguments),
        context_(context),
        file_(file),
        distributionFile_(FileIn(arguments.distribution, file)),
        serverFile_(FileIn(arguments.server, file)) {}

  /// Asks first whether a file that the server lacks is wanted. Throws `CommandError` for what
  /// cannot be done.
  Result Run(MergeRequests& requests) {
    if (IsMissing(distributionFile_)) {
      throw CommandError(ToUtf8(PathText(distributionFile_)) + ": no such file");
    }
    if (IsSame(distributionFile_, serverFile_)) {
      throw CommandError(ToUtf8(context_.language.Text(Message::kSameFolder)));
    }
    lacking_ = IsMissing(serverFile_);
    writesServerFile_ = !arguments_.dryRun && (!arguments_.output || OutputIsServerFile());
    if (lacking_ && writesServerFile_ && !IsWanted()) return Result::kNotWanted;
    merge_ = FileMerge::Open(Request(), {context_.options, context_.language, context_.messages});
    if (!merge_) return Result::kFailed;
    requests.Apply(*merge_);
    return Save(requests.Taken()) ? Result::kDone : Result::kFailed;
  }

  /// @return whether the file is another one now, or would be.
  [[nodiscard]] bool HasChanges() const { return hasChanges_; }

  /// @return whether the old version of the server's file was wanted and is not known.
  [[nodiscard]] bool LacksOldVersion() const {
    const bool wanted = arguments_.base || arguments_.takeDefaults;
    return wanted && merge_ && !lacking_ && !merge_->KnowsOldVersion();
  }

 private:
  [[nodiscard]] bool OutputIsServerFile() const {
    return arguments_.output != "-" && IsSame(ArgumentPath(*arguments_.output), serverFile_);
  }

  /// @return whether the user wants the file, which the server lacks.
  [[nodiscard]] bool IsWanted() const {
    context_.messages.SetSubject(file_);
    return ShowMessage(context_.messages, context_.language.Text(Message::kCopyNewFile),
                       message_style::kYesNo | message_style::kQuestion,
                       {PathText(file_)}) == Button::kYes;
  }

  [[nodiscard]] FileMerge::Request Request() const {
    FileMerge::Request request;
    request.distribution = distributionFile_;
    request.server = serverFile_;
    request.layout = arguments_.layout.value_or(context_.options.layout);
    request.bareLineFeeds = context_.BareLineFeeds(!arguments_.dryRun);
    request.comments = ConfReader::Comments::kLeftOut;
    request.base = OldFileIn(arguments_.base, file_);
    request.seen = &context_.seen;
    request.reading = [this](const Path& file) { context_.messages.SetSubject(file); };
    return request;
  }

  /// @param taken the settings that have taken the new default
  bool Save(const std::set<String>& taken) {
    OpenedFile target = Target();
    const SavePlan plan = MakePlan({target.path, target.bytes.value_or(std::string())});
    hasChanges_ = !plan.changes.Empty();
    if (!plan.warnings.charset.empty()) {
      context_.streams.err << "quenmarctl: " << Printable(plan.warnings.charset) << '\n';
    }
    if (arguments_.dryRun) {
      PrintChanges(plan.changes, taken, context_.language, context_.streams.out);
      return true;
    }
    if (arguments_.output == "-") {
      context_.streams.out << plan.bytes;
      return true;
    }
    context_.messages.SetSubject(target.path);
    const ConfWriter writer(context_.options, context_.language, context_.messages);
    if (writesServerFile_ ? !merge_->Save(plan) : !writer.SaveBytes(target, plan.bytes)) {
      return false;
    }
    context_.streams.err << Printable(PathText(target.path)) << ": "
                         << SummaryOf(plan.changes, context_.language) << '\n';
    if (writesServerFile_) ReportDefaultsLeft();
    return true;
  }

  /// After a save the changes of the release are not reported again.
  void ReportDefaultsLeft() const {
    const std::vector<DefaultChange> changes = merge_->DefaultChanges();
    const auto left =
        std::count_if(changes.begin(), changes.end(), std::mem_fn(&DefaultChange::IsUntouched));
    if (left == 0) return;
    context_.streams.err << Printable(PathText(file_)) << ": " << left
                         << (left == 1
                                 ? " default that the release has changed was left as it is"
                                 : " defaults that the release has changed were left as they are")
                         << "; see --take-defaults\n";
  }

  /// @return the file to be written. The server's file must still be what was read.
  [[nodiscard]] OpenedFile Target() const {
    OpenedFile server{serverFile_};
    if (!lacking_) server.bytes = merge_->ServerNotes().file.Bytes();
    if (arguments_.dryRun || arguments_.output == "-") return server;
    if (arguments_.output) server.path = ArgumentPath(*arguments_.output);
    if (writesServerFile_) {
      // The server's folder may well be one below the distribution's.
      RefuseDistribution(IsDistributionFile(server.path), server.path);
      return server;
    }
    const Path& output = server.path;
    RefuseDistribution(IsDistributionFile(output) || IsWithin(output, arguments_.distribution),
                       output);
    try {
      return OpenedFile::FromDisk(output);
    } catch (const FileError& error) {
      throw CommandError(*arguments_.output + ": " + error.what());
    }
  }

  /// Throws `CommandError` where the character set lacks a character.
  [[nodiscard]] SavePlan MakePlan(const ConfFile& before) const {
    try {
      return merge_->PlanOver(before);
    } catch (const RuntimeError& error) {
      const String unchanged =
          FinishedText(context_.language.Text(Message::kFileUnchanged), {PathText(serverFile_)});
      throw CommandError(error.what() + ("\n" + ToUtf8(unchanged)));
    }
  }

  /// @return whether the path is another name of a file of the distribution.
  [[nodiscard]] bool IsDistributionFile(const Path& path) const {
    const std::vector<Path> names = ListConfFiles(arguments_.distribution);
    return std::any_of(names.begin(), names.end(), [this, &path](const Path& name) {
      return IsSame(path, arguments_.distribution / name);
    });
  }

  static void RefuseDistribution(bool isDistributions, const Path& target) {
    if (!isDistributions) return;
    throw CommandError(ToUtf8(PathText(target)) + ": this is inside the distribution's folder");
  }

  const MergeArguments& arguments_;
  const CommandContext& context_;
  Path file_;
  Path distributionFile_;
  Path serverFile_;
  bool lacking_ = false;           // the server has no such file yet
  bool writesServerFile_ = false;  // rather than another file, or none
  bool hasChanges_ = false;
  std::unique_ptr<FileMerge> merge_;
};

/// Merges every file that both folders have and, if the user wants them, those that the server
/// lacks.
class MergeAll {
 public:
  MergeAll(const MergeArguments& arguments, const CommandContext& context)
      : arguments_(arguments), context_(context), requests_(arguments, context) {}

  int Run() {
    for (const Path& file : DistributionFiles(arguments_.distribution)) {
      if (Wants(file)) MergeOne(file);
    }
    ReportUnknown(withoutOldVersion_, arguments_.base, context_.streams.err);
    const std::vector<std::string> unmatched = requests_.Unmatched();
    for (const std::string& wanted : unmatched) Tell(wanted, "this concerns no file");
    (arguments_.dryRun ? context_.streams.out : context_.streams.err)
        << "Sum of " << files_ << (files_ == 1 ? " file: " : " files: ") << changed_ << " changed, "
        << files_ - changed_ - failed_ << " unchanged, " << failed_ << " failed\n";
    return failed_ > 0 || !unmatched.empty() ? kFailure : kNothingToDo;
  }

 private:
  /// A dry run asks nothing: of a file that the server lacks it says that there is a question.
  [[nodiscard]] bool Wants(const Path& file) const {
    if (!arguments_.dryRun || context_.messages.AnswersYes()) return true;
    if (!IsMissing(FileIn(arguments_.server, file))) return true;
    context_.streams.out << Printable(PathText(file))
                         << ":\nthe server has no such file, which --yes would merge\n";
    return false;
  }

  /// A file whose merge fails is reported, and the next one goes on.
  void MergeOne(const Path& file) {
    if (arguments_.dryRun) context_.streams.out << Printable(PathText(file)) << ":\n";
    Merge::Result result = Merge::Result::kFailed;
    try {
      Merge merge(file, arguments_, context_);
      result = merge.Run(requests_);
      changed_ += result == Merge::Result::kDone && merge.HasChanges() ? 1 : 0;
      if (merge.LacksOldVersion()) withoutOldVersion_.push_back(file);
    } catch (const EndApplication&) {
      Tell(ToUtf8(PathText(file)), "ended");
    } catch (const std::exception& error) {
      Tell(ToUtf8(PathText(file)), error.what());
    }
    files_ += result == Merge::Result::kNotWanted ? 0 : 1;
    failed_ += result == Merge::Result::kFailed ? 1 : 0;
  }

  void Tell(const std::string& what, const std::string& reason) const {
    context_.streams.err << "quenmarctl: " << PrintableLines(FromUtf8(what + ": " + reason))
                         << '\n';
  }

  const MergeArguments& arguments_;
  const CommandContext& context_;
  MergeRequests requests_;
  std::vector<Path> withoutOldVersion_;
  int files_ = 0;
  int changed_ = 0;
  int failed_ = 0;
};

/// Throws `CommandError` when the folder of the old release lacks all files that are to be merged.
void RequireOldRelease(const MergeArguments& arguments) {
  if (arguments.all) {
    RequireOneOf(ListConfFiles(arguments.distribution), *arguments.base);
    return;
  }
  const Path file = ArgumentPath(arguments.file);
  if (!IsMissing(FileIn(arguments.server, file))) RequireOneOf({file}, *arguments.base);
}

}  // namespace

int RunMerge(const MergeArguments& arguments, const CommandContext& context) {
  const Layout layout = arguments.layout.value_or(context.options.layout);
  if (context.fixLineEnds && layout != Layout::kSettings) {
    throw CommandError("--fix-line-ends: layout " + ToUtf8(NameOf(layout)) +
                       " keeps the line ends");
  }
  RequireFolder(arguments.distribution);
  RequireFolder(arguments.server);
  if (arguments.base) RequireFolder(*arguments.base);
  if (arguments.takeDefaults && arguments.base) RequireOldRelease(arguments);
  if (arguments.all) return MergeAll(arguments, context).Run();
  MergeRequests requests(arguments, context);
  const Path file = ArgumentPath(arguments.file);
  Merge merge(file, arguments, context);
  const Merge::Result result = merge.Run(requests);
  if (result == Merge::Result::kNotWanted) throw CommandError(kDeclined);
  if (merge.LacksOldVersion()) ReportUnknown({file}, arguments.base, context.streams.err);
  return result == Merge::Result::kDone ? kNothingToDo : kFailure;
}

}  // namespace quenmar
