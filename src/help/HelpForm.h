#pragma once
// The commands help form: a title, the page's text and the Previous, Next and Hide buttons. It is
// kept loaded, so the page shown last is shown again when it is reopened.
#include "help/HelpPages.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace tv {

class HelpForm : public QWidget {
    Q_OBJECT

  public:
    explicit HelpForm(QWidget* parent = nullptr);

    const HelpPageState& Page() const { return page_; }
    QLabel* Label1() const { return label1_; }
    QPlainTextEdit* Text1() const { return text1_; }
    QPushButton* Previous() const { return previous_; }
    QPushButton* Next() const { return next_; }
    QPushButton* Hide() const { return hide_; }

  signals:
    // The form hid itself: the focus goes back to the record box.
    void hidden();

  protected:
    // Closing the window hides it, as Hide does.
    void closeEvent(QCloseEvent* event) override;

  private:
    void ShowPage(int offset);
    void Hide_Click();

    HelpPageState page_;
    QLabel* label1_;
    QPlainTextEdit* text1_;
    QPushButton* previous_;
    QPushButton* next_;
    QPushButton* hide_;
};

} // namespace tv
