// The start-up benchmark's baseline child: a minimal Qt Widgets program showing one window, the
// canonical label, ended as soon as it has painted its first frame.
#include "ExitWhenShown.h"

#include <QApplication>
#include <QLabel>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QLabel label(QStringLiteral("Hello"));
    label.show();
    return QApplication::exec();
}
