#include "core/ShippedFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace ShippedFiles {

QString find(const QString& programFolder, const QString& name) {
    const QString beside = programFolder + u'/' + name;
    if (QFileInfo::exists(beside))
        return beside;
    const QString shared =
        QDir::cleanPath(programFolder + QStringLiteral("/../share/tarnwick/") + name);
    if (QFileInfo::exists(shared))
        return shared;
    return beside;
}

QString find(const QString& name) {
    return find(QCoreApplication::applicationDirPath(), name);
}

} // namespace ShippedFiles
