#pragma once
// The About box: the program's version text, what the program does, and OK.
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
    QPushButton* OK() const { return ok_; }

  private:
    QLabel* versionLabel_;
    QLabel* description_;
    QPushButton* ok_;
};

// What the About box says of the program.
extern const char* const AboutText;

} // namespace tv
