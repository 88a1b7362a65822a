// The list of open race logs that the graph windows choose from.
#include "../PredictionWindows.h"
#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "racelog/RaceLog.h"
#include "ui/graphs/RaceLogList.h"

#include <QComboBox>
#include <QSignalSpy>
#include <QTest>

namespace {

QStringList entries(const QComboBox& list) {
    QStringList names;
    for (int row = 0; row < list.count(); ++row)
        names << list.itemText(row) + u'@' + list.itemData(row).toString();
    return names;
}

// Closes the log, answering No to its save question.
void closeLog(RaceLogWindow* log, ScriptedDialogs& dialogs) {
    dialogs.queueAnswer(Dialogs::Answer::No);
    qobject_cast<QMdiSubWindow*>(log->parentWidget())->close();
}

} // namespace

class TestRaceLogList : public QObject {
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

    // In slot order, by page identifier or "Race Log# n", the slot as the entry's data.
    void theOpenLogsAreListedBySlot() {
        PredictionWindows windows;
        windows.newLog()->document().setField(RaceLog::Field::PageIdentifier, "Red");
        windows.newLog();
        QComboBox list;
        RaceLogList logs(list, windows.station.raceLogs());
        QCOMPARE(entries(list), QStringList({"Red@0", "Race Log# 2@1"}));
        // A log opened later joins in its place.
        windows.newLog()->document().setField(RaceLog::Field::PageIdentifier, "Blue");
        QCOMPARE(entries(list), QStringList({"Red@0", "Race Log# 2@1", "Race Log# 3@2"}));
    }

    // The entry of a closed log stays until chosen; then it goes and the first one left is
    // chosen, which the window hears as a choice.
    void aClosedLogLeavesTheListWhenChosen() {
        PredictionWindows windows;
        RaceLogWindow* red = windows.newLog();
        red->document().setField(RaceLog::Field::PageIdentifier, "Red");
        RaceLogWindow* second = windows.newLog();
        QComboBox list;
        RaceLogList logs(list, windows.station.raceLogs());
        list.setCurrentIndex(1);
        QCOMPARE(logs.chosen(), &second->document());
        closeLog(second, *dialogs);
        QVERIFY(!windows.slot(1));
        QCOMPARE(list.count(), 2);
        QSignalSpy choice(&list, &QComboBox::currentIndexChanged);
        QCOMPARE(logs.chosen(), nullptr);
        QCOMPARE(entries(list), QStringList({"Red@0"}));
        QCOMPARE(list.currentIndex(), 0);
        QCOMPARE(choice.count(), 1);
        QCOMPARE(logs.chosen(), &red->document());
    }

    void nothingChosenGivesNoLog() {
        PredictionWindows windows;
        QComboBox list;
        RaceLogList logs(list, windows.station.raceLogs());
        QCOMPARE(list.count(), 0);
        QCOMPARE(logs.chosen(), nullptr);
    }
};

QTEST_MAIN(TestRaceLogList)
#include "tst_raceloglist.moc"
