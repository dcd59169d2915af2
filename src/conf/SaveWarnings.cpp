#include "conf/SaveWarnings.h"

#include <algorithm>
#include <set>
#include <utility>

#include "conf/ConfLine.h"
#include "conf/ConfSetting.h"
#include "conf/Functions.h"

namespace quenmar {

namespace {

bool IsReadOtherwise(StringView value) {
  // Long values need no copy: without these there is no remark and no tab. Entity forms are folded.
  return value.find_first_of(u"/\t") != StringView::npos && ReadBackValue(value) != Trim(value);
}

int CountOtherValues(const Fields& settings) {
  int count = 0;
  for (const Field& field : settings) count += IsReadOtherwise(field.Value()) ? 1 : 0;
  return count;
}

int CountMissingMandatory(const Document& settings, const Document& distribution) {
  std::set<StringView> missing;
  for (const Field& field : distribution.Fields()) {
    const StringView name = field.Name();
    if (IsMandatory(distribution, name) && settings.Fields().IndexOf(name) < 0)
      missing.insert(name);
  }
  return static_cast<int>(missing.size());
}

}  // namespace

std::optional<ConfCharset> OtherCharset(std::string_view bytes, ConfCharset charset) {
  const ConfEncoding readAgain = EncodingOf(bytes);
  const bool same = readAgain.utf16 || readAgain.ascii || readAgain.charset == charset;
  return same ? std::nullopt : std::optional(readAgain.charset);
}

String CharsetWarning(std::string_view bytes, ConfCharset charset, const Language& language) {
  const auto other = OtherCharset(bytes, charset);
  return other ? FinishedText(language.Text(Message::kReadAsOtherCharset), {CharsetName(*other)})
               : String();
}

SaveWarnings ListSaveWarnings(const Document& settings, const Document& distribution,
                              const SaveChanges& changes, Layout layout) {
  SaveWarnings warnings;
  warnings.otherValues = CountOtherValues(settings.Fields());
  warnings.lostCommentLines = changes.lostCommentLines;
  if (layout == Layout::kSettings) {  // with the others the user has asked for it
    warnings.activated = static_cast<int>(std::count_if(
        changes.changes.begin(), changes.changes.end(),
        [](const SaveChange& change) { return change.kind == SaveChange::Kind::kActivated; }));
  }
  warnings.missingMandatory = CountMissingMandatory(settings, distribution);
  return warnings;
}

String WarningText(const SaveWarnings& warnings, const Language& language) {
  String text;
  const auto add = [&text](StringView sentence) {
    if (!text.empty()) text += kLineEnd;
    text += sentence;
  };
  for (const auto& [count, key] :
       {std::pair(warnings.otherValues, Message::kValuesReadBack),
        std::pair(warnings.lostCommentLines, Message::kCommentsLost),
        std::pair(warnings.activated, Message::kSettingsActivated),
        std::pair(warnings.missingMandatory, Message::kMandatoryMissing)}) {
    if (count > 0) add(FinishedText(language.Text(key), {ToText(count)}));
  }
  if (!warnings.charset.empty()) add(warnings.charset);
  return text;
}

}  // namespace quenmar
