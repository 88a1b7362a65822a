#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "feed/InstrumentConnection.h"
#include "feed/WeatherStation.h"
#include "ui/PredictionWindows.h"

#include <QCheckBox>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <memory>

namespace {

using Dialogs::Icon;

// The instrument's port as the pager sees it: open or closed, and every write kept.
class RecordingPort : public PortLink {
public:
    bool open(const PortOptions&) override { return portOpen = true; }
    bool discardInput() override { return true; }
    bool isOpen() const override { return portOpen; }
    bool write(const QByteArray& bytes) override {
        written << bytes;
        return portOpen;
    }
    void close() override { portOpen = false; }

    bool portOpen = true;
    QByteArrayList written;
};

// The main window with the recording port in the serial port's place.
struct PagerWindow : PredictionWindows {
    PagerWindow() {
        auto owned = std::make_unique<RecordingPort>();
        port = owned.get();
        main.instrument().setSerialPort(std::move(owned));
        main.setPagerFrequency(0);
    }
    // One tick of the send timer, as the timer gives it.
    void tick() { QMetaObject::invokeMethod(&main.weatherStation().sendTimer(), "timeout"); }
    void typeMessage(const QString& text) {
        main.findChild<QLineEdit*>(QStringLiteral("txtPageMessage"))->setText(text);
    }
    RecordingPort* port;
};

const QRegularExpression PageShape(QStringLiteral("^f\\d\\d:\\d\\d[ap]m (.*)\r$"));

// What a page holds after its time.
QString pageBody(const QByteArray& command) {
    const QRegularExpressionMatch match = PageShape.match(QString::fromLatin1(command));
    return match.hasMatch() ? match.captured(1) : QStringLiteral("<not a page: %1>").arg(command);
}

} // namespace

class TestPagerDispatch : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
    }
    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    // No log and no weather yet: the time and one blank.
    void frequencyZeroPagesAtEveryTick() {
        PagerWindow window;
        window.tick();
        window.tick();
        QCOMPARE(window.port->written.size(), 2);
        QCOMPARE(pageBody(window.port->written[0]), QString());
        QVERIFY(dialogs->messages.isEmpty());
    }

    void thePageHoldsTheTickedLogsInSlotOrderAndTheWeather() {
        PagerWindow window;
        window.station.predictionSettings().deltaVP = true;
        RaceLogWindow* red = window.newLog();
        RaceLogWindow* idle = window.newLog();
        RaceLogWindow* blue = window.newLog();
        for (RaceLogWindow* log : {red, idle, blue})
            WorkedCase::fill(log);
        red->sidePanel->pageIdentifierField->setText(QStringLiteral("Red"));
        blue->sidePanel->pageIdentifierField->setText(QStringLiteral("Blue"));
        window.run(QStringLiteral("btnPredict"));
        blue->sidePanel->pagerPredictionsBox->click();
        red->sidePanel->pagerPredictionsBox->click();
        window.feedLine(InstrumentLine);
        window.tick();
        QCOMPARE(window.port->written.size(), 1);
        QCOMPARE(pageBody(window.port->written[0]), QStringLiteral("Red> ") + WorkedCase::Line +
                                                        QStringLiteral(" Blue> ") +
                                                        WorkedCase::Line + u' ' + InstrumentStatus);
    }

    // A log that never predicted takes part with a blank and no text.
    void aTickedLogWithoutPredictionGivesABlank() {
        PagerWindow window;
        window.newLog()->sidePanel->pagerPredictionsBox->click();
        window.feedLine(InstrumentLine);
        window.tick();
        QCOMPARE(pageBody(window.port->written.value(0)), u' ' + InstrumentStatus);
    }

    // Pages come on the first tick after the frequency's ticks have passed; a new frequency
    // counts from the next tick.
    void theFrequencyIsReadAtEveryTick() {
        PagerWindow window;
        window.main.setPagerFrequency(2);
        window.tick();
        window.tick();
        QVERIFY(window.port->written.isEmpty());
        window.tick();
        QCOMPARE(window.port->written.size(), 1);
        window.main.setPagerFrequency(75);
        window.tick();
        window.main.setPagerFrequency(0);
        window.tick();
        QCOMPARE(window.port->written.size(), 2);
    }

    void aForcedPageGoesAtTheNextTickAndStartsANewPeriod() {
        PagerWindow window;
        window.main.setPagerFrequency(75);
        window.tick();
        window.run(QStringLiteral("btnSendPage"));
        QVERIFY(window.port->written.isEmpty());
        window.tick();
        QCOMPARE(window.port->written.size(), 1);
        window.tick();
        QCOMPARE(window.port->written.size(), 1);
    }

    void aClosedPortDropsThePageWithoutAWord() {
        PagerWindow window;
        window.port->portOpen = false;
        window.tick();
        QVERIFY(window.port->written.isEmpty());
        QVERIFY(dialogs->messages.isEmpty());
    }

    void btnSendSendsTheMessageWithOneBlank() {
        PagerWindow window;
        window.typeMessage(QStringLiteral("Pit in 5"));
        window.run(QStringLiteral("btnSend"));
        window.typeMessage(QString());
        window.run(QStringLiteral("btnSend"));
        QCOMPARE(window.port->written, (QByteArrayList{"f Pit in 5\r", "f \r"}));
    }

    void btnTestSendsTheFixedText() {
        PagerWindow window;
        window.run(QStringLiteral("btnTest"));
        QCOMPARE(window.port->written, QByteArrayList{"f Drennick & Aldous Racing\r"});
    }

    void theHandSentCommandsTellOfAClosedPort_data() {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QString>("title");
        QTest::newRow("custom") << "btnSend"
                                << "Custom Message";
        QTest::newRow("test") << "btnTest"
                              << "Test Message";
    }
    void theHandSentCommandsTellOfAClosedPort() {
        QFETCH(QString, tool);
        QFETCH(QString, title);
        PagerWindow window;
        window.port->portOpen = false;
        window.typeMessage(QStringLiteral("hello"));
        dialogs->queueAnswer(Dialogs::Answer::Cancel);
        window.run(tool);
        QVERIFY(window.port->written.isEmpty());
        QCOMPARE(dialogs->messages.size(), 1);
        const Dialogs::Message& box = dialogs->messages[0];
        QCOMPARE(box.text, QStringLiteral("The serial port is not open"));
        QCOMPARE(box.title, title);
        QCOMPARE(box.icon, Icon::Information);
        QCOMPARE(box.buttons, Dialogs::Buttons::OkCancel);
    }

    // The test message is a command without a place on the tool bar.
    void thePagerToolsStandOnTheBarButTheTest() {
        PagerWindow window;
        window.main.show();
        auto* bar = window.main.findChild<QToolBar*>(QStringLiteral("tbMain"));
        QVERIFY(bar);
        const QList<QAction*> items = bar->actions();
        for (const char* name : {"btnSendPage", "btnSend"}) {
            QAction* tool = window.tool(QLatin1String(name));
            QVERIFY2(items.contains(tool) && tool->isVisible(), name);
        }
        QVERIFY(!items.contains(window.tool(QStringLiteral("btnTest"))));
        QCOMPARE(window.tool(QStringLiteral("btnSendPage"))->text(), QStringLiteral("Page"));
        QCOMPARE(window.tool(QStringLiteral("btnSend"))->text(), QStringLiteral("Send"));
    }
};

QTEST_MAIN(TestPagerDispatch)
#include "tst_pagerdispatch.moc"
