#include "conf/ConfText.h"

#include <algorithm>

#include "text/Charset.h"

namespace quenmar {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

}  // namespace

StringView CharsetName(ConfCharset charset) {
  return charset == ConfCharset::kUtf8 ? u"UTF-8" : u"Windows-1252";
}

std::optional<ConfText> DecodeConfText(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) return std::nullopt;
  ConfText decoded;
  decoded.mark = bytes.starts_with(kUtf8Mark);
  decoded.ascii = !decoded.mark && IsAscii(bytes);
  if (decoded.mark) bytes.remove_prefix(kUtf8Mark.size());
  if (decoded.mark || (!decoded.ascii && IsUtf8(bytes))) decoded.charset = ConfCharset::kUtf8;
  decoded.text =
      decoded.charset == ConfCharset::kUtf8 ? FromUtf8KeepingBytes(bytes) : FromWindows1252(bytes);
  return decoded;
}

std::optional<std::string> EncodeConfText(StringView text, ConfCharset charset) {
  return charset == ConfCharset::kUtf8 ? ToUtf8KeepingBytes(text) : ToWindows1252(text);
}

}  // namespace quenmar
