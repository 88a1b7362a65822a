// The crew view as the program runs it: off until turned on, then serving from the settings
// at every start; a port in use told on the status line; a new code that lets the old phones
// go; a display instance that leaves the phones to a main instance beside it.
#include "CrewClient.h"
#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "crew/CrewServer.h"
#include "crew/CrewView.h"
#include "feed/WeatherStation.h"

#include <QNetworkInterface>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>
#include <QWebSocket>

namespace {

// A port nobody listens on right now.
quint16 freePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

void storeCode(const QString& code) {
    Registry::set(SettingKeys::CrewCode, code);
}

} // namespace

class TestCrewView : public QObject {
    Q_OBJECT

private slots:
    void theCrewViewIsOffUntilTurnedOn() {
        TestHome home;
        WeatherStation station;
        CrewView crew(station);
        crew.start();
        QCOMPARE(crew.state(), CrewView::State::Off);
        QVERIFY(!crew.server());
        QCOMPARE(crew.stateText(), QStringLiteral("The crew view is off."));
        QCOMPARE(Registry::get(SettingKeys::CrewEnabled), Registry::NoKeyValue);
    }

    void turnedOnItServesAtOnceAndAtTheNextStart() {
        TestHome home;
        storeCode(QStringLiteral("250117"));
        const quint16 port = freePort();
        {
            WeatherStation station;
            CrewView crew(station);
            crew.start();
            crew.moveTo(QStringLiteral("127.0.0.1"), port);
            QCOMPARE(crew.state(), CrewView::State::Off);
            QSignalSpy changed(&crew, &CrewView::changed);
            crew.setOn(true);
            QCOMPARE(changed.size(), 1);
            QCOMPARE(crew.state(), CrewView::State::Serving);
            QCOMPARE(crewGet(port, QStringLiteral("/?code=250117")).status, 200);
        }
        QCOMPARE(Registry::get(SettingKeys::CrewEnabled), QStringLiteral("1"));
        QCOMPARE(Registry::get(SettingKeys::CrewAddress), QStringLiteral("127.0.0.1"));
        QCOMPARE(Registry::get(SettingKeys::CrewPort), QString::number(port));

        WeatherStation station;
        CrewView nextStart(station);
        nextStart.start();
        QCOMPARE(nextStart.state(), CrewView::State::Serving);
        QCOMPARE(crewGet(port, QStringLiteral("/?code=250117")).status, 200);
        nextStart.setOn(false);
        QCOMPARE(Registry::get(SettingKeys::CrewEnabled), QStringLiteral("0"));
        QCOMPARE(crewGet(port, QStringLiteral("/?code=250117")).status, 0);
    }

    void aPortInUseIsToldOnTheStatusLineAndTheProgramRunsOn() {
        TestHome home;
        QTcpServer other;
        QVERIFY(other.listen(QHostAddress::LocalHost, 0));
        Registry::set(SettingKeys::CrewEnabled, QStringLiteral("1"));
        Registry::set(SettingKeys::CrewAddress, QStringLiteral("127.0.0.1"));
        Registry::set(SettingKeys::CrewPort, QString::number(other.serverPort()));
        WeatherStation station;
        CrewView crew(station);
        connect(&crew, &CrewView::problem, &station, &WeatherStation::statusText);
        QSignalSpy status(&station, &WeatherStation::statusText);
        crew.start();
        const QString expected =
            QStringLiteral("Crew view: port %1 is in use").arg(other.serverPort());
        QCOMPARE(status.size(), 1);
        QCOMPARE(status[0][0].toString(), expected);
        QCOMPARE(crew.state(), CrewView::State::Failed);
        QCOMPARE(crew.stateText(), expected);

        // Another port, and it serves.
        const quint16 port = freePort();
        crew.moveTo(QStringLiteral("127.0.0.1"), port);
        QCOMPARE(crew.state(), CrewView::State::Serving);
        QCOMPARE(status.size(), 1);
    }

    void aNewCodeLetsThePhonesOfTheOldOneGo() {
        TestHome home;
        storeCode(QStringLiteral("111111"));
        WeatherStation station;
        CrewView crew(station);
        crew.moveTo(QStringLiteral("127.0.0.1"), freePort());
        crew.setOn(true);
        QWebSocket phone;
        QSignalSpy received(&phone, &QWebSocket::textMessageReceived);
        QSignalSpy gone(&phone, &QWebSocket::disconnected);
        phone.open(QUrl(QStringLiteral("ws://127.0.0.1:%1/live?code=111111").arg(crew.port())));
        QTRY_COMPARE(received.size(), 1);

        crew.makeNewCode();
        const QString code = crew.code();
        QVERIFY(QRegularExpression(QStringLiteral("^[0-9]{6}$")).match(code).hasMatch());
        QCOMPARE(Registry::get(SettingKeys::CrewCode), code);
        QTRY_COMPARE(gone.size(), 1);
        QCOMPARE(crewGet(crew.port(), QStringLiteral("/?code=") + code).status, 200);
        if (code != u"111111")
            QCOMPARE(crewGet(crew.port(), QStringLiteral("/?code=111111")).status, 403);
    }

    void thePageAddressCarriesTheHostAPhoneReaches() {
        TestHome home;
        storeCode(QStringLiteral("482913"));
        Registry::set(SettingKeys::CrewPort, QStringLiteral("8123"));
        WeatherStation station;
        CrewView crew(station);
        Registry::set(SettingKeys::CrewAddress, QStringLiteral("127.0.0.1"));
        QCOMPARE(crew.pageAddress(), QStringLiteral("http://127.0.0.1:8123/?code=482913"));

        // Every network: the first IPv4 address of a network that is up and not the loopback.
        QString firstNetwork;
        for (const QNetworkInterface& interface : QNetworkInterface::allInterfaces()) {
            const auto flags = interface.flags();
            if (!flags.testFlag(QNetworkInterface::IsUp) ||
                !flags.testFlag(QNetworkInterface::IsRunning) ||
                flags.testFlag(QNetworkInterface::IsLoopBack))
                continue;
            for (const QNetworkAddressEntry& entry : interface.addressEntries()) {
                if (firstNetwork.isEmpty() && entry.ip().toIPv4Address() != 0)
                    firstNetwork = entry.ip().toString();
            }
        }
        if (firstNetwork.isEmpty())
            firstNetwork = QStringLiteral("127.0.0.1");
        Registry::set(SettingKeys::CrewAddress, QStringLiteral("0.0.0.0"));
        QCOMPARE(crew.pageAddress(),
                 QStringLiteral("http://%1:8123/?code=482913").arg(firstNetwork));
    }

    // Beside a main instance a display instance says nothing of the port the main instance
    // holds; with none, it serves.
    void aDisplayInstanceLeavesThePhonesToAMainInstance() {
        TestHome home;
        QTcpServer mainInstancesPort;
        QVERIFY(mainInstancesPort.listen(QHostAddress::LocalHost, 0));
        Registry::set(SettingKeys::CrewEnabled, QStringLiteral("1"));
        Registry::set(SettingKeys::CrewAddress, QStringLiteral("127.0.0.1"));
        Registry::set(SettingKeys::CrewPort, QString::number(mainInstancesPort.serverPort()));
        WeatherStation display(InstanceRole::Display);
        bool mainInstanceRuns = true;
        CrewView crew(display, [&mainInstanceRuns] { return mainInstanceRuns; });
        QSignalSpy problem(&crew, &CrewView::problem);
        crew.start();
        QCOMPARE(crew.state(), CrewView::State::LeftToMainInstance);
        QCOMPARE(crew.stateText(),
                 QStringLiteral("The main instance of Tarnwick serves the crew view."));
        QCOMPARE(problem.size(), 0);

        mainInstancesPort.close();
        mainInstanceRuns = false;
        crew.start();
        QCOMPARE(crew.state(), CrewView::State::Serving);
        QCOMPARE(crewGet(crew.port(), QStringLiteral("/?code=") + crew.code()).status, 200);
    }
};

QTEST_GUILESS_MAIN(TestCrewView)
#include "tst_crewview.moc"
