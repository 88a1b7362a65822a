#pragma once

#include "common/WindowTesting.h"
#include "feed/WeatherStation.h"
#include "racelog/RunTable.h"
#include "ui/pager/PagerDispatch.h"
#include "ui/racelog/LogSidePanel.h"
#include "ui/racelog/RaceLogCommands.h"
#include "ui/racelog/RaceLogWindow.h"
#include "ui/racelog/RunGrid.h"
#include "ui/shell/MainWindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <initializer_list>
#include <utility>

// The main window with its race log commands and its pager, as the program puts them
// together. The test builds it inside a TestHome, so it starts from empty settings.
struct PredictionWindows {
    PredictionWindows() {
        commands = new RaceLogCommands(main, station);
        pager = new PagerDispatch(main);
    }
    ~PredictionWindows() {
        // The logs go without their save questions when the test is over.
        const QList<QMdiSubWindow*> windows = main.mdiArea()->subWindowList();
        for (QMdiSubWindow* window : windows)
            delete window;
    }

    QAction* tool(const QString& name) { return main.findChild<QAction*>(name); }
    void run(const QString& name) { main.dispatch(name); }

    // A new log through the main window's command, in the first free slot.
    RaceLogWindow* newLog() {
        const int before = int(main.mdiArea()->subWindowList().size());
        run(QStringLiteral("miNewRaceLog"));
        const QList<QMdiSubWindow*> windows = main.mdiArea()->subWindowList();
        return windows.size() > before ? qobject_cast<RaceLogWindow*>(windows.last()->widget())
                                       : nullptr;
    }
    // A line of the instrument, as the relay brings it; the prediction inputs stay as typed.
    void feedLine(const QString& line) {
        station.predictionSettings().automaticUpdates = false;
        station.feed().tcpBytes(line.toLatin1());
    }
    RaceLogWindow* slot(int index) {
        return WindowTesting::windowOfSlot(*main.mdiArea(), station.raceLogs(), index);
    }

    WeatherStation station;
    MainWindow main{station};
    RaceLogCommands* commands;
    PagerDispatch* pager;
};

// A whole line of the instrument and the status line it makes.
inline const QString InstrumentLine = QStringLiteral(
    " 11/22/26 10:42:07 29.92 71.5 43.2 1250 5.1 45 0.33 49 98.6 1410 120 275 7 11 340\r");
inline const QString InstrumentStatus =
    QStringLiteral("ABP=29.92 Temp=71.5 RH=43.2 AA=1250 AH=5.1 GR=45 VP=0.33 DP=49 ADR=98.6 "
                   "DA=1410 PA=120 WD=275 WS=7 WG=11 AL=340");

// The caption as the main window's client area shows it.
inline QString frameCaption(RaceLogWindow* log) {
    auto* frame = qobject_cast<QMdiSubWindow*>(log->parentWidget());
    return frame ? frame->windowTitle() : QString();
}

inline void setCells(RaceLogWindow* log, int row,
                     std::initializer_list<std::pair<int, QString>> cells) {
    for (const auto& [column, text] : cells)
        log->grid->table().setCell(row, column, text);
}

// The worked example of the model: a reference run of 9.5 at AA 2000 with a timer of 1.5 and
// a VP of 0.512, predicted at AA 2100 and VP 0.487 with PF 5, a target of 9.50 and a ratio of
// 0.25. It reads "ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025" with the VP option on.
namespace WorkedCase {
inline const QString Line = QStringLiteral("ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025");

inline void fillReferenceRun(RaceLogWindow* log, int row = 1) {
    setCells(log, row, {{12, "9.5"}, {19, "2000"}, {14, "1.5"}, {21, "0.512"}});
}

inline void fillFields(RaceLogWindow* log) {
    LogSidePanel* panel = log->sidePanel;
    panel->aaField->setText(QStringLiteral("2100"));
    panel->vpField->setText(QStringLiteral("0.487"));
    panel->pfField->setText(QStringLiteral("5"));
    panel->targetEtField->setText(QStringLiteral("9.50"));
    panel->tsrField->setText(QStringLiteral("0.25"));
}

inline void fill(RaceLogWindow* log) {
    fillReferenceRun(log);
    fillFields(log);
}
} // namespace WorkedCase
