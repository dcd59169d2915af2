#include <algorithm>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "cli/ChangesText.h"
#include "cli/Commands.h"
#include "cli/Printable.h"
#include "compare/ChangeComparison.h"
#include "conf/ConfFolder.h"
#include "conf/ConfLine.h"
#include "conf/ConfWriter.h"
#include "conf/Functions.h"
#include "conf/SaveChanges.h"
#include "conf/SaveWarnings.h"
#include "files/FileError.h"
#include "files/Folder.h"
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
  for (int i = 0; i < list.Fields().Count(); ++i) {
    const String& name = list.Fields().Field(i)->Name();
    if (std::find(names.begin(), names.end(), name) != names.end()) found.push_back(name);
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
        serverFile_(FileIn(arguments.server, ArgumentPath(arguments.file))),
        serverSource_(serverFile_) {}

  int Run() {
    RequireFolder(arguments_.distribution);
    RequireFolder(arguments_.server);
    if (IsMissing(distributionFile_)) {
      throw CommandTrouble(ToUtf8(PathText(distributionFile_)) + ": no such file");
    }
    if (IsSame(distributionFile_, serverFile_)) {
      throw CommandTrouble(ToUtf8(context_.language.Text(Message::kSameFolder)));
    }
    if (IsMissing(serverFile_)) StartWithTheDistributionsFile();
    if (!Read()) return kTrouble;
    ChangeComparison comparison(documents_, context_.options.IsSorted());
    comparison.FillResultTrees();
    const SeriesGroups series = comparison.FillSeries(context_.messages, context_.language);
    ApplyRequests(comparison);
    return Save(comparison.ActualFields(), series) ? kNothingToDo : kTrouble;
  }

 private:
  [[nodiscard]] bool WritesServerFile() const { return !arguments_.dryRun && !arguments_.output; }

  /// A file that the server lacks starts with what the distribution's file has, which is read in
  /// its place.
  void StartWithTheDistributionsFile() {
    serverSource_ = distributionFile_;
    if (!WritesServerFile()) return;
    const Button answer =
        ShowMessage(context_.messages, String(context_.language.Text(Message::kCopyNewFile)),
                    message_style::kYesNo | message_style::kQuestion, {FromUtf8(arguments_.file)});
    if (answer != Button::kYes) throw CommandTrouble(kDeclined);
  }

  bool Read() {
    const bool mayRepair = !arguments_.dryRun;
    return ReadConfFile(distributionFile_, documents_.distribution, documents_.distributionSeries,
                        context_, &distributionNotes_, mayRepair) &&
           ReadConfFile(serverSource_, documents_.server, documents_.serverSeries, context_,
                        &serverNotes_, mayRepair);
  }

  /// Throws `CommandTrouble` for a name out of place and when the user declines.
  void ApplyRequests(ChangeComparison& comparison) const {
    const auto restored = ToTexts(arguments_.restore);
    RequireNames(restored, comparison.DeletedFields(), "obsolete");
    comparison.Restore(EachOccurrence(restored, comparison.DeletedFields()));

    const auto added = ToTexts(arguments_.add);
    RequireNames(added, comparison.NewFields(), "new");
    comparison.Add(EachOccurrence(added, comparison.NewFields()));
    if (arguments_.addMandatory || arguments_.addAll) comparison.Add(FurtherNames(comparison));

    const auto removed = ToTexts(arguments_.remove);
    RequireNames(removed, comparison.ActualFields(), "kept");
    const auto leaving = EachOccurrence(removed, comparison.ActualFields());
    const int left = comparison.Remove(leaving, context_.messages, context_.language);
    if (left < static_cast<int>(leaving.size())) throw CommandTrouble(kDeclined);
    for (const std::string& request : arguments_.set) SetValue(request, comparison);
  }

  [[nodiscard]] std::vector<String> FurtherNames(const ChangeComparison& comparison) const {
    std::vector<String> names;
    const Fields& fresh = comparison.NewFields().Fields();
    for (int i = 0; i < fresh.Count(); ++i) {
      const String& name = fresh.Field(i)->Name();
      if (arguments_.addAll || comparison.IsMandatory(name)) names.push_back(name);
    }
    return names;
  }

  void SetValue(const std::string& request, ChangeComparison& comparison) const {
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
    RequireNames({name}, comparison.ActualFields(), "kept");
    comparison.SetActualValue(name, value);
    const String readBack = ReadBackValue(value);
    if (readBack != value) {
      context_.streams.err << "quenmarctl: --set " << Printable(name)
                           << ": the value will be read back as \"" << Printable(readBack)
                           << "\"\n";
    }
  }

  bool Save(const Document& settings, const SeriesGroups& series) {
    const ConfWriter writer(context_.options, context_.language, context_.messages);
    const ConfCharset charset = CharsetForSaving(serverNotes_, distributionNotes_);
    const std::vector<String> lines = writer.ConfFileLines(settings, series);
    const std::string bytes = Encode(writer, lines, charset);
    WarnOfCharset(bytes, charset);
    if (arguments_.dryRun) {
      PrintChanges(ChangesOf(ServerBytes(), lines, bytes), context_.language, context_.streams.out);
      return true;
    }
    if (arguments_.output == "-") {
      context_.streams.out << bytes;
      return true;
    }
    OpenedFile target = Target();
    target.charset = charset;
    context_.messages.SetSubject(target.path);
    const std::string summary =
        SummaryOf(ChangesOf(target.bytes.value_or(std::string()), lines, bytes), context_.language);
    if (!writer.SaveConfFile(target, settings, series)) return false;
    context_.streams.err << Printable(PathText(target.path)) << ": " << summary << '\n';
    return true;
  }

  /// @return the file to be written. The server's file must still be what was read.
  [[nodiscard]] OpenedFile Target() const {
    const Path output = WritesServerFile() ? serverFile_ : ArgumentPath(*arguments_.output);
    if (WritesServerFile() || IsSame(output, serverFile_)) {
      // The server's folder may well be one below the distribution's.
      RefuseDistribution(IsDistributionFile(output), output);
      if (serverSource_ != serverFile_) return {output};
      return {output, serverNotes_.bytes};
    }
    RefuseDistribution(IsDistributionFile(output) || IsWithin(output, arguments_.distribution),
                       output);
    try {
      return OpenedFile::FromDisk(output);
    } catch (const FileError& error) {
      throw CommandTrouble(*arguments_.output + ": " + error.what());
    }
  }

  /// @return the lines in the character set; throws `CommandTrouble` where it lacks a character.
  [[nodiscard]] std::string Encode(const ConfWriter& writer, const std::vector<String>& lines,
                                   ConfCharset charset) const {
    try {
      return writer.EncodeLines(lines, charset);
    } catch (const RuntimeError& error) {
      const String unchanged =
          FinishedText(context_.language.Text(Message::kFileUnchanged), {PathText(serverFile_)});
      throw CommandTrouble(error.what() + ("\n" + ToUtf8(unchanged)));
    }
  }

  /// @return what the server's file held when it was read; nothing where the server lacks it.
  [[nodiscard]] std::string ServerBytes() const {
    return serverSource_ == serverFile_ ? serverNotes_.bytes : std::string();
  }

  [[nodiscard]] SaveChanges ChangesOf(const std::string& before, const std::vector<String>& lines,
                                      const std::string& after) const {
    return ListSaveChanges(before, lines, after, context_.options.series);
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

  void WarnOfCharset(const std::string& bytes, ConfCharset charset) const {
    const String text = CharsetWarning(bytes, charset, context_.language);
    if (!text.empty()) context_.streams.err << "quenmarctl: " << Printable(text) << '\n';
  }

  const MergeArguments& arguments_;
  const CommandContext& context_;
  Path distributionFile_;
  Path serverFile_;
  Path serverSource_;  // what is read in the server file's place
  ConfDocuments documents_;
  ConfNotes distributionNotes_;
  ConfNotes serverNotes_;
};

}  // namespace

int RunMerge(const MergeArguments& arguments, const CommandContext& context) {
  return Merge(arguments, context).Run();
}

}  // namespace quenmar
