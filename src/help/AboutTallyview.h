#pragma once
// The About box: the program's version text, what the program does, its release and where
// problems are reported, and OK.
#include <QDialog>

#include <string>

class QLabel;
class QPushButton;

namespace tv {

class AboutTallyview : public QDialog {
    Q_OBJECT

  public:
    // versionText: the version line the main window holds (Windows-1252).
    explicit AboutTallyview(const std::string& versionText, QWidget* parent = nullptr);

    QLabel* VersionLabel() const { return versionLabel_; }
    QLabel* Description() const { return description_; }
    QLabel* Release() const { return release_; }
    QPushButton* OK() const { return ok_; }

  private:
    QLabel* versionLabel_;
    QLabel* description_;
    QLabel* release_;
    QPushButton* ok_;
};

// What the About box says of the program.
extern const char* const AboutText;

// The release date and where to report problems (Windows-1252).
std::string ReleaseText();

} // namespace tv
