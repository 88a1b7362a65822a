// A stale feed as the windows show it, over a real pseudo-terminal: the main window's status
// line in the warning colour, the open race log's stale mark, and the page marked as old.
#include "common/PtyPair.h"
#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherStation.h"
#include "ui/PredictionWindows.h"

#include <QLabel>
#include <QRegularExpression>
#include <QSerialPort>
#include <QSignalSpy>
#include <QTest>

namespace {

const QByteArray Line =
    " 11/22/26 10:42:07 29.92 71.5 43.2 1250 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r";
const QByteArray LaterLine =
    " 11/22/26 10:42:37 30.01 71.5 43.2 1250 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r";
const QByteArray Garbage = "#%&*@ 29.9 ?? garbage\r";
// The status lines of the two readings, every quantity shown.
const QString Weather = QStringLiteral("ABP=29.92 Temp=71.5 RH=43.2 AA=1250 AH=5.1 GR=45 VP=0.33 "
                                       "DP=49 ADR=98.6 DA=1410 PA=120 WD=275 WS=7 WG=11 AL=340");
const QString LaterWeather =
    QString(Weather).replace(QStringLiteral("29.92"), QStringLiteral("30.01"));

// A page with no log in it: the time, a blank and the weather.
// A page on old weather starts with its mark, before the time.
bool isPage(const QString& page, const QString& weather, const QString& mark = {}) {
    return QRegularExpression(u'^' + QRegularExpression::escape(mark) +
                              QStringLiteral("\\d\\d:\\d\\d[ap]m ") +
                              QRegularExpression::escape(weather) + u'$')
        .match(page)
        .hasMatch();
}

const QString serialKey = QStringLiteral("SOFTWARE\\Zorvane\\SerialPort");

// Com1 at 9600,N,8,1 on the device, no relay, and the feed stale after two quiet seconds.
void configure(const QString& device) {
    const QStringList values{"1", "5", "0", "4", "0", "0", "None", "None"};
    for (int i = 0; i < values.size(); ++i)
        Registry::set(serialKey, QString::number(i), values[i]);
    Registry::set(serialKey + QStringLiteral("\\Devices"), QStringLiteral("Com1"), device);
    Registry::set(QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\"),
                  QStringLiteral("NoWeatherSeconds"), QStringLiteral("2"));
}

// The instrument's end of the cable, keeping what the program sends it.
class Instrument {
public:
    explicit Instrument(const QString& device) : port(device) {
        QObject::connect(&port, &QSerialPort::readyRead, [this] { received += port.readAll(); });
        port.open(QIODevice::ReadWrite);
    }
    // The text of the last page received ("f", the page, a CR), without its "f" and CR.
    QString lastPage() const {
        const QList<QByteArray> commands = received.split('\r');
        for (auto it = commands.rbegin(); it != commands.rend(); ++it)
            if (it->startsWith('f'))
                return QString::fromLatin1(it->mid(1));
        return {};
    }
    QSerialPort port;
    QByteArray received;
};

// The two alarms, on the status line and in the race log, with the seconds they tell.
const QString StatusAlarm = QStringLiteral("^No weather for (\\d+) s$");
const QString LogAlarm = QStringLiteral("^Prediction stale: no weather for (\\d+) s$");

// The seconds a text of the given form tells; -1 when it has another form.
int toldSeconds(const QString& pattern, const QString& text) {
    const QRegularExpressionMatch match = QRegularExpression(pattern).match(text);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

// A dark orange or red: far more red than green or blue.
bool isWarningColour(const QColor& colour) {
    return colour.red() >= 128 && colour.red() > 2 * colour.green() &&
           colour.red() > 2 * colour.blue();
}

} // namespace

class TestStaleFeedWindows : public QObject {
    Q_OBJECT
private slots:
    void aQuietFeedIsShownOnTheStatusLineTheRaceLogAndThePage() {
        TestHome home;
        ScriptedDialogs dialogs;
        PtyPair pty;
        QVERIFY(pty.isReady());
        configure(pty.portEnd());

        PredictionWindows windows;
        MainWindow& main = windows.main;
        main.load();
        main.show();
        QVERIFY(main.instrument().serialPort().isOpen());
        Instrument instrument(pty.instrumentEnd());
        auto* status = main.findChild<QLabel*>(QStringLiteral("lblStatus"));
        QVERIFY(status);
        RaceLogWindow* log = windows.newLog();
        QVERIFY(log);
        auto* stale = log->findChild<QLabel*>(QStringLiteral("lblStale"));
        QVERIFY(stale);
        QSignalSpy lines(&main.weatherFeed(), &WeatherFeed::statusText);
        auto sendPage = [&] {
            const qsizetype before = instrument.received.size();
            main.weatherStation().forcePage();
            QMetaObject::invokeMethod(&main.weatherStation().sendTimer(), "timeout");
            QTRY_VERIFY(instrument.received.size() > before);
        };

        instrument.port.write(Line);
        QTRY_COMPARE(lines.size(), 1);
        QCOMPARE(status->text(), Weather);
        QVERIFY(!stale->isVisible());
        const QColor normal = status->palette().color(QPalette::WindowText);
        QVERIFY(!isWarningColour(normal));
        sendPage();
        QVERIFY2(isPage(instrument.lastPage(), Weather), qPrintable(instrument.lastPage()));

        // Two quiet seconds.
        QTRY_VERIFY_WITH_TIMEOUT(stale->isVisible(), 4000);
        QVERIFY2(toldSeconds(StatusAlarm, status->text()) >= 2, qPrintable(status->text()));
        QVERIFY(isWarningColour(status->palette().color(QPalette::WindowText)));
        QVERIFY2(toldSeconds(LogAlarm, stale->text()) >= 2, qPrintable(stale->text()));
        QVERIFY(isWarningColour(stale->palette().color(QPalette::WindowText)));
        // The mark stands above the runs, which make room for it.
        QVERIFY(log->grid->y() > stale->geometry().bottom());
        sendPage();
        QVERIFY2(isPage(instrument.lastPage(), Weather, QStringLiteral("OLD WX ")),
                 qPrintable(instrument.lastPage()));

        // A garbage line is handled, but is no weather.
        instrument.port.write(Garbage);
        QTRY_COMPARE(lines.size(), 2);
        QVERIFY(stale->isVisible());
        QVERIFY2(toldSeconds(StatusAlarm, status->text()) >= 2, qPrintable(status->text()));
        QVERIFY(isWarningColour(status->palette().color(QPalette::WindowText)));

        // A log opened meanwhile is marked with the next second.
        RaceLogWindow* later = windows.newLog();
        QVERIFY(later);
        auto* laterStale = later->findChild<QLabel*>(QStringLiteral("lblStale"));
        QVERIFY(laterStale);
        QTRY_VERIFY_WITH_TIMEOUT(laterStale->isVisible(), 2000);

        instrument.port.write(LaterLine);
        QTRY_COMPARE(lines.size(), 3);
        QVERIFY(!stale->isVisible());
        QVERIFY(!laterStale->isVisible());
        QCOMPARE(status->text(), LaterWeather);
        QCOMPARE(status->palette().color(QPalette::WindowText), normal);
        QCOMPARE(log->grid->y(), 0);
        sendPage();
        QVERIFY2(isPage(instrument.lastPage(), LaterWeather), qPrintable(instrument.lastPage()));
        QVERIFY(dialogs.messages.isEmpty());
    }
};

QTEST_MAIN(TestStaleFeedWindows)
#include "tst_stalefeedwindows.moc"
