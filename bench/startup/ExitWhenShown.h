#pragma once
// Ends the process the moment its first window has painted its first frame, so that timing the
// process from its start to its end times its start-up. The hook is installed as the application
// object is made, so the program under test runs unchanged.
#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

namespace bench {

class ExitWhenShown : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::Paint && widget != nullptr && widget->isWindow() && !done_) {
            done_ = true;
            // After the paint in progress and its flush to the window, before anything else.
            QTimer::singleShot(0, [] {
                std::fflush(nullptr);
                std::_Exit(0);
            });
        }
        return false;
    }

  private:
    bool done_ = false;
};

} // namespace bench

namespace {

void InstallExitWhenShown() {
    QCoreApplication* app = QCoreApplication::instance();
    app->installEventFilter(new bench::ExitWhenShown(app));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(InstallExitWhenShown)
