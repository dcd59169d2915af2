#include "conf/ConfReader.h"

#include <algorithm>
#include <utility>

#include "conf/ConfLine.h"
#include "conf/EndApplication.h"
#include "conf/Functions.h"
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

/// One reading of one file.
class Reading {
 public:
  struct Context {
    const Path& path;
    const Options& options;
    const Language& language;
    MessageBoxes& messages;
    ConfReader::LineEndRepair repair;
  };

  Reading(const Context& context, Document& settings, Document& series)
      : context_(context), settings_(settings.Fields()), series_(series.Fields()) {}

  /// @return whether the file was read to its end.
  bool Run() {
    Open();
    StringView line;
    while (lines_.Next(line)) {
      line = Trim(line);
      if (Contains(line, u"\n")) {
        if (!RepairFile()) return false;
        // The first line of the repaired text is taken as it stands, and what was read before the
        // repair is read a second time.
        if (!lines_.Next(line)) return true;
      }
      if (!TakeLine(line)) return false;
    }
    return true;
  }

 private:
  /// The current line's setting with its value cut to what counts.
  struct Setting {
    StringView name;
    StringView value;
  };

  void Open() { Restart(FromWindows1252(ReadBytes(context_.path))); }

  void Restart(String text) {
    text_ = std::move(text);
    lines_ = ConfLines(text_);
  }

  Button Ask(MessageKey key, int style, std::initializer_list<StringView> placeholders = {}) {
    return ShowMessage(context_.messages, String(context_.language.Text(key)), style, placeholders);
  }

  bool RepairFile() {
    if (Ask(LNG43, message_style::kYesNo | message_style::kQuestion) != Button::kYes) {
      throw EndApplication();
    }
    if (context_.repair == ConfReader::LineEndRepair::kInMemory) {
      Restart(RepairLineEnds(text_));
      return true;
    }
    String text;
    if (!ReadTextFile(context_.path, text)) {
      Ask(LNG44, message_style::kOk, {PathText(context_.path)});
      return false;
    }
    if (!WriteTextFile(context_.path, RepairLineEnds(text))) {
      Ask(LNG45, message_style::kCritical);
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
    return Ask(LNG46, message_style::kYesNo | message_style::kQuestion,
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
  String text_;
  ConfLines lines_{StringView()};
  ConfLine line_;
  String comment_;         // plain comment lines since the last blank line or setting
  String carriedComment_;  // the block of the last setting, for those below it that have none
  bool override_ = false;  // a duplicate was accepted; stays set for the rest of the file
};

}  // namespace

ConfReader::ConfReader(const Options& options, const Language& language, MessageBoxes& messages,
                       LineEndRepair repair)
    : options_(options), language_(language), messages_(messages), repair_(repair) {}

bool ConfReader::LoadConfFile(const Path& path, std::shared_ptr<Document>& settings,
                              std::shared_ptr<Document>& series) const {
  settings = std::make_shared<Document>();
  series = std::make_shared<Document>();
  try {
    return Reading({path, options_, language_, messages_, repair_}, *settings, *series).Run();
  } catch (const std::exception& error) {
    ShowMessage(messages_, language_.Text(LNG42) + DescriptionOf(error), message_style::kOk);
    return false;
  }
}

String RepairLineEnds(StringView text) { return ReplaceAll(text, u"\n", kLineEnd); }

}  // namespace quenmar
