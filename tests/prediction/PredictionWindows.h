#pragma once

#include "prediction/PagerDispatch.h"
#include "racelog/LogSidePanel.h"
#include "racelog/RaceLogCommands.h"
#include "racelog/RunGrid.h"
#include "racelog/RunTable.h"
#include "racelog/frmLog.h"
#include "shell/AppState.h"
#include "shell/frmMain.h"

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
    frmLog* newLog() {
        const int before = int(main.mdiArea()->subWindowList().size());
        run(QStringLiteral("miNewRaceLog"));
        const QList<QMdiSubWindow*> windows = main.mdiArea()->subWindowList();
        return windows.size() > before ? qobject_cast<frmLog*>(windows.last()->widget()) : nullptr;
    }
    frmLog* slot(int index) {
        return index < state.RaceLogs.size() ? dynamic_cast<frmLog*>(state.RaceLogs[index])
                                             : nullptr;
    }

    AppState state;
    frmMain main{state};
    RaceLogCommands* commands;
    PagerDispatch* pager;
};

// The caption as the main window's client area shows it.
inline QString frameCaption(frmLog* log) {
    auto* frame = qobject_cast<QMdiSubWindow*>(log->parentWidget());
    return frame ? frame->windowTitle() : QString();
}

inline void setCells(frmLog* log, int row, std::initializer_list<std::pair<int, QString>> cells) {
    for (const auto& [column, text] : cells)
        log->gridLog->table().setTextMatrix(row, column, text);
}

// The worked example of the model: a reference run of 9.5 at AA 2000 with a timer of 1.5 and
// a VP of 0.512, predicted at AA 2100 and VP 0.487 with PF 5, a target of 9.50 and a ratio of
// 0.25. It reads "ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025" with the VP option on.
namespace WorkedCase {
inline const QString Line = QStringLiteral("ET: 9.5041  TS @ 9.50: 1.3991 VP+0.025");

inline void fillReferenceRun(frmLog* log, int row = 1) {
    setCells(log, row, {{12, "9.5"}, {19, "2000"}, {14, "1.5"}, {21, "0.512"}});
}

inline void fillFields(frmLog* log) {
    LogSidePanel* panel = log->tabLog;
    panel->txtAA->setText(QStringLiteral("2100"));
    panel->txtVP->setText(QStringLiteral("0.487"));
    panel->txtPF->setText(QStringLiteral("5"));
    panel->txtTargetET->setText(QStringLiteral("9.50"));
    panel->txtTSR->setText(QStringLiteral("0.25"));
}

inline void fill(frmLog* log) {
    fillReferenceRun(log);
    fillFields(log);
}
} // namespace WorkedCase
