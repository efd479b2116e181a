// The main window's hooks for the statistics screen, the help form and the About box.
#include "app/DesktopApp.h"

#include "help/AboutTallyview.h"
#include "help/HelpForm.h"
#include "stats/Form3.h"

#include <QWindow>

namespace tv {

Form3& DesktopForms::Statistics() {
    if (form3_) return *form3_;
    Form1* main = MainForm();
    // Not a child of the main window: Qt ends the program when the last window without a parent
    // window closes, and the statistics-only path closes the start window with the main window
    // never shown.
    form3_ = std::make_unique<Form3>(services_.Main.Ask != nullptr ? *services_.Main.Ask
                                                                   : statsPrompts_);
    statsPrompts_.SetParent(form3_.get());
    form3_->setObjectName(QStringLiteral("Form3"));
    form3_->SetReportSource([this](bool allRecords) { return main_->Model().Report(allRecords); });
    form3_->SetReadFiles([this] {
        return std::vector<std::string>{main_->Model().TranscriptionFile,
                                        main_->Model().GraphicsFile};
    });
    connect(form3_.get(), &Form3::optionSelected, this, &DesktopForms::SelectOption);
    connect(form3_.get(), &Form3::exitProgram, main, &Form1::close);
    connect(form3_.get(), &Form3::hidden, main, &Form1::FocusRecordBox);
    // After a print the keys go back to the record box, and the screen stays in front of the
    // main window, where the user left it.
    connect(form3_.get(), &Form3::printed, main, [main, form = form3_.get()] {
        main->FocusRecordBox();
        form->raise();
    });
    return *form3_;
}

HelpForm& DesktopForms::Help() {
    if (help_ != nullptr) return *help_;
    Form1* main = MainForm();
    help_ = new HelpForm(main);
    help_->setObjectName(QStringLiteral("Help"));
    connect(help_, &HelpForm::hidden, main, &Form1::FocusRecordBox);
    return *help_;
}

// The Statistics button and menu item, and the statistics-only path, where the screen is the
// last window: its button reads "Exit" and ends the program, and the flagged records, which
// cannot exist without verifying, are not offered.
void DesktopForms::ShowStats(bool statisticsOnly) {
    Form3& form = Statistics();
    if (statisticsOnly) {
        form.ShowOption(0);
        form.SetOptionEnabled(3, false);
        form.SetCommandCaption("Exit");
    }
    StatisticsChanged();
    // Beside a shown main window the screen belongs to it, so the desktop keeps it in front of
    // it; a window with such an owner never ends the program when it closes, so the
    // statistics-only screen, the last window, has none.
    form.winId();
    form.windowHandle()->setTransientParent(
        !statisticsOnly && main_->isVisible() ? main_->windowHandle() : nullptr);
    form.show();
    form.raise();
    form.activateWindow();
}

// After every UpdateStats; the first one places the screen over the main window.
void DesktopForms::StatisticsChanged() {
    Statistics().CentreOnFirstLoad(main_->frameGeometry());
    RefreshStats();
}

void DesktopForms::SelectOption(int option) {
    main_->Model().StatsOption = To16(option);
    RefreshStats();
}

void DesktopForms::RefreshStats() {
    Session& s = main_->Model();
    // A new scan starts again at the file header.
    if (form3_->SelectedOption() != s.StatsOption) form3_->ShowOption(s.StatsOption);
    form3_->Refresh(s.StatsSummaryText, s.RefreshTabs(*store_, main_->WindowState()));
}

void DesktopForms::OpenHelp() {
    HelpForm& help = Help();
    help.show();
    help.raise();
    help.activateWindow();
}

void DesktopForms::OpenAbout() {
    AboutTallyview about(main_->WindowState().VersionLabel, main_.get());
    about.setObjectName(QStringLiteral("AboutTallyview"));
    about.exec();
}

} // namespace tv
