#pragma once

#include <QColor>
#include <QPalette>

namespace quenmar {

/// @param share of `over`, from 0 to 1
/// @return a colour between two.
[[nodiscard]] inline QColor Mixed(const QColor& under, const QColor& over, float share) {
  const auto part = [share](float low, float high) { return low + (high - low) * share; };
  return QColor::fromRgbF(part(under.redF(), over.redF()), part(under.greenF(), over.greenF()),
                          part(under.blueF(), over.blueF()));
}

/// The share of the text's colour in pale text, mixed with the background's. On common palettes
/// such text has a contrast of more than 4.5 to 1.
inline constexpr float kQuietest = 0.62F;

/// @return the colour of pale text on a palette's base. `QPalette::PlaceholderText` would not do:
/// some themes leave it black in the dark.
[[nodiscard]] inline QColor QuietText(const QPalette& palette) {
  return Mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), kQuietest);
}

/// Makes the highlight pale, for a list that the texts beside it are not about.
inline void MakeHighlightPale(QPalette& palette) {
  constexpr float kShare = 0.25F;  // of the highlight's colour, over the list's
  for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
    const QColor base = palette.color(group, QPalette::Base);
    const QColor highlight = palette.color(group, QPalette::Highlight);
    palette.setColor(group, QPalette::Highlight, Mixed(base, highlight, kShare));
    palette.setColor(group, QPalette::HighlightedText, palette.color(group, QPalette::Text));
  }
}

/// @return a strong colour of that hue in which text is readable on the background.
[[nodiscard]] inline QColor ReadableOn(const QColor& background, int hue) {
  constexpr int kSaturation = 220;
  const bool dark = background.lightness() < 128;
  return QColor::fromHsl(hue, kSaturation, dark ? 170 : 70);
}

}  // namespace quenmar
