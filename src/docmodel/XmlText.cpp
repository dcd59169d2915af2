#include "docmodel/XmlText.h"

#include <algorithm>

namespace quenmar {

namespace {

void ReplaceIn(String& text, StringView from, StringView to) {
  if (Contains(text, from)) text = ReplaceAll(text, from, to);
}

}  // namespace

String& XmlEscape(String& text) {
  const auto special = [](char16_t c) { return c == u'&' || c == u'<' || c == u'>'; };
  if (std::none_of(text.begin(), text.end(), special)) return text;
  ReplaceIn(text, u"&", u"&amp;");
  ReplaceIn(text, u"<", u"&lt;");
  ReplaceIn(text, u">", u"&gt;");
  return text;
}

String& XmlUnescape(String& text) {
  if (text.find(u'&') == String::npos) return text;
  ReplaceIn(text, u"&amp;", u"&");
  ReplaceIn(text, u"&lt;", u"<");
  ReplaceIn(text, u"&gt;", u">");
  return text;
}

}  // namespace quenmar
