#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "feed/InstrumentConnection.h"
#include "feed/PortDevices.h"
#include "feed/PortSettings.h"
#include "tools/ToolProcess.h"
#include "ui/PredictionWindows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

const QString PortSettingsKey = QStringLiteral("SOFTWARE\\Zorvane\\SerialPort");

namespace {

const QString DefaultsKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\");

// The simulated instrument on a pseudo-terminal that stands for COM port 1: 9600,N,8,1
// without flow control, and no relay. Pages at every send tick.
void chooseSimulatorPort(const QString& device) {
    setPortDevice(1, device);
    const QStringList positions{"1", "5", "0", "4", "0", "0"};
    for (int i = 0; i < positions.size(); ++i)
        Registry::set(PortSettingsKey, QString::number(i), positions[i]);
    Registry::set(PortSettingsKey, QStringLiteral("6"), QStringLiteral("None"));
    Registry::set(PortSettingsKey, QStringLiteral("7"), QStringLiteral("None"));
    Registry::set(DefaultsKey, QStringLiteral("PagerFrequency"), QStringLiteral("0"));
}

// A log that predicts from a quarter mile of 9.5 at AA 2000 with PF 5, and takes part in
// the page under its identifier.
void preparePagingLog(RaceLogWindow* log, const QString& identifier) {
    setCells(log, 1, {{12, "9.5"}, {19, "2000"}});
    log->sidePanel->pfField->setText(QStringLiteral("5"));
    log->sidePanel->pageIdentifierField->setText(identifier);
    log->sidePanel->pagerPredictionsBox->click();
}

// What that log's caption reads at an adjusted altitude: the ET with four decimals (the
// ETs here are between 1 and 99 seconds, so no digit is left out before the point).
QString expectedCaption(const QString& identifier, qint32 adjustedAltitude) {
    const double sensitivity = 8.5e-6 - 5 * 8.5e-7;
    const double et = 9.5 + sensitivity * ((adjustedAltitude - 2000 + 1.0) * 9.5);
    return identifier + QStringLiteral("  ET: ") + QString::number(et, 'f', 4);
}

} // namespace

class TestPagerEndToEnd : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;
    QTemporaryDir folder;
    QString device = folder.filePath(QStringLiteral("instrument"));
    ToolProcess simulator{QStringLiteral("pellamor-sim")};

private slots:
    void initTestCase() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
        // The send and poll timers run twenty times faster: a tick every 200 ms.
        qputenv("TARNWICK_TIMER_SCALE", "0.05");
        simulator.start(
            {QStringLiteral("--pty"), device, QStringLiteral("--interval"), QStringLiteral("0.2")});
        QCOMPARE(simulator.waitForLine(QStringLiteral("READY ")),
                 QStringLiteral("READY ") + device);
        chooseSimulatorPort(device);
    }
    void cleanupTestCase() {
        dialogs.reset();
        home.reset();
    }

    void pagesPredictionsAndMessagesGoThroughTheInstrument() {
        PredictionWindows windows;
        windows.main.load();
        QVERIFY(dialogs->messages.isEmpty());
        QVERIFY(windows.main.instrument().serialPort().isOpen());
        // The program polls the instrument on its own.
        QCOMPARE(simulator.waitForLine(QStringLiteral("POLL")), QStringLiteral("POLL"));

        RaceLogWindow* red = windows.newLog();
        RaceLogWindow* blue = windows.newLog();
        preparePagingLog(red, QStringLiteral("Red"));
        preparePagingLog(blue, QStringLiteral("Blue"));

        // The predictions follow the feed: a value typed into the AA is overwritten by the
        // next line, and the captions follow the live AA.
        red->sidePanel->aaField->setText(QStringLiteral("-50000"));
        red->updatePredictions();
        QCOMPARE(frameCaption(red), expectedCaption(QStringLiteral("Red"), -50000));
        QVERIFY(
            QTest::qWaitFor([&] { return red->sidePanel->aaField->text() != u"-50000"; }, 10000));
        const qint32 live = windows.station.reading().AA;
        QCOMPARE(red->sidePanel->aaField->text(), QString::number(live));
        QCOMPARE(frameCaption(red), expectedCaption(QStringLiteral("Red"), live));
        QCOMPARE(frameCaption(blue), expectedCaption(QStringLiteral("Blue"), live));

        // The periodic page: the time, the two logs in slot order, the weather.
        const QRegularExpression page(
            QStringLiteral("^PAGE: \\d\\d:\\d\\d[ap]m Red> ET: \\d*\\.\\d{4} Blue> ET: "
                           "\\d*\\.\\d{4} ABP=\\S+ Temp=\\S+ .* AL=\\S+$"));
        QVERIFY(QTest::qWaitFor(
            [&] {
                return page.match(simulator.waitForLine(QStringLiteral("PAGE: "), 200)).hasMatch();
            },
            15000));

        // A custom message keeps its blank after the "f".
        windows.main.findChild<QLineEdit*>(QStringLiteral("txtPageMessage"))
            ->setText(QStringLiteral("Pit in 5"));
        windows.run(QStringLiteral("btnSend"));
        QCOMPARE(simulator.waitForLine(QStringLiteral("PAGE:  ")),
                 QStringLiteral("PAGE:  Pit in 5"));
        QVERIFY(dialogs->messages.isEmpty());

        // With the port closed the user is told, and nothing reaches the instrument.
        QVERIFY(windows.main.instrument().closeComm());
        windows.main.findChild<QLineEdit*>(QStringLiteral("txtPageMessage"))
            ->setText(QStringLiteral("Nobody hears"));
        windows.run(QStringLiteral("btnSend"));
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text, QStringLiteral("The serial port is not open"));
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Custom Message"));
        // Long enough for a written message to come back through the simulator.
        QTest::qWait(1000);
        QVERIFY(!simulator.outputLines().contains(QStringLiteral("PAGE:  Nobody hears")));
    }
};

QTEST_MAIN(TestPagerEndToEnd)
#include "tst_pager_endtoend.moc"
