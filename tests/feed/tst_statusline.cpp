#include "FeedSamples.h"
#include "common/TestHome.h"
#include "core/Registry.h"
#include "feed/StatusLine.h"
#include "feed/WeatherQuantities.h"

#include <QSettings>
#include <QTest>
#include <memory>

using namespace FeedSamples;

namespace {
const QString ColumnsKey = QStringLiteral("SOFTWARE\\Zorvane\\LogColumns\\");
const QString AllShown = QStringLiteral("ABP=29.92 Temp=71.5 RH=43.2 AA=1250 AH=5.1 GR=45 VP=0.33 "
                                        "DP=49 ADR=98.6 DA=1410 PA=120 WD=275 WS=7 WG=11 AL=340");
} // namespace

class TestStatusLine : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    void everyQuantityShownWhenNothingIsChosen() {
        QCOMPARE(buildStatusLine(readingTexts(FullRecord())), AllShown);
    }

    void zeroHidesAQuantity() {
        Registry::set(ColumnsKey, QStringLiteral("RH"), QStringLiteral("0"));
        Registry::set(ColumnsKey, QStringLiteral("AL"), QStringLiteral("0"));
        QCOMPARE(buildStatusLine(readingTexts(FullRecord())),
                 QStringLiteral("ABP=29.92 Temp=71.5 AA=1250 AH=5.1 GR=45 VP=0.33 DP=49 ADR=98.6 "
                                "DA=1410 PA=120 WD=275 WS=7 WG=11"));
    }

    void onlyExactZeroHides_data() {
        QTest::addColumn<QString>("value");
        QTest::newRow("one") << "1";
        QTest::newRow("double zero") << "00";
        QTest::newRow("zero point zero") << "0.0";
        QTest::newRow("zero with blank") << "0 ";
        QTest::newRow("word") << "False";
    }
    void onlyExactZeroHides() {
        QFETCH(QString, value);
        for (const WeatherQuantity& quantity : WeatherQuantities)
            Registry::set(ColumnsKey, QLatin1String(quantity.name), value);
        QCOMPARE(buildStatusLine(readingTexts(FullRecord())), AllShown);
    }

    void allZeroGivesEmptyText() {
        for (const WeatherQuantity& quantity : WeatherQuantities)
            Registry::set(ColumnsKey, QLatin1String(quantity.name), QStringLiteral("0"));
        QCOMPARE(buildStatusLine(readingTexts(FullRecord())), QString());
    }

    void noBlankAfterTheLastShown() {
        for (const WeatherQuantity& quantity : WeatherQuantities)
            Registry::set(ColumnsKey, QLatin1String(quantity.name), QStringLiteral("0"));
        Registry::set(ColumnsKey, QStringLiteral("Temp"), QStringLiteral("1"));
        QCOMPARE(buildStatusLine(readingTexts(FullRecord())), QStringLiteral("Temp=71.5"));
    }

    // The choice is kept between lines, and a change of it shows on the next line: at once
    // when made here, as soon as the program hears of it when made by another instance.
    void aChangedChoiceShowsOnTheNextLine() {
        QCOMPARE(buildStatusLine(readingTexts(FullRecord())), AllShown);
        Registry::set(ColumnsKey, QStringLiteral("WG"), QStringLiteral("0"));
        QCOMPARE(buildStatusLine(readingTexts(FullRecord())),
                 QString(AllShown).remove(QStringLiteral(" WG=11")));
        QSettings other(Registry::storeFilePath(), QSettings::IniFormat);
        other.setValue(QStringLiteral("SOFTWARE/Zorvane/LogColumns/WG"), QStringLiteral("1"));
        other.sync();
        QTRY_COMPARE(buildStatusLine(readingTexts(FullRecord())), AllShown);
    }

    void numbersInGeneralForm() {
        WeatherRecord record;
        record.ABP = 0.1f;
        record.Temp = -12.25f;
        record.RH = 0.00001f;
        record.AA = -150;
        QVERIFY(buildStatusLine(readingTexts(record))
                    .startsWith(QStringLiteral("ABP=0.1 Temp=-12.25 RH=1E-05 AA=-150 AH=0 ")));
    }
};

QTEST_GUILESS_MAIN(TestStatusLine)
#include "tst_statusline.moc"
