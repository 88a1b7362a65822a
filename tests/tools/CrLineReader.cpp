#include "CrLineReader.h"

#include <QIODevice>
#include <QTest>

CrLineReader::CrLineReader(QIODevice& device) : device(device) {
    QObject::connect(&device, &QIODevice::readyRead, &context, [this] { read(); });
}

bool CrLineReader::waitForLines(qsizetype count, int timeoutMs) {
    return QTest::qWaitFor(
        [&] {
            read();
            return lines.size() >= count;
        },
        timeoutMs);
}

void CrLineReader::read() {
    received += device.readAll();
    qsizetype end;
    while ((end = received.indexOf('\r', lineStart)) >= 0) {
        lines.append(received.mid(lineStart, end + 1 - lineStart));
        lineStart = end + 1;
    }
}
