#include "conf/ConfLine.h"

#include <algorithm>
#include <array>

#include "docmodel/XmlText.h"
#include "text/CaseFolding.h"

namespace quenmar {

namespace {

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// @return `value` before the first `mark`, trimmed; `value` as it is when it has none.
StringView CutBefore(StringView value, StringView mark) {
  const size_t hit = value.find(mark);
  return hit == StringView::npos ? value : Trim(value.substr(0, hit));
}

/// @return what follows each "{" of the option that names the repeatable settings.
std::vector<StringView> ListedIn(StringView series) {
  std::vector<StringView> listed;
  for (size_t open = series.find(u'{'); open != StringView::npos;
       open = series.find(u'{', open + 1)) {
    listed.push_back(series.substr(open + 1));
  }
  return listed;
}

/// @param name of a setting, as bytes or characters
/// @param lower makes a character of the name small
/// @return whether the name and a "}" begin one of the listed texts.
template <class Name, class Lower>
bool IsListed(Name name, const std::vector<StringView>& listed, Lower lower) {
  return std::any_of(listed.begin(), listed.end(), [&](StringView text) {
    return text.size() > name.size() && text[name.size()] == u'}' &&
           std::equal(name.begin(), name.end(), text.begin(),
                      [&](auto own, char16_t stored) { return lower(own) == stored; });
  });
}

}  // namespace

std::string_view BytesOf(LineEnd end) {
  constexpr std::array<std::string_view, 4> kEnds = {"", "\r", "\r\n", "\n"};
  return kEnds.at(static_cast<size_t>(end));
}

std::string_view TrimBytes(std::string_view line) {
  const size_t first = line.find_first_not_of(' ');
  if (first == std::string_view::npos) return line.substr(line.size());
  return line.substr(first, line.find_last_not_of(' ') - first + 1);
}

ConfLine ConfGrammar::Parse(std::string_view line) const {
  ConfLine parsed;
  parsed.bytes = line;
  parsed.text = line;
  if (line.empty()) return parsed;
  parsed.kind = ConfLine::Kind::kComment;
  const bool slashes = line.starts_with("//");
  if (slashes) parsed.text.remove_prefix(2);
  if (parsed.text.empty() || !IsLetter(parsed.text.front())) return parsed;
  const size_t colon = parsed.text.find(':');
  if (colon == std::string_view::npos) return parsed;
  const std::string_view name = parsed.text.substr(0, colon);
  if (name.find(' ') != std::string_view::npos) return parsed;

  parsed.commented = slashes;
  parsed.name = name;
  parsed.written = TrimBytes(parsed.text.substr(colon + 1));
  parsed.value = parsed.written;
  const size_t remark = parsed.value.find("//");
  parsed.hasRemark = remark != std::string_view::npos;
  if (parsed.hasRemark) parsed.value = TrimBytes(parsed.value.substr(0, remark));
  const size_t tab = parsed.value.find('\t');
  parsed.hasTab = tab != std::string_view::npos;
  if (parsed.hasTab) parsed.value = TrimBytes(parsed.value.substr(0, tab));

  if (Repeats(name)) {
    parsed.kind = ConfLine::Kind::kSeriesEntry;
  } else if (slashes && IsNoteName(DecodeConfText(name, charset_))) {
    parsed.kind = ConfLine::Kind::kNote;
  } else {
    parsed.kind = ConfLine::Kind::kSetting;
  }
  return parsed;
}

ConfGrammar::ConfGrammar(StringView series, ConfCharset charset)
    : series_(series), listed_(ListedIn(series)), charset_(charset) {}

bool ConfGrammar::Repeats(std::string_view name) const {
  if (!std::all_of(name.begin(), name.end(), IsAscii)) {
    return IsRepeatable(DecodeConfText(name, charset_), series_);
  }
  return IsListed(name, listed_, [](char own) { return static_cast<char16_t>(AsciiLower(own)); });
}

String ReadBackValue(StringView value) {
  String written(value);
  XmlUnescape(XmlEscape(written));  // as a Field has it; reading folds it no further
  return String(CutBefore(CutBefore(Trim(written), u"//"), u"\t"));
}

bool IsNoteName(StringView name) {
  return EqualIgnoringCase(name, u"note") || EqualIgnoringCase(name, u"example");
}

bool IsRepeatable(StringView name, StringView series) {
  return IsListed(name, ListedIn(series), [](char16_t own) { return ToLower(own); });
}

ConfLines::ConfLines(std::string_view bytes, LineFeed lineFeed)
    : bytes_(bytes),
      lineFeedEnds_(lineFeed == LineFeed::kEndsLine),
      nextCr_(Find('\r')),
      nextLf_(lineFeedEnds_ ? Find('\n') : bytes.size()) {}

size_t ConfLines::Find(char end) const {
  return std::min(bytes_.find(end, position_), bytes_.size());
}

bool ConfLines::Next(std::string_view& line) {
  if (position_ == bytes_.size()) return false;
  if (nextCr_ < position_) nextCr_ = Find('\r');
  if (nextLf_ < position_) nextLf_ = Find('\n');
  const size_t lineEnd = std::min(nextCr_, nextLf_);
  line = bytes_.substr(position_, lineEnd - position_);
  position_ = lineEnd;
  end_ = LineEnd::kNone;
  if (lineEnd == nextCr_ && lineEnd < bytes_.size()) {
    const bool pair = lineEnd + 1 < bytes_.size() && bytes_[lineEnd + 1] == '\n';
    end_ = pair ? LineEnd::kCrLf : LineEnd::kCr;
  } else if (lineEnd < bytes_.size()) {
    end_ = LineEnd::kLf;
  }
  position_ += BytesOf(end_).size();
  ++number_;
  return true;
}

}  // namespace quenmar
