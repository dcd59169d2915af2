#include "cli/Printable.h"

#include "text/Charset.h"

namespace quenmar {

namespace {

bool IsControl(char16_t character) {
  return character < u' ' || (character >= 0x7F && character <= 0x9F);
}

}  // namespace

std::string Printable(StringView text) {
  String shown;
  for (const char16_t character : text) {
    if (character == u'\t') {
      shown += u"\\t";
    } else {
      shown += IsControl(character) ? u'?' : character;
    }
  }
  return ToUtf8(shown);
}

std::string PrintableLines(StringView text) {
  const String plain = ReplaceAll(text, kLineEnd, u"\n");
  std::string shown;
  const char* separator = "";
  for (const StringView line : Split(plain, u'\n')) {
    shown += separator + Printable(line);
    separator = "\n";
  }
  return shown;
}

}  // namespace quenmar
