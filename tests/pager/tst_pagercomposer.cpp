#include "pager/PagerComposer.h"

#include <QTest>

using PagerComposer::PagerEntry;
using PagerComposer::PagerSlots;

namespace {

const QTime twoThirtyFive(14, 35);
const QString weather = "ABP=29.92 Temp=72.5 RH=35";

PagerEntry ticked(const QString& message) {
    return {true, message};
}
PagerEntry unticked(const QString& message) {
    return {false, message};
}

} // namespace

class TestPagerComposer : public QObject {
    Q_OBJECT
private slots:
    void pageText_data() {
        QTest::addColumn<PagerSlots>("raceLogs");
        QTest::addColumn<QString>("statusLine");
        QTest::addColumn<QString>("page");
        QTest::newRow("one log and the weather")
            << PagerSlots{ticked("RaceLog# 1> ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025")} << weather
            << "02:35pm RaceLog# 1> ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025 ABP=29.92 Temp=72.5 "
               "RH=35";
        QTest::newRow("two logs in slot order")
            << PagerSlots{ticked("Red> ET: 9.5041"), ticked("Blue> ET: 8.9000")} << weather
            << "02:35pm Red> ET: 9.5041 Blue> ET: 8.9000 ABP=29.92 Temp=72.5 RH=35";
        QTest::newRow("unticked log stays out")
            << PagerSlots{ticked("Red> ET: 9.5041"), unticked("Blue> ET: 8.9000")} << weather
            << "02:35pm Red> ET: 9.5041 ABP=29.92 Temp=72.5 RH=35";
        QTest::newRow("closed log's slot is skipped")
            << PagerSlots{std::nullopt, ticked("Blue> ET: 8.9000")} << weather
            << "02:35pm Blue> ET: 8.9000 ABP=29.92 Temp=72.5 RH=35";
        QTest::newRow("log with no prediction yet gives a blank")
            << PagerSlots{ticked("")} << weather << "02:35pm  ABP=29.92 Temp=72.5 RH=35";
        QTest::newRow("no feed yet ends in one blank")
            << PagerSlots{ticked("Red> ET: 9.5041")} << ""
            << "02:35pm Red> ET: 9.5041 ";
        QTest::newRow("no log and no weather") << PagerSlots{} << ""
                                               << "02:35pm ";
    }
    void pageText() {
        QFETCH(PagerSlots, raceLogs);
        QFETCH(QString, statusLine);
        QFETCH(QString, page);
        QCOMPARE(PagerComposer::pageText(twoThirtyFive, raceLogs, statusLine), page);
    }

    // A stale feed still pages, marked as old at its very start, before the time: where the
    // team reads first, and where it shows even on a page that carries no weather.
    void oldWeatherIsMarked_data() {
        QTest::addColumn<PagerSlots>("raceLogs");
        QTest::addColumn<QString>("statusLine");
        QTest::addColumn<QString>("page");
        QTest::newRow("one log") << PagerSlots{ticked("RaceLog# 1> ET: 9.5041")}
                                 << "ABP=29.92 Temp=72.5"
                                 << "OLD WX 02:35pm RaceLog# 1> ET: 9.5041 ABP=29.92 Temp=72.5";
        QTest::newRow("two logs, one unticked")
            << PagerSlots{ticked("Red> ET: 9.5041"), unticked("Blue> ET: 8.9000")} << weather
            << "OLD WX 02:35pm Red> ET: 9.5041 ABP=29.92 Temp=72.5 RH=35";
        QTest::newRow("no log") << PagerSlots{} << weather
                                << "OLD WX 02:35pm ABP=29.92 Temp=72.5 RH=35";
        QTest::newRow("no weather yet") << PagerSlots{ticked("Red> ET: 9.5041")} << ""
                                        << "OLD WX 02:35pm Red> ET: 9.5041 ";
    }
    void oldWeatherIsMarked() {
        QFETCH(PagerSlots, raceLogs);
        QFETCH(QString, statusLine);
        QFETCH(QString, page);
        QCOMPARE(PagerComposer::pageText(twoThirtyFive, raceLogs, statusLine,
                                         PagerComposer::Weather::Old),
                 page);
        // Live weather, named or not, carries no mark.
        const QString live = page.mid(QStringLiteral("OLD WX ").size());
        QCOMPARE(PagerComposer::pageText(twoThirtyFive, raceLogs, statusLine,
                                         PagerComposer::Weather::Live),
                 live);
        QCOMPARE(PagerComposer::pageText(twoThirtyFive, raceLogs, statusLine), live);
    }

    void morningTime() {
        QCOMPARE(PagerComposer::pageText(QTime(9, 5), {}, weather), "09:05am " + weather);
    }

    void wireForms() {
        QCOMPARE(PagerComposer::pageCommand("02:35pm Red> ET: 9.5041 "),
                 QByteArray("f02:35pm Red> ET: 9.5041 \r"));
        QCOMPARE(PagerComposer::customCommand("Pit 3"), QByteArray("f Pit 3\r"));
        QCOMPARE(PagerComposer::customCommand(""), QByteArray("f \r"));
        QCOMPARE(PagerComposer::testCommand(), QByteArray("f Drennick & Aldous Racing\r"));
        QCOMPARE(PagerComposer::linkCommand(), QByteArray("l\r"));
    }

    void portClosedBoxes() {
        const Dialogs::Message custom = PagerComposer::customPortClosedMessage();
        QCOMPARE(custom.text, "The serial port is not open");
        QCOMPARE(custom.title, "Custom Message");
        QCOMPARE(custom.icon, Dialogs::Icon::Information);
        QCOMPARE(custom.buttons, Dialogs::Buttons::OkCancel);
        const Dialogs::Message test = PagerComposer::testPortClosedMessage();
        QCOMPARE(test.text, "The serial port is not open");
        QCOMPARE(test.title, "Test Message");
    }

    // The boxes as they stand after the click; three or more ticked ones warn.
    void warningFromTheThirdTickedLog_data() {
        QTest::addColumn<PagerSlots>("raceLogs");
        QTest::addColumn<bool>("warns");
        const PagerEntry on = ticked("x");
        const PagerEntry off = unticked("x");
        QTest::newRow("two ticked") << PagerSlots{on, on} << false;
        QTest::newRow("third ticked") << PagerSlots{on, on, on} << true;
        QTest::newRow("third ticked off again") << PagerSlots{on, on, off} << false;
        QTest::newRow("one of four ticked off") << PagerSlots{on, off, on, on} << true;
        QTest::newRow("empty slots do not count")
            << PagerSlots{on, std::nullopt, on, std::nullopt} << false;
    }
    void warningFromTheThirdTickedLog() {
        QFETCH(PagerSlots, raceLogs);
        QFETCH(bool, warns);
        QCOMPARE(PagerComposer::pagerPredictionsWarning(raceLogs).has_value(), warns);
    }

    void warningBox() {
        const PagerEntry on = ticked("x");
        const auto box = PagerComposer::pagerPredictionsWarning({on, on, on});
        QVERIFY(box);
        QCOMPARE(box->text, "WARNING:\r\n"
                            "  Having pager predictions turned on for more than two\r\n"
                            "  race logs can cause losses in transmitted messages sent\r\n"
                            "  to pager!");
        QCOMPARE(box->title, "Pager Predictions");
        QCOMPARE(box->icon, Dialogs::Icon::Exclamation);
        QCOMPARE(box->buttons, Dialogs::Buttons::OkCancel);
    }
};

QTEST_GUILESS_MAIN(TestPagerComposer)
#include "tst_pagercomposer.moc"
