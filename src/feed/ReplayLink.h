#pragma once

#include "feed/PortLink.h"

#include <QByteArrayList>
#include <QTimer>

// Plays a recorded feed back as if the instrument sent it on the serial port: a file of the
// instrument's raw lines, one to a text line, handed on one line per interval, each ended
// by the CR the instrument ends it with. For demonstrations and tests. Playing stops at the
// end of the file; what is written to the link is taken and dropped.
class ReplayLink : public PortLink {
    Q_OBJECT
public:
    explicit ReplayLink(const QString& path, QObject* parent = nullptr);

    void setInterval(int milliseconds) { timer.setInterval(milliseconds); }

    // Reads the file; false when it can't be read. The line settings play no part.
    bool open(const PortOptions& options) override;
    bool discardInput() override { return true; }
    bool isOpen() const override { return portOpen; }
    bool write(const QByteArray& bytes) override;
    void close() override;

private:
    QString path;
    QByteArrayList lines;
    qsizetype next = 0;
    bool portOpen = false;
    QTimer timer;

    void sendNextLine();
};
