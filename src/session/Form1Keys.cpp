// The main window's keys: every key pressed anywhere on the window is previewed here, turned
// into the virtual-key code the key table knows and consumed, so that no control sees it. The
// same preview notices the scan view moving or changing size on the window.
#include "session/Form1.h"

#include "view/ImageView.h"
#include "view/KeyCodes.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>

namespace tv {

namespace {

// The virtual-key code of a key without a letter, digit or function-key number; 0 for a key
// the table does not know, which the table then ignores.
int NamedKeyCode(int key, bool keypad) {
    switch (key) {
    case Qt::Key_Backspace:
        return KeyBackspace;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return KeyEnter;
    case Qt::Key_PageUp:
        return KeyPageUp;
    case Qt::Key_PageDown:
        return KeyPageDown;
    case Qt::Key_End:
        return KeyEnd;
    case Qt::Key_Home:
        return KeyHome;
    case Qt::Key_Left:
        return KeyLeft;
    case Qt::Key_Up:
        return KeyUp;
    case Qt::Key_Right:
        return KeyRight;
    case Qt::Key_Down:
        return KeyDown;
    case Qt::Key_Plus:
        return keypad ? KeyNumPlus : KeyPlus;
    case Qt::Key_Equal:
        return KeyPlus;
    case Qt::Key_Minus:
        return keypad ? KeyNumMinus : KeyMinus;
    case Qt::Key_Underscore:
        return KeyMinus;
    default:
        return 0;
    }
}

// The virtual-key code of a key press. Letters have the same codes in both; the keypad digits
// (with Num Lock on) are 96..105 and the function keys 112 on.
int VirtualKeyOf(const QKeyEvent& event) {
    const int key = event.key();
    const bool keypad = event.modifiers().testFlag(Qt::KeypadModifier);
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return key;
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return keypad ? 96 + (key - Qt::Key_0) : key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return KeyF1 + (key - Qt::Key_F1);
    return NamedKeyCode(key, keypad);
}

bool IsKeyEvent(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease ||
           type == QEvent::ShortcutOverride;
}

} // namespace

bool Form1::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_ && (event->type() == QEvent::Move || event->type() == QEvent::Resize))
        ViewGeometryChanged();
    auto* widget = qobject_cast<QWidget*>(watched);
    // An open menu hands the arrow keys it does not use on to the menu bar, to go to the next
    // menu: those keys are the menu's, not the window's.
    if (!IsKeyEvent(event->type()) || widget == nullptr || widget->window() != this ||
        QApplication::activePopupWidget() != nullptr)
        return QMainWindow::eventFilter(watched, event);
    // No shortcut and no control gets the key: the window consumes it.
    event->accept();
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        Form_KeyDown(VirtualKeyOf(*key), key->modifiers().testFlag(Qt::ShiftModifier),
                     key->modifiers().testFlag(Qt::AltModifier));
        if (key->key() == Qt::Key_F10 && key->modifiers() == Qt::NoModifier) OpenMenuBar();
    }
    return true;
}

// F10 opens the first menu, as the desktop's own key for the menu bar does: the key table has
// no use for it, and every command of the menus is then a keyboard's reach away. The open menu
// is a window of its own, so its keys go to it and not through the window's preview.
void Form1::OpenMenuBar() {
    const QList<QAction*> menus = menuBar()->actions();
    if (!menus.isEmpty() && !ended_) menuBar()->setActiveAction(menus.first());
}

void Form1::Form_KeyDown(int keyCode, bool shift, bool alt) {
    dummyBox_->setFocus();
    Outcome(KeyOutcome(keyCode, shift, alt));
    Sync();
}

} // namespace tv
