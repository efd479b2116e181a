#pragma once
// The scan layout options form (ScanTypes): a small modal form on which the user states how many
// columns the scan shows, which part of a page or which of two facing pages, and whether the
// surnames stand on lines of their own. The session opens it through ScanLayoutChooser and
// applies the selection when it closes.
#include "layout/ScanLayoutOptions.h"

#include <QDialog>

#include <span>

class QAbstractButton;
class QButtonGroup;
class QCheckBox;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace tv {

class ScanTypesForm : public QDialog, public ScanLayoutChooser {
    Q_OBJECT

  public:
    explicit ScanTypesForm(QWidget* parent = nullptr);

    // Shows the form modally with the preselection; the selection when it is closed.
    ScanLayoutChoice Choose(const ScanLayoutChoice& preselected) override;

    // The form as it opens: the preselected options, Check1, the page options and the caption.
    void Preselect(const ScanLayoutChoice& preselected);
    ScanLayoutChoice Selection() const;
    // Brings the page options into line with the column choice.
    void OptPageOpts(bool doublePage);

    // An option of the form and the label of the group it starts (nullptr: none).
    struct Option {
        const char* Group;
        const char* Caption;
    };

    QRadioButton* OptCol(int index) const;  // 1..6
    QRadioButton* OptPage(int index) const; // 1..9
    QCheckBox* Check1;
    QPushButton* CloseButton;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // The options of a group, numbered from 1, under their group labels.
    QVBoxLayout* OptionColumn(QButtonGroup* group, const char* name,
                              std::span<const Option> options);
    void OptCol_Click(int index);

    QButtonGroup* optCols_;
    QButtonGroup* optPages_;
};

} // namespace tv
