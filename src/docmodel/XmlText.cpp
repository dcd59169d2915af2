#include "docmodel/XmlText.h"

namespace quenmar {

namespace {

void ReplaceIn(String& text, StringView from, StringView to) {
  if (Contains(text, from)) text = ReplaceAll(text, from, to);
}

}  // namespace

String& XmlEscape(String& text) {
  ReplaceIn(text, u"&", u"&amp;");
  ReplaceIn(text, u"<", u"&lt;");
  ReplaceIn(text, u">", u"&gt;");
  return text;
}

String& XmlUnescape(String& text) {
  if (!Contains(text, u"&")) return text;
  ReplaceIn(text, u"&amp;", u"&");
  ReplaceIn(text, u"&lt;", u"<");
  ReplaceIn(text, u"&gt;", u">");
  return text;
}

}  // namespace quenmar
