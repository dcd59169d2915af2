#include "registry/RegistryFile.h"

#include <utility>

#include "text/CaseFolding.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

constexpr StringView kHeader8Bit = u"REGEDIT4";
constexpr StringView kHeaderUtf16 = u"Windows Registry Editor Version 5.00";
constexpr std::string_view kByteOrderMark = "\xFF\xFE";
constexpr StringView kBlanks = u" \t\r\n";
constexpr StringView kNotInLines(u"\r\n\0", 3);

/// @return the offset behind the line that starts at `start`, its line end included.
size_t EndOfLine(StringView text, size_t start) {
  const size_t end = text.find(u'\n', start);
  return end == StringView::npos ? text.size() : end + 1;
}

String Quoted(StringView text) {
  return u"\"" + ReplaceAll(ReplaceAll(text, u"\\", u"\\\\"), u"\"", u"\\\"") + u"\"";
}

/// Takes a quoted text off the front of `rest`. Only a quote and a backslash can be escaped: any
/// other backslash is an ordinary character, as in a path typed by hand.
/// @return nothing when `rest` does not start with a quoted text or its end is missing.
std::optional<String> TakeQuoted(StringView& rest) {
  if (!rest.starts_with(u'"')) return std::nullopt;
  String text;
  for (size_t i = 1; i < rest.size(); ++i) {
    if (rest[i] == u'"') {
      rest.remove_prefix(i + 1);
      return text;
    }
    const bool escape =
        rest[i] == u'\\' && i + 1 < rest.size() && (rest[i + 1] == u'\\' || rest[i + 1] == u'"');
    if (escape) ++i;
    text.push_back(rest[i]);
  }
  return std::nullopt;
}

struct Entry {
  String name;
  StringView data;
};

/// @return name and data of a value's line; nothing for a line that is not a value.
std::optional<Entry> ParseEntry(StringView line) {
  StringView rest = Trim(line, kBlanks);
  String name;
  if (rest.starts_with(u'@')) {
    rest.remove_prefix(1);
  } else if (auto quoted = TakeQuoted(rest)) {
    name = std::move(*quoted);
  } else {
    return std::nullopt;
  }
  rest = Trim(rest, kBlanks);
  if (!rest.starts_with(u'=')) return std::nullopt;
  return Entry{std::move(name), Trim(rest.substr(1), kBlanks)};
}

/// @return the text of a value's data when it is a string, a comment behind it allowed.
std::optional<String> ParseText(StringView data) {
  std::optional<String> text = TakeQuoted(data);
  const StringView rest = Trim(data, kBlanks);
  return rest.empty() || rest.starts_with(u';') ? text : std::nullopt;
}

/// @return the offset behind the line that starts at `start` and, for hexadecimal data, behind the
/// lines that continue it. What does not look like such data is not a continuation, so that a stray
/// backslash hides no value.
size_t EndOfEntry(StringView text, size_t start) {
  size_t end = EndOfLine(text, start);
  StringView line = Trim(text.substr(start, end - start), kBlanks);
  if (!line.ends_with(u'\\')) return end;
  const auto entry = ParseEntry(line);
  if (!entry || !EqualIgnoringCase(entry->data.substr(0, 3), u"hex")) return end;
  while (line.ends_with(u'\\')) {
    const size_t next = EndOfLine(text, end);
    line = Trim(text.substr(end, next - end), kBlanks);
    const bool data = line.find_first_not_of(u"0123456789ABCDEFabcdef,\\ \t") == StringView::npos;
    if (line.empty() || !data) break;
    end = next;
  }
  return end;
}

/// @return what is between the brackets of a key's line; empty when it is not closed.
StringView KeyOf(StringView line) {
  const size_t end = line.rfind(u']');
  return end == StringView::npos ? StringView{} : line.substr(1, end - 1);
}

/// @return whether `[-KEY]` removes `key`: that key itself or one above it.
bool Removes(StringView section, StringView key) {
  if (!section.starts_with(u'-')) return false;
  section.remove_prefix(1);
  return EqualIgnoringCase(section, key.substr(0, section.size())) &&
         (key.size() == section.size() || key[section.size()] == u'\\');
}

}  // namespace

RegistryFile::RegistryFile() : text_(String(kHeader8Bit).append(kLineEnd).append(kLineEnd)) {}

std::optional<RegistryFile> RegistryFile::Parse(std::string_view bytes) {
  RegistryFile file;
  if (bytes.empty()) return file;
  if (bytes.starts_with(kByteOrderMark)) {
    if (bytes.size() % 2 != 0) return std::nullopt;  // cut off within a character
    file.encoding_ = Encoding::kUtf16;
    file.text_ = FromUtf16Le(bytes.substr(kByteOrderMark.size()));
  } else {
    file.text_ = FromWindows1252(bytes);
  }
  const StringView header =
      Trim(StringView(file.text_).substr(0, EndOfLine(file.text_, 0)), kBlanks);
  if (header != kHeader8Bit && header != kHeaderUtf16) return std::nullopt;
  return file;
}

std::string RegistryFile::Bytes() const {
  if (encoding_ == Encoding::kUtf16) return std::string(kByteOrderMark) + ToUtf16Le(text_);
  return ToWindows1252(text_).value();  // `Set` makes sure that the text fits
}

std::optional<String> RegistryFile::Find(StringView key, StringView name) const {
  const Located located = Locate(key, name);
  return located.value ? ParseText(located.value->data) : std::nullopt;
}

bool RegistryFile::Set(StringView key, StringView name, StringView value) {
  for (const StringView text : {key, name, value}) {
    if (text.find_first_of(kNotInLines) != StringView::npos) return false;
  }
  const String line = (name.empty() ? String(u"@") : Quoted(name)) + u"=" + Quoted(value);
  const Located located = Locate(key, name);
  if (located.value) {
    const size_t start = located.value->start;
    text_.replace(start, located.value->end - start, String(line).append(kLineEnd));
  } else if (located.endOfKey) {
    InsertLine(*located.endOfKey, line);
  } else {
    const bool parted = text_.ends_with(u"\n\n") || text_.ends_with(u"\n\r\n");
    if (!parted) InsertLine(text_.size(), {});
    InsertLine(text_.size(), String(u"[").append(key).append(u"]"));
    InsertLine(text_.size(), line);
  }
  if (encoding_ == Encoding::kWindows1252 && !FitsWindows1252(text_)) {
    encoding_ = Encoding::kUtf16;
    const size_t header = text_.substr(0, EndOfLine(text_, 0)).find(kHeader8Bit);
    if (header != String::npos) text_.replace(header, kHeader8Bit.size(), kHeaderUtf16);
  }
  return true;
}

RegistryFile::Located RegistryFile::Locate(StringView key, StringView name) const {
  const StringView text = text_;
  Located located;
  bool inside = false;
  for (size_t start = 0, end = 0; start < text.size(); start = end) {
    end = EndOfEntry(text, start);
    const StringView line = Trim(text.substr(start, end - start), kBlanks);
    if (line.starts_with(u'[')) {
      const StringView section = KeyOf(line);
      inside = EqualIgnoringCase(section, key);
      if (inside) located.endOfKey = end;
      if (Removes(section, key)) located = {};
    } else if (const auto entry = inside ? ParseEntry(line) : std::nullopt) {
      located.endOfKey = end;
      if (EqualIgnoringCase(entry->name, name)) located.value = Place{start, end, entry->data};
    }
  }
  return located;
}

void RegistryFile::InsertLine(size_t position, const String& line) {
  // The last line of a file may lack its line end.
  const bool endMissing = text_[position - 1] != u'\n';
  text_.insert(position, (endMissing ? String(kLineEnd) : String()) + line + String(kLineEnd));
}

}  // namespace quenmar
