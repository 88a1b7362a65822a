#include "feed/SimulatorLink.h"

#include <QDateTime>

SimulatorLink::SimulatorLink(SimulatedInstrument::Options options, QObject* parent)
    : PacedLink(parent), instrument(options) {}

bool SimulatorLink::open(const PortOptions&) {
    if (isOpen())
        return true;
    command.clear();
    startPacing();
    return true;
}

// Commands end in a CR; a line feed is no part of one.
bool SimulatorLink::write(const QByteArray& bytes) {
    if (!isOpen())
        return false;
    for (const char byte : bytes) {
        if (byte == '\r') {
            obey(command);
            command.clear();
        } else if (byte != '\n') {
            command += byte;
        }
    }
    return true;
}

void SimulatorLink::tick() {
    if (isOpen())
        emit bytesReceived(instrument.nextLine(QDateTime::currentDateTime()));
}

// The answer to a poll comes from the event loop, as it would from a real instrument, so it
// never arrives inside the write that asked for it.
void SimulatorLink::obey(const QByteArray& received) {
    if (received == "l")
        QTimer::singleShot(0, this, &SimulatorLink::tick);
    else if (received.startsWith('f'))
        receivedPages.append(received.mid(1));
}
