#include "core/ShippedFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace ShippedFiles {

QString Find(const QString& programFolder, const QString& name) {
    const QString beside = programFolder + u'/' + name;
    if (QFileInfo::exists(beside))
        return beside;
    const QString shared =
        QDir::cleanPath(programFolder + QStringLiteral("/../share/tarnwick/") + name);
    if (QFileInfo::exists(shared))
        return shared;
    return beside;
}

QString Find(const QString& name) {
    return Find(QCoreApplication::applicationDirPath(), name);
}

} // namespace ShippedFiles
