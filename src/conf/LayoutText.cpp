#include "conf/LayoutText.h"

#include <array>
#include <utility>

namespace quenmar {

namespace {

/// @return the end that most lines have; CR LF wins a tie, then LF.
LineEnd MostFrequentEnd(const std::vector<ConfLine>& lines) {
  std::array<size_t, 4> counts{};
  for (const ConfLine& line : lines) ++counts.at(static_cast<size_t>(line.end));
  const auto count = [&counts](LineEnd end) { return counts.at(static_cast<size_t>(end)); };
  LineEnd most = LineEnd::kCrLf;
  if (count(LineEnd::kLf) > count(most)) most = LineEnd::kLf;
  if (count(LineEnd::kCr) > count(most)) most = LineEnd::kCr;
  return most;
}

}  // namespace

LayoutText::LayoutText(std::string_view start, const std::vector<ConfLine>& base)
    : start_(start.size()), newEnd_(MostFrequentEnd(base)), bytes_(start) {}

void LayoutText::Keep(const ConfLine& line) { Put(line.bytes, line.end); }

void LayoutText::Replace(const ConfLine& line, std::string_view bytes) { Put(bytes, line.end); }

void LayoutText::Add(std::string_view bytes) { Put(bytes, newEnd_); }

void LayoutText::PartParagraphs() {
  if (!lastBlank_) Add({});
}

std::string LayoutText::TakeBytes() {
  // A first line that looks like a mark, which was a later one in the base, would become one. With
  // a mark before it, it is still a line.
  if (start_ == 0 && bytes_.starts_with(kUtf8Mark)) bytes_.insert(0, kUtf8Mark);
  return std::move(bytes_);
}

void LayoutText::Put(std::string_view bytes, LineEnd end) {
  if (lastEnd_ == LineEnd::kNone) {
    bytes_ += BytesOf(newEnd_);
    lastEnd_ = newEnd_;
  }
  // An LF right behind a CR would make one line end of the two.
  if (bytes.empty() && end == LineEnd::kLf && lastEnd_ == LineEnd::kCr) end = LineEnd::kCrLf;
  bytes_ += bytes;
  bytes_ += BytesOf(end);
  lastEnd_ = end;
  lastBlank_ = TrimBytes(bytes).empty();
}

}  // namespace quenmar
