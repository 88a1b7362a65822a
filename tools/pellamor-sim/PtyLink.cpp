#include "pellamor-sim/PtyLink.h"

#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace {

// Raw, so that CRs pass unchanged and nothing the host writes is echoed back at it.
void makeRaw(int fd) {
    termios settings = {};
    tcgetattr(fd, &settings);
    cfmakeraw(&settings);
    tcsetattr(fd, TCSANOW, &settings);
}

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

} // namespace

PtyLink::PtyLink(const QString& linkPath, QObject* parent)
    : InstrumentLink(parent), linkPath(linkPath) {}

PtyLink::~PtyLink() {
    release();
}

void PtyLink::open() {
    if (QFileInfo(linkPath).isSymLink()) {
        QFile::remove(linkPath); // left behind by an earlier run that was killed
    } else if (QFileInfo::exists(linkPath)) {
        emit errorOccurred(0, linkPath + QStringLiteral(" exists and is not a link; not replaced"));
        return;
    }
    if (::openpty(&controller, &terminal, nullptr, nullptr, nullptr) != 0) {
        emit errorOccurred(0, QStringLiteral("cannot open a pseudo-terminal: ") + systemError());
        return;
    }
    makeRaw(terminal);
    ::fcntl(controller, F_SETFL, ::fcntl(controller, F_GETFL) | O_NONBLOCK);
    ::fcntl(controller, F_SETFD, FD_CLOEXEC);
    ::fcntl(terminal, F_SETFD, FD_CLOEXEC);
    terminalPath = QString::fromLocal8Bit(::ttyname(terminal));
    if (!QFile::link(terminalPath, linkPath)) {
        const QString why = QStringLiteral("cannot make the link ") + linkPath;
        release();
        emit errorOccurred(0, why);
        return;
    }
    notifier = new QSocketNotifier(controller, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &PtyLink::readAvailable);
    emit opened();
}

// A line that does not fit because no program reads the other end is lost, as it would be
// on a cable with nobody listening.
bool PtyLink::write(const QByteArray& bytes) {
    if (controller < 0)
        return false;
    return ::write(controller, bytes.constData(), size_t(bytes.size())) == bytes.size();
}

void PtyLink::readAvailable() {
    QByteArray received;
    char chunk[4096];
    ssize_t count;
    while ((count = ::read(controller, chunk, sizeof chunk)) > 0)
        received.append(chunk, count);
    if (!received.isEmpty())
        emit bytesReceived(received);
}

void PtyLink::close() {
    if (controller < 0)
        return;
    release();
    emit closed();
}

// Removes the link only while it still leads to this pair: another simulator may have taken
// the path over since.
void PtyLink::release() {
    if (controller < 0)
        return;
    if (QFile::symLinkTarget(linkPath) == terminalPath)
        QFile::remove(linkPath);
    delete notifier;
    notifier = nullptr;
    ::close(controller);
    ::close(terminal);
    controller = terminal = -1;
}
