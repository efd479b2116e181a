// The main window's menus. Each item does what its key or button does; the ticks are drawn from
// the session's state after every command. The key after a tab in a caption is only shown:
// the key itself reaches the one key handler, never a menu shortcut.
#include "session/Form1.h"

#include "view/ImageView.h"

#include <QMenu>
#include <QMenuBar>

namespace tv {

namespace {

constexpr const char* ColourNames[] = {"Black", "Orange", "Grey", "Lilac",
                                       "Blue",  "Green",  "Brown"};

} // namespace

QAction* Form1::MenuItem(QMenu* menu, const QString& name, const QString& caption,
                         const std::function<void()>& operation, bool checkable) {
    QAction* item = menu->addAction(caption);
    item->setObjectName(name);
    item->setCheckable(checkable);
    connect(item, &QAction::triggered, this, [this, operation] { Do(operation); });
    return item;
}

void Form1::BuildMenus() {
    Session& s = *session_;
    menuBar()->setObjectName(QStringLiteral("MenuBar"));
    menuBar()->setAccessibleName(QStringLiteral("Menus"));
    QMenu* file = menuBar()->addMenu(QStringLiteral("File"));
    MenuItem(file, "MenuNewScan", "New Scan", [this] { MenuNewScan_Click(); });
    MenuItem(file, "MenuReloadSCAFile", "Reload transcription file\tR",
             [this, &s] { Outcome(s.ReloadTranscription()); });
    file->addSeparator();
    MenuItem(file, "MenuExit", "Exit", [this] { close(); });

    QMenu* stats = menuBar()->addMenu(QStringLiteral("Statistics"));
    menuShowStats_ =
        MenuItem(stats, "MenuShowStats", "Show Statistics", [this] { emit ShowStatistics(false); });
    menuShowRptSurnames_ = MenuItem(
        stats, "MenuShowRptSurnames", "Show Repeated Surnames",
        [&s] { s.MenuShowRptSurnames_Click(); }, true);
    BuildImageMenu();
    BuildBoxColourMenu();

    QMenu* help = menuBar()->addMenu(QStringLiteral("Help"));
    MenuItem(help, "MenuHelp", "Commands\tF1", [this] { emit OpenHelp(); });
    MenuItem(help, "MenuAbout", "About Tallyview", [this] { emit OpenAbout(); });
}

void Form1::BuildImageMenu() {
    Session& s = *session_;
    QMenu* scan = menuBar()->addMenu(QStringLiteral("Scan"));
    menuCalibrate_ =
        MenuItem(scan, "MenuCalibrate", "ReCalibrate", [&s] { s.MenuCalibrate_Click(); });
    menuLineUp_ = MenuItem(
        scan, "MenuLineUpAutomatically", "Line Up Automatically",
        [&s] { s.Lines.LineUpAutomatically = !s.Lines.LineUpAutomatically; }, true);
    menuFollowLines_ = MenuItem(
        scan, "MenuFollowPrintedLines", "Follow Printed Lines",
        [&s] { s.Lines.FollowPrintedLines = !s.Lines.FollowPrintedLines; }, true);
    MenuItem(scan, "MenuNextDisagreement", "Next Disagreement\tF3", [&s] { s.NextDisagreement(); });
    MenuItem(scan, "MenuZoomIn", "Zoom In\tF11", [&s] { s.Zoom(+1.0F); });
    MenuItem(scan, "MenuZoomOut", "Zoom Out\tF12", [&s] { s.Zoom(-1.0F); });
    scan->addSeparator();
    const std::pair<const char*, bool Preferences::*> effects[] = {
        {"MenuAntiAlias", &Preferences::AntiAlias},
        {"MenuSmoothing", &Preferences::Smoothing},
        {"MenuMagnifier", &Preferences::Magnifier},
        {"menuMirror", &Preferences::Mirror},
        {"MenuNegative", &Preferences::Negative}};
    const char* captions[] = {"Anti-aliasing", "Smoothing", "Magnifier", "Mirror", "Negative"};
    for (std::size_t i = 0; i < std::size(effects); ++i) {
        bool Preferences::*option = effects[i].second;
        QAction* item = MenuItem(
            scan, effects[i].first, captions[i], [this, option] { ImageOption(option); }, true);
        imageTicks_.emplace_back(item, option);
    }
    scan->addSeparator();
    MenuItem(scan, "MenuAboutImage", "Image information", [this] { MenuAboutImage_Click(); });
}

void Form1::BuildBoxColourMenu() {
    Session& s = *session_;
    QMenu* colours = menuBar()->addMenu(QStringLiteral("Box Colour"));
    for (int16_t i = 0; i < static_cast<int16_t>(std::size(ColourNames)); ++i)
        boxColours_.push_back(MenuItem(
            colours, "MenuBoxColour" + QString::number(i), QString::fromLatin1(ColourNames[i]),
            [&s, i] { s.SetBoxColour(i); }, true));
}

// Each click inverts the item's tick and hands the new state to the view.
void Form1::ImageOption(bool Preferences::*option) {
    Preferences& prefs = session_->Prefs;
    prefs.*option = !(prefs.*option);
    ApplyImageOptions();
}

void Form1::MenuAboutImage_Click() {
    const QString information = view_->ImageInformation();
    if (!information.isEmpty())
        session_->P.Ask.Tell(FromQString(information), PromptIcon::Information);
}

void Form1::SyncMenuTicks() {
    const Session& s = *session_;
    menuShowStats_->setEnabled(s.Commands.ShowStats);
    menuShowRptSurnames_->setEnabled(s.Commands.MenuShowRptSurnames);
    menuShowRptSurnames_->setChecked(s.Prefs.ShowRptSurnames);
    menuCalibrate_->setEnabled(s.Commands.MenuCalibrate);
    menuLineUp_->setChecked(s.Lines.LineUpAutomatically);
    menuFollowLines_->setChecked(s.Lines.FollowPrintedLines);
    for (const auto& [item, option] : imageTicks_)
        item->setChecked(s.Prefs.*option);
    for (std::size_t i = 0; i < boxColours_.size(); ++i)
        boxColours_[i]->setChecked(static_cast<int>(i) == s.Content.BoxColourIndex);
}

} // namespace tv
