#pragma once
// Every window stays on the screen: a place read from the settings, or one the window manager
// or the user left above or beside the screen, is brought back within the screen's free area
// before the window is shown there or the place is saved.
#include <QRect>

class QWidget;

namespace tv {

// The window's frame moved, and made smaller only where it is larger than the free area, so
// that it lies wholly within the free area.
QRect KeepOnScreen(const QRect& frame, const QRect& available);

// Moves (and if need be shrinks) a window so that its frame lies within its screen's free area.
void KeepWindowOnScreen(QWidget& window);

// The frame of a window as it would be kept on its screen, for saving its place.
QRect FrameKeptOnScreen(const QWidget& window);

} // namespace tv
