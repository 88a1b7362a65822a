#pragma once

#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRect>
#include <QTemporaryDir>
#include <QTest>

// Runs a test class on the headless platform with these screens, the first one primary. The
// platform reads its screens once, when the application object is made, so each layout needs
// a test program of its own.
template <typename TestClass>
int RunWithScreens(const QList<QRect>& screens, int argc, char** argv) {
    QJsonArray list;
    for (qsizetype i = 0; i < screens.size(); ++i) {
        const QRect& r = screens[i];
        list.append(QJsonObject{{"name", QStringLiteral("screen%1").arg(i + 1)},
                                {"x", r.x()},
                                {"y", r.y()},
                                {"width", r.width()},
                                {"height", r.height()},
                                {"logicalDpi", 96},
                                {"logicalBaseDpi", 96},
                                {"dpr", 1}});
    }
    QTemporaryDir folder;
    QFile config(folder.filePath(QStringLiteral("screens.json")));
    if (!config.open(QIODevice::WriteOnly))
        return 1;
    config.write(QJsonDocument(QJsonObject{{"screens", list}}).toJson());
    config.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.fileName().toLocal8Bit());

    QApplication app(argc, argv);
    TestClass test;
    return QTest::qExec(&test, argc, argv);
}
