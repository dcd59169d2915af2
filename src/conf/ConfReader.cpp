#include "conf/ConfReader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "conf/ConfLine.h"
#include "conf/EndApplication.h"
#include "conf/Functions.h"
#include "docmodel/DocError.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

constexpr StringView kActive = u"1";
constexpr StringView kCommentedOut = u"0";

/// @return comment text as the trees hold it, without tabs and "//".
String ForComments(StringView text) {
  String plain(text);
  std::replace(plain.begin(), plain.end(), u'\t', u' ');
  return Contains(plain, u"//") ? ReplaceAll(plain, u"//", u" ") : plain;
}

void AppendComment(String& block, StringView line) {
  if (!block.empty()) block += kLineEnd;
  block += ForComments(line);
}

/// Collects what is worth telling about the lines of one text.
class NoteTaker {
 public:
  explicit NoteTaker(ConfNotes& notes) : notes_(notes) {}

  void Begin(const ConfText& text, std::string bytes) {
    notes_ = ConfNotes();
    notes_.bytes = std::move(bytes);
    notes_.charset = text.charset;
    notes_.ascii = text.ascii;
    marked_ = text.mark;
    noted_.clear();
  }

  void TakeLine(StringView line, const ConfLines& lines) {
    using Kind = Finding::Kind;
    const auto is = [line](auto test) { return std::any_of(line.begin(), line.end(), test); };
    const bool utf8 = notes_.charset == ConfCharset::kUtf8;
    if (utf8 && (marked_ || is([](char16_t c) { return c > 0x7F; }))) Once(Kind::kUtf8, lines);
    if (marked_ && is(IsEscapedByte)) Once(Kind::kNoText, lines);
    if (lines.LineEnd() == ConfLines::End::kLf) Once(Kind::kBareLineFeed, lines);
  }

  void TakeActiveSetting(StringView name, int line) {
    if (!notes_.activeNames.emplace(name).second) {
      notes_.findings.push_back({line, Finding::Kind::kDuplicate, String(name)});
    }
  }

 private:
  void Once(Finding::Kind kind, const ConfLines& lines) {
    if (noted_.insert(kind).second) notes_.findings.push_back({lines.Number(), kind, {}});
  }

  ConfNotes& notes_;
  bool marked_ = false;
  std::set<Finding::Kind> noted_;
};

/// One reading of one file.
class Reading {
 public:
  struct Context {
    const Path& path;
    const Options& options;
    const Language& language;
    MessageBoxes& messages;
    ConfReader::BareLineFeeds bareLineFeeds;
  };

  /// @param notes null when nobody asks for them
  Reading(const Context& context, Document& settings, Document& series, ConfNotes* notes)
      : context_(context), settings_(settings.Fields()), series_(series.Fields()) {
    if (notes != nullptr) notes_.emplace(*notes);
  }

  /// @return whether the file was read to its end.
  bool Run() {
    Open();
    const bool asks = context_.bareLineFeeds == BareLineFeeds::kAsk;
    const bool repairs = !asks && context_.bareLineFeeds != BareLineFeeds::kEndLines;
    if (repairs && HasBareLineFeed() && !RepairFile()) return false;
    StringView line;
    while (NextLine(line)) {
      line = Trim(line);
      if (asks && Contains(line, u"\n")) {
        if (!RepairFile()) return false;
        // Kept: what was read before the question is read a second time, and the first line is
        // not trimmed then. What the windows show of such a file relies on it.
        if (!NextLine(line)) return true;
      }
      if (!TakeLine(line)) return false;
    }
    return true;
  }

  /// @return the number of the current line; 0 before the first one.
  [[nodiscard]] int LineNumber() const { return lines_.Number(); }
  [[nodiscard]] StringView Line() const { return Trim(rawLine_); }

  /// @return why a repair failed, which the user has been told; empty when none did.
  [[nodiscard]] const String& Trouble() const { return trouble_; }

 private:
  using BareLineFeeds = ConfReader::BareLineFeeds;

  /// The current line's setting with its value cut to what counts.
  struct Setting {
    StringView name;
    StringView value;
  };

  void Open() {
    std::string bytes = ReadBytes(context_.path);
    std::optional<ConfText> decoded = DecodeConfText(bytes);
    if (!decoded) {
      throw RuntimeError(0, u"ConfReader",
                         FinishedText(context_.language.Text(Message::kUtf16Text)));
    }
    if (notes_) notes_->Begin(*decoded, std::move(bytes));
    Restart(std::move(decoded->text));
  }

  void Restart(String text) {
    text_ = std::move(text);
    lines_ = ConfLines(text_, context_.bareLineFeeds == BareLineFeeds::kEndLines
                                  ? ConfLines::LineFeed::kEndsLine
                                  : ConfLines::LineFeed::kStays);
  }

  [[nodiscard]] bool HasBareLineFeed() const {
    ConfLines lines(text_);
    for (StringView line; lines.Next(line);) {
      if (Contains(line, u"\n")) return true;
    }
    return false;
  }

  bool NextLine(StringView& line) {
    if (!lines_.Next(line)) return false;
    rawLine_ = line;
    if (notes_) notes_->TakeLine(line, lines_);
    return true;
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
    if (context_.bareLineFeeds == BareLineFeeds::kRepairInMemory) {
      Restart(RepairLineEnds(text_));
      return true;
    }
    String text;
    if (!ReadTextFile(context_.path, text)) {
      trouble_ =
          FinishedText(context_.language.Text(Message::kCannotRead), {PathText(context_.path)});
      context_.messages.Show(trouble_, message_style::kOk);
      return false;
    }
    if (!WriteTextFile(context_.path, RepairLineEnds(text))) {
      trouble_ = FinishedText(context_.language.Text(Message::kLineEndsNotFixed));
      context_.messages.Show(trouble_, message_style::kCritical);
      return false;
    }
    Open();
    return true;
  }

  /// @return false when the user declines to go on.
  bool TakeLine(StringView line) {
    if (line.empty()) {
      comment_.clear();
      carriedComment_.clear();
      return true;
    }
    line_ = ParseConfLine(line);
    if (!line_.setting) {
      AppendComment(comment_, Trim(line_.text));
      return true;
    }
    const Setting setting{line_.name, CutValue()};
    if (!IsRepeatable(setting.name, context_.options.series)) return TakeSetting(setting);
    TakeSeriesEntry(setting);
    return true;
  }

  /// Cuts the line's value before a "//" remark and then before a tab; each cut adds the line to
  /// the comment block, so a line that has both is added twice.
  StringView CutValue() {
    StringView value = line_.value;
    for (const StringView mark : {StringView(u"//"), StringView(u"\t")}) {
      if (!Contains(value, mark)) continue;
      AppendComment(comment_, line_.text);
      value = CutBefore(value, mark);
    }
    return value;
  }

  bool TakeSetting(const Setting& setting) {
    if (notes_ && !line_.commented) notes_->TakeActiveSetting(setting.name, lines_.Number());
    const int index = settings_.IndexOf(setting.name);
    if (index < 0) {
      AddUnlessRemark(setting, settings_.Count());
      return true;
    }
    const std::shared_ptr<Field> known = settings_.Field(index);
    const std::shared_ptr<Parameter> disabled = known->Parameters().Parameter(1);
    if (disabled->Value() == kActive && !line_.commented) {
      if (!AcceptsDuplicate(setting.name)) return false;
      disabled->SetValue(kCommentedOut);
      override_ = true;
    }
    if (disabled->Value() == kCommentedOut) {
      Merge(setting, *known);
    } else {
      AddUnlessRemark(setting, index);
    }
    return true;
  }

  bool AcceptsDuplicate(StringView name) {
    if (context_.options.alwaysIgnoreDupParam) return true;
    return ShowMessage(context_.messages,
                       String(context_.language.Text(Message::kDuplicateSetting)),
                       message_style::kYesNo | message_style::kQuestion,
                       {name, PathText(context_.path)}) == Button::kYes;
  }

  /// A setting that is not known yet, or a commented-out line of an active one. The latter becomes
  /// a second field of that name, while its parameters go to the first: what looks fields up by
  /// name must not see it.
  /// @param first where the first field of that name stands, or will stand
  void AddUnlessRemark(const Setting& setting, int first) {
    if (line_.commented && IsRemarkName(setting.name)) {
      if (comment_.empty()) comment_ = carriedComment_;
      AppendComment(comment_, line_.text);
      return;
    }
    if (!comment_.empty()) carriedComment_ = std::exchange(comment_, String());
    settings_.AddField(setting.name, setting.value);
    Parameters& parameters = settings_.Field(first)->Parameters();
    parameters.AddParameter(u"Comments", carriedComment_);
    parameters.AddParameter(u"Disabled", line_.commented ? kCommentedOut : kActive);
  }

  /// A further line of a setting whose first line was commented out or gave way to a duplicate.
  void Merge(const Setting& setting, Field& known) {
    if (!line_.slashes && !override_) known.SetValue(setting.value);
    const std::shared_ptr<Parameter> comments = known.Parameters().Parameter(u"Comments");
    const String added = line_.commented ? comment_ : ForComments(line_.text);
    comments->SetValue(comments->Value() + String(kLineEnd) + added);
    comment_.clear();
  }

  void TakeSeriesEntry(const Setting& setting) {
    const std::shared_ptr<Field> known = series_.Field(setting.value);
    if (!known->Name().empty()) {
      const std::shared_ptr<Parameter> disabled = known->Parameters().Parameter(1);
      if (disabled->Value() == kCommentedOut && !line_.commented) disabled->SetValue(kActive);
      return;
    }
    const int index = series_.AddField(setting.value, {});
    Parameters& parameters = series_.Field(index)->Parameters();
    parameters.AddParameter(u"Type", setting.name);
    parameters.AddParameter(u"Disabled", line_.commented ? kCommentedOut : kActive);
    comment_.clear();
    carriedComment_.clear();
  }

  Context context_;
  Fields& settings_;
  Fields& series_;
  std::optional<NoteTaker> notes_;
  String text_;
  ConfLines lines_{StringView()};
  StringView rawLine_;
  String trouble_;
  ConfLine line_;
  String comment_;         // plain comment lines since the last blank line or setting
  String carriedComment_;  // the block of the last setting, for those below it that have none
  bool override_ = false;  // a duplicate was accepted; stays set for the rest of the file
};

}  // namespace

ConfCharset CharsetForSaving(const ConfNotes& server, const ConfNotes& distribution) {
  return server.ascii ? distribution.charset : server.charset;
}

ConfReader::ConfReader(const Options& options, const Language& language, MessageBoxes& messages,
                       BareLineFeeds bareLineFeeds)
    : options_(options), language_(language), messages_(messages), bareLineFeeds_(bareLineFeeds) {}

bool ConfReader::LoadConfFile(const Path& path, std::shared_ptr<Document>& settings,
                              std::shared_ptr<Document>& series, ConfNotes* notes) const {
  settings = std::make_shared<Document>();
  series = std::make_shared<Document>();
  if (notes != nullptr) *notes = ConfNotes();
  Reading reading({path, options_, language_, messages_, bareLineFeeds_}, *settings, *series,
                  notes);
  String about = PathText(path);
  String trouble;
  int line = 0;
  try {
    const bool complete = reading.Run();
    if (notes != nullptr) notes->trouble = reading.Trouble();
    return complete;
  } catch (const DocError& error) {
    line = reading.LineNumber();
    trouble = error.Description();
    about =
        FinishedText(language_.Text(Message::kPlaceInFile), {about, ToText(line), reading.Line()});
    if (notes != nullptr) {
      notes->findings.push_back({line, Finding::Kind::kRejectedName, String(reading.Line())});
    }
  } catch (const std::exception& error) {
    trouble = DescriptionOf(error);
  }
  if (notes != nullptr) {
    notes->trouble = trouble;
    notes->troubleLine = line;
  }
  ShowError(messages_, language_, trouble, about);
  return false;
}

String RepairLineEnds(StringView text) { return ReplaceAll(text, u"\n", kLineEnd); }

}  // namespace quenmar
