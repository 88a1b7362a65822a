#include "ToolProcess.h"

#include "common/TestHome.h"

#include <QTest>

ToolProcess::ToolProcess(const QString& name) : name(name) {
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process,
                     [this] { readOutput(); });
}

ToolProcess::~ToolProcess() {
    if (process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished();
}

void ToolProcess::start(const QStringList& arguments) {
    process.start(programFolder() + u'/' + name, arguments);
}

QString ToolProcess::waitForLine(const QString& prefix, int timeoutMs) {
    QString found;
    const bool cameOrEnded = QTest::qWaitFor(
        [&] {
            readOutput();
            for (qsizetype i = taken; i < lines.size(); ++i) {
                if (lines[i].startsWith(prefix)) {
                    found = lines[i];
                    taken = i + 1;
                    return true;
                }
            }
            return process.state() == QProcess::NotRunning && !process.bytesAvailable();
        },
        timeoutMs);
    return cameOrEnded ? found : QString();
}

void ToolProcess::readOutput() {
    unfinished += process.readAllStandardOutput();
    qsizetype end;
    while ((end = unfinished.indexOf('\n')) >= 0) {
        lines.append(QString::fromLocal8Bit(unfinished.left(end)));
        unfinished.remove(0, end + 1);
    }
}
