#include "cli/TreeJson.h"

#include <string_view>
#include <utility>

#include "cli/OutputBuffer.h"
#include "text/Charset.h"

namespace quenmar {

namespace {

/// @return how JSON writes a control character, a quotation mark or a backslash; empty for a
/// character that needs no escape.
std::string_view EscapeOf(char16_t character) {
  switch (character) {
    case u'"':
      return "\\\"";
    case u'\\':
      return "\\\\";
    case u'\b':
      return "\\b";
    case u'\f':
      return "\\f";
    case u'\n':
      return "\\n";
    case u'\r':
      return "\\r";
    case u'\t':
      return "\\t";
    default:
      return {};
  }
}

bool IsPlain(char16_t character) {
  return character >= 0x20 && character < 0x80 && character != u'"' && character != u'\\';
}

void AppendSpecial(OutputBuffer& out, char16_t character) {
  const std::string_view escape = EscapeOf(character);
  out.Append(escape);
  if (!escape.empty()) return;
  constexpr std::string_view kDigits = "0123456789abcdef";
  out.Append("\\u00");
  out.Append(kDigits[character >> 4U]);
  out.Append(kDigits[character & 0xFU]);
}

void AppendText(OutputBuffer& out, StringView text) {
  out.Append('"');
  for (size_t i = 0; i < text.size();) {
    if (IsPlain(text[i])) {
      out.Append(static_cast<char>(text[i++]));
    } else if (text[i] < 0x80) {
      AppendSpecial(out, text[i++]);
    } else {
      const size_t start = i;  // halves of a surrogate pair stay together
      while (i < text.size() && text[i] >= 0x80) ++i;
      out.Append(ToUtf8(text.substr(start, i - start)));
    }
  }
  out.Append('"');
}

/// Appends the two members that fields and parameters begin with.
template <class Element>
void AppendNameAndValue(OutputBuffer& out, const Element& element) {
  out.Append(R"({"name":)");
  AppendText(out, element.Name());
  out.Append(R"(,"value":)");
  AppendText(out, element.Value());
}

void AppendField(OutputBuffer& out, const Field& field) {
  AppendNameAndValue(out, field);
  out.Append(R"(,"parameters":[)");
  std::string_view separator;
  for (const Parameter& parameter : field.Parameters()) {
    out.Append(std::exchange(separator, ","));
    AppendNameAndValue(out, parameter);
    out.Append('}');
  }
  out.Append("]}");
}

}  // namespace

void PrintTreesJson(std::ostream& out, std::initializer_list<NamedTree> trees) {
  OutputBuffer buffer(out);
  std::string_view separator = "{\n\"";
  for (const auto& [key, tree] : trees) {
    buffer.Append(std::exchange(separator, ",\n\""));
    buffer.Append(key);
    buffer.Append("\": [");
    std::string_view start = "\n ";
    for (const Field& field : tree->Fields()) {
      buffer.Append(std::exchange(start, ",\n "));
      AppendField(buffer, field);
    }
    buffer.Append(']');
  }
  buffer.Append("\n}\n");
  buffer.Flush();
}

}  // namespace quenmar
