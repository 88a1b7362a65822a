#include "common/PtyPair.h"

#include <QDeadlineTimer>

PtyPair::PtyPair() {
    ready = plugIn();
}

bool PtyPair::plugIn() {
    socat.setReadChannel(QProcess::StandardError);
    socat.start(QStringLiteral("socat"),
                {QStringLiteral("-d"), QStringLiteral("-d"),
                 QStringLiteral("pty,raw,echo=0,link=") + portEnd(),
                 QStringLiteral("pty,raw,echo=0,link=") + instrumentEnd()});
    // socat says so on its error output once both ends exist.
    QByteArray said;
    QDeadlineTimer deadline(10000);
    while (!said.contains("starting data transfer loop") && !deadline.hasExpired() &&
           socat.state() != QProcess::NotRunning) {
        socat.waitForReadyRead(100);
        said += socat.readAllStandardError();
    }
    return said.contains("starting data transfer loop");
}

PtyPair::~PtyPair() {
    unplug();
}

void PtyPair::unplug() {
    if (socat.state() == QProcess::NotRunning)
        return;
    socat.terminate();
    if (!socat.waitForFinished(5000)) {
        socat.kill();
        socat.waitForFinished(5000);
    }
}
