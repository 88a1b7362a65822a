#include "TestHome.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

TestHome::TestHome()
    : savedConfig(qgetenv("XDG_CONFIG_HOME")), savedData(qgetenv("XDG_DATA_HOME")),
      savedRuntime(qgetenv("XDG_RUNTIME_DIR")) {
    QDir().mkpath(configHome());
    QDir().mkpath(dataHome());
    QDir().mkpath(runtimeDir());
    QFile::setPermissions(runtimeDir(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_CONFIG_HOME", configHome().toLocal8Bit());
    qputenv("XDG_DATA_HOME", dataHome().toLocal8Bit());
    qputenv("XDG_RUNTIME_DIR", runtimeDir().toLocal8Bit());
}

TestHome::~TestHome() {
    qputenv("XDG_CONFIG_HOME", savedConfig);
    qputenv("XDG_DATA_HOME", savedData);
    qputenv("XDG_RUNTIME_DIR", savedRuntime);
}

QString programFolder() {
    const QByteArray fromEnv = qgetenv("TARNWICK_BIN_DIR");
    if (!fromEnv.isEmpty())
        return QString::fromLocal8Bit(fromEnv);
    return QCoreApplication::applicationDirPath();
}
