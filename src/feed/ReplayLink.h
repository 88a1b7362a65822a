#pragma once

#include "feed/PacedLink.h"

#include <QByteArrayList>

// Plays a recorded feed back as if the instrument sent it on the serial port: a file of the
// instrument's raw lines, one to a text line, handed on one line per interval, each ended
// by the CR the instrument ends it with. For demonstrations and tests. Playing stops at the
// end of the file; what is written to the link is taken and dropped.
class ReplayLink : public PacedLink {
    Q_OBJECT
public:
    explicit ReplayLink(const QString& path, QObject* parent = nullptr);

    // Reads the file; false when it can't be read.
    bool open(const PortOptions& options) override;
    bool write(const QByteArray& bytes) override;

private:
    void tick() override;

    QString path;
    QByteArrayList lines;
    qsizetype next = 0;
};
