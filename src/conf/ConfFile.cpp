#include "conf/ConfFile.h"

#include <algorithm>
#include <utility>

#include "text/Charset.h"

namespace quenmar {

namespace {

constexpr size_t kNone = std::string_view::npos;

/// @return where the first LF without a CR before it is.
size_t FindBareLineFeed(std::string_view bytes) {
  size_t hit = bytes.find('\n');
  while (hit != kNone && hit > 0 && bytes[hit - 1] == '\r') hit = bytes.find('\n', hit + 1);
  return hit;
}

size_t FindNonAscii(std::string_view bytes) {
  const auto* const hit = std::find_if(bytes.begin(), bytes.end(), [](char byte) {
    return static_cast<unsigned char>(byte) >= 0x80;
  });
  return hit == bytes.end() ? kNone : static_cast<size_t>(hit - bytes.begin());
}

}  // namespace

ConfFile::ConfFile(Path path, std::string bytes)
    : path_(std::move(path)), bytes_(std::move(bytes)), encoding_(EncodingOf(bytes_)) {}

ConfFile::ConfFile(Path path, std::string bytes, ConfCharset charset)
    : ConfFile(std::move(path), std::move(bytes)) {
  encoding_.charset = charset;
}

std::string_view ConfFile::Body() const {
  return std::string_view(bytes_).substr(encoding_.mark ? kUtf8Mark.size() : 0);
}

SharedText ConfFile::Shared(std::string_view part) const {
  if (encoding_.charset == ConfCharset::kUtf8) return Text(part);
  return SharedText::Filled(part.size(),
                            [part](char16_t* characters) { FromWindows1252(part, characters); });
}

std::vector<ConfLine> ConfFile::Lines(StringView series) const {
  std::vector<ConfLine> lines;
  ForEachLine(series, [&lines](const ConfLine& line) { lines.push_back(line); });
  return lines;
}

bool ConfFile::HasBareLineFeed() const { return FindBareLineFeed(Body()) != kNone; }

int ConfFile::LineAt(size_t position) const {
  ConfLines lines(Body());
  const char* const place = Body().data() + position;
  std::string_view line;
  while (lines.Next(line) && line.data() + line.size() < place) {
  }
  return lines.Number();
}

std::vector<Finding> ConfFile::Findings() const {
  std::vector<Finding> findings;
  if (encoding_.utf16) return findings;
  const auto add = [&](size_t position, Finding::Kind kind) {
    if (position != kNone) findings.push_back({LineAt(position), kind, {}});
  };
  const std::string_view body = Body();
  if (encoding_.charset == ConfCharset::kUtf8) {
    add(!encoding_.mark ? FindNonAscii(body) : body.empty() ? kNone : 0, Finding::Kind::kUtf8);
  }
  if (encoding_.mark) add(FindNonUtf8(body), Finding::Kind::kNoText);
  add(FindBareLineFeed(body), Finding::Kind::kBareLineFeed);
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& one, const Finding& other) { return one.line < other.line; });
  return findings;
}

ConfCharset CharsetForSaving(const ConfEncoding& server, const ConfEncoding& distribution) {
  return server.ascii ? distribution.charset : server.charset;
}

}  // namespace quenmar
