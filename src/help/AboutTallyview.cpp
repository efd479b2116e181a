#include "help/AboutTallyview.h"

#include "core/QtPlatform.h"
#include "help/HelpPages.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tv {

const char* const AboutText =
    "Tallyview helps you check a transcription of a page of the births, marriages and deaths "
    "indexes against the scan of that page. It lays a box over the scan that shows the "
    "transcribed record of the index line beneath it, so that you can step down the page line by "
    "line, flag mistakes, and see or print the queries and warnings of your transcription.\n\n"
    "Tallyview only reads your scans and transcriptions; it never changes them.";

std::string ReleaseText() {
    return "Released " TALLYVIEW_RELEASE_DATE ". To report a problem, please see the " +
           ContactPointer() + ".";
}

AboutTallyview::AboutTallyview(const std::string& versionText, QWidget* parent)
    : QDialog(parent), versionLabel_(new QLabel(ToQString(versionText), this)),
      description_(new QLabel(AboutText, this)),
      release_(new QLabel(ToQString(ReleaseText()), this)), ok_(new QPushButton("OK", this)) {
    setWindowTitle("About Tallyview");
    versionLabel_->setObjectName("VersionLabel");
    description_->setObjectName("Description");
    description_->setWordWrap(true);
    // A wrapped label of a fixed width gives the box its height.
    description_->setFixedWidth(400);
    release_->setObjectName("ReleaseLabel");
    release_->setWordWrap(true);
    release_->setFixedWidth(400);
    release_->setOpenExternalLinks(true);
    ok_->setObjectName("OK");
    ok_->setDefault(true);

    auto* title = new QLabel("Tallyview", this);
    QFont titleFont = title->font();
    titleFont.setBold(true);
    titleFont.setPointSize(titleFont.pointSize() + 4);
    title->setFont(titleFont);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(versionLabel_);
    layout->addWidget(description_);
    layout->addWidget(release_);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
}

} // namespace tv
