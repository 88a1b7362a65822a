// The eight strip chart windows as the main window shows them: their charts, cursors, menu,
// readings, print and PDF, and the marks a race log puts on them.
#include "../PredictionWindows.h"
#include "../PrintingDialogs.h"
#include "common/PdfReading.h"
#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "racelog/RaceLog.h"
#include "ui/charts/StripChart.h"
#include "ui/charts/StripChartWindow.h"
#include "ui/charts/ViewCommands.h"

#include <QMenu>
#include <QPrinter>
#include <QSignalSpy>
#include <QTest>

namespace {

using View = ViewTable::View;

// The main window with the race log commands and the commands that show the live views.
struct ChartWindows : PredictionWindows {
    ChartWindows() {
        ViewCommands::add(main, station.views());
        main.resize(1200, 800);
        main.show();
    }

    StripChartWindow* open(View view) {
        run(ViewTable::entry(view).command.toString());
        return chartWindow(view);
    }
    StripChartWindow* chartWindow(View view) {
        return dynamic_cast<StripChartWindow*>(station.views().at(view));
    }
    void close(View view) {
        if (StripChartWindow* window = chartWindow(view))
            qobject_cast<QMdiSubWindow*>(window->parentWidget())->close();
    }
};

StripChart* chartOf(StripChartWindow* window) {
    return window->findChild<StripChart*>();
}

QCPCurve* line(StripChartWindow* window, int index) {
    return qobject_cast<QCPCurve*>(chartOf(window)->plottable(index));
}

QCPAxis* axis(StripChartWindow* window, const QString& name) {
    return chartOf(window)->findChild<QCPAxis*>(name);
}

QCPItemStraightLine* cursor(StripChartWindow* window, const QString& name) {
    return chartOf(window)->findChild<QCPItemStraightLine*>(name);
}

double cursorY(StripChartWindow* window, const QString& name) {
    return cursor(window, name)->point1->coords().y();
}

QAction* entry(StripChartWindow* window, const QString& name) {
    return window->findChild<QMenu*>(QStringLiteral("miOptions"))->findChild<QAction*>(name);
}

int pointerMode(StripChartWindow* window) {
    return chartOf(window)->property("pointerMode").toInt();
}

QList<QCPItemText*> marks(StripChartWindow* window) {
    QList<QCPItemText*> found;
    QCustomPlot* chart = chartOf(window);
    for (int i = 0; i < chart->itemCount(); ++i)
        if (auto* text = qobject_cast<QCPItemText*>(chart->item(i)))
            found << text;
    return found;
}

// The menu as "name:text", a separator as "-".
QStringList menuLines(StripChartWindow* window) {
    QStringList lines;
    for (QAction* action : window->findChild<QMenu*>(QStringLiteral("miOptions"))->actions())
        lines << (action->isSeparator() ? QStringLiteral("-")
                                        : action->objectName() + u':' + action->text());
    return lines;
}

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

// Replayed points of the wind speed from 9:36am, 86.4 seconds apart, at 2, 5 and 8 in turn.
void replayWind(StripChartWindow* speed) {
    for (int i = 0; i < 9; ++i)
        speed->addLoggedPoint(float(0.4 + i * 0.001), {float(2 + i % 3 * 3)});
    speed->endOfReplay();
}

// The chart's size on a page that gives an inch of the screen so many tenths of a millimetre.
QSize sizeOnPage(const QWidget* chart, double unitsPerInch) {
    const double scale = unitsPerInch / chart->logicalDpiX();
    return QSize(qRound(chart->width() * scale), qRound(chart->height() * scale));
}

bool near(const QSize& a, const QSize& b, int by) {
    return std::abs(a.width() - b.width()) <= by && std::abs(a.height() - b.height()) <= by;
}

float clockNow() {
    return float(QTime::currentTime().msecsSinceStartOfDay() / 86400000.0);
}

void sendMouse(QWidget* widget, QEvent::Type type, Qt::MouseButton button, const QPointF& at) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
    QMouseEvent event(type, at, widget->mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

// A line of pdfinfo, "Title:    Tarnwick - Wind Speed", without its name.
QString pdfInfo(const QString& path, const QString& name) {
    for (const QString& line : PdfReading::toolOutput("pdfinfo", {path}).split(u'\n'))
        if (line.startsWith(name + u':'))
            return line.mid(name.size() + 1).trimmed();
    return {};
}

// The page is wider than high: "Page size: 842 x 595 pts (A4)".
bool isLandscape(const QString& path) {
    const QStringList size = pdfInfo(path, QStringLiteral("Page size")).split(u' ');
    return size.size() > 2 && size[0].toDouble() > size[2].toDouble();
}

// "Wednesday - November 25, 2026"
QString headingDate(const QDate& date) {
    static const QStringList days{"Monday", "Tuesday",  "Wednesday", "Thursday",
                                  "Friday", "Saturday", "Sunday"};
    static const QStringList months{"January",   "February", "March",    "April",
                                    "May",       "June",     "July",     "August",
                                    "September", "October",  "November", "December"};
    return days[date.dayOfWeek() - 1] + QStringLiteral(" - ") + months[date.month() - 1] + u' ' +
           QString::number(date.day()).rightJustified(2, u'0') + QStringLiteral(", ") +
           QString::number(date.year());
}

// Runs at 9:00am, 10:00am and 11:00am, with VP 0.75, ABP 29.5, Temp 85, RH 40, GR 60,
// ADR 98.5, AA 1500 and a wind speed of 5, 6 and 7.
void addRuns(RaceLogWindow* log, int count) {
    for (int run = 1; run <= count; ++run) {
        if (run > 1)
            log->grid->newRun();
        setCells(log, run,
                 {{1, QStringLiteral("%1:00am").arg(8 + run, 2, 10, QChar(u'0'))},
                  {19, "1500"},
                  {21, "0.75"},
                  {22, "29.5"},
                  {23, "85"},
                  {24, "40"},
                  {26, "60"},
                  {28, "98.5"},
                  {31, QString::number(4 + run)}});
    }
    log->document().setField(RaceLog::Field::PageIdentifier, QStringLiteral("Blue"));
}

void rowCommand(RaceLogWindow* log, const char* name) {
    log->grid->rowMenu()->findChild<QAction*>(QLatin1String(name))->trigger();
}

} // namespace

class TestStripChartWindow : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home;
    std::unique_ptr<PrintingDialogs> dialogs;

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<PrintingDialogs>();
    }
    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    void eachChartOpensAsItWasDesigned_data() {
        QTest::addColumn<View>("view");
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("control");
        QTest::addColumn<QStringList>("plots");
        QTest::addColumn<QList<QColor>>("colors");
        QTest::addColumn<double>("timeFrom");
        QTest::addColumn<QList<double>>("limits"); // lower and upper of each value axis
        QTest::addColumn<QStringList>("menu");
        const QColor red(255, 0, 0);
        const QStringList head{"miPrint:Print", "mnuPDFExport:PDF Export...", "-"};
        const QStringList one{"-", "miCenterCursor:Center Cursor", "miRemoveCursor:Remove Cursor",
                              "-", "miRemoveAnnotations:Remove Annotations"};
        const QStringList two{"-", "miCenterCursors:Center Cursors",
                              "miRemoveCursors:Remove Cursors", "-",
                              "miRemoveAnnotations:Remove Annotations"};
        QTest::addRow("frmWindSpeed")
            << View::WindSpeed << "frmWindSpeed"
            << "Wind Speed"
            << "windSpeed" << QStringList{"WS"} << QList<QColor>{QColor(27, 250, 239)} << 0.3
            << QList<double>{1, 10} << head + QStringList{"miWSCursor:WS Cursor"} + one;
        QTest::addRow("frmVP")
            << View::VaporPressure << "frmVP"
            << "Vapor Pressure"
            << "graphVP" << QStringList{"VP", "TEMP"} << QList<QColor>{QColor(0, 202, 202), red}
            << 0.2 << QList<double>{0, 1, 0, 1}
            << head + QStringList{"miVPCursor:VP Cursor", "miTempCursor:Temp Cursor"} + two;
        QTest::addRow("frmAADA") << View::AADA << "frmAADA"
                                 << "Adjusted Altitude"
                                 << "graphAA" << QStringList{"AA", "DA"}
                                 << QList<QColor>{QColor(255, 255, 0), QColor(0, 255, 0)} << 0.2
                                 << QList<double>{1000, 2000, 2000, 3000}
                                 << head +
                                        QStringList{"miAACursor:AA Cursor",
                                                    "miDACursor:DA Cursor"} +
                                        two;
        QTest::addRow("frmABP") << View::ABP << "frmABP"
                                << "Absolute Barometric Pressure"
                                << "graphABP" << QStringList{"ABP"}
                                << QList<QColor>{QColor(255, 0, 255)} << 0.3 << QList<double>{1, 10}
                                << head + QStringList{"miABPCursor:ABP Cursor"} + one;
        QTest::addRow("frmGR") << View::GR << "frmGR"
                               << "Grains per lb"
                               << "graphGR" << QStringList{"GR"}
                               << QList<QColor>{QColor(0, 255, 255)} << 0.3 << QList<double>{1, 10}
                               << head + QStringList{"miGRCursor:GR Cursor"} + one;
        QTest::addRow("frmRH") << View::RH << "frmRH"
                               << "Relative Humidity"
                               << "graphRH" << QStringList{"RH", "TEMP"}
                               << QList<QColor>{QColor(0, 255, 0), red} << 0.2
                               << QList<double>{1, 10, 1, 10}
                               << head + QStringList{"miRHCursor:RH Cursor"} + one;
        QTest::addRow("frmCF") << View::CF << "frmCF"
                               << "Correction Factor"
                               << "Graph" << QStringList{"CF"}
                               << QList<QColor>{QColor(217, 38, 199)} << 0.3 << QList<double>{1, 10}
                               << head + QStringList{"miCFCursor:CF Cursor"} + one;
        QTest::addRow("frmADR") << View::ADR << "frmADR"
                                << "Air Density Ratio"
                                << "Graph" << QStringList{"ADR"}
                                << QList<QColor>{QColor(255, 0, 128)} << 0.3 << QList<double>{1, 10}
                                << head + QStringList{"miADRCursor:ADR Cursor"} + one;
    }
    void eachChartOpensAsItWasDesigned() {
        QFETCH(View, view);
        QFETCH(QString, window);
        QFETCH(QString, caption);
        QFETCH(QString, control);
        QFETCH(QStringList, plots);
        QFETCH(QList<QColor>, colors);
        QFETCH(double, timeFrom);
        QFETCH(QList<double>, limits);
        QFETCH(QStringList, menu);

        ChartWindows windows;
        StripChartWindow* chart = windows.open(view);
        QVERIFY(chart);
        QCOMPARE(chart->objectName(), window);
        QCOMPARE(chart->windowTitle(), caption);
        QCustomPlot* plot = chart->findChild<QCustomPlot*>(control);
        QVERIFY(plot);
        QCOMPARE(plot->plottableCount(), int(plots.size()));

        QCPAxis* time = axis(chart, QStringLiteral("time"));
        QVERIFY(time);
        QCOMPARE(time->range().lower, timeFrom);
        QCOMPARE(time->range().upper, 1.0);
        QCOMPARE(pointerMode(chart), 10);
        for (int i = 0; i < plots.size(); ++i) {
            QCPCurve* curve = line(chart, i);
            QCOMPARE(curve->name(), plots[i]);
            QCOMPARE(curve->pen().color(), colors[i]);
            QCOMPARE(curve->keyAxis(), time);
            QCPAxis* values = curve->valueAxis();
            QCOMPARE(values->objectName(), plots[i]);
            QCOMPARE(values->range().lower, limits[2 * i]);
            QCOMPARE(values->range().upper, limits[2 * i + 1]);
            QCOMPARE(curve->dataCount(), 0);
            if (QCPItemStraightLine* line = cursor(chart, plots[i]))
                QVERIFY(!line->visible());
        }
        if (plots.size() == 2)
            QVERIFY(line(chart, 0)->valueAxis() != line(chart, 1)->valueAxis());
        QCOMPARE(menuLines(chart), menu);
        for (QAction* action : chart->findChild<QMenu*>("miOptions")->actions())
            QVERIFY(!action->isChecked());
    }

    void theCursorsStartWhereTheyWereDesigned() {
        ChartWindows windows;
        StripChartWindow* speed = windows.open(View::WindSpeed);
        QCOMPARE(cursorY(speed, "WS"), 1.9);
        QCOMPARE(cursor(speed, "WS")->pen().color(), QColor(255, 255, 0));
        StripChartWindow* vp = windows.open(View::VaporPressure);
        QCOMPARE(cursorY(vp, "VP"), 1.9);
        QCOMPARE(cursorY(vp, "TEMP"), 2.8);
        QCOMPARE(cursor(vp, "TEMP")->pen().color(), QColor(255, 0, 0));
        StripChartWindow* aada = windows.open(View::AADA);
        QCOMPARE(cursorY(aada, "AA"), 0.1);
        QCOMPARE(cursorY(aada, "DA"), 1200.0);
        QCOMPARE(cursor(aada, "DA")->pen().color(), QColor(0, 255, 0));
        // The temperature of the humidity chart has no cursor.
        StripChartWindow* rh = windows.open(View::RH);
        QVERIFY(cursor(rh, "RH"));
        QVERIFY(!cursor(rh, "TEMP"));
    }

    void theTimeAxisReadsAsAClock() {
        ChartWindows windows;
        StripChartWindow* chart = windows.open(View::WindSpeed);
        chartOf(chart)->replot();
        QCPAxis* time = axis(chart, "time");
        // From 0.3 to 1.0 every 0.2 of a day: 9:36am, 2:24pm, 7:12pm and midnight.
        QCOMPARE(time->tickVectorLabels(),
                 (QVector<QString>{"9:36:00a", "2:24:00p", "7:12:00p", "12:00:00a"}));
        const QVector<double> ticks = time->tickVector();
        QCOMPARE(ticks.size(), 4);
        for (int i = 0; i < 4; ++i)
            QVERIFY(qAbs(ticks[i] - (0.4 + 0.2 * i)) < 1e-12);
    }

    // A narrow chart shows fewer time labels, none running into the next, over twenty
    // seconds of points as over an hour.
    void timeLabelsNeverOverlapOnANarrowChart() {
        for (const int seconds : {20, 60, 3600}) {
            ChartWindows windows;
            StripChartWindow* chart = windows.open(View::WindSpeed);
            for (int second = 0; second < seconds; ++second)
                chartOf(chart)->addPoint(0, (13 * 3600 + second) / 86400.0, second % 9);
            for (const int width : {260, 330, 420, 900}) {
                qobject_cast<QMdiSubWindow*>(chart->parentWidget())->resize(width, 300);
                QCoreApplication::processEvents();
                chartOf(chart)->replot();
                QCPAxis* time = axis(chart, "time");
                const QVector<double> ticks = time->tickVector();
                const QVector<QString> labels = time->tickVectorLabels();
                QVERIFY(ticks.size() >= 2);
                const QFontMetrics metrics(time->tickLabelFont());
                for (int i = 1; i < ticks.size(); ++i) {
                    const double gap =
                        time->coordToPixel(ticks[i]) - time->coordToPixel(ticks[i - 1]);
                    const int room = (metrics.horizontalAdvance(labels[i - 1]) +
                                      metrics.horizontalAdvance(labels[i])) /
                                         2 +
                                     4;
                    QVERIFY2(gap > room,
                             qPrintable(QStringLiteral("%1 s at %2 px: %3 and %4, %5 apart")
                                            .arg(seconds)
                                            .arg(width)
                                            .arg(labels[i - 1], labels[i])
                                            .arg(gap)));
                }
            }
        }
    }

    void aReadingReachesTheOpenChartsAndTheirCaptions() {
        ChartWindows windows;
        StripChartWindow* speed = windows.open(View::WindSpeed);
        StripChartWindow* vp = windows.open(View::VaporPressure);
        StripChartWindow* gr = windows.open(View::GR);
        const float before = clockNow();
        windows.station.views().showReading(reading(), QStringLiteral("status"));
        const float after = clockNow();

        QCOMPARE(speed->windowTitle(), QStringLiteral("Wind Speed: 7 MPH  Gust: 12 MPH"));
        QCOMPARE(vp->windowTitle(), QStringLiteral("Vapor Pressure: 0.329 Temp: 71.5\u00B0F"));
        QCOMPARE(gr->windowTitle(), QStringLiteral("Grains per lb: 51"));
        QCOMPARE(line(speed, 0)->dataCount(), 1);
        QCOMPARE(line(speed, 0)->data()->at(0)->value, 7.0);
        QCOMPARE(line(vp, 0)->data()->at(0)->value, double(0.329f));
        QCOMPARE(line(vp, 1)->data()->at(0)->value, 71.5);
        QCOMPARE(line(gr, 0)->data()->at(0)->value, 51.0);
        for (QCPCurve* curve : {line(speed, 0), line(vp, 0), line(vp, 1)}) {
            const double t = curve->data()->at(0)->key;
            QVERIFY2(t >= before && t <= after, qPrintable(QString::number(t)));
            // The time is kept as a single.
            QCOMPARE(double(float(t)), t);
        }
    }

    void theAxesFitThemselvesToThePoints() {
        ChartWindows windows;
        StripChartWindow* speed = windows.open(View::WindSpeed);
        WeatherRecord w = reading();
        windows.station.views().showReading(w, QString());
        // One value keeps the span the axis had, around the value.
        QCOMPARE(axis(speed, "WS")->range().lower, 2.5);
        QCOMPARE(axis(speed, "WS")->range().upper, 11.5);
        w.WS = 3;
        windows.station.views().showReading(w, QString());
        w.WS = 15;
        windows.station.views().showReading(w, QString());
        QCOMPARE(axis(speed, "WS")->range().lower, 3.0);
        QCOMPARE(axis(speed, "WS")->range().upper, 15.0);
        // The time axis spans the points; readings within a moment of each other share their
        // time and keep the span around it.
        const QCPRange time = axis(speed, "time")->range();
        QVERIFY(time.lower <= line(speed, 0)->data()->at(0)->key);
        QVERIFY(time.upper >= line(speed, 0)->data()->at(2)->key);
        QVERIFY(time.upper < 1.5);
    }

    // Temp 60, ABP 29.92 and VP 0 are the standard air: a factor of 1.
    void theCorrectionFactorOfStandardAirIsOne() {
        ChartWindows windows;
        StripChartWindow* cf = windows.open(View::CF);
        WeatherRecord w = reading();
        w.Temp = 60;
        w.ABP = 29.92f;
        w.VP = 0;
        windows.station.views().showReading(w, QString());
        QCOMPARE(line(cf, 0)->dataCount(), 1);
        QVERIFY(qAbs(line(cf, 0)->data()->at(0)->value - 1.0) < 1e-6);
        QCOMPARE(cf->windowTitle(), QStringLiteral("Correction Factor: 1"));
    }

    // The pressure equal to the vapor pressure divides by zero: no point, the caption stays.
    void aFactorThatDividesByZeroLeavesNoPoint() {
        ChartWindows windows;
        StripChartWindow* cf = windows.open(View::CF);
        StripChartWindow* abp = windows.open(View::ABP);
        WeatherRecord w = reading();
        w.Temp = 60;
        w.ABP = 29.92f;
        w.VP = 0;
        windows.station.views().showReading(w, QString());
        w.VP = 29.92f;
        w.ABP = 29.92f;
        windows.station.views().showReading(w, QString());
        QCOMPARE(line(cf, 0)->dataCount(), 1);
        QCOMPARE(cf->windowTitle(), QStringLiteral("Correction Factor: 1"));
        // The other charts take the reading.
        QCOMPARE(line(abp, 0)->dataCount(), 2);
    }

    void theFiveThousandAndFirstPointPushesOutTheFirst() {
        ChartWindows windows;
        StripChartWindow* rh = windows.open(View::RH);
        for (int i = 0; i < 5000; ++i)
            rh->addLoggedPoint(float(i) / 10000, {float(i), float(100 + i)});
        QCOMPARE(line(rh, 0)->dataCount(), 5000);
        QCOMPARE(axis(rh, "RH")->range().lower, 0.0);
        rh->addLoggedPoint(0.5f, {5000, 5100});
        for (int i : {0, 1}) {
            QCPCurve* curve = line(rh, i);
            QCOMPARE(curve->dataCount(), 5000);
            QCOMPARE(curve->data()->at(0)->key, double(1.0f / 10000));
            QCOMPARE(curve->data()->at(0)->value, 1.0 + 100 * i);
            QCOMPARE(curve->data()->at(4999)->key, 0.5);
            QCOMPARE(curve->data()->at(4999)->value, 5000.0 + 100 * i);
        }
        // The axes follow the points that are left.
        QCOMPARE(axis(rh, "RH")->range().lower, 1.0);
        QCOMPARE(axis(rh, "RH")->range().upper, 5000.0);
        QCOMPARE(axis(rh, "TEMP")->range().lower, 101.0);
        QCOMPARE(axis(rh, "time")->range().lower, double(1.0f / 10000));
        QCOMPARE(axis(rh, "time")->range().upper, 0.5);
    }

    void aReplayedRowGoesToItsLines() {
        ChartWindows windows;
        StripChartWindow* aada = windows.open(View::AADA);
        WeatherRecord row = reading();
        windows.station.views().addLoggedRow(row, 0.625f, 1.0f);
        windows.station.views().endOfReplay();
        QCOMPARE(line(aada, 0)->data()->at(0)->key, 0.625);
        QCOMPARE(line(aada, 0)->data()->at(0)->value, 1850.0);
        QCOMPARE(line(aada, 1)->data()->at(0)->value, 2250.0);
        // A replay leaves the caption alone.
        QCOMPARE(aada->windowTitle(), QStringLiteral("Adjusted Altitude"));
    }

    // A replayed day is drawn once, when the replay ends, not for each row.
    void aReplayIsDrawnOnceAtItsEnd() {
        ChartWindows windows;
        StripChartWindow* abp = windows.open(View::ABP);
        QCoreApplication::processEvents();
        QSignalSpy drawn(abp->chart(), &QCustomPlot::afterReplot);
        for (int row = 0; row < 50; ++row)
            windows.station.views().addLoggedRow(reading(), row / 100.0f, 1.0f);
        QCoreApplication::processEvents();
        QCOMPARE(drawn.count(), 0);
        windows.station.views().endOfReplay();
        QTRY_COMPARE(drawn.count(), 1);
        QCOMPARE(line(abp, 0)->dataCount(), 50);
    }

    void clearViewsTakesThePointsAndLeavesTheMarks() {
        ChartWindows windows;
        StripChartWindow* speed = windows.open(View::WindSpeed);
        windows.station.views().showReading(reading(), QString());
        speed->annotate(QStringLiteral("WS"), 0.5f, 7, QStringLiteral("1 Blue"));
        windows.station.views().clear();
        QCOMPARE(line(speed, 0)->dataCount(), 0);
        QCOMPARE(marks(speed).size(), 1);
        QVERIFY(cursor(speed, "WS"));
    }

    // Only open windows take readings: a window opened late, or opened again, starts empty.
    void aChartStartsEmptyWhenItOpens() {
        ChartWindows windows;
        windows.station.views().showReading(reading(), QString());
        StripChartWindow* speed = windows.open(View::WindSpeed);
        QCOMPARE(line(speed, 0)->dataCount(), 0);
        windows.station.views().showReading(reading(), QString());
        QCOMPARE(line(speed, 0)->dataCount(), 1);
        windows.close(View::WindSpeed);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!windows.station.views().isOpen(View::WindSpeed));
        windows.station.views().showReading(reading(), QString());
        speed = windows.open(View::WindSpeed);
        QCOMPARE(line(speed, 0)->dataCount(), 0);
        QCOMPARE(speed->windowTitle(), QStringLiteral("Wind Speed"));
    }

    void theCursorEntryShowsTheCursorInTheMiddleOfItsAxis() {
        ChartWindows windows;
        StripChartWindow* speed = windows.open(View::WindSpeed);
        QCPAxis* ws = axis(speed, "WS");
        ws->setRange(2, 6);
        entry(speed, "miWSCursor")->trigger();
        QVERIFY(cursor(speed, "WS")->visible());
        QVERIFY(entry(speed, "miWSCursor")->isChecked());
        QCOMPARE(cursorY(speed, "WS"), 4.0);
        QCOMPARE(pointerMode(speed), 2);

        // Shown already, the entry does nothing, not even recentre a cursor dragged off.
        chartOf(speed)->setCursorY(0, 5.5);
        ws->setRange(0, 20);
        entry(speed, "miWSCursor")->trigger();
        QCOMPARE(cursorY(speed, "WS"), 5.5);
        QVERIFY(entry(speed, "miWSCursor")->isChecked());
        QVERIFY(cursor(speed, "WS")->visible());

        entry(speed, "miCenterCursor")->trigger();
        QCOMPARE(cursorY(speed, "WS"), 10.0);

        entry(speed, "miRemoveCursor")->trigger();
        QVERIFY(!cursor(speed, "WS")->visible());
        QVERIFY(!entry(speed, "miWSCursor")->isChecked());
        QCOMPARE(pointerMode(speed), 10);

        // Centred while hidden, the cursor moves and stays hidden.
        ws->setRange(100, 200);
        entry(speed, "miCenterCursor")->trigger();
        QCOMPARE(cursorY(speed, "WS"), 150.0);
        QVERIFY(!cursor(speed, "WS")->visible());
        QCOMPARE(pointerMode(speed), 10);
    }

    void twoCursorsAreCentredAndRemovedTogether() {
        ChartWindows windows;
        StripChartWindow* vp = windows.open(View::VaporPressure);
        axis(vp, "VP")->setRange(0.2, 0.4);
        axis(vp, "TEMP")->setRange(60, 80);
        entry(vp, "miTempCursor")->trigger();
        QCOMPARE(pointerMode(vp), 2);
        QVERIFY(cursor(vp, "TEMP")->visible());
        QVERIFY(!cursor(vp, "VP")->visible());
        QCOMPARE(cursorY(vp, "TEMP"), 70.0);

        entry(vp, "miCenterCursors")->trigger();
        QVERIFY(qAbs(cursorY(vp, "VP") - 0.3) < 1e-12);
        QCOMPARE(cursorY(vp, "TEMP"), 70.0);
        QVERIFY(!cursor(vp, "VP")->visible());

        entry(vp, "miVPCursor")->trigger();
        entry(vp, "miRemoveCursors")->trigger();
        QVERIFY(!cursor(vp, "VP")->visible());
        QVERIFY(!cursor(vp, "TEMP")->visible());
        QVERIFY(!entry(vp, "miVPCursor")->isChecked());
        QVERIFY(!entry(vp, "miTempCursor")->isChecked());
        QCOMPARE(pointerMode(vp), 10);
    }

    void inCursorModeTheMouseDragsAShownCursor() {
        ChartWindows windows;
        StripChartWindow* abp = windows.open(View::ABP);
        StripChart* chart = chartOf(abp);
        entry(abp, "miABPCursor")->trigger();
        chart->replot();
        QCPAxis* values = axis(abp, "ABP");
        const double x = chart->axisRect()->center().x();
        const double from = values->coordToPixel(cursorY(abp, "ABP"));
        const double to = from - 40;
        // A press away from the cursor takes nothing along.
        sendMouse(chart, QEvent::MouseButtonPress, Qt::LeftButton, QPointF(x, from + 60));
        sendMouse(chart, QEvent::MouseMove, Qt::LeftButton, QPointF(x, to));
        sendMouse(chart, QEvent::MouseButtonRelease, Qt::LeftButton, QPointF(x, to));
        QCOMPARE(cursorY(abp, "ABP"), 5.5);

        sendMouse(chart, QEvent::MouseButtonPress, Qt::LeftButton, QPointF(x, from + 2));
        sendMouse(chart, QEvent::MouseMove, Qt::LeftButton, QPointF(x, to));
        sendMouse(chart, QEvent::MouseButtonRelease, Qt::LeftButton, QPointF(x, to));
        QVERIFY(qAbs(cursorY(abp, "ABP") - values->pixelToCoord(to)) < 1e-9);
        QVERIFY(cursorY(abp, "ABP") > 5.5);

        // Back in the plain mode the mouse moves nothing.
        entry(abp, "miRemoveCursor")->trigger();
        const double left = cursorY(abp, "ABP");
        const double at = values->coordToPixel(left);
        sendMouse(chart, QEvent::MouseButtonPress, Qt::LeftButton, QPointF(x, at));
        sendMouse(chart, QEvent::MouseMove, Qt::LeftButton, QPointF(x, at + 30));
        sendMouse(chart, QEvent::MouseButtonRelease, Qt::LeftButton, QPointF(x, at + 30));
        QCOMPARE(cursorY(abp, "ABP"), left);
    }

    void theRightButtonOpensTheMenu() {
        ChartWindows windows;
        StripChartWindow* gr = windows.open(View::GR);
        auto* menu = gr->findChild<QMenu*>("miOptions");
        StripChart* chart = chartOf(gr);
        sendMouse(chart, QEvent::MouseButtonPress, Qt::LeftButton, QPointF(50, 50));
        sendMouse(chart, QEvent::MouseButtonRelease, Qt::LeftButton, QPointF(50, 50));
        QVERIFY(!menu->isVisible());
        sendMouse(chart, QEvent::MouseButtonPress, Qt::RightButton, QPointF(50, 50));
        QVERIFY(menu->isVisible());
        QCOMPARE(menu->title(), QStringLiteral("Options"));
        menu->hide();
    }

    void theChartFillsTheWindowUnlessItIsMinimised() {
        ChartWindows windows;
        StripChartWindow* adr = windows.open(View::ADR);
        auto* frame = qobject_cast<QMdiSubWindow*>(adr->parentWidget());
        frame->resize(500, 300);
        QCOMPARE(chartOf(adr)->geometry(), adr->rect());
        const QSize before = chartOf(adr)->size();
        frame->showMinimized();
        const QSize old = adr->size();
        adr->resize(old + QSize(120, 80));
        QResizeEvent resized(adr->size(), old);
        QCoreApplication::sendEvent(adr, &resized);
        QCOMPARE(chartOf(adr)->size(), before);
        frame->showNormal();
        frame->resize(640, 400);
        QCOMPARE(chartOf(adr)->geometry(), adr->rect());
    }

    void pdfExportAsksForAFileAndWritesTheChart() {
        ChartWindows windows;
        StripChartWindow* speed = windows.open(View::WindSpeed);
        windows.station.views().showReading(reading(), QString());
        const QString chosen = home->root() + QStringLiteral("/wind");
        dialogs->queueFile(chosen);
        entry(speed, "mnuPDFExport")->trigger();

        QCOMPARE(dialogs->fileRequests.size(), 1);
        const Dialogs::FileRequest request = dialogs->fileRequests[0];
        QCOMPARE(request.title, QStringLiteral("PDF Wind Speed Export"));
        QCOMPARE(request.fileName, QStringLiteral("Wind Speed ") +
                                       QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd")));
        QVERIFY(request.save);
        QVERIFY(request.confirmOverwrite);
        QCOMPARE(request.filter,
                 QStringLiteral("Adobe Acrobat Files (*.pdf) |*.pdf|All Files (*.*) |*.*|"));

        const QString written = chosen + QStringLiteral(".pdf");
        QVERIFY(QFile::exists(written));
        QCOMPARE(pdfInfo(written, "Title"), QStringLiteral("Tarnwick - Wind Speed"));
        QCOMPARE(pdfInfo(written, "Subject"), QStringLiteral("Wind Speed"));
        QCOMPARE(pdfInfo(written, "Author"), QStringLiteral("Tarnwick"));
        QCOMPARE(pdfInfo(written, "Keywords"), QStringLiteral("Tarnwick, Pellamor, Oskerby"));
        QVERIFY(isLandscape(written));
        // The chart stands on the page drawn in lines and text: the file holds no image.
        QCOMPARE(PdfReading::imageSizes(written), QList<QSize>());
        const QString text = PdfReading::text(written);
        QVERIFY2(text.contains(headingDate(QDate::currentDate())), qPrintable(text));
        QVERIFY(dialogs->messages.isEmpty());
    }

    void aNameEndingInCapitalPdfGetsTheExtensionToo() {
        ChartWindows windows;
        StripChartWindow* abp = windows.open(View::ABP);
        const QString chosen = home->root() + QStringLiteral("/pressure.PDF");
        dialogs->queueFile(chosen);
        abp->saveAsPdf();
        QVERIFY(QFile::exists(chosen + QStringLiteral(".pdf")));
        QCOMPARE(dialogs->fileRequests[0].title,
                 QStringLiteral("PDF Absolute Barometric Pressure Export"));
        QCOMPARE(pdfInfo(chosen + ".pdf", "Title"),
                 QStringLiteral("Tarnwick - Absolute Barometric Pressure"));

        // A name in small letters stays as chosen; a cancelled dialog writes nothing.
        const QString small = home->root() + QStringLiteral("/pressure.pdf");
        dialogs->queueFile(small);
        abp->saveAsPdf();
        QVERIFY(QFile::exists(small));
        QVERIFY(!QFile::exists(small + QStringLiteral(".pdf")));
        const int files = int(QDir(home->root()).entryList(QDir::Files).size());
        dialogs->queueFile(QString());
        abp->saveAsPdf();
        QCOMPARE(int(QDir(home->root()).entryList(QDir::Files).size()), files);
    }

    void printGoesToThePrinterWithoutADialog() {
        ChartWindows windows;
        StripChartWindow* rh = windows.open(View::RH);
        windows.station.views().showReading(reading(), QString());
        dialogs->printTo = home->root() + QStringLiteral("/printed.pdf");
        dialogs->queuePrinter(true);
        entry(rh, "miPrint")->trigger();
        QCOMPARE(dialogs->quietPrintRequests, 1);
        QCOMPARE(dialogs->printRequests, 0);
        QVERIFY(QFile::exists(dialogs->printTo));
        QCOMPARE(PdfReading::toolOutput("pdfinfo", {dialogs->printTo}).count("Pages:"), 1);
        QVERIFY(isLandscape(dialogs->printTo));
        QCOMPARE(pdfInfo(dialogs->printTo, "Pages"), QStringLiteral("1"));
    }

    // Print and PDF Export draw the chart anew at the resolution of the paper, not as a picture
    // of the screen: the files hold no image, the chart's black ground has its size, its line
    // its colour, and the axis name and the times of day are text.
    void printAndPdfDrawTheChartInLinesAndText() {
        ChartWindows windows;
        StripChartWindow* speed = windows.open(View::WindSpeed);
        replayWind(speed);
        windows.main.mdiArea()->setActiveSubWindow(
            qobject_cast<QMdiSubWindow*>(speed->parentWidget()));
        const QString saved = home->root() + QStringLiteral("/speed.pdf");
        dialogs->queueFile(saved);
        windows.run("miPDFExport");
        const QString printed = home->root() + QStringLiteral("/printed.pdf");
        dialogs->printTo = printed;
        dialogs->queuePrinter(true);
        windows.run("miPrint");

        // The page of the export takes a tenth of the chart's size in twips, 144 of its units
        // for an inch of the screen; the printer the chart's size on the screen, 254.
        QRect onPage;
        for (const auto& [path, unitsPerInch] : {std::pair{saved, 144.0}, {printed, 254.0}}) {
            QCOMPARE(PdfReading::imageSizes(path), QList<QSize>());
            const QString text = PdfReading::text(path);
            QVERIFY2(text.contains(QRegularExpression("\\bWS\\b")), qPrintable(text));
            QVERIFY2(text.contains(QRegularExpression("\\b9:[345]\\d:00a\\b")), qPrintable(text));
            const QImage page = PdfReading::firstPage(path);
            const QRect chart = PdfReading::filledArea(page, Qt::black);
            QVERIFY2(near(chart.size(), sizeOnPage(chartOf(speed), unitsPerInch), 3),
                     qPrintable(QStringLiteral("%1 x %2").arg(chart.width()).arg(chart.height())));
            QVERIFY(PdfReading::pixelsNear(page, chart, QColor(27, 250, 239), 60) > 100);
            if (path == saved)
                onPage = chart;
        }
        // 10 mm from the left edge, under the heading.
        QVERIFY2(std::abs(onPage.left() - 100) <= 2, qPrintable(QString::number(onPage.left())));
        QVERIFY(onPage.top() > 150);
    }

    // The main window's Print and PDF Export work on the chart in front.
    void theMainWindowsCommandsReachTheChartInFront() {
        ChartWindows windows;
        StripChartWindow* vp = windows.open(View::VaporPressure);
        windows.main.mdiArea()->setActiveSubWindow(
            qobject_cast<QMdiSubWindow*>(vp->parentWidget()));
        dialogs->queueFile(home->root() + QStringLiteral("/vp.pdf"));
        windows.run("miPDFExport");
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QCOMPARE(dialogs->fileRequests[0].title, QStringLiteral("PDF Vapor Pressure Export"));
        QVERIFY(QFile::exists(home->root() + QStringLiteral("/vp.pdf")));
        dialogs->printTo = home->root() + QStringLiteral("/printed.pdf");
        dialogs->queuePrinter(true);
        windows.run("miPrint");
        QCOMPARE(dialogs->quietPrintRequests, 1);
        QVERIFY(QFile::exists(dialogs->printTo));
        QVERIFY(dialogs->messages.isEmpty());
    }

    void theAnnotationsCommandMarksTheRunsOnTheOpenCharts() {
        ChartWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 3);
        StripChartWindow* speed = windows.open(View::WindSpeed);
        StripChartWindow* cf = windows.open(View::CF);
        StripChartWindow* vp = windows.open(View::VaporPressure);
        rowCommand(log, "miAnnotations");
        QVERIFY(dialogs->messages.isEmpty());

        const QList<QCPItemText*> onSpeed = marks(speed);
        QCOMPARE(onSpeed.size(), 3);
        for (int run = 1; run <= 3; ++run) {
            QCPItemText* mark = onSpeed[run - 1];
            QCOMPARE(mark->text(), QString::number(run) + QStringLiteral(" Blue"));
            // 9:00am is 0.375 of a day, each run an hour (1/24) later.
            QCOMPARE(mark->position->coords().x(), double(float(0.375 + (run - 1) / 24.0)));
            QCOMPARE(mark->position->coords().y(), 4.0 + run);
            QCOMPARE(mark->position->valueAxis(), axis(speed, "WS"));
            QCOMPARE(mark->position->keyAxis(), axis(speed, "time"));
        }
        // (29.92 / 29.5) x sqrt((85 + 459.7) / 519.7) x (29.5 / (29.5 - 0.75)) = 1.06543282
        QCOMPARE(marks(cf).size(), 3);
        QVERIFY(qAbs(marks(cf)[0]->position->coords().y() - 1.0654328) < 1e-6);
        // The vapor pressure is marked, its temperature line is not.
        QCOMPARE(marks(vp).size(), 3);
        for (QCPItemText* mark : marks(vp)) {
            QCOMPARE(mark->position->valueAxis(), axis(vp, "VP"));
            QCOMPARE(mark->position->coords().y(), double(0.75f));
        }

        // Given twice, every mark stands twice.
        rowCommand(log, "miAnnotations");
        QCOMPARE(marks(speed).size(), 6);
        QCOMPARE(marks(cf).size(), 6);

        // Remove Annotations takes them all and leaves the cursor.
        entry(speed, "miRemoveAnnotations")->trigger();
        QVERIFY(marks(speed).isEmpty());
        QVERIFY(cursor(speed, "WS"));
        QCOMPARE(marks(cf).size(), 6);
    }

    void theAnnotationsCommandStopsAtARunWithoutATime() {
        ChartWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 3);
        setCells(log, 2, {{1, QString()}});
        StripChartWindow* gr = windows.open(View::GR);
        rowCommand(log, "miAnnotations");
        QCOMPARE(marks(gr).size(), 1);
        QVERIFY(dialogs->messages.isEmpty());
    }

    void withNoChartOpenTheAnnotationsCommandDoesNothing() {
        ChartWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 2);
        rowCommand(log, "miAnnotations");
        QVERIFY(dialogs->messages.isEmpty());
        StripChartWindow* adr = windows.open(View::ADR);
        QVERIFY(marks(adr).isEmpty());
    }

    // A correction factor that divides by zero ends the command with a box; the marks made
    // until then stay.
    void aFailedAnnotationIsReported() {
        ChartWindows windows;
        RaceLogWindow* log = windows.newLog();
        addRuns(log, 3);
        setCells(log, 2, {{21, "29.5"}});
        StripChartWindow* speed = windows.open(View::WindSpeed);
        StripChartWindow* cf = windows.open(View::CF);
        StripChartWindow* aada = windows.open(View::AADA);
        rowCommand(log, "miAnnotations");
        QCOMPARE(dialogs->messages.size(), 1);
        const Dialogs::Message message = dialogs->messages[0];
        QCOMPARE(message.text, QStringLiteral("Unable to load all annotations!"));
        QCOMPARE(message.title, QStringLiteral("Tarnwick - Annotations"));
        QCOMPARE(message.icon, Dialogs::Icon::Critical);
        QCOMPARE(marks(speed).size(), 2);
        QCOMPARE(marks(cf).size(), 1);
        QCOMPARE(marks(aada).size(), 1);
        QCOMPARE(marks(aada)[0]->position->valueAxis(), axis(aada, "AA"));
    }
};

QTEST_MAIN(TestStripChartWindow)
#include "tst_stripchartwindow.moc"
