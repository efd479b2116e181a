#include "session/QtDroppedFiles.h"

#include "core/QtPlatform.h"

#include <QMimeData>
#include <QUrl>

namespace tv {

SessionFiles DroppedFiles(const QMimeData& data) {
    std::vector<std::string> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) paths.push_back(PathFromQString(url.toLocalFile()));
    return DroppedFiles(paths);
}

} // namespace tv
