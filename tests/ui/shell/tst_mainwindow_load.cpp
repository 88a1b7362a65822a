#include "common/TestHome.h"
#include "core/LiveView.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "feed/InstrumentConnection.h"
#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"
#include "ui/shell/MainWindow.h"

#include <QAction>
#include <QMdiArea>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <memory>

namespace {

const QString ScreenSettings = QStringLiteral("SOFTWARE\\Zorvane\\Main\\ScreenSettings");
const QString Defaults = QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\");
const QString PortKey = QStringLiteral("SOFTWARE\\Zorvane\\SerialPort");

} // namespace

class TestMainWindowLoad : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<WeatherStation> station;
    std::unique_ptr<MainWindow> window;

    void makeWindow() { window = std::make_unique<MainWindow>(*station); }
    QAction* tool(const QString& name) { return window->findChild<QAction*>(name); }
    QTimer* timer(const QString& name) { return station->findChild<QTimer*>(name); }
    QColor background() { return window->mdiArea()->background().color(); }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        station = std::make_unique<WeatherStation>();
    }
    void cleanup() {
        window.reset();
        station.reset();
        home.reset();
        qunsetenv("TARNWICK_TIMER_SCALE");
    }

    void centresOnTheScreen() {
        makeWindow();
        window->load();
        const QRect screen = window->screen()->geometry();
        QCOMPARE(window->x(), screen.left() + (screen.width() - window->width()) / 2);
        QCOMPARE(window->y(), screen.top() + (screen.height() - window->height()) / 2);
    }

    void aMainInstanceIsTarnwick() {
        makeWindow();
        window->setCommand("miProperties", [] {});
        window->load();
        QCOMPARE(window->windowTitle(), QStringLiteral("Tarnwick"));
        QVERIFY(tool("miProperties")->isEnabled());
    }

    void aDisplayInstanceIsVessimarAndKeepsThePortSettings() {
        station = std::make_unique<WeatherStation>(InstanceRole::Display);
        makeWindow();
        window->load();
        // Still off once the port settings dialog joins the bar.
        window->setCommand("miProperties", [] {});
        QCOMPARE(window->windowTitle(), QStringLiteral("Vessimar"));
        QVERIFY(!tool("miProperties")->isEnabled());
    }

    void backgroundComesBack() {
        Registry::set(ScreenSettings, "Background", "128");
        makeWindow();
        window->load();
        QCOMPARE(background(), QColor(0x80, 0, 0));
        QCOMPARE(window->background(), 0x000080u);
    }

    void aBackgroundThatIsNoNumberLeavesTheColour() {
        makeWindow();
        const QBrush before = window->mdiArea()->background();
        Registry::set(ScreenSettings, "Background", "red");
        window->load();
        QCOMPARE(window->mdiArea()->background(), before);
    }

    // One value that cannot be read falls back alone: the load goes on, the values after it
    // load, and the shutdown leaves the user's text in the store as it was.
    void anUnreadableValueFallsBackAloneAndStaysInTheStore_data() {
        QTest::addColumn<QString>("background");
        QTest::newRow("fraction") << "1.5";
        QTest::newRow("beyond 32 bits") << "99999999999";
        QTest::newRow("no colour") << "16777216";
        QTest::newRow("word") << "red";
    }
    void anUnreadableValueFallsBackAloneAndStaysInTheStore() {
        QFETCH(QString, background);
        ScriptedDialogs dialogs;
        Registry::set(ScreenSettings, "Background", background);
        Registry::set(Defaults, "DeltaVP", "1");
        Registry::set(PortKey, "0", "25");
        Registry::set(PortKey, "1", "5");
        Registry::set(PortKey, "2", "even");
        Registry::set(PortKey, "6", "racehost");
        makeWindow();
        window->load();
        QVERIFY(dialogs.messages.isEmpty());
        QCOMPARE(window->background(), 0x8000000Cu);
        QVERIFY(station->predictionSettings().deltaVP);
        QCOMPARE(window->instrument().portSettings.comPort, qint16(25));
        QCOMPARE(window->instrument().portSettings.baud, qint16(5));
        QCOMPARE(window->instrument().portSettings.parity, qint16(0));
        QCOMPARE(window->instrument().portSettings.host, QStringLiteral("racehost"));
        QVERIFY(timer("tmrMain")->isActive());
        QVERIFY(timer("tmrSend")->isActive());

        window->show();
        QVERIFY(window->close());
        QCOMPARE(Registry::get(ScreenSettings, "Background"), background);
        QCOMPARE(Registry::get(Defaults, "DeltaVP"), QStringLiteral("1"));
        QCOMPARE(Registry::get(PortKey, "0"), QStringLiteral("25"));
        QCOMPARE(Registry::get(PortKey, "1"), QStringLiteral("5"));
        QCOMPARE(Registry::get(PortKey, "2"), QStringLiteral("even"));
        QCOMPARE(Registry::get(PortKey, "6"), QStringLiteral("racehost"));
    }

    // Once the user sets a value that could not be read, the new value is what is kept.
    void aValueTheUserSetsReplacesTheUnreadableText() {
        Registry::set(ScreenSettings, "Background", "1.5");
        Registry::set(Defaults, "DeltaVP", "yes");
        makeWindow();
        window->load();
        QVERIFY(!station->predictionSettings().deltaVP);
        window->show();
        tool("miBlue")->trigger();
        tool("miDeltaVP")->trigger();
        QVERIFY(window->close());
        QCOMPARE(Registry::get(ScreenSettings, "Background"), QStringLiteral("12582912"));
        QCOMPARE(Registry::get(Defaults, "DeltaVP"), QStringLiteral("1"));
    }

    void pagerFrequency_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("frequency");
        QTest::newRow("absent") << QString() << 75;
        QTest::newRow("above") << "136" << 75;
        QTest::newRow("below") << "-1" << 75;
        QTest::newRow("highest") << "135" << 135;
        QTest::newRow("lowest") << "0" << 0;
        QTest::newRow("word") << "abc" << 75;
        QTest::newRow("ordinary") << "20" << 20;
        QTest::newRow("rounded to even") << "20.5" << 20;
        QTest::newRow("huge") << "1e12" << 75;
    }
    void pagerFrequency() {
        QFETCH(QString, stored);
        QFETCH(int, frequency);
        if (!stored.isNull())
            Registry::set(Defaults, "PagerFrequency", stored);
        makeWindow();
        window->load();
        QCOMPARE(window->pagerFrequency(), frequency);
    }

    void deltaVP_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("on");
        QTest::newRow("one") << "1" << true;
        QTest::newRow("two") << "2" << false;
        QTest::newRow("zero") << "0" << false;
        QTest::newRow("absent") << QString() << false;
        QTest::newRow("one with blanks") << " 1" << false;
    }
    void deltaVP() {
        QFETCH(QString, stored);
        QFETCH(bool, on);
        if (!stored.isNull())
            Registry::set(Defaults, "DeltaVP", stored);
        station->predictionSettings().deltaVP = !on;
        makeWindow();
        window->load();
        QCOMPARE(station->predictionSettings().deltaVP, on);
        QCOMPARE(tool("miDeltaVP")->isChecked(), on);
    }

    void startsFresh() {
        RaceLog first;
        RaceLog second;
        struct IdleView : LiveView {
            void showReading(const WeatherRecord&, const QString&) override {}
        } view;
        station->raceLogs().open(&first);
        station->raceLogs().open(&second);
        for (const ViewTable::View kind :
             {ViewTable::View::WindDirection, ViewTable::View::WindSpeed,
              ViewTable::View::VaporPressure})
            station->views().open(kind, &view);
        station->predictionSettings().automaticUpdates = false;
        std::optional<WeatherLog::Hold> scanning(station->weatherLog());
        makeWindow();
        window->load();
        QCOMPARE(station->raceLogs().bySlot(), QList<RaceLog*>{nullptr});
        QVERIFY(!station->views().isOpen(ViewTable::View::WindDirection));
        QVERIFY(!station->views().isOpen(ViewTable::View::WindSpeed));
        QVERIFY(!station->views().isOpen(ViewTable::View::VaporPressure));
        QVERIFY(station->predictionSettings().automaticUpdates);
        QVERIFY(tool("miAutomaticUpdates")->isChecked());
        QVERIFY(!station->weatherLog().isBusy());
    }

    void setDateTimeStaysOff() {
        makeWindow();
        window->load();
        QVERIFY(!tool("miSetDateTime")->isEnabled());
        QVERIFY(tool("miSetDateTime")->isVisible());
    }

    void timersRunFromTheEndOfTheLoad() {
        makeWindow();
        QVERIFY(!timer("tmrMain")->isActive());
        QVERIFY(!timer("tmrSend")->isActive());
        window->load();
        QVERIFY(timer("tmrMain")->isActive());
        QVERIFY(timer("tmrSend")->isActive());
        QCOMPARE(timer("tmrMain")->interval(), 20000);
        QCOMPARE(timer("tmrSend")->interval(), 4000);
    }

    void timersCanRunFasterForTests() {
        qputenv("TARNWICK_TIMER_SCALE", "0.01");
        station = std::make_unique<WeatherStation>();
        makeWindow();
        QCOMPARE(timer("tmrMain")->interval(), 200);
        QCOMPARE(timer("tmrSend")->interval(), 40);
    }

    void shutdownSavesDeltaVPAndBackground() {
        makeWindow();
        window->load();
        window->show();
        tool("miDeltaVP")->trigger();
        tool("miBlue")->trigger();
        QVERIFY(window->close());
        QCOMPARE(Registry::get(Defaults, "DeltaVP"), QStringLiteral("1"));
        QCOMPARE(Registry::get(ScreenSettings, "Background"), QStringLiteral("12582912"));
        QVERIFY(!timer("tmrMain")->isActive());
        QVERIFY(!timer("tmrSend")->isActive());

        window.reset();
        makeWindow();
        window->load();
        QVERIFY(station->predictionSettings().deltaVP);
        QCOMPARE(background(), QColor(0, 0, 0xC0));
        window->show();
        tool("miDeltaVP")->trigger();
        QVERIFY(window->close());
        QCOMPARE(Registry::get(Defaults, "DeltaVP"), QStringLiteral("0"));
    }

    void paletteColoursComeBackAtTheNextStart_data() {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QColor>("color");
        QTest::newRow("dark red") << "miDarkRed"
                                  << "128" << QColor(0x80, 0, 0);
        QTest::newRow("red") << "miRed"
                             << "192" << QColor(0xC0, 0, 0);
        QTest::newRow("blue") << "miBlue"
                              << "12582912" << QColor(0, 0, 0xC0);
        QTest::newRow("black") << "miBlack"
                               << "0" << QColor(0, 0, 0);
    }
    void paletteColoursComeBackAtTheNextStart() {
        QFETCH(QString, tool);
        QFETCH(QString, stored);
        QFETCH(QColor, color);
        makeWindow();
        window->load();
        window->show();
        this->tool(tool)->trigger();
        QVERIFY(window->close());
        QCOMPARE(Registry::get(ScreenSettings, "Background"), stored);
        window.reset();
        makeWindow();
        window->load();
        QCOMPARE(background(), color);
    }

    void noFillIsKeptAsTheDesktopColour() {
        makeWindow();
        const QBrush system = window->mdiArea()->background();
        window->load();
        window->show();
        tool("miRed")->trigger();
        tool("miNoFill")->trigger();
        QCOMPARE(window->mdiArea()->background(), system);
        QVERIFY(window->close());
        QCOMPARE(Registry::get(ScreenSettings, "Background"), QStringLiteral("2147483649"));
        window.reset();
        makeWindow();
        window->load();
        QCOMPARE(window->background(), 0x80000001u);
        QCOMPARE(window->mdiArea()->background(), system);
    }

    void aLoadWithNoPortAsksForOne() {
        ScriptedDialogs dialogs;
        makeWindow();
        window->load();
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text,
                 QStringLiteral("Please go to Pellamor->Properties\r\nand select a port that "
                                "Pellamor\r\nis connected to."));
        QCOMPARE(dialogs.messages[0].title, QStringLiteral("Tarnwick - Communications"));
        QCOMPARE(dialogs.messages[0].icon, Dialogs::Icon::Information);
        // The program runs on without a link.
        QVERIFY(!window->instrument().serialPort().isOpen());
        QVERIFY(timer("tmrMain")->isActive());
    }

    void aDisplayInstanceReadsTheRelayOnThisMachineUnlessToldOtherwise() {
        ScriptedDialogs dialogs;
        Registry::set("SOFTWARE\\Zorvane\\SerialPort", "6", "None");
        station = std::make_unique<WeatherStation>(InstanceRole::Display);
        makeWindow();
        window->load();
        QCOMPARE(window->instrument().portSettings.host, QStringLiteral("localhost"));
        QCOMPARE(window->instrument().portSettings.tcpPort, QStringLiteral("5555"));
        // Only memory changes at the load; the store keeps what it had.
        QCOMPARE(Registry::get("SOFTWARE\\Zorvane\\SerialPort", "6"), QStringLiteral("None"));
    }

    void aMainInstanceSetToTcpIpStartsNoLinkAtTheLoad() {
        ScriptedDialogs dialogs;
        Registry::set("SOFTWARE\\Zorvane\\SerialPort", "0", "25");
        makeWindow();
        window->load();
        QVERIFY(dialogs.messages.isEmpty());
        QVERIFY(!window->instrument().serialPort().isOpen());
        QVERIFY(!window->instrument().ipPort().isOpen());
    }

    void aWeatherRowBeingWrittenRefusesTheClose() {
        ScriptedDialogs dialogs;
        makeWindow();
        window->load();
        dialogs.messages.clear(); // the load asked for a port
        window->show();
        const WeatherLog::Hold writing(station->weatherLog());
        QVERIFY(!window->close());
        QVERIFY(window->isVisible());
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text,
                 QStringLiteral("Please wait a second so the log file can close!"));
        QCOMPARE(dialogs.messages[0].title, QStringLiteral("Logging Weather Data"));
        QCOMPARE(dialogs.messages[0].icon, Dialogs::Icon::Information);
        // Polling and paging stay stopped in the window that refused to close.
        QVERIFY(!timer("tmrMain")->isActive());
        QVERIFY(!timer("tmrSend")->isActive());
        QTest::qWait(50);
        QVERIFY(!timer("tmrMain")->isActive());
        // Nothing was saved.
        QCOMPARE(Registry::get(Defaults, "DeltaVP"), Registry::NoKeyValue);
    }

    // The row is written on the same thread to its end, so the close that was refused goes
    // through on the next try.
    void aCloseAfterTheRowIsWrittenGoesOn() {
        ScriptedDialogs dialogs;
        makeWindow();
        window->load();
        dialogs.messages.clear(); // the load asked for a port
        window->show();
        std::optional<WeatherLog::Hold> writing(station->weatherLog());
        QVERIFY(!window->close());
        QCOMPARE(dialogs.messages.size(), 1);
        writing.reset();
        QVERIFY(window->close());
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(Registry::get(Defaults, "DeltaVP"), QStringLiteral("0"));
    }
};

QTEST_MAIN(TestMainWindowLoad)
#include "tst_mainwindow_load.moc"
