// The large display as the main window shows it: fifteen boxes with their labels and tool
// tips in order, large figures that follow the window's size, and the order in which a
// reading writes the caption and the boxes.
#include "../PredictionWindows.h"
#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "ui/charts/ViewCommands.h"
#include "ui/charts/WeatherDisplayWindow.h"

#include <QFontInfo>
#include <QGridLayout>
#include <QLabel>
#include <QTest>

namespace {

using View = ViewTable::View;

const QStringList Names{"ABP", "AA", "WD",  "TEMP", "RH", "AH", "GR", "DA",
                        "VP",  "PA", "ADR", "WS",   "WG", "AL", "DP"};

struct DisplayWindows : PredictionWindows {
    DisplayWindows() {
        ViewCommands::add(main, station.views());
        main.resize(1200, 800);
        main.show();
    }
    WeatherDisplayWindow* open() {
        run(QStringLiteral("miWeather"));
        return display();
    }
    WeatherDisplayWindow* display() {
        return dynamic_cast<WeatherDisplayWindow*>(station.views().at(View::Weather));
    }
    QMdiSubWindow* frame() { return qobject_cast<QMdiSubWindow*>(display()->parentWidget()); }
};

WeatherRecord reading() {
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
    return w;
}

QLineEdit* box(QWidget* display, const QString& name) {
    return display->findChild<QLineEdit*>(QStringLiteral("txt") + name);
}

} // namespace

class TestWeatherDisplayWindow : public QObject {
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

    void theWeatherCommandShowsFifteenBoxesInOrder() {
        DisplayWindows windows;
        WeatherDisplayWindow* display = windows.open();
        QVERIFY(display);
        QCOMPARE(display->objectName(), QStringLiteral("frmWeather"));
        QCOMPARE(windows.frame()->windowTitle(), QStringLiteral("Weather Information"));
        const QStringList tips{"Absolute Barometric Pressure",
                               "Adjusted Altitude",
                               "Wind Direction",
                               "Temperature in Degrees Fahrenheit",
                               "Relative Humidity",
                               "Absolute Humidity",
                               "Grains per lb",
                               "Density Altitude",
                               "Vapor Pressure",
                               "Pressure Altitude",
                               "Air Density Ratio",
                               "Wind Speed",
                               "Wind Gust",
                               "Ambient Light",
                               "Dew Point"};
        QCOMPARE(display->findChildren<QLineEdit*>().size(), 15);
        QCOMPARE(display->boxes().size(), 15);
        for (int i = 0; i < Names.size(); ++i) {
            QLineEdit* text = box(display, Names[i]);
            QVERIFY2(text, qPrintable(Names[i]));
            QCOMPARE(display->boxes()[i], text);
            QVERIFY(text->isReadOnly());
            QVERIFY(text->isVisible());
            QCOMPARE(text->toolTip(), tips[i]);
            auto* label = display->findChild<QLabel*>(QStringLiteral("lbl") + Names[i]);
            QVERIFY(label);
            QCOMPARE(label->text(), Names[i] + u':');
            QCOMPARE(label->buddy(), text);
            // The label stands left of its box, on its row.
            QVERIFY(label->geometry().right() < text->geometry().left());
            QVERIFY(qAbs(label->geometry().center().y() - text->geometry().center().y()) <= 1);
        }
        // Read down each column, then across: ABP over AA, and RH's column left of AH's.
        QVERIFY(box(display, "ABP")->y() < box(display, "AA")->y());
        QVERIFY(box(display, "RH")->x() < box(display, "AH")->x());
        QVERIFY(box(display, "PA")->x() < box(display, "ADR")->x());
    }

    void theFiguresAreTahomaAndFollowTheWindowSize() {
        DisplayWindows windows;
        WeatherDisplayWindow* display = windows.open();
        windows.frame()->resize(500, 260);
        QCoreApplication::processEvents();
        QLineEdit* abp = box(display, "ABP");
        QCOMPARE(abp->font().family(), QStringLiteral("Tahoma"));
        QCOMPARE(QFontInfo(abp->font()).family(), QStringLiteral("Liberation Sans"));
        const int small = QFontInfo(abp->font()).pixelSize();
        windows.frame()->resize(1100, 700);
        QCoreApplication::processEvents();
        const int large = QFontInfo(abp->font()).pixelSize();
        QVERIFY2(large > small * 2, qPrintable(QStringLiteral("%1 to %2").arg(small).arg(large)));
        QCOMPARE(display->findChild<QLabel*>("lblDP")->font().pixelSize(), abp->font().pixelSize());
        // Large: more than the ordinary text of a window.
        QVERIFY(large > 2 * QFontInfo(QApplication::font()).pixelSize());
        // Wide enough for a pressure, unclipped.
        QFontMetrics metrics(abp->font());
        QVERIFY(metrics.horizontalAdvance(QStringLiteral("29.921")) < abp->width());
        QVERIFY(metrics.height() <= abp->height());
    }

    // However the window is shaped, a pressure fits its box and "TEMP:" its label, and a box
    // is as high as its figures, not as its row. A tall narrow window takes the boxes in one
    // column, a wider one in three; either way they read down each column in their order.
    void theFiguresFitTheirBoxesInATallNarrowWindowAndAWideFlatOne() {
        DisplayWindows windows;
        WeatherDisplayWindow* display = windows.open();
        const QList<std::pair<QSize, int>> shapes{{QSize(340, 700), 1},
                                                  {QSize(1100, 300), 3},
                                                  {QSize(700, 500), 3},
                                                  {QSize(340, 270), 3}};
        for (const auto& [size, columns] : shapes) {
            windows.frame()->resize(size);
            QCoreApplication::processEvents();
            const QString shape = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
            QLineEdit* abp = box(display, "ABP");
            QLabel* temp = display->findChild<QLabel*>("lblTEMP");
            const QFontMetrics metrics(abp->font());
            QVERIFY2(metrics.horizontalAdvance(QStringLiteral("29.921")) < abp->width(),
                     qPrintable(shape));
            QVERIFY2(metrics.horizontalAdvance(QStringLiteral("TEMP:")) <= temp->width(),
                     qPrintable(shape));
            // The box is as high as its figures ask: not stretched to its row, nor squeezed
            // into a low one.
            QVERIFY2(abp->height() == abp->sizeHint().height(), qPrintable(shape));
            QSet<int> lefts;
            const QList<QLineEdit*>& boxes = display->boxes();
            for (int i = 0; i < boxes.size(); ++i) {
                lefts << boxes[i]->x();
                if (i == 0)
                    continue;
                const QRect before = boxes[i - 1]->geometry();
                const QRect now = boxes[i]->geometry();
                const bool below = now.x() == before.x() && now.y() > before.y();
                const bool nextColumn = now.x() > before.x() && now.y() == boxes[0]->y();
                QVERIFY2(below || nextColumn, qPrintable(shape + u' ' + boxes[i]->objectName()));
            }
            QCOMPARE(lefts.size(), columns);
        }
    }

    void aReadingFillsEveryBoxAsPlainNumberText() {
        DisplayWindows windows;
        WeatherDisplayWindow* display = windows.open();
        windows.station.views().showReading(reading(), QStringLiteral("ABP: 29.92  Temp: 71.5"));
        const QStringList expected{"29.92", "1850", "185",   "71.5", "42.25", "0.33", "51", "-250",
                                   "0.329", "1200", "96.45", "7",    "12",    "3",    "47"};
        for (int i = 0; i < Names.size(); ++i)
            QCOMPARE(box(display, Names[i])->text(), expected[i]);
        QCOMPARE(windows.frame()->windowTitle(), QStringLiteral("ABP: 29.92  Temp: 71.5"));
    }

    void theCaptionComesFirstThenTheBoxesByName() {
        DisplayWindows windows;
        WeatherDisplayWindow* display = windows.open();
        QStringList written;
        connect(display, &QWidget::windowTitleChanged, display,
                [&written] { written << QStringLiteral("caption"); });
        for (QLineEdit* text : display->boxes())
            connect(text, &QLineEdit::textChanged, display,
                    [&written, text] { written << text->objectName(); });
        windows.station.views().showReading(reading(), QStringLiteral("status"));
        QCOMPARE(written, QStringList({"caption", "txtAA", "txtABP", "txtADR", "txtAH", "txtAL",
                                       "txtDA", "txtDP", "txtGR", "txtPA", "txtRH", "txtTEMP",
                                       "txtVP", "txtWD", "txtWG", "txtWS"}));
    }

    void anEmptyStatusLineGivesAnEmptyCaption() {
        DisplayWindows windows;
        WeatherDisplayWindow* display = windows.open();
        windows.station.views().showReading(reading(), QStringLiteral("ABP: 29.92"));
        windows.station.views().showReading(reading(), QString());
        QCOMPARE(display->windowTitle(), QString());
        QCOMPARE(box(display, "WD")->text(), QStringLiteral("185"));
    }

    void clearViewsAndReplayPassItBy() {
        DisplayWindows windows;
        WeatherDisplayWindow* display = windows.open();
        windows.station.views().showReading(reading(), QStringLiteral("status"));
        windows.run(QStringLiteral("miClearViews"));
        WeatherRecord row = reading();
        row.WD = 10;
        windows.station.views().addLoggedRow(row, 0.5f, 1.0f);
        QCOMPARE(box(display, "WD")->text(), QStringLiteral("185"));
        QCOMPARE(box(display, "ABP")->text(), QStringLiteral("29.92"));
    }

    void theLargeDisplayDoesNotPrint() {
        DisplayWindows windows;
        windows.open();
        windows.run(QStringLiteral("miPrint"));
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages.first().text,
                 QStringLiteral("The Active Form does not support this feature."));
        QCOMPARE(dialogs->quietPrintRequests, 0);
    }
};

QTEST_MAIN(TestWeatherDisplayWindow)
#include "tst_weatherdisplaywindow.moc"
