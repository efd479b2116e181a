#include "ScriptedUser.h"

#include "core/QtPlatform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace tv::test {

namespace {

constexpr int PollMs = 10;

} // namespace

ScriptedUser::ScriptedUser() {
    connect(&timer_, &QTimer::timeout, this, &ScriptedUser::Poll);
    timer_.start(PollMs);
}

void ScriptedUser::Clicks(QMessageBox::StandardButton button, const std::string& textPart) {
    replies_.push_back({Kind::MessageBox, button, textPart, {}});
}

void ScriptedUser::Chooses(const std::string& path) {
    replies_.push_back({Kind::FileDialog, QMessageBox::NoButton, path, {}});
}

void ScriptedUser::Handles(const std::function<void(QDialog&)>& action) {
    replies_.push_back({Kind::Other, QMessageBox::NoButton, "", action});
}

bool ScriptedUser::WaitForAnswered(std::size_t count, int timeoutMs) const {
    return QTest::qWaitFor([this, count] { return Answered.size() >= count; }, timeoutMs);
}

std::string ScriptedUser::Texts() const {
    std::string texts;
    for (const AnsweredBox& box : Answered)
        texts += box.Text + "\n";
    return texts;
}

void ScriptedUser::Poll() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
        // As a window manager does, the window the user worked in is active again once a dialog
        // over it has gone (Qt's offscreen platform activates nothing by itself).
        QWidget* active = QApplication::activeWindow();
        const bool gone = active == nullptr || !active->isVisible();
        if (!gone && qobject_cast<QDialog*>(active) == nullptr) {
            lastActive_ = active;
        } else if (gone && lastActive_ != nullptr && lastActive_->isVisible()) {
            lastActive_->activateWindow();
        }
        return;
    }
    if (busy_ || !dialog->isVisible()) return;
    // A user reads a dialog before answering it: the reply waits for the next look, when the
    // dialog's own event loop runs.
    if (dialog != shown_) {
        shown_ = dialog;
        return;
    }
    shown_ = nullptr;
    if (dialog->parentWidget() != nullptr && dialog->parentWidget()->window()->isVisible())
        lastActive_ = dialog->parentWidget()->window();
    busy_ = true;
    if (replies_.empty()) {
        Unexpected(*dialog);
    } else {
        const Reply reply = replies_.front();
        replies_.pop_front();
        Give(*dialog, reply);
    }
    busy_ = false;
}

void ScriptedUser::Unexpected(QDialog& dialog) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    if (box != nullptr && byDefault_) {
        Click(*box, box->defaultButton() != nullptr ? box->standardButton(box->defaultButton())
                                                    : QMessageBox::Ok);
        return;
    }
    ADD_FAILURE() << "a dialog nobody expected: " << dialog.windowTitle().toStdString() << ": "
                  << (box != nullptr ? box->text().toStdString() : std::string());
    dialog.reject();
}

void ScriptedUser::Click(QMessageBox& box, QMessageBox::StandardButton button) {
    Answered.push_back(
        {box.windowTitle().toStdString(), box.text().toStdString(), QMessageBox::NoButton});
    QAbstractButton* clicked = box.button(button);
    if (clicked == nullptr) {
        ADD_FAILURE() << "the message box has not that button: " << box.text().toStdString();
        box.reject();
        return;
    }
    Answered.back().Clicked = button;
    QTest::mouseClick(clicked, Qt::LeftButton);
}

void ScriptedUser::Give(QDialog& dialog, const Reply& reply) {
    auto* box = qobject_cast<QMessageBox*>(&dialog);
    auto* files = qobject_cast<QFileDialog*>(&dialog);
    const Kind shown = box != nullptr     ? Kind::MessageBox
                       : files != nullptr ? Kind::FileDialog
                                          : Kind::Other;
    if (shown != reply.Expected) {
        ADD_FAILURE() << "another dialog than expected: " << dialog.windowTitle().toStdString();
        dialog.reject();
        return;
    }
    if (box != nullptr) {
        EXPECT_TRUE(box->text().contains(QString::fromStdString(reply.Text)))
            << box->text().toStdString() << " does not hold " << reply.Text;
        Click(*box, reply.Button);
    } else if (files != nullptr) {
        if (reply.Text.empty()) {
            files->reject();
            return;
        }
        auto* name = files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (name == nullptr) {
            ADD_FAILURE() << "the file dialog has no file name box";
            files->reject();
            return;
        }
        name->setText(PathToQString(reply.Text));
        static_cast<QDialog*>(files)->accept(); // QFileDialog's own accept, as Open does
    } else {
        reply.Action(dialog);
    }
}

} // namespace tv::test
