// The two files of a session: the open-file dialog, loading the scan into the view (waiting for
// it with the window responsive) and reading the transcription.
#include "session/Form1.h"

#include "core/Text.h"
#include "view/ImageView.h"

#include <QApplication>
#include <QFileDialog>
#include <QStringList>

namespace tv {

std::string OpenFileDialog(const FileRequest& request) {
    QStringList filters;
    for (const std::string& filter : request.Filters)
        filters << QString::fromStdString(filter);
    // The dialog belongs to the window the user is working in: the start window.
    QFileDialog dialog(QApplication::activeWindow(), QString::fromStdString(request.Title),
                       PathToQString(request.Folder));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters.value(0));
    if (!request.Name.empty()) dialog.selectFile(PathToQString(request.Name));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return "";
    return PathFromQString(dialog.selectedFiles().value(0));
}

std::string Form1::ChooseFile(FileKind kind) {
    const FileRequest request = session_->ChooseFileRequest(kind);
    return Trim(services_.ChooseFile ? services_.ChooseFile(kind, request)
                                     : OpenFileDialog(request));
}

std::string Form1::LoadFiles(const std::string& kind) {
    if (kind == "J") return LoadImageFile();
    return session_->LoadTranscription(ChooseFile(FileKind::Transcription));
}

std::string Form1::LoadImageFile() {
    session_->ImageChosen(ChooseFile(FileKind::Image));
    const std::string& path = session_->GraphicsFile;
    if (path.empty()) return path;
    view_->BeginLoad(PathToQString(path));
    view_->WaitForLoad();
    if (!session_->ImageLoaded(view_->ErrorCode())) {
        // A scan that cannot be shown ends the program.
        close();
        return path;
    }
    // A fresh load shows the scan neither mirrored nor negative.
    viewMirror_ = false;
    viewNegative_ = false;
    ApplyImageOptions();
    return path;
}

void Form1::ApplyImageOptions() {
    const Preferences& prefs = session_->Prefs;
    view_->SetAntiAlias(prefs.AntiAlias);
    view_->SetSmoothing(prefs.Smoothing);
    view_->SetMagnifier(prefs.Magnifier);
    if (viewMirror_ != prefs.Mirror) {
        view_->ToggleMirror();
        viewMirror_ = prefs.Mirror;
    }
    if (viewNegative_ != prefs.Negative) {
        view_->ToggleNegative();
        viewNegative_ = prefs.Negative;
    }
}

} // namespace tv
