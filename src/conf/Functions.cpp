#include "conf/Functions.h"

#include <algorithm>
#include <exception>

#include "text/Charset.h"

namespace quenmar {

namespace {

String FillPlaceholders(StringView text, std::initializer_list<StringView> placeholders) {
  String filled;
  for (size_t i = 0; i < text.size(); ++i) {
    const size_t number = text[i] == u'%' && i + 1 < text.size() && text[i + 1] >= u'1'
                              ? static_cast<size_t>(text[i + 1] - u'1')
                              : placeholders.size();
    if (number < placeholders.size()) {
      filled += placeholders.begin()[number];
      ++i;
    } else {
      filled += text[i];
    }
  }
  return filled;
}

}  // namespace

bool ReadTextFile(const Path& path, String& text) {
  try {
    text = FromWindows1252(ReadBytes(path));
    return true;
  } catch (const std::exception&) {
    return false;  // the caller reports it
  }
}

bool WriteTextFile(const Path& path, StringView text) {
  const auto bytes = ToWindows1252(text);
  if (!bytes) return false;
  try {
    ReplaceBytes(path, *bytes);
    return true;
  } catch (const std::exception&) {
    return false;  // the caller reports it
  }
}

String FinishedText(StringView text, std::initializer_list<StringView> placeholders) {
  return FillPlaceholders(ReplaceAll(text, u"\\n", kLineEnd), placeholders);
}

Button ShowMessage(MessageBoxes& messages, StringView text, int buttons,
                   std::initializer_list<StringView> placeholders, const String& details,
                   const String& offer) {
  const String finished = FinishedText(text, placeholders);
  if (details.empty() && offer.empty()) return messages.Show(finished, buttons);
  return messages.ShowWithDetails(finished, buttons, details, offer);
}

void ShowError(MessageBoxes& messages, const Language& language, StringView description,
               StringView about) {
  ShowMessage(messages, language.Text(Message::kError) + u"%1\\n%2", message_style::kOk,
              {description, about});
}

String& NotAvailable(String& text) {
  if (text.empty()) text = u"** n/a **";
  return text;
}

StringView TabLabel(StringView caption) { return caption.substr(0, caption.find(u'(')); }

void SelectListItem(StringView text, CheckList& list) {
  const auto hit = std::find_if(list.begin(), list.end(),
                                [text](const CheckItem& item) { return item.text == text; });
  if (hit != list.end()) hit->checked = true;
}

bool IsLetter(StringView text) {
  if (text.empty()) return false;
  const char16_t first = text.front();
  return (first >= u'A' && first <= u'Z') || (first >= u'a' && first <= u'z');
}

}  // namespace quenmar
