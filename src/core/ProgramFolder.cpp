#include "core/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace ProgramFolder {

QString forUserFiles(const QString& programFolder) {
    const QFileInfo folder(programFolder);
    if (folder.isDir() && folder.isWritable())
        return programFolder;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!documents.isEmpty() && QFileInfo(documents).isDir())
        return documents;
    return QDir::homePath();
}

QString forUserFiles() {
    return forUserFiles(QCoreApplication::applicationDirPath());
}

} // namespace ProgramFolder
