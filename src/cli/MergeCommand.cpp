#include <filesystem>
#include <ostream>
#include <system_error>

#include "cli/Commands.h"
#include "conf/ConfWriter.h"
#include "conf/Functions.h"
#include "conf/SaveChanges.h"
#include "files/FileError.h"
#include "text/Charset.h"
#include "updater/ChangeComparison.h"

namespace quenmar {

namespace {

namespace fs = std::filesystem;

bool Exists(const Path& path) {
  std::error_code error;
  return fs::exists(path, error);
}

std::vector<String> ToTexts(const std::vector<std::string>& arguments) {
  std::vector<String> texts;
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

/// One merge, from the two files to the saved one.
class Merge {
 public:
  Merge(const MergeArguments& arguments, const CommandContext& context)
      : arguments_(arguments),
        context_(context),
        distributionFile_(arguments.distribution / ArgumentPath(arguments.file)),
        serverFile_(arguments.server / ArgumentPath(arguments.file)) {}

  int Run() {
    if (!Exists(distributionFile_)) {
      throw CommandTrouble(ToUtf8(PathText(distributionFile_)) + ": no such file");
    }
    if (!PrepareServerFile() || !Read()) return kTrouble;
    ChangeComparison comparison(documents_, context_.options.IsSorted());
    comparison.FillResultTrees();
    const SeriesGroups series = comparison.FillSeries(context_.messages, context_.language);
    if (!ApplyRequests(comparison)) return kTrouble;
    return Save(comparison.ActualFields(), series) ? kNothingToDo : kTrouble;
  }

 private:
  [[nodiscard]] bool WritesServerFile() const { return !arguments_.dryRun && !arguments_.output; }

  /// A file that the server lacks starts as a copy of the distribution's. Only a merge that writes
  /// it makes that copy, with the user's consent; any other reads the distribution's file in its
  /// place.
  bool PrepareServerFile() {
    serverSource_ = serverFile_;
    if (Exists(serverFile_)) return true;
    if (!WritesServerFile()) {
      serverSource_ = distributionFile_;
      return true;
    }
    const Button answer =
        ShowMessage(context_.messages, String(context_.language.Text(LNG14)),
                    message_style::kYesNo | message_style::kQuestion, {FromUtf8(arguments_.file)});
    if (answer != Button::kYes) return false;
    try {
      ReplaceBytes(serverFile_, ReadBytes(distributionFile_));
    } catch (const FileError& error) {
      throw CommandTrouble(ToUtf8(PathText(serverFile_)) + ": " + error.what());
    }
    return true;
  }

  bool Read() {
    using Repair = ConfReader::LineEndRepair;
    const ConfReader reader(context_.options, context_.language, context_.messages,
                            arguments_.dryRun ? Repair::kInMemory : Repair::kInFile);
    return ReadOrTell(reader, distributionFile_, documents_.distribution,
                      documents_.distributionSeries, context_) &&
           ReadOrTell(reader, serverSource_, documents_.server, documents_.serverSeries, context_);
  }

  /// @return false when the user declined; throws `CommandTrouble` for a name out of place.
  bool ApplyRequests(ChangeComparison& comparison) const {
    const auto restored = ToTexts(arguments_.restore);
    RequireNames(restored, comparison.DeletedFields(), "obsolete");
    comparison.Restore(restored);

    const auto added = ToTexts(arguments_.add);
    RequireNames(added, comparison.NewFields(), "new");
    comparison.Add(added);
    if (arguments_.addMandatory || arguments_.addAll) comparison.Add(FurtherNames(comparison));

    const auto removed = ToTexts(arguments_.remove);
    RequireNames(removed, comparison.ActualFields(), "kept");
    comparison.Remove(removed, context_.messages, context_.language);
    for (const String& name : removed) {
      const bool kept = !comparison.ActualFields().Fields().Field(name)->Name().empty();
      if (kept) return false;
    }
    for (const std::string& request : arguments_.set) SetValue(request, comparison);
    return true;
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

  static void SetValue(const std::string& request, ChangeComparison& comparison) {
    const size_t equals = request.find('=');
    if (equals == std::string::npos) throw CommandTrouble("--set " + request + ": no = in it");
    const String name = FromUtf8(request.substr(0, equals));
    const String value = FromUtf8(request.substr(equals + 1));
    if (value.find_first_of(u"\r\n") != String::npos) {
      throw CommandTrouble("--set " + ToUtf8(name) + ": a value is one line");
    }
    RequireNames({name}, comparison.ActualFields(), "kept");
    comparison.SetActualValue(name, value);
  }

  bool Save(const Document& settings, const SeriesGroups& series) {
    const ConfWriter writer(context_.options, context_.language, context_.messages);
    if (WritesServerFile()) return writer.SaveConfFile(serverFile_, settings, series);
    if (arguments_.output && *arguments_.output != "-") {
      return writer.SaveConfFile(ArgumentPath(*arguments_.output), settings, series);
    }
    const std::vector<String> lines = writer.ConfFileLines(settings, series);
    const std::string bytes = ConfWriter::EncodeLines(lines);
    if (arguments_.dryRun) {
      PrintChanges(lines);
    } else {
      context_.streams.out << bytes;
    }
    return true;
  }

  void PrintChanges(const std::vector<String>& lines) const;

  const MergeArguments& arguments_;
  const CommandContext& context_;
  Path distributionFile_;
  Path serverFile_;
  Path serverSource_;  // what is read in the server file's place
  ConfDocuments documents_;
};

/// @return a value as it is printed, tabs and other control characters visible.
std::string Visible(StringView value) {
  String shown;
  for (const char16_t character : value) {
    if (character == u'\t') {
      shown += u"\\t";
    } else {
      shown += character < u' ' ? u'?' : character;
    }
  }
  return ToUtf8(shown);
}

std::string Describe(const SaveChange& change) {
  using Kind = SaveChange::Kind;
  const std::string name = Visible(change.name) + ": ";
  const std::string oldValue = Visible(change.oldValue);
  const std::string newValue = Visible(change.newValue);
  const std::string commented = change.commented ? " (commented out)" : "";
  const std::string values = oldValue == newValue ? newValue : oldValue + " -> " + newValue;
  switch (change.kind) {
    case Kind::kAdded:
      return "added          " + name + newValue + commented;
    case Kind::kRemoved:
      return "removed        " + name + oldValue + commented;
    case Kind::kChanged:
      return "changed        " + name + values;
    case Kind::kActivated:
      return "becomes active " + name + values;
    case Kind::kSwitchedOn:
      return "switched on    " + name + values;
    case Kind::kSwitchedOff:
      return "switched off   " + name + values;
  }
  return {};
}

void Merge::PrintChanges(const std::vector<String>& lines) const {
  const String oldText = Exists(serverFile_) ? FromWindows1252(ReadBytes(serverFile_)) : String();
  const SaveChanges result = ListSaveChanges(oldText, lines, context_.options.series);
  std::ostream& out = context_.streams.out;
  for (const SaveChange& change : result.changes) out << Describe(change) << '\n';
  if (result.lostCommentLines > 0) out << "comment lines lost: " << result.lostCommentLines << '\n';
  if (result.changes.empty() && result.lostCommentLines == 0) out << "no changes\n";
}

}  // namespace

int RunMerge(const MergeArguments& arguments, const CommandContext& context) {
  return Merge(arguments, context).Run();
}

}  // namespace quenmar
