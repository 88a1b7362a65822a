#include "common/TestHome.h"
#include "core/DateText.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "core/SettingKeys.h"
#include "exchange/TimeSlip.h"
#include "feed/WeatherStation.h"
#include "racelog/ColumnTable.h"
#include "racelog/RaceLog.h"
#include "racelog/RunTable.h"
#include "ui/racelog/RunGrid.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QMenu>
#include <QTest>
#include <QVBoxLayout>
#include <memory>

namespace {

using Dialogs::Icon;

const QString NothingImported = QStringLiteral("No iCard information was imported!");
const QString ImportTitle = QStringLiteral("iCard + Log Weather Import");

// One record of the receiver's log: 21 fields, the timing ones numbered by lane so that a
// shifted field shows, the ones the program doesn't read "x<field>".
QString slip(const QString& runTime, const QString& car, const QString& lane,
             const QString& category = QStringLiteral("Pro ET Round 1")) {
    QStringList fields;
    for (int i = 0; i < TimeSlipFieldCount; ++i)
        fields.append(QStringLiteral("x%1").arg(i));
    fields[SlipRunTime] = runTime;
    fields[SlipCategory] = category;
    fields[SlipCarNumber] = car;
    fields[SlipLane] = lane;
    const QStringList timing{"0.512", "1.301",  "3.702", "5.801", "112.45",
                             "7.402", "138.10", "8.977", "151.22"};
    for (int i = 0; i < timing.size(); ++i)
        fields[SlipReactionTime + i] = lane + timing[i];
    return fields.join(u',') + QStringLiteral("\r\n");
}

// The two lanes of one pairing, car 12 on the left and car 7 on the right.
QString pairing(const QString& runTime, const QString& rightLane = QStringLiteral("R")) {
    return slip(runTime, QStringLiteral("12"), QStringLiteral("L")) +
           slip(runTime, QStringLiteral("7"), rightLane);
}

// The grid columns a slip fills, with what car 7's slip above gives them.
const QList<std::pair<int, QString>> SlipCells{
    {3, "Right"},   {4, "R0.512"},  {6, "R1.301"},   {7, "R3.702"},  {8, "R5.801"},
    {9, "R112.45"}, {10, "R7.402"}, {11, "R138.10"}, {12, "R8.977"}, {13, "R151.22"},
};

// The run table of a race log window over a log of car 7.
class LogWindow {
public:
    explicit LogWindow(WeatherStation& station) {
        document.setField(RaceLog::Field::CarNumber, QStringLiteral("7"));
        document.undoStack().clear();
        grid = new RunGrid(station, clipboard, document, &window);
        grid->setObjectName(QStringLiteral("gridLog"));
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(grid);
        window.resize(1000, 420);
        window.show();
    }

    // The row menu's command on a run, as chosen on its run number.
    void importSlip(int row) {
        grid->setCurrentRunCell(row, 1);
        window.findChild<QAction*>(QStringLiteral("miiCardWeather"))->trigger();
    }

    QStringList cells(int row) const {
        QStringList texts;
        for (int column = 1; column < ColumnTable::Count; ++column)
            texts << table.cell(row, column);
        return texts;
    }

    RunClipboard::Runs clipboard;
    RaceLog document;
    RunTable& table = document.runs();
    QWidget window;
    RunGrid* grid;
};

} // namespace

class TestTimeSlipImport : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<WeatherStation> station;

    // The receiver's log of the event, named in the program's own setting as on a PC without
    // the receiver's software.
    QString writeSlips(const QString& text) {
        const QString path = home->root() + QStringLiteral("/icard.csv");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            qFatal("cannot write %s", qPrintable(path));
        file.write(text.toUtf8());
        Registry::set(SettingKeys::TimeSlipLogFile, path);
        return path;
    }

    void writeWeatherDay() {
        QDir().mkpath(home->weatherLogFolder());
        QFile day(home->weatherLogFolder() + QStringLiteral("/2026-11-22.csv"));
        QVERIFY(day.open(QIODevice::WriteOnly));
        day.write("\"10:41:59am\",29.5,60,40,900,4.2,40,0.3,45,0.99,1200,100,200,5,9,300\r\n"
                  "\"10:58:07am\",29.92,71.5,43.2,1250,5.1,45,0.33,49,98.6,1410,120,275,7,11,"
                  "340\r\n");
    }

    // A run typed at 10:50 on the 22nd, with the team's own figures in the cells a slip
    // leaves alone.
    static void typeRun(LogWindow& log) {
        log.table.setCell(1, 1, QStringLiteral("10:50am"));
        log.table.setCell(1, 2, QStringLiteral("11/22/26"));
        log.table.setCell(1, 5, QStringLiteral("0.25"));
        log.table.setCell(1, 14, QStringLiteral("1.5"));
        log.table.setCell(1, 17, QStringLiteral("8.95"));
    }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        station = std::make_unique<WeatherStation>();
    }
    void cleanup() {
        station.reset();
        home.reset();
    }

    // The slip of the car within the quarter hour fills the timing cells, its minute becomes
    // the run's time, and the weather of that minute comes from the day's weather log.
    void theSlipAndTheWeatherOfItsMinuteFillTheRun() {
        writeSlips(pairing("11/22/2026 10:20:00am") + pairing("11/22/2026 10:58:40am"));
        writeWeatherDay();
        LogWindow log(*station);
        typeRun(log);
        ScriptedDialogs dialogs;
        log.importSlip(1);

        QCOMPARE(log.table.cell(1, 1), QStringLiteral("10:58am"));
        QCOMPARE(log.table.cell(1, 2), QStringLiteral("11/22/26"));
        for (const auto& [column, text] : SlipCells)
            QCOMPARE(log.table.cell(1, column), text);
        QCOMPARE(log.table.cell(1, 5), QStringLiteral("0.25"));
        QCOMPARE(log.table.cell(1, 14), QStringLiteral("1.5"));
        QCOMPARE(log.table.cell(1, 15), QString());
        QCOMPARE(log.table.cell(1, 16), QString());
        QCOMPARE(log.table.cell(1, 17), QStringLiteral("8.95"));
        const QStringList weather{"1250", "1410", "0.33", "29.92", "71.5", "43.2", "5.1", "45",
                                  "49",   "98.6", "120",  "275",   "7",    "11",   "340"};
        for (int column = 19; column <= 33; ++column)
            QCOMPARE(log.table.cell(1, column), weather[column - 19]);

        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text, QStringLiteral("Weather data from log imported!"));
        QCOMPARE(dialogs.messages[0].title, QStringLiteral("Log Weather Import"));
        QCOMPARE(dialogs.messages[0].icon, Icon::Information);
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        QVERIFY(!station->weatherLog().isBusy());
    }

    // The slip comes in even when the weather log has no row of its minute.
    void aSlipWithoutLoggedWeatherStillFillsTheRun() {
        writeSlips(pairing("11/22/2026 10:45:10am"));
        LogWindow log(*station);
        typeRun(log);
        ScriptedDialogs dialogs;
        log.importSlip(1);
        QCOMPARE(log.table.cell(1, 1), QStringLiteral("10:45am"));
        QCOMPARE(log.table.cell(1, 12), QStringLiteral("R8.977"));
        QCOMPARE(log.table.cell(1, 22), QString());
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text, QStringLiteral("No weather data was imported!"));
        QCOMPARE(dialogs.messages[0].icon, Icon::Critical);
        QCOMPARE(log.document.undoStack().count(), 1);
    }

    // Slip and weather are one step: its undo puts every cell back as it was.
    void oneUndoStepTakesTheWholeImportBack() {
        writeSlips(pairing("11/22/2026 10:58:40am"));
        writeWeatherDay();
        LogWindow log(*station);
        typeRun(log);
        const QStringList before = log.cells(1);
        ScriptedDialogs dialogs;
        log.importSlip(1);
        QUndoStack& undo = log.document.undoStack();
        QCOMPARE(undo.count(), 1);
        QCOMPARE(undo.undoText(), QStringLiteral("Get iCard && Weather"));
        QVERIFY(log.cells(1) != before);
        const QStringList after = log.cells(1);
        undo.undo();
        QCOMPARE(log.cells(1), before);
        QVERIFY(!log.document.isModified());
        undo.redo();
        QCOMPARE(log.cells(1), after);
    }

    // A lane the receiver writes in any other form leaves the lane cell alone.
    void anUnknownLaneLeavesTheLaneCell() {
        writeSlips(pairing("11/22/2026 10:50:00am", QStringLiteral("r")));
        LogWindow log(*station);
        typeRun(log);
        log.table.setCell(1, 3, QStringLiteral("Left"));
        ScriptedDialogs dialogs;
        log.importSlip(1);
        QCOMPARE(log.table.cell(1, 3), QStringLiteral("Left"));
        QCOMPARE(log.table.cell(1, 4), QStringLiteral("r0.512"));
    }

    // --- The messages ---

    void withoutACarNumberNothingIsLookedUp() {
        writeSlips(pairing("11/22/2026 10:50:00am"));
        LogWindow log(*station);
        typeRun(log);
        log.document.setField(RaceLog::Field::CarNumber, QString());
        const int steps = log.document.undoStack().count();
        const QStringList before = log.cells(1);
        ScriptedDialogs dialogs;
        log.importSlip(1);
        QCOMPARE(log.cells(1), before);
        QCOMPARE(log.document.undoStack().count(), steps);
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text,
                 QStringLiteral("You must have a car number entered for this feature!"));
        QCOMPARE(dialogs.messages[0].title, QStringLiteral("Tarnwick - iCard Import"));
        QCOMPARE(dialogs.messages[0].icon, Icon::Information);
    }

    // Neither the receiver's software nor the program names a log.
    void withoutALogFileNothingIsImported() {
        LogWindow log(*station);
        typeRun(log);
        const QStringList before = log.cells(1);
        ScriptedDialogs dialogs;
        log.importSlip(1);
        QCOMPARE(log.cells(1), before);
        QCOMPARE(log.document.undoStack().count(), 0);
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text, NothingImported);
        QCOMPARE(dialogs.messages[0].title, ImportTitle);
        QCOMPARE(dialogs.messages[0].icon, Icon::Critical);
    }

    // A log that ends inside a pair is unreadable: the long message, then the short one.
    void anUnreadableLogGivesBothMessages() {
        writeSlips(pairing("11/22/2026 10:50:00am") +
                   slip("11/22/2026 10:51:00am", QStringLiteral("7"), QStringLiteral("L")));
        LogWindow log(*station);
        typeRun(log);
        const QStringList before = log.cells(1);
        ScriptedDialogs dialogs;
        log.importSlip(1);
        QCOMPARE(log.cells(1), before);
        QCOMPARE(dialogs.messages.size(), 2);
        const TimeSlipMessage unreadable = timeSlipLogUnreadable();
        QCOMPARE(dialogs.messages[0].title, QStringLiteral("Tarnwick - iCardRX Import"));
        QCOMPARE(dialogs.messages[0].text, unreadable.text);
        QVERIFY(dialogs.messages[0].text.contains(u"Unable to import race log file!"));
        QCOMPARE(dialogs.messages[0].icon, Icon::Critical);
        QCOMPARE(dialogs.messages[1].text, NothingImported);
        QCOMPARE(dialogs.messages[1].title, ImportTitle);
    }

    // The receiver's own setting comes first; a slip a quarter of an hour away is too far.
    void aSlipAQuarterOfAnHourAwayIsNotTheRuns() {
        const QString path = writeSlips(pairing("11/22/2026 10:35:00am"));
        Registry::set(SettingKeys::ReceiverLogFile, path);
        Registry::set(SettingKeys::TimeSlipLogFile, home->root() + QStringLiteral("/none.csv"));
        LogWindow log(*station);
        typeRun(log);
        const QStringList before = log.cells(1);
        ScriptedDialogs dialogs;
        log.importSlip(1);
        QCOMPARE(log.cells(1), before);
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text, NothingImported);
        QCOMPARE(dialogs.messages[0].title, ImportTitle);
        QCOMPARE(dialogs.messages[0].icon, Icon::Critical);

        log.table.setCell(1, 1, QStringLiteral("10:49am"));
        dialogs.messages.clear();
        log.importSlip(1);
        QCOMPARE(log.table.cell(1, 1), QStringLiteral("10:35am"));
        QCOMPARE(dialogs.messages.value(0).text, QStringLiteral("No weather data was imported!"));
    }

    // A run with no time is looked up as made now and is dated at once; the date stays when
    // no slip is found, as one step of the command.
    void aRunWithoutATimeIsDatedEvenWhenNoSlipIsFound() {
        writeSlips(pairing("11/22/2026 10:50:00am"));
        LogWindow log(*station);
        ScriptedDialogs dialogs;
        log.importSlip(1);
        QCOMPARE(log.table.cell(1, 1), QString());
        QCOMPARE(log.table.cell(1, 2), DateText::runDateText(QDate::currentDate()));
        QCOMPARE(log.table.cell(1, 3), QString());
        QCOMPARE(log.document.undoStack().undoText(), QStringLiteral("Get iCard && Weather"));
        QCOMPARE(dialogs.messages.size(), 1);
        QCOMPARE(dialogs.messages[0].text, NothingImported);
    }

    void theCommandStandsInTheRowMenu() {
        LogWindow log(*station);
        auto* action = log.window.findChild<QAction*>(QStringLiteral("miiCardWeather"));
        QVERIFY(action);
        QCOMPARE(action->text(), QStringLiteral("Get iCard && Weather..."));
        QVERIFY(log.grid->rowMenu()->actions().contains(action));
    }
};

QTEST_MAIN(TestTimeSlipImport)
#include "tst_timeslipimport.moc"
