#include "feed/ReplayLink.h"

#include <QFile>

ReplayLink::ReplayLink(const QString& path, QObject* parent) : PacedLink(parent), path(path) {}

bool ReplayLink::open(const PortOptions&) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    lines = file.readAll().split('\n');
    // A file that ends with its last line's newline has nothing after it.
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    next = 0;
    startPacing();
    return true;
}

bool ReplayLink::write(const QByteArray&) {
    return isOpen();
}

void ReplayLink::tick() {
    if (next >= lines.size()) {
        stopPacing();
        return;
    }
    QByteArray line = lines[next++];
    // A file written on Windows ends its lines with CR LF; the CR is put back below.
    if (line.endsWith('\r'))
        line.chop(1);
    emit bytesReceived(line + '\r');
}
