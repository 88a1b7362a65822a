#include "racelog/RaceLogFileRequests.h"

#include "core/DateText.h"
#include "core/Registry.h"

#include <QFileInfo>

namespace RaceLogFileRequests {

namespace {

// The remembered folder, or the fallback when none is kept.
QString startFolder(const QString& fallback) {
    const QString folder = Registry::get(SettingKeys::FileDialogFolder);
    return folder == Registry::NoKeyValue ? fallback : folder;
}

} // namespace

QString filter() {
    return QStringLiteral("Tarnwick Race Log Files (*.trl) |*.trl|") +
           QStringLiteral("All Files (*.*) |*.*|");
}

Dialogs::FileRequest saveRequest(const QString& caption, const QString& raceTrack,
                                 const QDate& today, const QString& programFolder) {
    Dialogs::FileRequest request;
    request.save = true;
    request.title = QStringLiteral("Save Race Log - ") + caption;
    request.fileName = DateText::fileStamp(today);
    if (!raceTrack.isEmpty())
        request.fileName += u' ' + raceTrack;
    request.fileName += QStringLiteral(".trl");
    request.filter = filter();
    request.filterIndex = 1;
    request.initialFolder = startFolder(programFolder);
    return request;
}

Dialogs::FileRequest openRequest() {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Open Race Log");
    request.filter = filter();
    request.filterIndex = 1;
    request.initialFolder = startFolder(QString());
    return request;
}

void rememberFolder(const QString& chosenPath) {
    Registry::set(SettingKeys::FileDialogFolder, QFileInfo(chosenPath).absolutePath());
}

Dialogs::FileChoice withExtension(const Dialogs::FileChoice& chosen) {
    if (!QFileInfo(chosen.path).suffix().isEmpty())
        return chosen;
    return {chosen.path + QStringLiteral(".trl"), chosen.title + QStringLiteral(".trl")};
}

QString fileExtension(const QString& name) {
    return name.right(3);
}

} // namespace RaceLogFileRequests
