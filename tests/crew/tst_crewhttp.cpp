// The crew view's page over real TCP on 127.0.0.1: the code, the cookie, the refusals and the
// limits that keep the trailer's network from tying up the program.
#include "CrewClient.h"
#include "common/TestHome.h"
#include "crew/CrewServer.h"
#include "feed/WeatherStation.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>
#include <memory>

namespace {

const QString Code = QStringLiteral("482913");

// A server of its own for each test, on a port the system picks.
struct Serving {
    explicit Serving(std::chrono::milliseconds idle = CrewConnections::DefaultIdleTime)
        : server(station, Code, idle) {
        server.listen(QHostAddress::LocalHost, 0);
    }
    quint16 port() const { return server.port(); }

    TestHome home;
    WeatherStation station;
    CrewServer server;
};

// Connects with the events running, so the server takes the connection meanwhile.
std::unique_ptr<QTcpSocket> connectTo(quint16 port) {
    auto socket = std::make_unique<QTcpSocket>();
    QSignalSpy connected(socket.get(), &QTcpSocket::connected);
    socket->connectToHost(QHostAddress::LocalHost, port);
    connected.wait(5000);
    return socket;
}

QByteArray fileOf(const char* resource) {
    QFile file(QString::fromLatin1(resource));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

class TestCrewHttp : public QObject {
    Q_OBJECT

private slots:
    void theCodeLoadsThePageAndSetsTheCookie() {
        Serving serving;
        const CrewReply page = crewGet(serving.port(), QStringLiteral("/?code=") + Code);
        QCOMPARE(page.status, 200);
        QCOMPARE(page.body, fileOf(":/crew/index.html"));
        QVERIFY(page.body.contains("/crew.js"));
        QCOMPARE(page.setCookie, "crew=" + Code.toLatin1() + "; HttpOnly; SameSite=Strict; Path=/");

        // The page's own files come with the cookie alone.
        const QByteArray cookie = "crew=" + Code.toLatin1();
        const CrewReply script = crewGet(serving.port(), QStringLiteral("/crew.js"), cookie);
        QCOMPARE(script.status, 200);
        QCOMPARE(script.body, fileOf(":/crew/crew.js"));
        QVERIFY(!script.body.isEmpty());
        const CrewReply style = crewGet(serving.port(), QStringLiteral("/crew.css"), cookie);
        QCOMPARE(style.status, 200);
        QCOMPARE(style.body, fileOf(":/crew/crew.css"));
        QCOMPARE(crewGet(serving.port(), QStringLiteral("/"), cookie).status, 200);
    }

    void aWrongOrMissingCodeIsForbidden() {
        Serving serving;
        const CrewReply wrong = crewGet(serving.port(), QStringLiteral("/?code=111111"));
        QCOMPARE(wrong.status, 403);
        QVERIFY(wrong.body.contains("code"));
        QVERIFY(wrong.setCookie.isEmpty());
        QCOMPARE(crewGet(serving.port(), QStringLiteral("/")).status, 403);
        QCOMPARE(crewGet(serving.port(), QStringLiteral("/crew.js"), "crew=999999").status, 403);
    }

    void anUnknownPathIsNotFound() {
        Serving serving;
        QCOMPARE(crewGet(serving.port(), QStringLiteral("/settings?code=") + Code).status, 404);
    }

    // Ten wrong codes within a minute: the address is turned away, the right code included.
    void tenWrongCodesTurnTheAddressAway() {
        Serving serving;
        for (int i = 0; i < 10; ++i)
            QCOMPARE(crewGet(serving.port(), QStringLiteral("/?code=%1").arg(100000 + i)).status,
                     403);
        QCOMPARE(crewGet(serving.port(), QStringLiteral("/?code=") + Code).status, 429);
    }

    // Nine are not enough, and a missing code is no guess.
    void fewerWrongCodesKeepTheDoorOpen() {
        Serving serving;
        for (int i = 0; i < 9; ++i)
            crewGet(serving.port(), QStringLiteral("/?code=%1").arg(100000 + i));
        for (int i = 0; i < 5; ++i)
            crewGet(serving.port(), QStringLiteral("/"));
        QCOMPARE(crewGet(serving.port(), QStringLiteral("/?code=") + Code).status, 200);
    }

    void anOversizedRequestIsCutOff() {
        Serving serving;
        auto socket = connectTo(serving.port());
        socket->write("GET /?code=" + Code.toLatin1() + " HTTP/1.1\r\nHost: 127.0.0.1\r\nX-Pad: " +
                      QByteArray(17 * 1024, 'a') + "\r\n\r\n");
        QTRY_COMPARE_WITH_TIMEOUT(socket->state(), QAbstractSocket::UnconnectedState, 5000);
        QVERIFY(!socket->readAll().contains("200"));
        QTRY_COMPARE(serving.server.connectionCount(), 0);
    }

    void theSixtyFifthConnectionIsRefused() {
        Serving serving;
        std::vector<std::unique_ptr<QTcpSocket>> held;
        for (int i = 0; i < CrewConnections::MaxConnections; ++i)
            held.push_back(connectTo(serving.port()));
        QTRY_COMPARE(serving.server.connectionCount(), 64);
        auto extra = connectTo(serving.port());
        QTRY_COMPARE_WITH_TIMEOUT(extra->state(), QAbstractSocket::UnconnectedState, 5000);
        QCOMPARE(serving.server.connectionCount(), 64);
        for (const auto& socket : held)
            QCOMPARE(socket->state(), QAbstractSocket::ConnectedState);
    }

    void anIdleConnectionIsClosed() {
        Serving serving(std::chrono::milliseconds(300));
        auto socket = connectTo(serving.port());
        QTRY_COMPARE(serving.server.connectionCount(), 1);
        QTRY_COMPARE_WITH_TIMEOUT(socket->state(), QAbstractSocket::UnconnectedState, 3000);
        QTRY_COMPARE(serving.server.connectionCount(), 0);
    }

    void theIdleTimeIsTenSecondsUnlessToldOtherwise() {
        Serving serving;
        QCOMPARE(serving.server.idleTime(), std::chrono::milliseconds(10000));
        // Still open well into the ten seconds.
        auto socket = connectTo(serving.port());
        QTest::qWait(1500);
        QCOMPARE(socket->state(), QAbstractSocket::ConnectedState);
        QCOMPARE(serving.server.connectionCount(), 1);
    }

    void aThousandConnectionsComeAndGo() {
        Serving serving;
        for (int i = 0; i < 1000; ++i) {
            auto socket = connectTo(serving.port());
            QVERIFY(socket->state() == QAbstractSocket::ConnectedState);
            socket->disconnectFromHost();
            if (i % 50 == 0)
                QCoreApplication::processEvents();
        }
        QTRY_COMPARE_WITH_TIMEOUT(serving.server.connectionCount(), 0, 10000);
        QCOMPARE(crewGet(serving.port(), QStringLiteral("/?code=") + Code).status, 200);
    }

    void aPortInUseIsToldAndTheProgramRunsOn() {
        TestHome home;
        QTcpServer other;
        QVERIFY(other.listen(QHostAddress::LocalHost, 0));
        WeatherStation station;
        CrewServer server(station, Code);
        QSignalSpy problem(&server, &CrewServer::problem);
        QVERIFY(!server.listen(QHostAddress::LocalHost, other.serverPort()));
        QCOMPARE(problem.size(), 1);
        QCOMPARE(problem[0][0].toString(),
                 QStringLiteral("Crew view: port %1 is in use").arg(other.serverPort()));
    }

    void anAddressNotOnThisComputerIsTold() {
        TestHome home;
        WeatherStation station;
        CrewServer server(station, Code);
        QSignalSpy problem(&server, &CrewServer::problem);
        // TEST-NET-1: never an address of this computer.
        QVERIFY(!server.listen(QHostAddress(QStringLiteral("192.0.2.1")), 0));
        QCOMPARE(problem[0][0].toString(),
                 QStringLiteral("Crew view: address 192.0.2.1 is not on this computer"));
    }
};

QTEST_GUILESS_MAIN(TestCrewHttp)
#include "tst_crewhttp.moc"
