#include "core/InstanceChannel.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>
#include <QUuid>
#include <QtEndian>

namespace {

// A handed path goes as its length in 4 bytes, big-endian, then its UTF-8 bytes.
constexpr qsizetype lengthSize = 4;
// No race log path comes near this; a longer claim is not a path of ours.
constexpr quint32 longestPath = 64 * 1024;
// A running main instance answers within moments; a later start waits no longer than this.
constexpr int handOverWaitMs = 2000;

// The folder where the processes of one user and one settings folder meet. It lives in a
// folder of the user's that is emptied with the session - on Windows the user's temporary
// folder - and is named after the settings folder: that belongs to one user already, and two
// sets of settings on one machine (as in tests) never meet.
QString meetingFolder() {
#ifdef Q_OS_WIN
    const QString sessionFolder = QDir::tempPath();
#else
    const QString sessionFolder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
#endif
    const QString settingsFolder =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QByteArray digest =
        QCryptographicHash::hash(settingsFolder.toUtf8(), QCryptographicHash::Sha1).toHex();
    return sessionFolder + QStringLiteral("/tarnwick-") + QString::fromLatin1(digest.left(16));
}

// Where the main instance listens: a socket file in the meeting folder, or on Windows a pipe
// named after that folder.
QString mainServerName() {
#ifdef Q_OS_WIN
    return QFileInfo(meetingFolder()).fileName() + QStringLiteral(".main");
#else
    return meetingFolder() + QStringLiteral("/main");
#endif
}

QByteArray framed(const QString& path) {
    const QByteArray text = path.toUtf8();
    QByteArray message(lengthSize, '\0');
    qToBigEndian<quint32>(quint32(text.size()), message.data());
    return message + text;
}

} // namespace

InstanceChannel::InstanceChannel(QObject* parent)
    : QObject(parent), lockFolder(meetingFolder()), serverName(mainServerName()) {
    ownLock = std::make_unique<QLockFile>(
        lockFolder + u'/' + QUuid::createUuid().toString(QUuid::Id128) + QStringLiteral(".lock"));
    ownLock->setStaleLockTime(0);
    // The last process to end removes the folder; one starting at that moment makes it anew.
    for (int attempt = 0; attempt < 2 && !ownLock->isLocked(); ++attempt) {
        QDir().mkpath(lockFolder);
        ownLock->tryLock(0);
    }
    connect(&server, &QLocalServer::newConnection, this, &InstanceChannel::accept);
}

InstanceChannel::~InstanceChannel() {
    server.close();
    ownLock.reset();
    // The last process to end takes the folder along; while others run it stays.
    QDir().rmdir(lockFolder);
}

bool InstanceChannel::anotherProcessRunning() const {
    const QString ownName = QFileInfo(ownLock->fileName()).fileName();
    const QStringList locks = QDir(lockFolder).entryList({QStringLiteral("*.lock")}, QDir::Files);
    for (const QString& name : locks) {
        if (name == ownName)
            continue;
        // A lock that can be taken was left by a process that died; taking it and letting
        // it go clears it away.
        QLockFile other(lockFolder + u'/' + name);
        other.setStaleLockTime(0);
        if (other.tryLock(0)) {
            other.unlock();
            continue;
        }
        if (other.error() == QLockFile::LockFailedError)
            return true;
    }
    return false;
}

bool InstanceChannel::listen() {
    // Only one main instance runs at a time, so a channel of that name can only be the
    // remains of one that crashed.
    QLocalServer::removeServer(serverName);
    server.setSocketOptions(QLocalServer::UserAccessOption);
    return server.listen(serverName);
}

void InstanceChannel::stopListening() {
    server.close();
}

bool InstanceChannel::handOver(const QString& path) {
    QLocalSocket socket;
    socket.connectToServer(mainServerName());
    if (!socket.waitForConnected(handOverWaitMs))
        return false;
    socket.write(framed(path));
    while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(handOverWaitMs)) {
    }
    // The main instance hangs up once it has the whole path.
    return socket.state() == QLocalSocket::UnconnectedState ||
           socket.waitForDisconnected(handOverWaitMs);
}

// A connection that brings nothing is let go by the main instance without a word.
bool InstanceChannel::mainInstanceListening() {
    QLocalSocket socket;
    socket.connectToServer(mainServerName());
    return socket.waitForConnected(handOverWaitMs);
}

void InstanceChannel::accept() {
    while (QLocalSocket* socket = server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this,
                [this, socket, received = QByteArray()]() mutable { readPath(socket, received); });
    }
}

void InstanceChannel::readPath(QLocalSocket* socket, QByteArray& received) {
    received += socket->readAll();
    if (received.size() < lengthSize)
        return;
    const quint32 length = qFromBigEndian<quint32>(received.constData());
    if (length > longestPath) {
        socket->disconnectFromServer();
        return;
    }
    if (received.size() < lengthSize + qsizetype(length))
        return;
    const QString path = QString::fromUtf8(received.mid(lengthSize, length));
    socket->disconnectFromServer();
    // Opening a race log can show a box with its own event loop; that waits until this
    // connection is done with.
    QMetaObject::invokeMethod(
        this, [this, path] { emit pathReceived(path); }, Qt::QueuedConnection);
}
