#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A fresh home for one test: its own settings, data and runtime folders, set through the
// XDG variables for as long as the object lives, so no test sees another's settings tree.
class TestHome {
public:
    TestHome();
    ~TestHome();
    TestHome(const TestHome&) = delete;
    TestHome& operator=(const TestHome&) = delete;

    QString root() const { return dir.path(); }
    QString configHome() const { return dir.path() + QStringLiteral("/config"); }
    QString dataHome() const { return dir.path() + QStringLiteral("/data"); }
    QString runtimeDir() const { return dir.path() + QStringLiteral("/run"); }
    // The program's weather log folder under this home.
    QString weatherLogFolder() const { return dataHome() + QStringLiteral("/Tarnwick"); }

private:
    QTemporaryDir dir;
    QByteArray savedConfig, savedData, savedRuntime;
};

// The folder that holds tarnwick, oskerby and pellamor-sim.
QString programFolder();
