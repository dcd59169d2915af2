/// Windows on small screens: none is larger than the part of the screen that windows may use, its
/// frame included.
#pragma once

#include <QSize>

class QWidget;

namespace quenmar {

/// @return the largest size of `window`, without its frame, that its screen has room for. Before a
/// frame is known, that of its parent's window or of the style counts.
[[nodiscard]] QSize LargestSize(const QWidget& window);

/// Shrinks `window` and moves it so far that all of it is on its screen. A maximized window stays
/// as it is, and where a new one appears is left to the system.
void FitToScreen(QWidget* window);

/// @return a scroll area with `content`, which fills it; it scrolls where `content` needs more
/// room.
[[nodiscard]] QWidget* MakeScrollable(QWidget* content);

}  // namespace quenmar
