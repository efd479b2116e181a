#include "session/QtWindowPlace.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace tv {

QRect KeepOnScreen(const QRect& frame, const QRect& available) {
    if (!available.isValid()) return frame;
    const int width = std::min(frame.width(), available.width());
    const int height = std::min(frame.height(), available.height());
    const int left = std::clamp(frame.left(), available.left(), available.right() + 1 - width);
    const int top = std::clamp(frame.top(), available.top(), available.bottom() + 1 - height);
    return {left, top, width, height};
}

QRect FrameKeptOnScreen(const QWidget& window) {
    const QScreen* screen = window.screen();
    if (screen == nullptr) return window.frameGeometry();
    return KeepOnScreen(window.frameGeometry(), screen->availableGeometry());
}

void KeepWindowOnScreen(QWidget& window) {
    const QRect frame = window.frameGeometry();
    const QRect kept = FrameKeptOnScreen(window);
    if (kept == frame) return;
    // The frame's own edges (title bar, borders) stay as they are; the inside gives way.
    window.resize(window.width() - (frame.width() - kept.width()),
                  window.height() - (frame.height() - kept.height()));
    window.move(kept.topLeft());
}

} // namespace tv
