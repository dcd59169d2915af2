#include <algorithm>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "cli/ChangesText.h"
#include "cli/Commands.h"
#include "cli/Printable.h"
#include "conf/ConfFolder.h"
#include "conf/ConfLine.h"
#include "conf/ConfWriter.h"
#include "conf/Functions.h"
#include "files/FileError.h"
#include "files/Folder.h"
#include "merge/FileMerge.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

constexpr const char* kDeclined = "declined, the file was not saved";

std::vector<String> ToTexts(const std::vector<std::string>& arguments) {
  std::vector<String> texts;
  texts.reserve(arguments.size());
  for (const std::string& argument : arguments) texts.push_back(FromUtf8(argument));
  return texts;
}

void RequireNames(const std::vector<String>& names, const Document& list, const char* what) {
  for (const String& name : names) {
    if (list.Fields().Field(name)->Name().empty()) {
      throw CommandTrouble(ToUtf8(name) + " is not among the " + what + " settings");
    }
  }
}

/// @return the names of the fields of `list` that are among `names`, once for each field: a name
/// may stand twice.
std::vector<String> EachOccurrence(const std::vector<String>& names, const Document& list) {
  std::vector<String> found;
  for (const Field& field : list.Fields()) {
    const auto hit = std::find(names.begin(), names.end(), field.Name());
    if (hit != names.end()) found.push_back(*hit);
  }
  return found;
}

/// @return whether the path, links followed, leads to the folder or into it.
bool IsWithin(const Path& path, const Path& folder) {
  std::error_code error;  // what cannot be looked at is taken as it is written
  const Path target = std::filesystem::absolute(BehindLinks(path), error);
  Path part = std::filesystem::weakly_canonical(target, error);
  while (!IsSame(part, folder)) {
    if (!part.has_relative_path()) return false;
    part = part.parent_path();
  }
  return true;
}

/// One merge, from the two files to the saved one.
class Merge {
 public:
  Merge(const MergeArguments& arguments, const CommandContext& context)
      : arguments_(arguments),
        context_(context),
        distributionFile_(FileIn(arguments.distribution, ArgumentPath(arguments.file))),
        serverFile_(FileIn(arguments.server, ArgumentPath(arguments.file))) {}

  int Run() {
    RequireFolder(arguments_.distribution);
    RequireFolder(arguments_.server);
    if (IsMissing(distributionFile_)) {
      throw CommandTrouble(ToUtf8(PathText(distributionFile_)) + ": no such file");
    }
    if (IsSame(distributionFile_, serverFile_)) {
      throw CommandTrouble(ToUtf8(context_.language.Text(Message::kSameFolder)));
    }
    lacking_ = IsMissing(serverFile_);
    if (lacking_ && WritesServerFile()) AskToBegin();
    merge_ = FileMerge::Open(Request(), {context_.options, context_.language, context_.messages});
    if (!merge_) return kTrouble;
    ApplyRequests();
    return Save() ? kNothingToDo : kTrouble;
  }

 private:
  using List = FileMerge::List;

  [[nodiscard]] bool WritesServerFile() const { return !arguments_.dryRun && !arguments_.output; }

  /// Throws `CommandTrouble` when the user does not want a file that the server lacks.
  void AskToBegin() const {
    const Button answer =
        ShowMessage(context_.messages, context_.language.Text(Message::kCopyNewFile),
                    message_style::kYesNo | message_style::kQuestion, {FromUtf8(arguments_.file)});
    if (answer != Button::kYes) throw CommandTrouble(kDeclined);
  }

  [[nodiscard]] FileMerge::Request Request() const {
    FileMerge::Request request;
    request.distribution = distributionFile_;
    request.server = serverFile_;
    request.bareLineFeeds = context_.BareLineFeeds(!arguments_.dryRun);
    request.comments = ConfReader::Comments::kLeftOut;
    request.reading = [this](const Path& file) { context_.messages.SetSubject(file); };
    return request;
  }

  /// Throws `CommandTrouble` for a name out of place and when the user declines.
  void ApplyRequests() {
    const auto restored = ToTexts(arguments_.restore);
    RequireNames(restored, merge_->Tree(List::kDeleted), "obsolete");
    merge_->Restore(EachOccurrence(restored, merge_->Tree(List::kDeleted)));

    const auto added = ToTexts(arguments_.add);
    RequireNames(added, merge_->Tree(List::kNew), "new");
    merge_->Add(EachOccurrence(added, merge_->Tree(List::kNew)));
    if (arguments_.addMandatory || arguments_.addAll) merge_->Add(FurtherNames());

    const auto removed = ToTexts(arguments_.remove);
    RequireNames(removed, merge_->Tree(List::kActual), "kept");
    const auto leaving = EachOccurrence(removed, merge_->Tree(List::kActual));
    const int left = merge_->Remove(leaving);
    if (left < static_cast<int>(leaving.size())) throw CommandTrouble(kDeclined);
    for (const std::string& request : arguments_.set) SetValue(request);
  }

  [[nodiscard]] std::vector<String> FurtherNames() const {
    std::vector<String> names;
    for (const Field& field : merge_->Tree(List::kNew).Fields()) {
      if (arguments_.addAll || merge_->IsMandatory(field.Name())) {
        names.emplace_back(field.Name());
      }
    }
    return names;
  }

  void SetValue(const std::string& request) {
    const size_t equals = request.find('=');
    if (equals == std::string::npos) throw CommandTrouble("--set " + request + ": no = in it");
    if (!IsUtf8(request)) {
      throw CommandTrouble("--set " + ToUtf8(FromUtf8(request)) + ": this is no UTF-8 text");
    }
    const String name = FromUtf8(request.substr(0, equals));
    const String value = FromUtf8(request.substr(equals + 1));
    if (value.find_first_of(u"\r\n") != String::npos) {
      throw CommandTrouble("--set " + ToUtf8(name) + ": a value is one line");
    }
    RequireNames({name}, merge_->Tree(List::kActual), "kept");
    merge_->SetValue(List::kActual, name, value);
    const String readBack = ReadBackValue(value);
    if (readBack != value) {
      context_.streams.err << "quenmarctl: --set " << Printable(name)
                           << ": the value will be read back as \"" << Printable(readBack)
                           << "\"\n";
    }
  }

  bool Save() {
    OpenedFile target = Target();
    const SavePlan plan = MakePlan({target.path, target.bytes.value_or(std::string())});
    if (!plan.warnings.charset.empty()) {
      context_.streams.err << "quenmarctl: " << Printable(plan.warnings.charset) << '\n';
    }
    if (arguments_.dryRun) {
      PrintChanges(plan.changes, context_.language, context_.streams.out);
      return true;
    }
    if (arguments_.output == "-") {
      context_.streams.out << plan.bytes;
      return true;
    }
    context_.messages.SetSubject(target.path);
    const ConfWriter writer(context_.options, context_.language, context_.messages);
    if (WritesServerFile() ? !merge_->Save(plan) : !writer.SaveBytes(target, plan.bytes)) {
      return false;
    }
    context_.streams.err << Printable(PathText(target.path)) << ": "
                         << SummaryOf(plan.changes, context_.language) << '\n';
    return true;
  }

  /// @return the file to be written. The server's file must still be what was read.
  [[nodiscard]] OpenedFile Target() const {
    OpenedFile server{serverFile_};
    if (!lacking_) server.bytes = merge_->ServerNotes().file.Bytes();
    if (arguments_.dryRun || arguments_.output == "-") return server;
    if (arguments_.output) server.path = ArgumentPath(*arguments_.output);
    if (WritesServerFile() || IsSame(server.path, serverFile_)) {
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
      throw CommandTrouble(*arguments_.output + ": " + error.what());
    }
  }

  /// Throws `CommandTrouble` where the character set lacks a character.
  [[nodiscard]] SavePlan MakePlan(const ConfFile& before) const {
    try {
      return merge_->PlanOver(before);
    } catch (const RuntimeError& error) {
      const String unchanged =
          FinishedText(context_.language.Text(Message::kFileUnchanged), {PathText(serverFile_)});
      throw CommandTrouble(error.what() + ("\n" + ToUtf8(unchanged)));
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
    throw CommandTrouble(ToUtf8(PathText(target)) + ": this is inside the distribution's folder");
  }

  const MergeArguments& arguments_;
  const CommandContext& context_;
  Path distributionFile_;
  Path serverFile_;
  bool lacking_ = false;  // the server has no such file yet
  std::unique_ptr<FileMerge> merge_;
};

}  // namespace

int RunMerge(const MergeArguments& arguments, const CommandContext& context) {
  return Merge(arguments, context).Run();
}

}  // namespace quenmar
