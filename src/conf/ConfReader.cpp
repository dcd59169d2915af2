#include "conf/ConfReader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "conf/ConfSetting.h"
#include "conf/EndApplication.h"
#include "conf/Functions.h"
#include "conf/NoUser.h"
#include "docmodel/DocError.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

using BareLineFeeds = ConfReader::BareLineFeeds;

/// @return `text` with every LF replaced by CR LF; an LF that has its CR gets a second one.
String RepairLineEnds(StringView text) { return ReplaceAll(text, u"\n", kLineEnd); }

/// The comment lines since the last blank line or setting. Their text is made only when a setting
/// needs it, so that a file of comments is not copied.
class CommentBlock {
 public:
  [[nodiscard]] bool Empty() const { return before_.empty() && lines_.empty(); }

  void Clear() { Begin({}); }

  /// Begins with a block that is text already.
  void Begin(SharedText before) {
    before_ = std::move(before);
    lines_.clear();
  }

  /// Appends a line of the file; an empty one does not begin a block.
  void Append(std::string_view line) {
    if (!line.empty() || !Empty()) lines_.push_back(line);
  }

  /// @return the block as it is in a tree.
  [[nodiscard]] SharedText Text(const ConfFile& file) const {
    if (lines_.empty()) return before_;
    size_t size = 0;
    for (const std::string_view line : lines_) size += line.size() + kLineEnd.size();
    std::string bytes;
    bytes.reserve(size);
    for (const std::string_view line : lines_) {
      if (!bytes.empty() || !before_.empty()) bytes += "\r\n";
      AppendForComments(line, bytes);
    }
    const String text = file.Text(bytes);
    return SharedText(before_.empty() ? text : String(before_) + text);
  }

  /// Appends a line as it is in a tree: without tabs and "//".
  static void AppendForComments(std::string_view line, std::string& bytes) {
    for (size_t i = 0; i < line.size(); ++i) {
      const bool slashes = line[i] == '/' && i + 1 < line.size() && line[i + 1] == '/';
      bytes += slashes || line[i] == '\t' ? ' ' : line[i];
      if (slashes) ++i;
    }
  }

 private:
  SharedText before_;
  std::vector<std::string_view> lines_;
};

/// What one reading works with. All references outlive it.
struct Context {
  const Path& path;
  const Options& options;
  const Language& language;
  MessageBoxes& messages;
  BareLineFeeds bareLineFeeds;
  ConfReader::Comments comments;
};

/// One reading of one file.
class Reading {
 public:
  Reading(const Context& context, Document& settings, Document& series, ConfNotes& notes)
      : context_(context), settings_(settings), series_(series), notes_(notes) {}

  /// @return whether the file was read to its end.
  bool Run() {
    Open();
    return TakeLines();
  }

  /// The same for a file that has been read.
  bool RunOn(const ConfFile& file) {
    file_ = &file;
    Restart(file.Body());
    return TakeLines();
  }

  /// Notes that a tree rejected the name in the current line.
  void Reject(const DocError& error) {
    notes_.reason = error.Description();
    notes_.errorLine = lines_.Number();
    notes_.findings.push_back(
        {notes_.errorLine, Finding::Kind::kRejectedName, Text(TrimBytes(line_.bytes))});
  }

 private:
  [[nodiscard]] String Text(std::string_view part) const { return file_->Text(part); }

  void Open() {
    notes_ = ConfNotes();
    notes_.file = ConfFile::Read(context_.path);
    if (notes_.file.Encoding().utf16) {
      throw RuntimeError(0, u"ConfReader",
                         FinishedText(context_.language.Text(Message::kUtf16Text)));
    }
    file_ = &notes_.file;
    Restart(file_->Body());
  }

  bool TakeLines() {
    const bool asks = context_.bareLineFeeds == BareLineFeeds::kAsk;
    const bool repairs = !asks && context_.bareLineFeeds != BareLineFeeds::kEndLines;
    if (repairs && file_->HasBareLineFeed() && !RepairFile()) return false;
    std::string_view line;
    while (lines_.Next(line)) {
      line = TrimBytes(line);
      if (asks && line.find('\n') != std::string_view::npos) {
        if (!RepairFile()) return false;
        // Kept: what was read before the question is read a second time, and the first line is
        // not trimmed then. What the windows show of such a file relies on it.
        if (!lines_.Next(line)) return true;
      }
      if (!TakeLine(line)) return false;
    }
    return true;
  }

  /// @param bytes outlive the reading
  void Restart(std::string_view bytes) {
    grammar_.emplace(context_.options.series, file_->Charset());
    lines_ = ConfLines(bytes, context_.bareLineFeeds == BareLineFeeds::kEndLines
                                  ? ConfLines::LineFeed::kEndsLine
                                  : ConfLines::LineFeed::kStays);
  }

  /// @return whether the user wants bare LF line ends repaired. No ends the application; a closed
  /// question only the reading.
  [[nodiscard]] bool WantsRepair() {
    if (context_.bareLineFeeds != BareLineFeeds::kAsk) return true;
    const Button answer =
        ShowMessage(context_.messages, context_.language.Text(Message::kFixLineEnds) + u"\\n%1",
                    message_style::kYesNo | message_style::kQuestion, {PathText(context_.path)});
    if (answer == Button::kNo) throw EndApplication();
    return answer == Button::kYes;
  }

  bool RepairFile() {
    if (!WantsRepair()) return false;
    comment_.Begin(comment_.Text(*file_));  // the block goes on, its bytes do not
    if (context_.bareLineFeeds == BareLineFeeds::kRepairInMemory) {
      repaired_ = ToWindows1252(RepairLineEnds(FromWindows1252(file_->Body()))).value();
      Restart(repaired_);
      return true;
    }
    String text;
    if (!ReadTextFile(context_.path, text)) {
      Stop(FinishedText(context_.language.Text(Message::kCannotRead), {PathText(context_.path)}),
           message_style::kOk);
      return false;
    }
    if (!WriteTextFile(context_.path, RepairLineEnds(text))) {
      Stop(FinishedText(context_.language.Text(Message::kLineEndsNotFixed)),
           message_style::kCritical);
      return false;
    }
    Open();
    return true;
  }

  void Stop(String reason, int style) {
    notes_.reason = std::move(reason);
    context_.messages.Show(notes_.reason, style);
  }

  /// @return false when the user declines to go on.
  bool TakeLine(std::string_view line) {
    line_ = grammar_->Parse(line);
    switch (line_.kind) {
      case ConfLine::Kind::kBlank:
        comment_.Clear();
        carriedComment_ = {};
        return true;
      case ConfLine::Kind::kComment:
        AddToComment(TrimBytes(line_.text));
        return true;
      case ConfLine::Kind::kSeriesEntry:
        AddCutLines();
        TakeSeriesEntry();
        return true;
      case ConfLine::Kind::kNote:
      case ConfLine::Kind::kSetting:
        AddCutLines();
        return TakeSetting(file_->Shared(line_.name), file_->Shared(line_.value));
    }
    return true;
  }

  void AddToComment(std::string_view line) {
    if (context_.comments == ConfReader::Comments::kKept) comment_.Append(line);
  }

  /// A line whose value was cut before a remark or a tab becomes part of the comment; twice when it
  /// was cut twice.
  void AddCutLines() {
    if (line_.hasRemark) AddToComment(line_.text);
    if (line_.hasTab) AddToComment(line_.text);
  }

  bool TakeSetting(const SharedText& name, const SharedText& value) {
    Fields& fields = settings_.Fields();
    const int index = fields.IndexOf(name);
    const int first = index < 0 ? fields.Count() : index;
    if (!line_.commented) NoteActiveLine(static_cast<size_t>(first), name);
    if (index < 0) {
      AddUnlessNote(name, value, first);
      return true;
    }
    const Ref<Field> known = fields.Field(index);
    if (IsActive(*known) && !line_.commented) {
      if (!AcceptsDuplicate(name)) return false;
      SetActive(*known, false);
      override_ = true;
    }
    if (IsCommentedOut(*known)) {
      Merge(value, *known);
    } else {
      AddUnlessNote(name, value, first);
    }
    return true;
  }

  /// @param first where the first field of that name is, or will be
  void NoteActiveLine(size_t first, StringView name) {
    if (first >= notes_.active.size()) notes_.active.resize(first + 1);
    if (notes_.active[first] != 0) {
      notes_.findings.push_back({lines_.Number(), Finding::Kind::kDuplicate, String(name)});
    }
    notes_.active[first] = 1;
  }

  bool AcceptsDuplicate(StringView name) {
    if (context_.options.alwaysIgnoreDupParam) return true;
    return ShowMessage(context_.messages, context_.language.Text(Message::kDuplicateSetting),
                       message_style::kYesNo | message_style::kQuestion,
                       {name, PathText(context_.path)}) == Button::kYes;
  }

  /// A setting that is not known yet, or a commented-out line of an active one. The latter becomes
  /// a second field of that name, while its parameters go to the first: what looks fields up by
  /// name must not see it.
  /// @param first where the first field of that name is, or will be
  void AddUnlessNote(const SharedText& name, const SharedText& value, int first) {
    if (line_.kind == ConfLine::Kind::kNote) {
      if (comment_.Empty()) comment_.Begin(carriedComment_);
      AddToComment(line_.text);
      return;
    }
    if (!comment_.Empty()) {
      carriedComment_ = comment_.Text(*file_);
      comment_.Clear();
    }
    settings_.Fields().AddField(name, value);
    AddSettingParameters(*settings_.Fields().Field(first), carriedComment_, !line_.commented);
  }

  /// A further line of a setting whose first line was commented out or gave way to a duplicate.
  void Merge(const SharedText& value, Field& known) {
    if (!line_.commented && !override_) known.SetValue(value);
    if (context_.comments == ConfReader::Comments::kLeftOut) return;
    if (line_.commented) {
      AppendToComment(known, comment_.Text(*file_));
    } else {
      std::string line;
      CommentBlock::AppendForComments(line_.text, line);
      AppendToComment(known, Text(line));
    }
    comment_.Clear();
  }

  void TakeSeriesEntry() {
    const SharedText name = file_->Shared(line_.value);
    const Ref<Field> known = series_.Fields().Field(name);
    if (!known->Name().empty()) {
      if (IsCommentedOut(*known) && !line_.commented) SetActive(*known, true);
      return;
    }
    AddSeriesEntry(series_, name, file_->Shared(line_.name), !line_.commented);
    comment_.Clear();
    carriedComment_ = {};
  }

  Context context_;
  Document& settings_;
  Document& series_;
  ConfNotes& notes_;
  const ConfFile* file_ = nullptr;
  std::string repaired_;  // is read instead of the file's bytes
  std::optional<ConfGrammar> grammar_;
  ConfLines lines_{{}};
  ConfLine line_;
  CommentBlock comment_;
  SharedText carriedComment_;  // the block of the last setting, for those below it that have none
  bool override_ = false;      // a duplicate was accepted; stays set for the rest of the file
};

/// Adds the findings about the bytes to those of the reading, in the order of the lines and as far
/// as the file was read.
void AddFindingsOfBytes(ConfNotes& notes) {
  std::vector<Finding> findings = notes.file.Findings();
  if (notes.errorLine > 0) {
    std::erase_if(findings, [&](const Finding& finding) { return finding.line > notes.errorLine; });
  }
  findings.insert(findings.end(), notes.findings.begin(), notes.findings.end());
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& one, const Finding& other) { return one.line < other.line; });
  notes.findings = std::move(findings);
}

}  // namespace

ConfReader::ConfReader(const Options& options, const Language& language, MessageBoxes& messages,
                       BareLineFeeds bareLineFeeds, Comments comments)
    : options_(options),
      language_(language),
      messages_(messages),
      bareLineFeeds_(bareLineFeeds),
      comments_(comments) {}

bool ConfReader::LoadConfFile(const Path& path, std::shared_ptr<Document>& settings,
                              std::shared_ptr<Document>& series, ConfNotes* notes) const {
  settings = std::make_shared<Document>();
  series = std::make_shared<Document>();
  ConfNotes unasked;
  ConfNotes& told = notes != nullptr ? *notes : unasked;
  told = ConfNotes();
  Reading reading({path, options_, language_, messages_, bareLineFeeds_, comments_}, *settings,
                  *series, told);
  bool complete = false;
  try {
    complete = reading.Run();
  } catch (const DocError& error) {
    reading.Reject(error);
    ShowError(messages_, language_, told.reason, PlaceOfError(path, told, language_));
  } catch (const std::exception& error) {
    told.reason = DescriptionOf(error);
    ShowError(messages_, language_, told.reason, PathText(path));
  }
  told.active.resize(static_cast<size_t>(settings->Fields().Count()));
  if (notes != nullptr) AddFindingsOfBytes(told);
  return complete;
}

bool ReadQuietly(const ConfFile& file, const Options& options, Document& settings, Document& series,
                 ConfNotes* notes) {
  NoUser nobody;
  const Language language;
  ConfNotes unasked;
  ConfNotes& told = notes != nullptr ? *notes : unasked;
  Reading reading({file.FilePath(), options, language, nobody, BareLineFeeds::kEndLines,
                   ConfReader::Comments::kLeftOut},
                  settings, series, told);
  bool complete = false;
  try {
    complete = reading.RunOn(file);
  } catch (const DocError& error) {
    reading.Reject(error);
  }
  told.active.resize(static_cast<size_t>(settings.Fields().Count()));
  return complete;
}

String PlaceOfError(const Path& path, const ConfNotes& notes, const Language& language) {
  if (notes.errorLine == 0) return PathText(path);
  return FinishedText(language.Text(Message::kPlaceInFile),
                      {PathText(path), ToText(notes.errorLine), notes.findings.back().text});
}

}  // namespace quenmar
