// The caption each live view takes from a reading, written out by hand.
#include "charts/ViewCaptions.h"

#include <QTest>

namespace {

using View = ViewTable::View;

WeatherRecord reading() {
    WeatherRecord w;
    w.ABP = 29.37f;
    w.Temp = 71.5f;
    w.RH = 42.25f;
    w.AA = 1850;
    w.GR = 51;
    w.VP = 0.329f;
    w.ADR = 96.45f;
    w.DA = 2250;
    w.WD = 185;
    w.WS = 7;
    w.WG = 12;
    return w;
}

QString caption(View view, float factor = 0, const QString& status = QString()) {
    return ViewCaptions::caption(view, reading(), factor, status);
}

} // namespace

class TestViewCaptions : public QObject {
    Q_OBJECT

private slots:
    void theWindViewsNameDirectionSpeedAndGust() {
        QCOMPARE(caption(View::RosePlot),
                 QStringLiteral("Wind Direction: 185 deg  Wind Speed: 7 MPH  Gust: 12 MPH"));
        QCOMPARE(caption(View::WindDirection), QStringLiteral("Wind Direction: 185 deg"));
        QCOMPARE(caption(View::WindSpeed), QStringLiteral("Wind Speed: 7 MPH  Gust: 12 MPH"));
    }

    void theChartsNameTheirQuantities() {
        QCOMPARE(caption(View::VaporPressure),
                 QString::fromUtf8("Vapor Pressure: 0.329 Temp: 71.5\u00B0F"));
        QCOMPARE(caption(View::AADA),
                 QStringLiteral("Adjusted Altitude: 1850 Density Altitude: 2250"));
        QCOMPARE(caption(View::ABP), QStringLiteral("Absolute Barometric Pressure: 29.37"));
        QCOMPARE(caption(View::RH), QStringLiteral("Relative Humidity: 42.25"));
        QCOMPARE(caption(View::GR), QStringLiteral("Grains per lb: 51"));
        QCOMPARE(caption(View::ADR), QStringLiteral("Air Density Ratio: 96.45"));
    }

    // The factor is shown in the shortest form that reads back to the same float.
    void theCorrectionFactorIsTheFactorGiven() {
        QCOMPARE(caption(View::CF, 1.0234f), QStringLiteral("Correction Factor: 1.0234"));
        QCOMPARE(caption(View::CF, 1.0f), QStringLiteral("Correction Factor: 1"));
    }

    void theLargeDisplayTakesTheStatusLineEvenWhenEmpty() {
        QCOMPARE(caption(View::Weather, 0, QStringLiteral("ABP: 29.37  AA: 1850")),
                 QStringLiteral("ABP: 29.37  AA: 1850"));
        QCOMPARE(caption(View::Weather), QString());
    }
};

QTEST_GUILESS_MAIN(TestViewCaptions)
#include "tst_viewcaptions.moc"
