#pragma once
// The user of the desktop tests, answering the program's real modal dialogs as a user clicks
// them: a timer looks for the visible modal dialog and gives it the next reply.
#include <QDialog>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace tv::test {

// A message box the user answered: its title, its text (lines broken by LF) and the button
// clicked.
struct AnsweredBox {
    std::string Title;
    std::string Text;
    QMessageBox::StandardButton Clicked = QMessageBox::NoButton;
};

// Gives the replies in order. A dialog that comes with no reply left is a test failure and is
// closed with Escape, unless the user answers the rest by default: then a message box gets its
// default button (or OK), as a user who presses ENTER on whatever the program asks.
class ScriptedUser : public QObject {
  public:
    ScriptedUser();

    // The next dialog is a message box whose text holds textPart: click button.
    void Clicks(QMessageBox::StandardButton button, const std::string& textPart = "");
    // The next dialog is a file dialog: type the whole path and press Open (or Save); "" presses
    // Cancel.
    void Chooses(const std::string& path);
    // The next dialog is of another kind (the layout form): act on it.
    void Handles(const std::function<void(QDialog&)>& action);
    // Message boxes beyond the replies are answered with their default button, not failed.
    void AnswersTheRestByDefault() { byDefault_ = true; }
    // The window the user works in, active again when a dialog over it has gone.
    void WorksIn(QWidget* window) { lastActive_ = window; }
    // Every reply was given.
    bool Done() const { return replies_.empty(); }
    // Waits until count message boxes in all have been answered; false after timeoutMs.
    bool WaitForAnswered(std::size_t count, int timeoutMs = 10000) const;
    // The texts of the boxes answered, one to a line, for a failure's message.
    std::string Texts() const;

    // The message boxes answered, in order.
    std::vector<AnsweredBox> Answered;

  private:
    enum class Kind { MessageBox, FileDialog, Other };
    struct Reply {
        Kind Expected;
        QMessageBox::StandardButton Button = QMessageBox::NoButton;
        std::string Text;
        std::function<void(QDialog&)> Action;
    };
    void Poll();
    void Give(QDialog& dialog, const Reply& reply);
    void Unexpected(QDialog& dialog);
    void Click(QMessageBox& box, QMessageBox::StandardButton button);

    std::deque<Reply> replies_;
    QTimer timer_;
    bool busy_ = false;
    bool byDefault_ = false;
    QPointer<QWidget> lastActive_;
    QPointer<QDialog> shown_;
};

} // namespace tv::test
