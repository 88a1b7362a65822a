#pragma once

#include <QString>
#include <QTemporaryDir>

// A benchmark's own settings and data folders, set through the XDG variables before the
// application starts, so that no run reads or writes the user's settings or weather log.
class ScratchHome {
public:
    ScratchHome() {
        qputenv("XDG_CONFIG_HOME", (dir.path() + QStringLiteral("/config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", (dir.path() + QStringLiteral("/data")).toLocal8Bit());
    }

    QString filePath(const QString& name) const { return dir.filePath(name); }

private:
    QTemporaryDir dir;
};
