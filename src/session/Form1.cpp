// The main window's construction, its buttons and the handlers that are neither keys nor menus.
#include "session/Form1.h"

#include "layout/ScanTypesForm.h"
#include "session/QtWindowPlace.h"
#include "view/ImageView.h"
#include "view/KeyCodes.h"
#include "view/QtLineFinder.h"
#include "view/QtScanReader.h"
#include "view/RecordBoxWidget.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace tv {

namespace {

// The main window leaves this share of the screen's free area around itself.
constexpr int ScreenMarginDivisor = 40;
constexpr float RotationStep = 0.4F;

} // namespace

Form1::Form1(Form1Services services, QWidget* parent)
    : QMainWindow(parent), services_(std::move(services)), measure_(ScreenTwipsPerPixel()),
      twipsPerPixel_(ScreenTwipsPerPixel()), scanTypes_(new ScanTypesForm(this)),
      view_(new ImageView) {
    setObjectName(QStringLiteral("Form1"));
    setAcceptDrops(true);
    prompts_.SetParent(this);
    Prompts& ask = services_.Ask != nullptr ? *services_.Ask : prompts_;
    ScanLayoutChooser& chooser =
        services_.LayoutChooser != nullptr ? *services_.LayoutChooser : *scanTypes_;
    session_ = std::make_unique<Session>(Platform{ask, measure_, *view_, chooser, clock_});
    BuildWindow();
    BuildMenus();
    // Controls keep their documented names as object names only: a screen reader announces what
    // the user sees (a button's caption, a label's text, the record box's text).
    connect(view_, &ImageView::scrolled, this, &Form1::ViewScrolled);
    connect(view_, &ImageView::repainted, this, &Form1::ViewRepainted);
    connect(this, &Form1::Synced, this, &Form1::DiagBoxRefresh);
    lineFinder_ = new QtLineFinder(
        [this](PrintedLines lines, float rotation) { LinesFound(std::move(lines), rotation); },
        this);
    // The reading's progress changes only the status line; its result may mark the box.
    scanReader_ = new QtScanReader(
        [this](int run, int percent) {
            session_->ReadingProgress(run, percent);
            SyncReadingStatus();
        },
        [this](int run, ScanReading reading) {
            session_->ReadingCompleted(run, std::move(reading));
            Sync();
        },
        [this](int comparison, std::vector<Disagreement> found) {
            session_->DisagreementsFound(comparison, std::move(found));
            Sync();
        },
        this);
    findAfterTurn_ = new QTimer(this);
    findAfterTurn_->setSingleShot(true);
    findAfterTurn_->setInterval(FindAfterTurnMs);
    connect(findAfterTurn_, &QTimer::timeout, this, &Form1::FindLines);
    // The window previews every key before any of its controls (Form_KeyDown).
    qApp->installEventFilter(this);
    // The main window's load: the settings (box colour, menu ticks, place), then the per-scan
    // reset.
    if (services_.Settings != nullptr)
        LoadSettings(*services_.Settings);
    else
        session_->SetBoxColour(session_->Content.BoxColourIndex);
    Form_Load2();
}

Form1::~Form1() = default;

void Form1::BuildWindow() {
    setWindowTitle(QString::fromLatin1(AppTitle));
    auto* central = new QWidget(this);
    central->setObjectName(QStringLiteral("Form1Client"));
    setCentralWidget(central);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    buttonBar_ = BuildButtonBar();
    layout->addWidget(buttonBar_);
    view_->setObjectName(QStringLiteral("ImageView"));
    view_->setAccessibleName(QStringLiteral("Scan"));
    layout->addWidget(view_, 1);

    rdFrame_ = new RecordBoxWidget(central);
    connect(rdFrame_, &RecordBoxWidget::dropped, this, &Form1::BoxDropped);
    connect(rdFrame_, &RecordBoxWidget::resized, this, &Form1::BoxResized);
    footLabel_ = new QLabel(central);
    footLabel_->setObjectName(QStringLiteral("FootLabel"));
    footLabel_->setTextFormat(Qt::PlainText);
    footLabel_->setAutoFillBackground(true);
    // The hidden key catcher: it holds the focus so that no visible control keeps the caret.
    dummyBox_ = new QLineEdit(central);
    dummyBox_->setObjectName(QStringLiteral("DummyBox"));
    // It holds the focus while the user works the box, so it is announced as the box.
    dummyBox_->setAccessibleName(QStringLiteral("Record box"));
    dummyBox_->setGeometry(0, 0, 0, 0);
    diagFrame_ = BuildDiagFrame(central);
    // What the scan reads for the box's marked fields, beside the box.
    scanReads_ = new QLabel(central);
    scanReads_->setObjectName(QStringLiteral("ScanReads"));
    scanReads_->setAccessibleName(QStringLiteral("What the scan reads"));
    scanReads_->setTextFormat(Qt::PlainText);
    scanReads_->setAutoFillBackground(true);
    scanReads_->setMargin(2);
    scanReads_->hide();
    // The buttons stay above a box that the user scrolled out of the view.
    buttonBar_->raise();

    readingStatus_ = new QLabel(this);
    readingStatus_->setObjectName(QStringLiteral("ReadingStatus"));
    readingStatus_->setTextFormat(Qt::PlainText);
    statusBar()->addWidget(readingStatus_, 1);
    versionLine_ = new QLabel(this);
    versionLine_->setObjectName(QStringLiteral("VersionLine"));
    statusBar()->addPermanentWidget(versionLine_);
}

QToolButton* Form1::Button(const QString& name, const QString& caption, const QString& tip,
                           const std::function<void()>& operation, const QString& spoken) {
    auto* button = new QToolButton;
    button->setText(caption);
    button->setObjectName(name);
    // Announced by its caption, or in words where the caption is a symbol or a bare number.
    button->setAccessibleName(spoken.isEmpty() ? caption : spoken);
    button->setToolTip(tip);
    // A click never takes the focus from the key catcher.
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QToolButton::clicked, this, [this, operation] { Do(operation); });
    return button;
}

QWidget* Form1::BuildButtonBar() {
    auto* bar = new QWidget;
    bar->setObjectName(QStringLiteral("ButtonBar"));
    bar->setAutoFillBackground(true);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(4, 2, 4, 2);
    Session& s = *session_;
    row->addWidget(Button("PrevRec", "Previous", "Previous record (Backspace or O)",
                          [this] { Outcome(ButtonOutcome(KeyBackspace)); }));
    row->addWidget(Button("NextRec", "Next", "Next record (Enter or L)",
                          [this] { Outcome(ButtonOutcome(KeyEnter)); }));
    row->addWidget(Button("ZoomIn", "Zoom In", "Zoom in (F11)", [&s] { s.Zoom(+1.0F); }));
    row->addWidget(Button("ZoomOut", "Zoom Out", "Zoom out (F12)", [&s] { s.Zoom(-1.0F); }));
    row->addWidget(Button(
        "RotateLeft", QString(QChar(0x21BA)), "Rotate left: turn the scan anticlockwise",
        [this, &s] {
            s.Rotate(+RotationStep);
            FindLinesAfterTurning();
        },
        QStringLiteral("Rotate left")));
    row->addWidget(Button(
        "RotateRight", QString(QChar(0x21BB)), "Rotate right: turn the scan clockwise",
        [this, &s] {
            s.Rotate(-RotationStep);
            FindLinesAfterTurning();
        },
        QStringLiteral("Rotate right")));
    showStats_ = Button("ShowStats", "Statistics", "Show the statistics screen",
                        [this] { emit ShowStatistics(false); });
    row->addWidget(showStats_);
    row->addSpacing(8);
    row->addWidget(new QLabel(QStringLiteral("Column:")));
    for (int16_t c = 1; c <= 6; ++c) {
        QToolButton* top = Button(
            "TopCol" + QString::number(c), QString::number(c),
            "Go to the top of column " + QString::number(c), [&s, c] { s.TopCol_Click(c); },
            "Column " + QString::number(c));
        topCol_.at(static_cast<std::size_t>(c - 1)) = top;
        row->addWidget(top);
    }
    row->addSpacing(8);
    adjCols_ = BuildAdjCols();
    row->addWidget(adjCols_);
    row->addStretch();
    row->addWidget(Button("ExitButton", "Exit", "Close Tallyview", [this] { close(); }));
    // A narrow screen squeezes the buttons rather than making the window wider than the screen.
    bar->setMinimumWidth(1);
    return bar;
}

QFrame* Form1::BuildAdjCols() {
    auto* frame = new QFrame;
    frame->setObjectName(QStringLiteral("AdjCols"));
    frame->setFrameShape(QFrame::StyledPanel);
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(4, 0, 4, 0);
    Session& s = *session_;
    const char* texts[] = {"3rd field", "District"};
    const char* keys[] = {"A", "S"};
    for (int16_t part = 0; part < 2; ++part) {
        auto* text = new QLabel(QString::fromLatin1(texts[part]));
        text->setObjectName("AdjColText" + QString::number(part));
        row->addWidget(text);
        const int16_t narrow = 2 * part;
        const int16_t widen = narrow + 1;
        const QString key = QString::fromLatin1(keys[part]);
        const QString caption = QString::fromLatin1(texts[part]);
        adjCol_.at(static_cast<std::size_t>(narrow)) = Button(
            "AdjCol" + QString::number(narrow), QString(QChar(0x25C2)),
            "Move to the left (SHIFT+" + key + ")", [&s, narrow] { s.AdjCol_Click(narrow); },
            caption + " to the left");
        adjCol_.at(static_cast<std::size_t>(widen)) = Button(
            "AdjCol" + QString::number(widen), QString(QChar(0x25B8)),
            "Move to the right (" + key + ")", [&s, widen] { s.AdjCol_Click(widen); },
            caption + " to the right");
        row->addWidget(adjCol_.at(static_cast<std::size_t>(narrow)));
        row->addWidget(adjCol_.at(static_cast<std::size_t>(widen)));
    }
    return frame;
}

void Form1::Do(const std::function<void()>& operation) {
    operation();
    Sync();
}

CommandOutcome Form1::KeyOutcome(int keyCode, bool shift, bool alt) {
    return CalibrationOutcome([&] { return session_->Form_KeyDown(keyCode, shift, alt); });
}

CommandOutcome Form1::ButtonOutcome(int keyCode) {
    return CalibrationOutcome([&] { return session_->ButtonCommand(keyCode); });
}

CommandOutcome Form1::CalibrationOutcome(const std::function<CommandOutcome()>& command) {
    const bool calibrating = session_->Calib.CalibrationStage > 0;
    CommandOutcome outcome = command();
    // The end of a calibration brought the statistics up to date (UpdateStats).
    if (calibrating && session_->Calib.CalibrationStage == 0) outcome.StatisticsChanged = true;
    return outcome;
}

void Form1::Outcome(const CommandOutcome& outcome) {
    if (outcome.StatisticsChanged) emit StatisticsChanged();
    if (outcome.ShowStatistics) emit ShowStatistics(false);
    if (outcome.OpenHelp) emit OpenHelp();
    if (outcome.ExitProgram) close();
}

void Form1::Form_Load2() {
    findAfterTurn_->stop();
    lineFinder_->Cancel();
    scanReader_->Cancel();
    session_->Form_Load2();
    boxShown_ = false;
    columnsSought_ = 0;
    Sync();
}

void Form1::SetVersionLine(const QString& text) {
    versionLine_->setText(text);
}

// Most of the screen's free area, whatever its size.
void Form1::PlaceOnScreen() {
    const QRect free = screen()->availableGeometry();
    const int dx = free.width() / ScreenMarginDivisor;
    const int dy = free.height() / ScreenMarginDivisor;
    setGeometry(free.adjusted(dx, dy, -dx, -dy));
}

void Form1::InitialiseForm1() {
    if (!placedFromSettings_) PlaceOnScreen();
    show();
    // Shown, the window has its frame: frame and all stay on the screen.
    KeepWindowOnScreen(*this);
    // The view's size decides the box's width, so the layout must stand before the session
    // looks at it.
    layout()->activate();
    centralWidget()->layout()->activate();
    ApplyImageOptions();
    session_->InitialiseForm1();
    // After the layout is settled (the options form may have asked for it): the columns to look
    // for come from it.
    FindLines();
    boxShown_ = true;
    // The arrow keys and ENTER of calibration come here at once, without a click on the window.
    raise();
    activateWindow();
    Sync();
    // A remembered calibration needs none: the statistics are up to date already.
    if (session_->Calib.CalibrationStage == 0) emit StatisticsChanged();
}

void Form1::FindLines() {
    const QImage& scan = view_->Scan();
    if (scan.isNull()) return;
    columnsSought_ = ColumnsToFind(session_->Scan, scan.width(), scan.height());
    lineFinder_->Find(scan, columnsSought_, session_->Box.ScanRotation);
}

void Form1::FindLinesForLayout() {
    const QImage& scan = view_->Scan();
    // Only for the scan being verified: a scan opened for the next page is looked at when its
    // window is shown.
    if (!boxShown_ || columnsSought_ == 0 || scan.isNull()) return;
    if (ColumnsToFind(session_->Scan, scan.width(), scan.height()) != columnsSought_) FindLines();
}

// Lines found late serve the placements made after they come; Sync shows a box that the first
// stage placed again because the user had not moved it yet. A reading under way on the lines of
// the scan as it was turned before gives way to this one.
void Form1::LinesFound(PrintedLines lines, float rotation) {
    session_->PrintedLinesFound(lines, rotation);
    const QImage& scan = view_->Scan();
    if (!lines.Empty() && !scan.isNull())
        scanReader_->Read(scan, lines, rotation, session_->ReadingStarted(lines));
    Sync();
}

// A turn is usually one of several presses: the lines are found again once the presses pause,
// and the lines of the scan as it was are not used meanwhile.
void Form1::FindLinesAfterTurning() {
    lineFinder_->Cancel();
    findAfterTurn_->start();
}

bool Form1::FindingLines() const {
    return lineFinder_->Running();
}

bool Form1::ReadingScan() const {
    return scanReader_->Running();
}

void Form1::StartVerifying() {
    show();
    raise();
    activateWindow();
    dummyBox_->setFocus();
}

void Form1::FocusRecordBox() {
    if (!isVisible()) return;
    raise();
    activateWindow();
    dummyBox_->setFocus();
}

void Form1::StatisticsOnly() {
    session_->UpdateStats();
    session_->StatsOption = 0;
    emit ShowStatistics(true);
}

void Form1::MenuNewScan_Click() {
    NewScan({});
}

void Form1::NewScan(const SessionFiles& files) {
    if (!session_->NewScanAllowed()) return;
    boxShown_ = false;
    columnsSought_ = 0;
    Sync();
    emit NewScanRequested(files);
}

void Form1::closeEvent(QCloseEvent* event) {
    event->accept();
    if (ended_) return;
    ended_ = true;
    emit Closing();
}

void Form1::BoxDropped(QPoint topLeft) {
    const QPoint onForm = centralWidget()->mapTo(this, topLeft);
    Do([&] {
        session_->BoxDropped(CLng(onForm.x() * twipsPerPixel_), CLng(onForm.y() * twipsPerPixel_));
    });
}

void Form1::BoxResized(int width) {
    Do([&] { session_->SetBoxWidth(CLng(width * twipsPerPixel_)); });
}

void Form1::ViewScrolled() {
    if (!boxShown_) return;
    session_->ViewMoved();
    SyncBox();
    DiagBoxRefresh();
}

void Form1::ViewGeometryChanged() {
    if (!boxShown_ || placementQueued_) return;
    placementQueued_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            placementQueued_ = false;
            Do([this] { session_->EnsureFrameVisible(); });
        },
        Qt::QueuedConnection);
}

// The change watch runs on every repaint of the scan; only when it added its notice is the box
// laid out again (one more line of notes) and drawn.
void Form1::ViewRepainted() {
    if (!boxShown_) return;
    const std::string before = session_->Content.NotesText;
    session_->ChangeWatch(ModificationTime(session_->TranscriptionFile));
    if (session_->Content.NotesText != before) {
        session_->ResizeFrame();
        SyncBox();
    }
}

} // namespace tv
