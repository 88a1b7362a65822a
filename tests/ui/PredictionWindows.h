#pragma once

#include "core/AppState.h"
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
        commands = new RaceLogCommands(main, state);
        pager = new PagerDispatch(main, state);
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
    RaceLogWindow* slot(int index) {
        return index < state.raceLogs.slotCount()
                   ? dynamic_cast<RaceLogWindow*>(state.raceLogs.at(index))
                   : nullptr;
    }

    AppState state;
    MainWindow main{state};
    RaceLogCommands* commands;
    PagerDispatch* pager;
};

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
    panel->txtAA->setText(QStringLiteral("2100"));
    panel->txtVP->setText(QStringLiteral("0.487"));
    panel->txtPF->setText(QStringLiteral("5"));
    panel->txtTargetET->setText(QStringLiteral("9.50"));
    panel->txtTSR->setText(QStringLiteral("0.25"));
}

inline void fill(RaceLogWindow* log) {
    fillReferenceRun(log);
    fillFields(log);
}
} // namespace WorkedCase
