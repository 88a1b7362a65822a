#include "ui/shell/DemoRecorder.h"

#include "feed/WeatherFeed.h"
#include "ui/shell/MainWindow.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QTextStream>
#include <QTimer>

namespace DemoRecorder {

namespace {

// The main window, and a dialog a command opened drawn over it where it stands.
QPixmap pictureOf(MainWindow& window, QWidget* dialog) {
    QPixmap picture = window.grab();
    if (dialog) {
        QPainter painter(&picture);
        painter.drawPixmap(window.mapFromGlobal(dialog->geometry().topLeft()), dialog->grab());
    }
    return picture;
}

} // namespace

void install(MainWindow& window) {
    if (qEnvironmentVariableIsSet("TARNWICK_ECHO_STATUS")) {
        QObject::connect(&window.weatherFeed(), &WeatherFeed::statusText, &window,
                         [](const QString& text) {
                             QTextStream out(stdout);
                             out << "STATUS: " << text << Qt::endl;
                         });
    }
    const QStringList commands =
        qEnvironmentVariable("TARNWICK_DEMO_COMMANDS").split(u',', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < commands.size(); ++i) {
        QTimer::singleShot(1000 + 500 * int(i), &window,
                           [&window, name = commands[i].trimmed()] { window.dispatch(name); });
    }
    bool ok = false;
    const int quitAfter = qEnvironmentVariableIntValue("TARNWICK_QUIT_AFTER_MS", &ok);
    if (!ok || quitAfter <= 0)
        return;
    QTimer::singleShot(quitAfter, &window, [&window] {
        QWidget* dialog = QApplication::activeModalWidget();
        const QString picture = qEnvironmentVariable("TARNWICK_SCREENSHOT");
        if (!picture.isEmpty())
            pictureOf(window, dialog).save(picture, "PNG");
        // A dialog a command left open would keep the program from ending.
        if (dialog)
            dialog->close();
        window.close();
    });
}

} // namespace DemoRecorder
