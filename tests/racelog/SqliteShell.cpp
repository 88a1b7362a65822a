#include "SqliteShell.h"

#include <QFile>
#include <QProcess>

SqliteShell SqliteShell::run(const QString& path, const QString& command) {
    QProcess process;
    process.start(QStringLiteral("sqlite3"), {QStringLiteral("-batch"), path, command});
    SqliteShell result;
    if (!process.waitForFinished(10000))
        return result;
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.output = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    result.errors = QString::fromUtf8(process.readAllStandardError()).trimmed();
    return result;
}

QStringList SqliteShell::lines() const {
    return output.split(u'\n', Qt::SkipEmptyParts);
}

QStringList sideFiles(const QString& path) {
    QStringList found;
    for (const char* suffix : {"-journal", "-wal", "-shm"}) {
        if (QFile::exists(path + QLatin1String(suffix)))
            found << path + QLatin1String(suffix);
    }
    return found;
}
