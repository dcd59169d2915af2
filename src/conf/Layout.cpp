#include "conf/Layout.h"

#include "conf/LayoutAdditions.h"
#include "conf/LayoutBase.h"
#include "conf/LayoutText.h"
#include "conf/LayoutWishes.h"

namespace quenmar {

namespace {

void Insert(const Insertion& insertion, LayoutText& text) {
  if (insertion.kind == Insertion::Kind::kParagraph) text.PartParagraphs();
  for (const std::string& line : insertion.lines) text.Add(line);
  if (insertion.kind == Insertion::Kind::kParagraphBefore) text.PartParagraphs();
}

/// Takes the base's lines in their order, with the insertions between them.
void Compose(const LayoutBase& base, const std::vector<Insertion>& insertions, LayoutText& text) {
  auto next = insertions.begin();
  const auto insertBefore = [&](size_t line) {
    for (; next != insertions.end() && next->line == line; ++next) Insert(*next, text);
  };
  for (size_t line = 0; line < base.Lines().size(); ++line) {
    insertBefore(line);
    const ConfLine& bytes = base.Lines()[line];
    if (base.IsRemoved(line)) continue;
    if (base.IsChanged(line)) {
      text.Replace(bytes, base.ChangedLine(line));
    } else {
      text.Keep(bytes);
    }
  }
  insertBefore(base.Lines().size());
}

}  // namespace

LaidOut LayOut(const ConfFile& base, const ConfFile& other, const Wishes& wishes,
               const Options& options, const Language& language) {
  LaidOut laidOut;
  laidOut.charset = CharsetForSaving(base.Encoding(), other.Encoding());
  LayoutWishes wanted(wishes, laidOut.charset, options, language);
  LayoutBase lines(base, wanted, options.series, laidOut.charset);
  lines.Decide();
  LayoutAdditions additions({lines, wanted, laidOut.charset, options, language}, other);
  LayoutText text(base.Encoding().mark ? kUtf8Mark : std::string_view(), lines.Lines());
  Compose(lines, additions.List(), text);
  laidOut.bytes = text.TakeBytes();
  return laidOut;
}

}  // namespace quenmar
