// The live views end to end: the real simulator on a real pseudo-terminal feeds a main
// instance with all eleven views open for 20 seconds. Every chart and the rose take points,
// and every caption carries the numbers of the latest reading.
#include "ToolProcess.h"
#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "feed/WeatherStation.h"
#include "ui/charts/StripChart.h"
#include "ui/charts/StripChartWindow.h"
#include "ui/charts/ViewCommands.h"
#include "ui/charts/WeatherDisplayWindow.h"
#include "ui/charts/WindGaugeWindow.h"
#include "ui/charts/WindRoseWindow.h"
#include "ui/shell/MainWindow.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRegularExpression>
#include <QTest>
#include <cmath>

namespace {

using View = ViewTable::View;

void configurePort(const QString& device) {
    const QString serial = QStringLiteral("SOFTWARE\\Zorvane\\SerialPort");
    const QStringList values{"1", "5", "0", "4", "0", "0", "None", "None"};
    for (int i = 0; i < values.size(); ++i)
        Registry::set(serial, QString::number(i), values[i]);
    Registry::set(serial + QStringLiteral("\\Devices"), QStringLiteral("Com1"), device);
}

QString caption(const WeatherStation& station, View view) {
    return dynamic_cast<QWidget*>(station.views().at(view))->windowTitle();
}

// The numbers of a caption, in order.
QList<double> numbers(const QString& text) {
    static const QRegularExpression number(QStringLiteral("-?\\d+(\\.\\d+)?"));
    QList<double> found;
    for (const QRegularExpressionMatch& match : number.globalMatch(text))
        found << match.captured().toDouble();
    return found;
}

// The same number as a 32-bit float holds it, written the shortest way.
bool same(double shown, float value) {
    return float(shown) == value;
}

} // namespace

class TestViewsEndToEnd : public QObject {
    Q_OBJECT
private slots:
    void theSimulatorFeedsAllElevenViews() {
        TestHome home;
        ScriptedDialogs dialogs;
        ToolProcess simulator(QStringLiteral("pellamor-sim"));
        const QString device = home.root() + QStringLiteral("/instrument");
        simulator.start({"--pty", device, "--interval", "0.5", "--seed", "5"});
        QVERIFY(!simulator.waitForLine(QStringLiteral("READY")).isEmpty());
        configurePort(device);

        WeatherStation station;
        MainWindow window(station);
        ViewCommands::add(window, station.views());
        window.load();
        window.resize(1400, 900);
        window.show();
        for (const ViewTable::Entry& entry : ViewTable::Views)
            window.dispatch(entry.command.toString());
        window.mdiArea()->tileSubWindows();

        QTest::qWait(20000);
        if (qEnvironmentVariableIsSet("TARNWICK_KEEP_PICTURES"))
            window.grab().save(qEnvironmentVariable("TARNWICK_KEEP_PICTURES") +
                               QStringLiteral("/all-views.png"));
        const WeatherRecord& w = station.reading();
        QVERIFY(w.ABP > 25);

        // Every chart has a point for each reading it took, about two a second.
        for (const View view : {View::WindSpeed, View::VaporPressure, View::AADA, View::ABP,
                                View::RH, View::GR, View::CF, View::ADR}) {
            StripChart* chart = dynamic_cast<StripChartWindow*>(station.views().at(view))->chart();
            for (int line = 0; line < chart->lineCount(); ++line)
                QVERIFY2(chart->line(line)->dataCount() >= 20,
                         qPrintable(ViewTable::entry(view).objectName.toString()));
        }
        auto* rose = dynamic_cast<WindRoseWindow*>(station.views().at(View::RosePlot));
        QCOMPARE(rose->rose().lastAngle(), qint16((90 - w.WD + 360) % 360));

        // Every caption carries the latest reading's numbers.
        QCOMPARE(numbers(caption(station, View::RosePlot)),
                 QList<double>({double(w.WD), double(w.WS), double(w.WG)}));
        QCOMPARE(numbers(caption(station, View::WindDirection)), QList<double>{double(w.WD)});
        QCOMPARE(numbers(caption(station, View::WindSpeed)),
                 QList<double>({double(w.WS), double(w.WG)}));
        QCOMPARE(caption(station, View::Weather), station.statusLine());
        const QList<double> vp = numbers(caption(station, View::VaporPressure));
        QVERIFY(vp.size() == 2 && same(vp[0], w.VP) && same(vp[1], w.Temp));
        QCOMPARE(numbers(caption(station, View::AADA)),
                 QList<double>({double(w.AA), double(w.DA)}));
        QVERIFY(same(numbers(caption(station, View::ABP)).value(0), w.ABP));
        QVERIFY(same(numbers(caption(station, View::RH)).value(0), w.RH));
        QCOMPARE(numbers(caption(station, View::GR)), QList<double>{double(w.GR)});
        QVERIFY(same(numbers(caption(station, View::ADR)).value(0), w.ADR));
        // The correction factor, worked out here from the reading.
        const double factor =
            (29.92 / w.ABP) * std::sqrt((w.Temp + 459.7) / 519.7) * (w.ABP / (w.ABP - w.VP));
        QVERIFY(qAbs(numbers(caption(station, View::CF)).value(0) - factor) < 1e-5);

        auto* display = dynamic_cast<QWidget*>(station.views().at(View::Weather));
        QCOMPARE(display->findChild<QLineEdit*>(QStringLiteral("txtAA"))->text(),
                 QString::number(w.AA));
        QVERIFY(dialogs.messages.isEmpty());
    }
};

QTEST_MAIN(TestViewsEndToEnd)
#include "tst_views_endtoend.moc"
