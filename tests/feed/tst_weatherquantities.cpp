// How a value of a reading is written: the one way the program writes it everywhere.
#include "feed/WeatherQuantities.h"

#include <QTest>

class TestWeatherQuantities : public QObject {
    Q_OBJECT

private slots:
    // The shortest text that reads back to the same float, with an exponent when very small.
    void aFloatInGeneralForm_data() {
        QTest::addColumn<float>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("pressure") << 29.92f << "29.92";
        QTest::newRow("whole float") << 1.0f << "1";
        QTest::newRow("negative") << -12.25f << "-12.25";
        QTest::newRow("tiny") << 0.00001f << "1E-05";
        QTest::newRow("zero") << 0.0f << "0";
    }
    void aFloatInGeneralForm() {
        QFETCH(float, value);
        QFETCH(QString, text);
        QCOMPARE(valueText(value), text);
    }

    void anIntegerAsPlainDigits_data() {
        QTest::addColumn<qint32>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("altitude") << qint32(1850) << "1850";
        QTest::newRow("below sea level") << qint32(-250) << "-250";
        QTest::newRow("largest") << qint32(2147483647) << "2147483647";
    }
    void anIntegerAsPlainDigits() {
        QFETCH(qint32, value);
        QFETCH(QString, text);
        QCOMPARE(valueText(value), text);
    }

    // A quantity of a reading is its field written the same way, whichever kind it is.
    void aQuantityIsItsFieldWritten() {
        WeatherRecord record;
        record.ADR = 96.45f;
        record.DA = -250;
        const WeatherQuantity& adr = WeatherQuantities[8];
        const WeatherQuantity& da = WeatherQuantities[9];
        QCOMPARE(QLatin1String(adr.name), QLatin1String("ADR"));
        QCOMPARE(QLatin1String(da.name), QLatin1String("DA"));
        QCOMPARE(quantityText(adr, record), QStringLiteral("96.45"));
        QCOMPARE(quantityText(da, record), QStringLiteral("-250"));
    }
};

QTEST_APPLESS_MAIN(TestWeatherQuantities)
#include "tst_weatherquantities.moc"
