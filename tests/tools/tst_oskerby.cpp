#include "CrLineReader.h"
#include "ToolProcess.h"

#include <QTcpSocket>
#include <QTest>
#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// The relay on a free port of this machine.
struct RunningRelay {
    ToolProcess relay{QStringLiteral("oskerby")};
    quint16 port = 0;

    bool start() {
        relay.start({"--port", "0"});
        port = relay.waitForLine(QStringLiteral("LISTENING ")).section(u' ', 1).toUShort();
        return port != 0;
    }

    // Waits until the relay has taken in the client on this local port.
    bool admitted(quint16 clientPort) {
        const QString joined = relay.waitForLine(QStringLiteral("JOINED "));
        return joined == QStringLiteral("JOINED 127.0.0.1:") + QString::number(clientPort);
    }

    bool said(const QString& prefix) const {
        const QStringList& lines = relay.outputLines();
        return std::any_of(lines.begin(), lines.end(),
                           [&](const QString& line) { return line.startsWith(prefix); });
    }
};

struct Client {
    QTcpSocket socket;
    CrLineReader reader{socket};

    bool join(RunningRelay& relay) {
        socket.connectToHost(QStringLiteral("127.0.0.1"), relay.port);
        return socket.waitForConnected(10000) && relay.admitted(socket.localPort());
    }

    void send(const QByteArray& bytes) {
        socket.write(bytes);
        socket.waitForBytesWritten(10000);
    }
};

// A client that connects and then never reads. Its receive buffer is kept tiny, so that
// the relay's backlog for it grows soon; a Qt socket would read into memory on its own.
class StalledClient {
public:
    explicit StalledClient(quint16 port) : fd(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const int tiny = 4096;
        ::setsockopt(fd, SOL_SOCKET, SO_RCVBUF, &tiny, sizeof tiny);
        sockaddr_in relay = {};
        relay.sin_family = AF_INET;
        relay.sin_port = htons(port);
        relay.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        connected = ::connect(fd, reinterpret_cast<sockaddr*>(&relay), sizeof relay) == 0;
    }
    ~StalledClient() { ::close(fd); }

    quint16 localPort() const {
        sockaddr_in self = {};
        socklen_t size = sizeof self;
        ::getsockname(fd, reinterpret_cast<sockaddr*>(&self), &size);
        return ntohs(self.sin_port);
    }

    // Reads at last what is left, and true when the connection then turns out to be over.
    bool findsTheConnectionEnded() {
        return QTest::qWaitFor(
            [&] {
                char chunk[65536];
                ssize_t count;
                while ((count = ::recv(fd, chunk, sizeof chunk, MSG_DONTWAIT)) > 0) {
                }
                return count == 0 || errno != EAGAIN;
            },
            10000);
    }

    bool connected = false;

private:
    int fd;
};

} // namespace

class TestOskerby : public QObject {
    Q_OBJECT
private slots:
    void aLineReachesEveryOtherClientButNotItsSender() {
        RunningRelay relay;
        QVERIFY(relay.start());
        Client a, b, c;
        QVERIFY(a.join(relay) && b.join(relay) && c.join(relay));

        a.send(" 06/01/2026 14:00:00 29.41 81.20 35.00\r");
        QVERIFY(b.reader.waitForLines(1));
        QVERIFY(c.reader.waitForLines(1));
        QCOMPARE(b.reader.lines.first(), QByteArray(" 06/01/2026 14:00:00 29.41 81.20 35.00\r"));
        QCOMPARE(c.reader.lines.first(), b.reader.lines.first());

        // The next thing the sender receives is another client's line, not its own.
        b.send(" two\r");
        QVERIFY(a.reader.waitForLines(1));
        QCOMPARE(a.reader.received, QByteArray(" two\r"));
        QVERIFY(c.reader.waitForLines(2));
        QCOMPARE(c.reader.lines.at(1), QByteArray(" two\r"));
    }

    // A half line waits for its CR; meanwhile another client's whole line goes first.
    void partialLinesAreJoinedForEachSender() {
        RunningRelay relay;
        QVERIFY(relay.start());
        Client a, b, c;
        QVERIFY(a.join(relay) && b.join(relay) && c.join(relay));

        a.send(" alpha-");
        QTest::qWait(100);
        c.send(" gamma\r");
        QVERIFY(b.reader.waitForLines(1));
        a.send("beta\r");
        QVERIFY(b.reader.waitForLines(2));
        QCOMPARE(b.reader.received, QByteArray(" gamma\r alpha-beta\r"));
        QVERIFY(c.reader.waitForLines(1));
        QCOMPARE(c.reader.received, QByteArray(" alpha-beta\r"));
    }

    void aClientThatLeavesIsForgotten() {
        RunningRelay relay;
        QVERIFY(relay.start());
        Client a, b, c;
        QVERIFY(a.join(relay) && b.join(relay) && c.join(relay));
        const quint16 leaving = b.socket.localPort();
        b.socket.disconnectFromHost();
        QCOMPARE(relay.relay.waitForLine(QStringLiteral("LEFT ")),
                 QStringLiteral("LEFT 127.0.0.1:") + QString::number(leaving));
        a.send(" still here\r");
        QVERIFY(c.reader.waitForLines(1));
        QCOMPARE(c.reader.received, QByteArray(" still here\r"));
    }

    // The sender and a reading client go step by step, a burst at a time, while the third
    // client reads nothing. Its backlog passes the limit and it is dropped; the reader
    // goes on receiving everything.
    void aClientThatNeverReadsIsDroppedWhileTheOthersGoOn() {
        RunningRelay relay;
        QVERIFY(relay.start());
        Client sender, reader;
        QVERIFY(sender.join(relay) && reader.join(relay));
        StalledClient stalled(relay.port);
        QVERIFY(stalled.connected);
        QVERIFY(relay.admitted(stalled.localPort()));

        const QByteArray burst = (QByteArray(1023, 'x') + '\r').repeated(64);
        qint64 sent = 0;
        while (!relay.said(QStringLiteral("DROPPED ")) && sent < 16 * 1024 * 1024) {
            sender.socket.write(burst);
            sent += burst.size();
            QVERIFY(QTest::qWaitFor([&] { return reader.reader.received.size() >= sent; }, 10000));
        }
        QVERIFY2(sent > 8 * 1024 * 1024, "dropped before its backlog could pass the limit");
        QCOMPARE(relay.relay.waitForLine(QStringLiteral("DROPPED ")).section(u':', 0, 1),
                 QStringLiteral("DROPPED 127.0.0.1:") + QString::number(stalled.localPort()));
        QVERIFY(stalled.findsTheConnectionEnded());

        sender.send(" after\r");
        QVERIFY(
            QTest::qWaitFor([&] { return reader.reader.received.endsWith(" after\r"); }, 10000));
        QCOMPARE(reader.reader.received.size(), sent + 7);
        QVERIFY(relay.relay.process.state() == QProcess::Running);
    }

    // A sender floods the relay as fast as it can. The reading client falls behind for
    // moments and holds the sender back, so it gets every line, in order; the client that
    // reads nothing is dropped once it is stuck, and holds nobody back.
    void aFloodReachesAReadingClientWholeWhileAStalledOneIsDropped() {
        RunningRelay relay;
        QVERIFY(relay.start());
        Client sender, reader;
        QVERIFY(sender.join(relay) && reader.join(relay));
        StalledClient stalled(relay.port);
        QVERIFY(stalled.connected);
        QVERIFY(relay.admitted(stalled.localPort()));

        QByteArray flood;
        for (int i = 0; i < 120000; ++i)
            flood +=
                QByteArray::number(i).rightJustified(9, '0') + ' ' + QByteArray(89, 'x') + '\r';
        sender.socket.write(flood);
        QVERIFY(
            QTest::qWaitFor([&] { return reader.reader.received.size() >= flood.size(); }, 120000));
        QVERIFY(reader.reader.received == flood);
        QCOMPARE(relay.relay.waitForLine(QStringLiteral("DROPPED ")).section(u':', 0, 1),
                 QStringLiteral("DROPPED 127.0.0.1:") + QString::number(stalled.localPort()));
        QVERIFY(stalled.findsTheConnectionEnded());
        QVERIFY(!relay.said(QStringLiteral("DROPPED 127.0.0.1:") +
                            QString::number(reader.socket.localPort())));
    }

    // A client that took nothing of more than 1 MiB for ten seconds is stuck, though no
    // more lines come.
    void aClientThatTakesNothingForTenSecondsIsDropped() {
        RunningRelay relay;
        QVERIFY(relay.start());
        Client sender;
        QVERIFY(sender.join(relay));
        StalledClient stalled(relay.port);
        QVERIFY(stalled.connected);
        QVERIFY(relay.admitted(stalled.localPort()));
        sender.send((QByteArray(1023, 'z') + '\r').repeated(2 * 1024));
        QTest::qWait(8000);
        QVERIFY(!relay.said(QStringLiteral("DROPPED ")));
        QVERIFY(relay.relay.waitForLine(QStringLiteral("DROPPED "), 10000).contains("for 10 s"));
        QVERIFY(stalled.findsTheConnectionEnded());
    }

    void aClientThatNeverEndsItsLineIsDropped() {
        RunningRelay relay;
        QVERIFY(relay.start());
        Client endless, other;
        QVERIFY(endless.join(relay) && other.join(relay));
        endless.send(QByteArray(300 * 1024, 'y'));
        QVERIFY(relay.relay.waitForLine(QStringLiteral("DROPPED ")).contains("without a line end"));
        QVERIFY(other.reader.received.isEmpty());
    }

    void terminateEndsWithStatusZero() {
        RunningRelay relay;
        QVERIFY(relay.start());
        Client a;
        QVERIFY(a.join(relay));
        relay.relay.process.terminate();
        QVERIFY(relay.relay.process.waitForFinished(10000));
        QCOMPARE(relay.relay.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(relay.relay.process.exitCode(), 0);
        QVERIFY(QTest::qWaitFor(
            [&] { return a.socket.state() == QAbstractSocket::UnconnectedState; }, 10000));
    }

    // A second display instance starts the relay again while one runs: the second one must
    // give up and leave the first alone.
    void aTakenPortIsRefusedAndTheFirstRelayGoesOn() {
        RunningRelay first;
        QVERIFY(first.start());
        ToolProcess second(QStringLiteral("oskerby"));
        second.start({"--port", QString::number(first.port)});
        QVERIFY(second.process.waitForFinished(10000));
        QVERIFY(second.process.exitCode() != 0);
        QVERIFY(second.process.readAllStandardError().contains("cannot listen"));
        QVERIFY(second.outputLines().isEmpty());

        Client a, b;
        QVERIFY(a.join(first) && b.join(first));
        a.send(" still relaying\r");
        QVERIFY(b.reader.waitForLines(1));
    }

    void aBadPortIsRefused() {
        ToolProcess relay(QStringLiteral("oskerby"));
        relay.start({"--port", "99999"});
        QVERIFY(relay.process.waitForFinished(10000));
        QVERIFY(relay.process.exitCode() != 0);
    }
};

QTEST_GUILESS_MAIN(TestOskerby)
#include "tst_oskerby.moc"
