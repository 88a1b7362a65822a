// The table of the eleven live views and the registry of the open ones: names, placements and
// commands as the program knows them, the three orders in which views are reached, and what
// a replayed row gives each chart.
#include "core/CommandTable.h"
#include "core/LiveView.h"
#include "core/OpenViews.h"
#include "core/ViewTable.h"
#include "core/WeatherRecord.h"

#include <QSignalSpy>
#include <QTest>

namespace {

using View = ViewTable::View;

// A view that writes down, under its name, every call it gets.
class NotingView : public LiveView {
public:
    NotingView(QString name, QStringList& calls) : name(std::move(name)), calls(calls) {}
    void showReading(const WeatherRecord&, const QString&) override {
        calls << name + QStringLiteral(" reading");
    }
    void addLoggedPoint(float, const QList<float>&) override {
        calls << name + QStringLiteral(" point");
    }
    void clear() override { calls << name + QStringLiteral(" clear"); }

private:
    QString name;
    QStringList& calls;
};

QStringList names(const QList<View>& views) {
    QStringList result;
    for (const View view : views)
        result << ViewTable::entry(view).objectName.toString();
    return result;
}

} // namespace

class TestViews : public QObject {
    Q_OBJECT

private slots:
    void theElevenViewsWithTheirPlacesAndCommands() {
        const QList<QStringList> expected{
            {"frmRosePlot", "Rose Plot", "WindDirectionSpeed", "miWindPlot"},
            {"frmWindDirection", "Wind Direction", "WindDirection", "miWindDirection"},
            {"frmWindSpeed", "Wind Speed", "WindSpeed", "miWindSpeed"},
            {"frmWeather", "Weather Information", "Weather", "miWeather"},
            {"frmVP", "Vapor Pressure", "VaporPressure", "miVaporPressure"},
            {"frmAADA", "Adjusted Altitude", "AADA", "miAADA"},
            {"frmABP", "Absolute Barometric Pressure", "ABP", "miABP"},
            {"frmRH", "Relative Humidity", "RH", "miRH"},
            {"frmGR", "Grains per lb", "GR", "miGR"},
            {"frmCF", "Correction Factor", "CF", "miCF"},
            {"frmADR", "Air Density Ratio", "ADR", "miADR"},
        };
        QCOMPARE(int(ViewTable::Views.size()), expected.size());
        for (int i = 0; i < expected.size(); ++i) {
            const ViewTable::Entry& view = ViewTable::Views[i];
            QCOMPARE(int(view.view), i);
            QCOMPARE(view.objectName.toString(), expected[i][0]);
            QCOMPARE(view.caption.toString(), expected[i][1]);
            QCOMPARE(view.branch.toString(), expected[i][2]);
            QCOMPARE(view.command.toString(), expected[i][3]);
            QVERIFY(CommandTable::findTool(view.command.toString()));
            QCOMPARE(ViewTable::findByCommand(view.command), &view);
        }
        QCOMPARE(ViewTable::findByCommand(u"miGraph"), nullptr);
        QCOMPARE(ViewTable::placementKey(View::RosePlot),
                 QStringLiteral("SOFTWARE\\Zorvane\\WindDirectionSpeed\\ScreenSettings"));
        QCOMPARE(ViewTable::placementKey(View::VaporPressure),
                 QStringLiteral("SOFTWARE\\Zorvane\\VaporPressure\\ScreenSettings"));
        QCOMPARE(CommandTable::findTool(QStringLiteral("miWindPlot"))->caption,
                 QStringLiteral("Wind Plot"));
    }

    void theOrdersOfAReadingAReplayAndAClear() {
        QCOMPARE(names(ViewTable::readingOrder()),
                 (QStringList{"frmRosePlot", "frmWindDirection", "frmWindSpeed", "frmWeather",
                              "frmVP", "frmAADA", "frmABP", "frmRH", "frmGR", "frmCF", "frmADR"}));
        QCOMPARE(names(ViewTable::replayOrder()),
                 (QStringList{"frmWindSpeed", "frmABP", "frmRH", "frmCF", "frmADR", "frmGR",
                              "frmVP", "frmAADA", "frmRosePlot"}));
        QCOMPARE(names(ViewTable::clearOrder()),
                 (QStringList{"frmWindSpeed", "frmABP", "frmRH", "frmGR", "frmVP", "frmAADA",
                              "frmRosePlot", "frmADR", "frmCF"}));
    }

    void aReplayedRowGivesEachChartItsSeries() {
        WeatherRecord row;
        row.ABP = 29.92f;
        row.Temp = 71.5f;
        row.RH = 43.2f;
        row.AA = 1250;
        row.GR = 45;
        row.VP = 0.33f;
        row.ADR = 98.6f;
        row.DA = 1410;
        row.WD = 275;
        row.WS = 7;
        const auto samples = [&row](View view) {
            return ViewTable::entry(view).samples(row, 1.0125f);
        };
        QCOMPARE(samples(View::WindSpeed), QList<float>{7});
        QCOMPARE(samples(View::ABP), QList<float>{29.92f});
        QCOMPARE(samples(View::RH), (QList<float>{43.2f, 71.5f}));
        QCOMPARE(samples(View::CF), QList<float>{1.0125f});
        QCOMPARE(samples(View::ADR), QList<float>{98.6f});
        QCOMPARE(samples(View::GR), QList<float>{45});
        QCOMPARE(samples(View::VaporPressure), (QList<float>{0.33f, 71.5f}));
        QCOMPARE(samples(View::AADA), (QList<float>{1250, 1410}));
        QCOMPARE(samples(View::RosePlot), (QList<float>{275, 7}));
    }

    void aViewIsOpenUntilItsOwnWindowCloses() {
        OpenViews views;
        QStringList calls;
        NotingView first(QStringLiteral("first"), calls);
        NotingView other(QStringLiteral("other"), calls);
        QSignalSpy opened(&views, &OpenViews::opened);
        QSignalSpy closed(&views, &OpenViews::closed);
        QVERIFY(!views.isOpen(View::GR));
        views.open(View::GR, &first);
        QCOMPARE(views.at(View::GR), &first);
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened[0][0].value<View>(), View::GR);
        views.close(View::GR, &other);
        QVERIFY(views.isOpen(View::GR));
        QCOMPARE(closed.size(), 0);
        views.close(View::GR, &first);
        QVERIFY(!views.isOpen(View::GR));
        QCOMPARE(closed.size(), 1);
        views.close(View::GR);
        QCOMPARE(closed.size(), 1);
    }

    void readingsRowsAndClearsReachTheOpenViewsInTheirOrders() {
        OpenViews views;
        QStringList calls;
        NotingView weather(QStringLiteral("weather"), calls);
        NotingView cf(QStringLiteral("cf"), calls);
        NotingView rose(QStringLiteral("rose"), calls);
        NotingView rh(QStringLiteral("rh"), calls);
        views.open(View::CF, &cf);
        views.open(View::Weather, &weather);
        views.open(View::RH, &rh);
        views.open(View::RosePlot, &rose);

        views.showReading(WeatherRecord{}, QString());
        QCOMPARE(calls,
                 (QStringList{"rose reading", "weather reading", "rh reading", "cf reading"}));
        calls.clear();
        views.addLoggedRow(WeatherRecord{}, 0.5f, 1.0f);
        QCOMPARE(calls, (QStringList{"rh point", "cf point", "rose point"}));
        calls.clear();
        views.clear();
        QCOMPARE(calls, (QStringList{"rh clear", "rose clear", "cf clear"}));
    }
};

QTEST_GUILESS_MAIN(TestViews)
#include "tst_views.moc"
