#pragma once
// The desktop's application object. A run-time error of the model (an overflow, an index out of
// range) stops the event handler it happened in; it is caught here, at the event loop, shown in
// a message box and the program ends with status 1, as it always has. Nothing else ends it.
#include "core/RunTimeError.h"

#include <QApplication>
#include <QString>

namespace tv {

class QtApplication : public QApplication {
  public:
    QtApplication(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;
};

// "Run-time error '6':" then an empty line and "Overflow".
QString RunTimeErrorText(const RunTimeError& error);

// Any other exception that reaches the event loop, as the run-time error the user sees.
RunTimeError AsRunTimeError(const std::exception& error);

} // namespace tv
