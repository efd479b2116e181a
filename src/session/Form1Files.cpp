// The two files of a session: the open-file dialog or the files given in its place, loading the
// scan into the view (waiting for it with the window responsive) and reading the transcription,
// and the files dropped on the window.
#include "session/Form1.h"

#include "core/Text.h"
#include "session/QtDroppedFiles.h"
#include "view/ImageView.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileDialog>
#include <QStringList>

#include <cstdio>

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

void Form1::GiveFile(FileKind kind, const std::string& path) {
    givenFiles_[kind] = path;
}

std::string Form1::ChooseFile(FileKind kind) {
    if (const auto given = givenFiles_.find(kind); given != givenFiles_.end()) {
        std::string path = given->second;
        givenFiles_.erase(given);
        return path;
    }
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
    if (view_->ErrorCode() != 0) {
        // The message box gives the documented words; standard error says why.
        std::fprintf(stderr, "tallyview: %s: %s\n", path.c_str(),
                     view_->ErrorReason().toLocal8Bit().constData());
    }
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

void Form1::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFiles(*event->mimeData()).Empty()) event->acceptProposedAction();
}

// As New Scan from the menu (refused while calibrating), with the dropped files answering the
// start window's dialogs.
void Form1::dropEvent(QDropEvent* event) {
    const SessionFiles files = DroppedFiles(*event->mimeData());
    if (files.Empty()) return;
    // While calibrating the files are refused: the sender is told that nothing was taken (so a
    // file manager moving them keeps them), and the user is told why once the drop is over.
    if (session_->Calib.CalibrationStage != 0) {
        event->setDropAction(Qt::IgnoreAction);
        event->ignore();
    } else {
        event->acceptProposedAction();
    }
    QMetaObject::invokeMethod(
        this, [this, files] { NewScan(files); }, Qt::QueuedConnection);
}

} // namespace tv
