#pragma once

#include "core/InstanceChannel.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTextStream>

#include <optional>

// Another process of the program, played by the test program itself. Started with one of
// these arguments it takes its place among the running processes - as a main instance it also
// listens and prints "RECEIVED: <path>" for every path handed to it - and prints "holding";
// or it is a later start that hands a path over and ends.
namespace OtherInstance {

inline const QString holdDisplay = QStringLiteral("--hold-display-instance");
inline const QString holdMain = QStringLiteral("--hold-main-instance");
inline const QString handOver = QStringLiteral("--hand-over");

// Plays the role the arguments name; nothing when they name none and the tests are to run.
inline std::optional<int> PlayRole(int argc, char** argv) {
    const QString role = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    if (role != holdDisplay && role != holdMain && role != handOver)
        return std::nullopt;
    QCoreApplication app(argc, argv);
    InstanceChannel channel;
    if (role == handOver)
        return InstanceChannel::handOver(QCoreApplication::arguments().value(2)) ? 0 : 1;
    QTextStream out(stdout);
    if (role == holdMain) {
        channel.listen();
        QObject::connect(&channel, &InstanceChannel::pathReceived, &channel,
                         [&out](const QString& path) { out << "RECEIVED: " << path << Qt::endl; });
    }
    out << "holding" << Qt::endl;
    return app.exec();
}

// One such process, started by a test and killed at the latest when the object goes.
class Process {
public:
    explicit Process(const QStringList& arguments) {
        process.start(QCoreApplication::applicationFilePath(), arguments);
    }
    ~Process() { kill(); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    bool holding() {
        while (!output.contains("holding\n") && process.waitForReadyRead(5000))
            output += process.readAllStandardOutput();
        return output.contains("holding\n");
    }
    QString received() {
        output += process.readAllStandardOutput();
        return QString::fromUtf8(output);
    }
    QProcess::ProcessState state() const { return process.state(); }
    int exitCode() const { return process.exitCode(); }
    void kill() {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished(5000);
        }
    }

private:
    QProcess process;
    QByteArray output;
};

} // namespace OtherInstance
