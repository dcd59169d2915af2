#include "text/Charset.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace quenmar {

namespace {

constexpr char16_t kReplacement = 0xFFFD;

// A byte that is not part of well-formed UTF-8 is kept as this plus its number: an unpaired
// surrogate, which well-formed UTF-8 never decodes to.
constexpr char16_t kEscapedByte = 0xDC00;

// The code points of the bytes 0x80 to 0x9F; every other byte is the code point of the same number.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char16_t CharacterOf(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code >= 0x80 && code <= 0x9F ? kHighControls[code - 0x80U] : code;
}

/// @return the byte of `character`, or -1 when the code page lacks it.
int ByteOf(char16_t character) {
  if (character < 0x80 || (character > 0x9F && character <= 0xFF)) return character;
  const auto* const hit = std::find(kHighControls.begin(), kHighControls.end(), character);
  return hit == kHighControls.end() ? -1 : static_cast<int>(0x80 + (hit - kHighControls.begin()));
}

struct Decoded {
  char32_t codePoint;
  size_t length;  // in bytes
  bool wellFormed = true;
};

constexpr Decoded kMalformed = {kReplacement, 1, false};

/// Decodes the sequence at the start of `bytes` (not empty).
Decoded DecodeUtf8(std::string_view bytes) {
  const auto at = [&bytes](size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char lead = at(0);
  if (lead < 0x80) return {lead, 1};
  const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return kMalformed;
  char32_t codePoint = lead & (0x7FU >> length);
  for (size_t i = 1; i < length; ++i) {
    if ((at(i) & 0xC0U) != 0x80) return kMalformed;
    codePoint = (codePoint << 6U) | (at(i) & 0x3FU);
  }
  constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
  if (codePoint < kSmallest.at(length) || surrogate || codePoint > 0x10FFFF) {
    return kMalformed;
  }
  return {codePoint, length};
}

void AppendUtf8(std::string& bytes, char32_t codePoint) {
  const auto trail = [codePoint](unsigned shift) {
    return static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU));
  };
  if (codePoint < 0x80) {
    bytes += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    bytes += {static_cast<char>(0xC0U | (codePoint >> 6U)), trail(0)};
  } else if (codePoint < 0x10000) {
    bytes += {static_cast<char>(0xE0U | (codePoint >> 12U)), trail(6), trail(0)};
  } else {
    bytes += {static_cast<char>(0xF0U | (codePoint >> 18U)), trail(12), trail(6), trail(0)};
  }
}

bool IsHighSurrogate(char16_t character) { return character >= 0xD800 && character <= 0xDBFF; }
bool IsLowSurrogate(char16_t character) { return character >= 0xDC00 && character <= 0xDFFF; }

String DecodeUtf8Text(std::string_view bytes, bool escapes) {
  String text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const Decoded decoded = DecodeUtf8(bytes);
    if (escapes && !decoded.wellFormed) {
      text.push_back(static_cast<char16_t>(kEscapedByte | static_cast<unsigned char>(bytes[0])));
    } else if (decoded.codePoint < 0x10000) {
      text.push_back(static_cast<char16_t>(decoded.codePoint));
    } else {
      const char32_t offset = decoded.codePoint - 0x10000;
      text.push_back(static_cast<char16_t>(0xD800 + (offset >> 10U)));
      text.push_back(static_cast<char16_t>(0xDC00 + (offset & 0x3FFU)));
    }
    bytes.remove_prefix(decoded.length);
  }
  return text;
}

/// @param unpaired receives whether there was an unpaired surrogate that is not an escape
std::string EncodeUtf8(StringView text, bool escapes, bool& unpaired) {
  std::string bytes;
  bytes.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    char32_t codePoint = text[i];
    if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      codePoint = 0x10000 + ((codePoint - 0xD800) << 10U) + (text[i + 1] - 0xDC00U);
      ++i;
    } else if (escapes && IsEscapedByte(text[i])) {
      bytes += static_cast<char>(text[i] & 0xFFU);
      continue;
    } else if (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i])) {
      unpaired = true;
      codePoint = kReplacement;
    }
    AppendUtf8(bytes, codePoint);
  }
  return bytes;
}

}  // namespace

String FromWindows1252(std::string_view bytes) {
  String text(bytes.size(), u'\0');
  FromWindows1252(bytes, text.data());
  return text;
}

void FromWindows1252(std::string_view bytes, char16_t* text) {
  unsigned char all = 0;
  for (size_t i = 0; i < bytes.size(); ++i) {  // without a branch: most texts are ASCII
    const auto code = static_cast<unsigned char>(bytes[i]);
    all |= code;
    text[i] = code;
  }
  if (all >= 0x80) std::transform(bytes.begin(), bytes.end(), text, CharacterOf);
}

std::optional<std::string> ToWindows1252(StringView text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char16_t character : text) {
    const int byte = ByteOf(character);
    if (byte < 0) return std::nullopt;
    bytes.push_back(static_cast<char>(byte));
  }
  return bytes;
}

bool FitsWindows1252(StringView text) {
  return std::all_of(text.begin(), text.end(), [](char16_t c) { return ByteOf(c) >= 0; });
}

bool IsEscapedByte(char16_t character) { return character >= 0xDC80 && character <= 0xDCFF; }

size_t FindNonUtf8(std::string_view bytes) {
  for (size_t position = 0; position < bytes.size();) {
    const Decoded decoded = DecodeUtf8(bytes.substr(position));
    if (!decoded.wellFormed) return position;
    position += decoded.length;
  }
  return std::string_view::npos;
}

bool IsUtf8(std::string_view bytes) { return FindNonUtf8(bytes) == std::string_view::npos; }

String FromUtf8(std::string_view bytes) { return DecodeUtf8Text(bytes, false); }

std::string ToUtf8(StringView text) {
  bool unpaired = false;
  return EncodeUtf8(text, false, unpaired);
}

String FromUtf8KeepingBytes(std::string_view bytes) { return DecodeUtf8Text(bytes, true); }

std::optional<std::string> ToUtf8KeepingBytes(StringView text) {
  bool unpaired = false;
  std::string bytes = EncodeUtf8(text, true, unpaired);
  return unpaired ? std::nullopt : std::optional(std::move(bytes));
}

String FromUtf16Le(std::string_view bytes) {
  String text;
  text.reserve(bytes.size() / 2);
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    text.push_back(static_cast<char16_t>(low | (high << 8U)));
  }
  return text;
}

std::string ToUtf16Le(StringView text) {
  std::string bytes;
  bytes.reserve(text.size() * 2);
  for (const char16_t character : text) {
    bytes += {static_cast<char>(character & 0xFFU), static_cast<char>(character >> 8U)};
  }
  return bytes;
}

}  // namespace quenmar
