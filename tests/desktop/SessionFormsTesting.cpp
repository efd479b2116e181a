#include "SessionFormsTesting.h"

#include "view/ImageView.h"
#include "view/RecordBoxWidget.h"

#include <QApplication>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <fstream>
#include <sstream>

namespace tv::test {

namespace {

namespace fs = std::filesystem;

// Each kind is drawn once per test run, into a folder that lives as long as the program.
const fs::path& DrawnPage(const std::string& kind) {
    static TempDir drawn;
    static std::map<std::string, fs::path> lines;
    auto found = lines.find(kind);
    if (found != lines.end()) return found->second;
    const fs::path dir = drawn.Path() / kind;
    // Without the leak check of the sanitizer build: as in tests/support/SamplePages.cpp.
    QProcess generator;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("ASAN_OPTIONS"),
                       environment.value(QStringLiteral("ASAN_OPTIONS")) +
                           QStringLiteral(":detect_leaks=0"));
    generator.setProcessEnvironment(environment);
    generator.start(QStringLiteral(TALLYVIEW_SAMPLEGEN),
                    {QString::fromStdString(kind), PathToQString(dir)});
    const bool finished = generator.waitForFinished(120000);
    const int status =
        finished && generator.exitStatus() == QProcess::NormalExit ? generator.exitCode() : -1;
    if (status != 0) throw std::runtime_error("the sample generator failed for " + kind);
    for (const auto& entry : fs::directory_iterator(dir))
        if (entry.path().extension() == ".lines") return lines[kind] = entry.path();
    throw std::runtime_error("the sample generator wrote no positions for " + kind);
}

void ReadPlaces(const fs::path& path, SamplePage& page) {
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        if (line.rfind("# pitch ", 0) == 0) {
            page.Pitch = std::stoi(line.substr(8));
        } else if (line.rfind("# columns ", 0) == 0) {
            page.Columns = std::stoi(line.substr(10));
        } else if (!line.empty() && line[0] != '#') {
            int tableLine = 0;
            SamplePage::Place place;
            fields >> tableLine >> place.Column >> place.X >> place.Y;
            page.Places[tableLine] = place;
        }
    }
}

} // namespace

int SamplePage::FirstLineOfColumn(int column) const {
    for (const auto& [line, place] : Places)
        if (place.Column == column) return line;
    throw std::runtime_error("no record in column " + std::to_string(column));
}

SamplePage GeneratePage(const std::string& kind, const fs::path& dir) {
    const fs::path lines = DrawnPage(kind);
    SamplePage page;
    for (const char* extension : {".jpg", ".QRL"}) {
        fs::path source = lines;
        source.replace_extension(extension);
        const fs::path copy = dir / source.filename();
        fs::copy_file(source, copy, fs::copy_options::overwrite_existing);
        (extension[1] == 'j' ? page.Scan : page.Transcription) = copy.string();
    }
    ReadPlaces(lines, page);
    return page;
}

void WhenScanTypesShown(const std::function<void(ScanTypesForm&)>& action) {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, poll, [poll, action] {
        auto* form = qobject_cast<ScanTypesForm*>(QApplication::activeModalWidget());
        if (form == nullptr) return;
        poll->deleteLater();
        poll->stop();
        action(*form);
    });
    poll->start(10);
}

FormsTest::~FormsTest() {
    Start.reset();
    Main.reset();
    Window = nullptr;
}

StartForm& FormsTest::OpenStartForm(bool skipOpenScreen) {
    Start = std::make_unique<StartForm>([this] { return CreateMainForm(); }, skipOpenScreen);
    Start->show();
    return *Start;
}

Form1* FormsTest::CreateMainForm() {
    ++MainFormsCreated;
    Form1Services services;
    services.Ask = &Prompts;
    if (!RealScanTypes) services.LayoutChooser = &Chooser;
    services.ChooseFile = [this](FileKind, const FileRequest& request) {
        return NextFile(request);
    };
    Main = std::make_unique<Form1>(services);
    Window = Main.get();
    QObject::connect(Window, &Form1::ShowStatistics,
                     [this](bool statisticsOnly) { StatisticsRequests.push_back(statisticsOnly); });
    return Window;
}

std::string FormsTest::NextFile(const FileRequest& request) {
    Requests.push_back(request);
    if (Files.empty()) return "";
    std::string file = Files.front();
    Files.pop_front();
    return file;
}

void FormsTest::OpenPage(const SamplePage& page) {
    Files = {page.Scan, page.Transcription};
    OpenStartForm(true).Stage1->click();
    ASSERT_NE(Window, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    ASSERT_EQ(S().Calib.CalibrationStage, 1);
}

void FormsTest::Calibrate(const SamplePage& page) {
    Session& s = S();
    ASSERT_EQ(s.Calib.CalibrationStage, 1);
    MoveBoxTo(page.Places.at(s.Table.CurrentLine));
    Press(Qt::Key_Return);
    ASSERT_EQ(s.Calib.CalibrationStage, 2);
    MoveBoxTo(page.Places.at(s.Table.CurrentLine));
    Press(Qt::Key_Return);
    while (s.Calib.CalibrationStage >= 3) {
        const int line = page.FirstLineOfColumn(s.Calib.CalibrationStage - 1);
        for (int k = 0; k < 200 && s.Table.CurrentLine != line; ++k)
            Press(s.Table.CurrentLine < line ? Qt::Key_Plus : Qt::Key_Minus);
        ASSERT_EQ(s.Table.CurrentLine, line);
        MoveBoxTo(page.Places.at(line));
        Press(Qt::Key_Return);
    }
    ASSERT_EQ(s.Calib.CalibrationStage, 0);
}

void FormsTest::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(DummyBox(), key, modifiers);
}

void FormsTest::MoveBoxTo(double x, double y) {
    const Session& s = S();
    for (int presses = 0; presses < 2000; ++presses) {
        const ViewMetrics m = Window->View().Metrics();
        const double dy = y * m.TwipsPerPixelY * m.Zoom - s.Box.BoxTop;
        const double dx = x * m.TwipsPerPixelX * m.Zoom - s.Box.BoxLeft;
        const double step = s.MovementStep(false);
        const bool far =
            std::abs(dy) > 4 * step || (std::abs(dy) <= step / 2 && std::abs(dx) > 4 * step);
        const Qt::KeyboardModifiers shift = far ? Qt::ShiftModifier : Qt::NoModifier;
        if (std::abs(dy) > step / 2)
            Press(dy > 0 ? Qt::Key_Down : Qt::Key_Up, shift);
        else if (std::abs(dx) > step / 2)
            Press(dx > 0 ? Qt::Key_Right : Qt::Key_Left, shift);
        else
            return;
    }
    FAIL() << "the box did not reach " << x << ", " << y;
}

QPointF FormsTest::BoxOnScan() const {
    const ViewMetrics m = Window->View().Metrics();
    const QPoint onForm = Window->RdFrame().mapTo(Window, QPoint(0, 0));
    return {(onForm.x() - m.Control.Left / m.TwipsPerPixelX + m.ScrollX) / m.Zoom,
            (onForm.y() - m.Control.Top / m.TwipsPerPixelY + m.ScrollY) / m.Zoom};
}

QPointF FormsTest::BoxInSession() const {
    const ViewMetrics m = Window->View().Metrics();
    return {S().Box.BoxLeft / (m.TwipsPerPixelX * m.Zoom),
            S().Box.BoxTop / (m.TwipsPerPixelY * m.Zoom)};
}

QLineEdit* FormsTest::DummyBox() const {
    return Window->findChild<QLineEdit*>(QStringLiteral("DummyBox"));
}

} // namespace tv::test
