// The live socket over real TCP on 127.0.0.1 with real WebSocket clients: a snapshot when it
// opens and one message for each feed line, the logs' predictions of the line included, a
// handshake refused without the code, and a phone that stops reading dropped before the feed
// would wait for it.
#include "common/PtyPair.h"
#include "common/TestHome.h"
#include "crew/CrewServer.h"
#include "feed/PortDevices.h"
#include "feed/PortSettings.h"
#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkRequest>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <QWebSocket>
#include <memory>

namespace {

const QString Code = QStringLiteral("482913");
const QByteArray Line =
    " 11/22/26 10:42:07 29.92 71.5 43.2 2100 5.1 45 0.487 49 98.6 1410 120 275 7 11 340\r";
const QString LineStatus =
    QStringLiteral("ABP=29.92 Temp=71.5 RH=43.2 AA=2100 AH=5.1 GR=45 VP=0.487 DP=49 ADR=98.6 "
                   "DA=1410 PA=120 WD=275 WS=7 WG=11 AL=340");

// The same line with another adjusted altitude, which moves every log's prediction.
QByteArray lineWithAltitude(int adjustedAltitude) {
    QByteArray line = Line;
    return line.replace(" 2100 ", " " + QByteArray::number(adjustedAltitude) + ' ');
}

// Lines from the instrument come in reads of their own: each is handled in its own turn of the
// event loop, and what it made is sent before the next comes.
void feedAlone(WeatherStation& station, const QByteArray& line) {
    station.feed().serialBytes(line);
    QCoreApplication::processEvents();
}

// A log whose reference run (9.5 s at 2000 ft) gives an ET with every reading.
void fillReferenceRun(RaceLog& log, const QString& name, const QString& performanceFactor) {
    log.change(QStringLiteral("Fill"), [](RaceLogData& data) {
        data.grid.setCell(1, 12, QStringLiteral("9.5"));
        data.grid.setCell(1, 19, QStringLiteral("2000"));
    });
    log.setField(RaceLog::Field::PageIdentifier, name);
    log.setField(RaceLog::Field::PF, performanceFactor);
}

// The ET worked out by hand from the reference run: a time changes by its own fraction
// (8.5e-6 - PF x 8.5e-7) for each foot of altitude, counted one foot over the difference.
QString expectedEt(double performanceFactor, int adjustedAltitude) {
    const double perFoot = 8.5e-6 - performanceFactor * 8.5e-7;
    return QString::number(9.5 + perFoot * (adjustedAltitude - 2000 + 1) * 9.5, 'f', 4);
}

QUrl liveUrl(quint16 port, const QString& query) {
    return QUrl(QStringLiteral("ws://127.0.0.1:%1/live%2").arg(port).arg(query));
}

QString statusText(const QVariant& message) {
    return QJsonDocument::fromJson(message.toString().toUtf8())
        .object()[u"status"]
        .toObject()[u"text"]
        .toString();
}

// Open logs whose long names make each message large: 4,000 characters a log.
class LogsWithLongNames {
public:
    LogsWithLongNames(WeatherStation& station, int count) : station(station) {
        for (int i = 0; i < count; ++i) {
            logs.push_back(std::make_unique<RaceLog>());
            logs.back()->change(QStringLiteral("Name"), [i](RaceLogData& data) {
                data.pageIdentifier = QString(4000, QChar(u'A' + i % 26));
            });
            station.raceLogs().open(logs.back().get());
        }
    }
    ~LogsWithLongNames() {
        for (auto& log : logs)
            station.raceLogs().close(log.get());
    }

private:
    WeatherStation& station;
    std::vector<std::unique_ptr<RaceLog>> logs;
};

// The live socket's handshake as a browser sends it, on a plain TCP connection that takes no
// more than a kilobyte from the system until the test reads it.
void openUnreadLiveSocket(QTcpSocket& socket, const CrewServer& server) {
    socket.setReadBufferSize(1024);
    socket.connectToHost(QHostAddress::LocalHost, server.port());
    QVERIFY(socket.waitForConnected(5000));
    socket.write("GET /live?code=" + Code.toLatin1() +
                 " HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\n"
                 "Connection: Upgrade\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"
                 "Sec-WebSocket-Version: 13\r\n\r\n");
    QTRY_COMPARE(server.liveSocketCount(), 1);
}

// The whole messages at the front of `bytes`, taken off it. A server sends each message as
// one final, unmasked text frame: the second byte holds the length up to 125, or 126 and a
// 16-bit length, or 127 and a 64-bit one, in network order. Anything else comes out as
// "not a text frame".
QStringList takeWholeMessages(QByteArray& bytes) {
    QStringList messages;
    while (bytes.size() >= 2) {
        const auto byte = [&bytes](qsizetype at) { return quint64(uchar(bytes[at])); };
        qsizetype header = 2;
        quint64 length = byte(1) & 0x7F;
        if (length == 126)
            header = 4;
        else if (length == 127)
            header = 10;
        if (bytes.size() < header)
            break;
        if (header > 2) {
            length = 0;
            for (qsizetype at = 2; at < header; ++at)
                length = length << 8 | byte(at);
        }
        if (quint64(bytes.size() - header) < length)
            break;
        messages.append(byte(0) == 0x81 && (byte(1) & 0x80) == 0
                            ? QString::fromUtf8(bytes.mid(header, qsizetype(length)))
                            : QStringLiteral("not a text frame"));
        bytes.remove(0, header + qsizetype(length));
    }
    return messages;
}

// A phone that reads every message.
struct Phone {
    explicit Phone(const QUrl& url) : received(&socket, &QWebSocket::textMessageReceived) {
        socket.open(url);
    }
    QWebSocket socket;
    QSignalSpy received;
};

} // namespace

class TestCrewLive : public QObject {
    Q_OBJECT
    // Each test's own home, with a station and its crew server listening on 127.0.0.1.
    std::unique_ptr<TestHome> home;
    std::unique_ptr<WeatherStation> station;
    std::unique_ptr<CrewServer> server;

    void listenWithIdleTime(std::chrono::milliseconds idleTime) {
        server = std::make_unique<CrewServer>(*station, Code, idleTime);
        QVERIFY(server->listen(QHostAddress::LocalHost, 0));
    }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        station = std::make_unique<WeatherStation>();
        listenWithIdleTime(CrewConnections::DefaultIdleTime);
    }
    void cleanup() {
        server.reset();
        station.reset();
        home.reset();
    }

    void aPhoneGetsTheSnapshotAtOnceAndOneMessageForEachLine() {
        Phone phone(liveUrl(server->port(), QStringLiteral("?code=") + Code));
        QTRY_COMPARE(phone.received.size(), 1);
        QCOMPARE(server->liveSocketCount(), 1);
        QVERIFY(statusText(phone.received[0][0]) != LineStatus);

        for (int i = 0; i < 3; ++i)
            feedAlone(*station, Line);
        QTRY_COMPARE(phone.received.size(), 4);
        QTest::qWait(200);
        QCOMPARE(phone.received.size(), 4);
        QCOMPARE(statusText(phone.received[3][0]), LineStatus);

        // Lines that come in one read are handled together and go out as one message.
        station->feed().serialBytes(Line + Line + Line);
        QTRY_COMPARE(phone.received.size(), 5);
        QTest::qWait(200);
        QCOMPARE(phone.received.size(), 5);
        QCOMPARE(statusText(phone.received[4][0]), LineStatus);
    }

    // Every open log publishes on each line, and the line itself ends with its status: the
    // phone gets all of it as one message a line, not one for each log and one more.
    void aLineAndTheLogsItMovesAreOneMessage() {
        RaceLog red;
        RaceLog blue;
        fillReferenceRun(red, QStringLiteral("Red"), QStringLiteral("5"));
        fillReferenceRun(blue, QStringLiteral("Blue"), QStringLiteral("0"));
        station->raceLogs().open(&red);
        station->raceLogs().open(&blue);
        QSignalSpy redPublished(&red.prediction(), &PublishedPrediction::published);
        QSignalSpy bluePublished(&blue.prediction(), &PublishedPrediction::published);
        Phone phone(liveUrl(server->port(), QStringLiteral("?code=") + Code));
        QTRY_COMPARE(phone.received.size(), 1);

        const int altitudes[] = {2100, 2200, 2300};
        for (const int altitude : altitudes)
            feedAlone(*station, lineWithAltitude(altitude));
        // Both logs did publish on every line.
        QCOMPARE(redPublished.size(), 3);
        QCOMPARE(bluePublished.size(), 3);
        QTRY_COMPARE(phone.received.size(), 4);
        QTest::qWait(200);
        QCOMPARE(phone.received.size(), 4);

        // Each message holds both logs as its own line left them, the last the last line's.
        for (int i = 0; i < 3; ++i) {
            const QJsonArray logs =
                QJsonDocument::fromJson(phone.received[i + 1][0].toString().toUtf8())[u"logs"]
                    .toArray();
            QCOMPARE(logs.size(), 2);
            const QString redEt = expectedEt(5, altitudes[i]);
            const QString blueEt = expectedEt(0, altitudes[i]);
            QCOMPARE(logs[0][u"name"].toString(), QStringLiteral("Red"));
            QCOMPARE(logs[0][u"predictedEt"].toString(), redEt);
            QCOMPARE(logs[0][u"line"].toString(), QStringLiteral("Red> ET: ") + redEt);
            QCOMPARE(logs[1][u"name"].toString(), QStringLiteral("Blue"));
            QCOMPARE(logs[1][u"predictedEt"].toString(), blueEt);
            QCOMPARE(logs[1][u"line"].toString(), QStringLiteral("Blue> ET: ") + blueEt);
        }
        QCOMPARE(expectedEt(5, 2300), QStringLiteral("9.5122"));
        QCOMPARE(expectedEt(0, 2300), QStringLiteral("9.5243"));
        station->raceLogs().close(&red);
        station->raceLogs().close(&blue);
    }

    void aPublishingLogSendsItsPrediction() {
        RaceLog log;
        station->raceLogs().open(&log);
        Phone phone(liveUrl(server->port(), QStringLiteral("?code=") + Code));
        QTRY_COMPARE(phone.received.size(), 1);
        PredictionLine line;
        line.pagerMessage = QStringLiteral("RaceLog# 1> ET: 9.5123");
        log.prediction().publish(line);
        QTRY_COMPARE(phone.received.size(), 2);
        QTest::qWait(100);
        QCOMPARE(phone.received.size(), 2);
        const QJsonObject sent =
            QJsonDocument::fromJson(phone.received[1][0].toString().toUtf8())[u"logs"][0]
                .toObject();
        QCOMPARE(sent[u"line"].toString(), line.pagerMessage);
        QVERIFY(!sent[u"updated"].toString().isEmpty());
        log.prediction().markStale(11);
        QTRY_COMPARE(phone.received.size(), 3);
        // A new likely miss or outlook of the log, with no line, reaches the phone too.
        const QString outlook = QStringLiteral("In 30 min: AA 2,310 ft \u2192 9.5132");
        log.trust().setOutlook(outlook);
        QTRY_COMPARE(phone.received.size(), 4);
        QCOMPARE(QJsonDocument::fromJson(phone.received[3][0].toString().toUtf8())[u"logs"][0]
                     .toObject()[u"outlook"]
                     .toString(),
                 outlook);
    }

    // The idle time is for connections that send no request; an open live socket only
    // listens, and stays.
    void aQuietLiveSocketStaysOpen() {
        listenWithIdleTime(std::chrono::milliseconds(300));
        Phone phone(liveUrl(server->port(), QStringLiteral("?code=") + Code));
        QTRY_COMPARE(phone.received.size(), 1);
        QTest::qWait(1000);
        QCOMPARE(phone.socket.state(), QAbstractSocket::ConnectedState);
        QCOMPARE(server->liveSocketCount(), 1);
        QCOMPARE(server->connectionCount(), 1);
        phone.socket.close();
        QTRY_COMPARE(server->connectionCount(), 0);
        QCOMPARE(server->liveSocketCount(), 0);
    }

    // The page opened with the code set the cookie; the socket may come with it alone.
    void theCookieAloneOpensTheLiveSocket() {
        QNetworkRequest request(liveUrl(server->port(), QString()));
        request.setRawHeader("Cookie", "crew=" + Code.toLatin1());
        QWebSocket socket;
        QSignalSpy received(&socket, &QWebSocket::textMessageReceived);
        socket.open(request);
        QTRY_COMPARE(received.size(), 1);
        QCOMPARE(server->liveSocketCount(), 1);
    }

    // Phones come and go all day: none of them is kept once it has gone.
    void aHundredPhonesComeAndGo() {
        for (int i = 0; i < 100; ++i) {
            Phone phone(liveUrl(server->port(), QStringLiteral("?code=") + Code));
            QTRY_COMPARE(phone.received.size(), 1);
            phone.socket.close();
        }
        QTRY_COMPARE(server->liveSocketCount(), 0);
        QTRY_COMPARE(server->connectionCount(), 0);
    }

    void aWrongOrMissingCodeFailsTheHandshake() {
        for (const QString& query : {QStringLiteral("?code=000000"), QString()}) {
            Phone phone(liveUrl(server->port(), query));
            QTRY_VERIFY2(phone.socket.errorString().contains(u"403"),
                         qPrintable(phone.socket.errorString()));
            QTest::qWait(100);
            QCOMPARE(phone.received.size(), 0);
            QCOMPARE(server->liveSocketCount(), 0);
        }
    }

    // A phone that opens the socket and then reads nothing: the messages pile up on the
    // server's side until a megabyte waits, and the phone is dropped.
    void aPhoneThatStopsReadingIsDropped() {
        const LogsWithLongNames logs(*station, 40);
        QTcpSocket stalled;
        openUnreadLiveSocket(stalled, *server);

        int lines = 0;
        for (; lines < 2000 && server->liveSocketCount() == 1; ++lines) {
            station->feed().serialBytes(Line);
            QCoreApplication::processEvents();
        }
        QCOMPARE(server->liveSocketCount(), 0);
        // Not before a megabyte could have been waiting for it.
        const qsizetype messageBytes =
            CrewSnapshot::json(*station, {}, QDateTime::currentDateTime()).size();
        QVERIFY(lines * messageBytes > CrewServer::MaxQueuedBytes);
        // The feed went on: the station still takes lines.
        station->feed().serialBytes(Line);
        QCOMPARE(station->statusLine(), LineStatus);
    }

    // A phone on a slow link: once the system takes no more for it, the rest of a message
    // waits on the server's side and the messages after it queue behind; the phone gets each
    // one whole and in the order of the lines.
    void aSlowPhoneGetsEveryMessageWholeAndInOrder() {
        // Each message is over 64 KB, the largest kind of frame.
        const LogsWithLongNames logs(*station, 40);
        QTcpSocket slow;
        openUnreadLiveSocket(slow, *server);
        QByteArray bytes;
        QTRY_VERIFY((bytes += slow.readAll()).contains("\r\n\r\n"));
        QVERIFY(bytes.startsWith("HTTP/1.1 101"));
        bytes.remove(0, bytes.indexOf("\r\n\r\n") + 4);

        // The server's end of the phone's connection, to see when something waits there.
        const QList<QTcpSocket*> connections = server->findChildren<QTcpSocket*>();
        QCOMPARE(connections.size(), 1);
        QTcpSocket& connection = *connections.first();
        // Each message goes at once, not held back until the phone acknowledges the last.
        QCOMPARE(connection.socketOption(QAbstractSocket::LowDelayOption).toInt(), 1);
        int lines = 0;
        while (connection.bytesToWrite() == 0 && lines < 200)
            feedAlone(*station, lineWithAltitude(3000 + lines++));
        QVERIFY(connection.bytesToWrite() > 0);
        for (int i = 0; i < 2; ++i)
            feedAlone(*station, lineWithAltitude(3000 + lines++));
        QCOMPARE(server->liveSocketCount(), 1);

        slow.setReadBufferSize(0);
        QStringList messages;
        const auto readWholeMessages = [&] {
            bytes += slow.readAll();
            messages += takeWholeMessages(bytes);
            return messages.size();
        };
        QTRY_COMPARE(readWholeMessages(), 1 + lines);
        QVERIFY(messages[0].size() > 0xFFFF);
        for (int i = 0; i < lines; ++i) {
            const QString status = statusText(messages[1 + i]);
            QVERIFY2(status.contains(QStringLiteral(" AA=%1 ").arg(3000 + i)), qPrintable(status));
        }
    }

    // The whole path: an instrument on a real pseudo-terminal, the station, the phone.
    void aLineFromTheInstrumentReachesThePhone() {
        PtyPair pty;
        QVERIFY(pty.isReady());
        setPortDevice(3, pty.portEnd());
        station->link().portSettings = PortSettings{3, 5, 0, 4, 0, 0, "None", "None"};
        Phone phone(liveUrl(server->port(), QStringLiteral("?code=") + Code));
        QTRY_COMPARE(phone.received.size(), 1);

        station->startSerialPort();
        QVERIFY(station->link().serialPort().isOpen());
        QSerialPort instrument(pty.instrumentEnd());
        QVERIFY(instrument.open(QIODevice::ReadWrite));
        instrument.write(Line);
        instrument.flush();
        QTRY_VERIFY(phone.received.size() >= 2 &&
                    statusText(phone.received.last()[0]) == LineStatus);
        station->closeLinks();
    }
};

QTEST_GUILESS_MAIN(TestCrewLive)
#include "tst_crewlive.moc"
