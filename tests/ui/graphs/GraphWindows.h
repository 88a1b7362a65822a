#pragma once

#include "../PredictionWindows.h"
#include "ui/graphs/GraphCommands.h"

#include <QComboBox>

// The main window with its race logs and its graph commands, and the ways a test reaches a
// graph window in it.
struct GraphWindows : PredictionWindows {
    GraphWindows() { GraphCommands::add(main, station.raceLogs()); }

    // Opens the graph window through its command and returns it.
    template <typename Window> Window* open(const QString& command) {
        run(command);
        QMdiSubWindow* active = main.mdiArea()->activeSubWindow();
        if (!active) {
            const QList<QMdiSubWindow*> frames = main.mdiArea()->subWindowList();
            active = frames.isEmpty() ? nullptr : frames.last();
        }
        return active ? qobject_cast<Window*>(active->widget()) : nullptr;
    }
};

// Runs with the given cells in a new log: the first in its run 1, each further one in a new
// run.
inline void addRuns(RaceLogWindow* log,
                    std::initializer_list<std::initializer_list<std::pair<int, QString>>> runs) {
    int row = 0;
    for (const auto& cells : runs) {
        if (++row > 1)
            log->grid->newRun();
        setCells(log, row, cells);
    }
}

// Chooses an entry as the user does, which also tells of a choice of the entry already shown.
inline void choose(QComboBox* list, int index) {
    list->setCurrentIndex(index);
    emit list->activated(index);
}
