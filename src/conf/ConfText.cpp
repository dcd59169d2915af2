#include "conf/ConfText.h"

#include "conf/Functions.h"
#include "text/Charset.h"
#include "text/RuntimeError.h"

namespace quenmar {

namespace {

bool IsAscii(std::string_view bytes) {
  // In blocks without a branch in between, which the compiler turns into vector instructions.
  constexpr size_t kBlock = 64;
  unsigned char high = 0;
  while (bytes.size() >= kBlock && high < 0x80) {
    for (size_t i = 0; i < kBlock; ++i) high |= static_cast<unsigned char>(bytes[i]);
    bytes.remove_prefix(kBlock);
  }
  for (const char byte : bytes) high |= static_cast<unsigned char>(byte);
  return high < 0x80;
}

}  // namespace

StringView CharsetName(ConfCharset charset) {
  return charset == ConfCharset::kUtf8 ? u"UTF-8" : u"Windows-1252";
}

ConfEncoding EncodingOf(std::string_view bytes) {
  ConfEncoding encoding;
  encoding.utf16 = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
  encoding.mark = bytes.starts_with(kUtf8Mark);
  encoding.ascii = IsAscii(bytes);
  if (encoding.mark || (!encoding.ascii && IsUtf8(bytes))) encoding.charset = ConfCharset::kUtf8;
  return encoding;
}

String DecodeConfText(std::string_view bytes, ConfCharset charset) {
  return charset == ConfCharset::kUtf8 ? FromUtf8KeepingBytes(bytes) : FromWindows1252(bytes);
}

std::optional<std::string> EncodeConfText(StringView text, ConfCharset charset) {
  return charset == ConfCharset::kUtf8 ? ToUtf8KeepingBytes(text) : ToWindows1252(text);
}

std::string EncodeForSaving(StringView text, StringView about, ConfCharset charset,
                            const Language& language) {
  std::optional<std::string> bytes = EncodeConfText(text, charset);
  if (bytes) return *std::move(bytes);
  throw RuntimeError(
      0, u"ConfText",
      FinishedText(language.Text(Message::kCharacterLacking), {about, CharsetName(charset)}));
}

}  // namespace quenmar
