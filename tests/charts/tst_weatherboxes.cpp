// The boxes of the large display: their names, labels and tool tips in the order they stand,
// the order a reading fills them, and their plain number text.
#include "charts/WeatherBoxes.h"

#include <QTest>

class TestWeatherBoxes : public QObject {
    Q_OBJECT

private slots:
    void fifteenBoxesInTheOrderTheyStand() {
        const QList<QStringList> expected{
            {"txtABP", "lblABP", "ABP:", "Absolute Barometric Pressure"},
            {"txtAA", "lblAA", "AA:", "Adjusted Altitude"},
            {"txtWD", "lblWD", "WD:", "Wind Direction"},
            {"txtTEMP", "lblTEMP", "TEMP:", "Temperature in Degrees Fahrenheit"},
            {"txtRH", "lblRH", "RH:", "Relative Humidity"},
            {"txtAH", "lblAH", "AH:", "Absolute Humidity"},
            {"txtGR", "lblGR", "GR:", "Grains per lb"},
            {"txtDA", "lblDA", "DA:", "Density Altitude"},
            {"txtVP", "lblVP", "VP:", "Vapor Pressure"},
            {"txtPA", "lblPA", "PA:", "Pressure Altitude"},
            {"txtADR", "lblADR", "ADR:", "Air Density Ratio"},
            {"txtWS", "lblWS", "WS:", "Wind Speed"},
            {"txtWG", "lblWG", "WG:", "Wind Gust"},
            {"txtAL", "lblAL", "AL:", "Ambient Light"},
            {"txtDP", "lblDP", "DP:", "Dew Point"},
        };
        QCOMPARE(int(WeatherBoxes::Boxes.size()), expected.size());
        for (int i = 0; i < expected.size(); ++i) {
            const WeatherBoxes::Box& box = WeatherBoxes::Boxes[std::size_t(i)];
            QCOMPARE(WeatherBoxes::boxName(box), expected[i][0]);
            QCOMPARE(WeatherBoxes::labelName(box), expected[i][1]);
            QCOMPARE(WeatherBoxes::labelText(box), expected[i][2]);
            QCOMPARE(box.toolTip.toString(), expected[i][3]);
        }
    }

    void aReadingFillsTheBoxesByName() {
        QStringList order;
        for (const QStringView name : WeatherBoxes::FillOrder)
            order << WeatherBoxes::boxName(WeatherBoxes::find(name));
        QCOMPARE(order, QStringList({"txtAA", "txtABP", "txtADR", "txtAH", "txtAL", "txtDA",
                                     "txtDP", "txtGR", "txtPA", "txtRH", "txtTEMP", "txtVP",
                                     "txtWD", "txtWG", "txtWS"}));
    }

    void eachBoxWritesItsQuantityAsPlainNumberText() {
        WeatherRecord w;
        w.ABP = 29.92f;
        w.Temp = 71.5f;
        w.RH = 42.25f;
        w.AA = 1850;
        w.AH = 0.33f;
        w.GR = 51;
        w.VP = 0.329f;
        w.DP = 47;
        w.ADR = 96.45f;
        w.DA = -250;
        w.PA = 1200;
        w.WD = 185;
        w.WS = 7;
        w.WG = 12;
        w.AL = 3;
        const QHash<QString, QString> expected{
            {"ABP", "29.92"}, {"TEMP", "71.5"}, {"RH", "42.25"}, {"AA", "1850"},   {"AH", "0.33"},
            {"GR", "51"},     {"VP", "0.329"},  {"DP", "47"},    {"ADR", "96.45"}, {"DA", "-250"},
            {"PA", "1200"},   {"WD", "185"},    {"WS", "7"},     {"WG", "12"},     {"AL", "3"},
        };
        for (const WeatherBoxes::Box& box : WeatherBoxes::Boxes)
            QCOMPARE(box.text(w), expected.value(box.name.toString()));
    }
};

QTEST_APPLESS_MAIN(TestWeatherBoxes)
#include "tst_weatherboxes.moc"
