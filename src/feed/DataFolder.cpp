#include "feed/DataFolder.h"

#include <QDir>
#include <QStandardPaths>

QString dataFolder(const QString& subFolder) {
    // Callers name the folder the Windows way, "\Tarnwick".
    QString name = subFolder;
    name.replace(u'\\', u'/');
    while (name.startsWith(u'/'))
        name.remove(0, 1);
    if (name.isEmpty())
        return FolderNotValid;

    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty())
        return FolderNotValid;
    const QString folder = QDir::cleanPath(base + u'/' + name);
    if (!QDir().mkpath(folder))
        return FolderNotValid;
    return folder;
}
