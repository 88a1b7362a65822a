#include "ToolProcess.h"
#include "common/TestHome.h"
#include "core/DateText.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "feed/InstrumentConnection.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherStation.h"
#include "ui/shell/MainWindow.h"

#include <QFile>
#include <QLabel>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace {

const QString serialKey = QStringLiteral("SOFTWARE\\Zorvane\\SerialPort");

// Com1 at 9600,N,8,1 on the given device, relaying to host:port when both are given.
void configurePort(const QString& device, const QString& host = QStringLiteral("None"),
                   const QString& port = QStringLiteral("None")) {
    const QStringList values{"1", "5", "0", "4", "0", "0", host, port};
    for (int i = 0; i < values.size(); ++i)
        Registry::set(serialKey, QString::number(i), values[i]);
    Registry::set(serialKey + QStringLiteral("\\Devices"), QStringLiteral("Com1"), device);
}

QString statusText(const MainWindow& window) {
    return window.findChild<QLabel*>(QStringLiteral("lblStatus"))->text();
}

QStringList weatherLogRows(const TestHome& home) {
    QFile file(home.weatherLogFolder() + u'/' + DateText::fileStamp(QDate::currentDate()) +
               QStringLiteral(".csv"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList rows = QString::fromLatin1(file.readAll()).split(QStringLiteral("\r\n"));
    rows.removeAll(QString());
    return rows;
}

const QRegularExpression fullStatusLine(QStringLiteral(
    "^ABP=[\\d.]+ Temp=-?[\\d.]+ RH=[\\d.]+ AA=-?\\d+ AH=[\\d.]+ GR=\\d+ VP=[\\d.]+ DP=-?\\d+ "
    "ADR=[\\d.]+ DA=-?\\d+ PA=-?\\d+ WD=\\d+ WS=\\d+ WG=\\d+ AL=\\d+$"));
const QRegularExpression weatherRow(
    QStringLiteral("^\"\\d\\d:\\d\\d:\\d\\d[ap]m\",[-\\d.]+,[-\\d.]+,[\\d.]+,-?\\d+,[\\d.]+,\\d+,"
                   "[\\d.]+,-?\\d+,[\\d.]+,-?\\d+,-?\\d+,\\d+,\\d+,\\d+,\\d+$"));

} // namespace

class TestFeedEndToEnd : public QObject {
    Q_OBJECT
private slots:
    void init() {
        // The poll every 400 ms instead of 20 s, so a test sees several.
        qputenv("TARNWICK_TIMER_SCALE", "0.02");
    }

    void simulatorOnAPseudoTerminalFeedsTheMainInstance() {
        TestHome home;
        ScriptedDialogs dialogs;
        ToolProcess simulator(QStringLiteral("pellamor-sim"));
        const QString device = home.root() + QStringLiteral("/instrument");
        simulator.start({"--pty", device, "--interval", "0.3", "--seed", "7"});
        QVERIFY(!simulator.waitForLine(QStringLiteral("READY")).isEmpty());
        configurePort(device);

        WeatherStation station;
        MainWindow window(station);
        window.load();
        window.show();
        QVERIFY(dialogs.messages.isEmpty()); // a port is set, so no question about one
        QCOMPARE(statusText(window), QStringLiteral("Waiting for Weather Update..."));

        QTRY_VERIFY_WITH_TIMEOUT(fullStatusLine.match(statusText(window)).hasMatch(), 10000);
        QCOMPARE(station.statusLine(), statusText(window));
        QVERIFY(window.findChild<QLabel*>(QStringLiteral("lblPellamor"))->isEnabled());
        QVERIFY(station.reading().ABP > 25 && station.reading().ABP < 32);

        // Each handled line leaves one row of the exact form in today's weather log.
        QTRY_VERIFY_WITH_TIMEOUT(weatherLogRows(home).size() >= 3, 10000);
        for (const QString& row : weatherLogRows(home))
            QVERIFY2(weatherRow.match(row).hasMatch(), qPrintable(row));
        QCOMPARE(Registry::get(QStringLiteral("SOFTWARE\\Zorvane\\"), QStringLiteral("WeatherLog")),
                 home.weatherLogFolder() + u'/' + DateText::fileStamp(QDate::currentDate()) +
                     QStringLiteral(".csv"));

        // The poll reaches the instrument as "l" and a CR.
        QVERIFY(!simulator.waitForLine(QStringLiteral("POLL"), 5000).isEmpty());

        window.close();
        QCOMPARE(Registry::get(serialKey, QStringLiteral("0")), QStringLiteral("1"));
    }

    void mainInstanceRelaysThroughOskerbyToADisplayInstance() {
        TestHome home;
        ScriptedDialogs dialogs;
        ToolProcess relay(QStringLiteral("oskerby"));
        relay.start({"--port", "0"});
        const QString listening = relay.waitForLine(QStringLiteral("LISTENING"));
        QVERIFY(!listening.isEmpty());
        const QString relayPort = listening.section(u' ', 1, 1);

        ToolProcess simulator(QStringLiteral("pellamor-sim"));
        const QString device = home.root() + QStringLiteral("/instrument");
        simulator.start({"--pty", device, "--interval", "0.3", "--seed", "11"});
        QVERIFY(!simulator.waitForLine(QStringLiteral("READY")).isEmpty());
        configurePort(device, QStringLiteral("127.0.0.1"), relayPort);

        WeatherStation mainStation;
        MainWindow mainWindow(mainStation);
        mainWindow.load();
        // A main instance connects to the relay when its port settings are applied.
        QVERIFY(mainWindow.instrument().connectIPPort());
        QSignalSpy mainLines(&mainWindow.weatherFeed(), &WeatherFeed::statusText);

        WeatherStation displayStation(InstanceRole::Display);
        MainWindow displayWindow(displayStation);
        displayWindow.load();
        displayWindow.connectRelay();
        QCOMPARE(displayWindow.windowTitle(), QStringLiteral("Vessimar"));
        QSignalSpy displayLines(&displayWindow.weatherFeed(), &WeatherFeed::statusText);
        QSignalSpy displayRelays(&displayWindow.weatherFeed(), &WeatherFeed::relayLine);

        QTRY_VERIFY_WITH_TIMEOUT(displayLines.count() >= 3, 15000);
        QVERIFY(fullStatusLine.match(statusText(displayWindow)).hasMatch());
        // The display shows what the main instance received, and sends nothing on.
        QCOMPARE(displayStation.reading().ABP, mainStation.reading().ABP);
        QCOMPARE(displayRelays.count(), 0);

        // Only the main instance writes the weather log: one row for each of its lines.
        mainWindow.instrument().closeComm();
        QTest::qWait(200);
        QCOMPARE(weatherLogRows(home).size(), qsizetype(mainLines.count()));
        QVERIFY(dialogs.messages.isEmpty());
    }
};

QTEST_MAIN(TestFeedEndToEnd)
#include "tst_feed_endtoend.moc"
