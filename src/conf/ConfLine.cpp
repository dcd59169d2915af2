#include "conf/ConfLine.h"

#include <algorithm>

#include "conf/Functions.h"
#include "docmodel/XmlText.h"
#include "text/CaseFolding.h"

namespace quenmar {

namespace {

constexpr StringView kSlashes = u"//";

}  // namespace

ConfLine ParseConfLine(StringView line) {
  ConfLine parsed;
  parsed.slashes = line.starts_with(kSlashes);
  parsed.text = parsed.slashes ? line.substr(kSlashes.size()) : line;
  const size_t colon = parsed.text.find(u':');
  if (colon == StringView::npos || !IsLetter(parsed.text)) return parsed;

  parsed.commented = parsed.slashes;
  // Never empty: the text begins with a letter.
  const StringView name = parsed.text.substr(0, colon);
  if (Contains(name, u" ")) return parsed;
  parsed.setting = true;
  parsed.name = name;
  parsed.value = Trim(parsed.text.substr(colon + 1));
  return parsed;
}

StringView CutBefore(StringView value, StringView mark) {
  const size_t hit = value.find(mark);
  return hit == StringView::npos ? value : Trim(value.substr(0, hit));
}

StringView EffectiveValue(StringView value) { return CutBefore(CutBefore(value, kSlashes), u"\t"); }

String ReadBackValue(StringView value) {
  String written(value);
  XmlUnescape(XmlEscape(written));  // as a Field holds it; folding it again on reading adds nothing
  return String(EffectiveValue(Trim(written)));
}

bool IsRemarkName(StringView name) {
  return EqualIgnoringCase(name, u"note") || EqualIgnoringCase(name, u"example");
}

bool IsRepeatable(StringView name, StringView series) {
  // Finds "{name}" without building it: every line of a file asks.
  for (size_t open = series.find(u'{'); open != StringView::npos;
       open = series.find(u'{', open + 1)) {
    const StringView listed = series.substr(open + 1);
    if (listed.size() > name.size() && listed[name.size()] == u'}' &&
        std::equal(name.begin(), name.end(), listed.begin(),
                   [](char16_t own, char16_t stored) { return ToLower(own) == stored; })) {
      return true;
    }
  }
  return false;
}

bool ConfLines::Next(StringView& line) {
  if (rest_.empty()) return false;
  const bool lineFeedEnds = lineFeed_ == LineFeed::kEndsLine;
  const auto* const end = std::find_if(rest_.begin(), rest_.end(), [lineFeedEnds](char16_t c) {
    return c == u'\r' || (c == u'\n' && lineFeedEnds);
  });
  line = rest_.substr(0, static_cast<size_t>(end - rest_.begin()));
  rest_.remove_prefix(line.size());
  end_ = End::kNone;
  if (rest_.starts_with(kLineEnd)) {
    end_ = End::kCrLf;
  } else if (!rest_.empty()) {
    end_ = rest_.front() == u'\r' ? End::kCr : End::kLf;
  }
  rest_.remove_prefix(end_ == End::kCrLf ? kLineEnd.size() : end_ == End::kNone ? 0 : 1);
  ++number_;
  return true;
}

}  // namespace quenmar
