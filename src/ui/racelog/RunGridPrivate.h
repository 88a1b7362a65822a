#pragma once

#include "racelog/RaceLog.h"
#include "ui/racelog/RunGrid.h"
#include "ui/racelog/RunMenus.h"

class CellEditors;
class QAbstractButton;

// What a run grid keeps besides the view: the race log it shows, the cell editors, the menus,
// and what the last mouse press left behind.
struct RunGrid::Private {
    Private(AppState& state, RaceLog& log, QWidget* grid)
        : state(state), log(log), table(log.runs()), menus(grid) {}

    AppState& state;
    RaceLog& log;
    RunTable& table; // the log's runs
    RunMenus menus;
    CellEditors* editors = nullptr;
    // The corner cell, the handle of the side panel.
    QAbstractButton* corner = nullptr;

    // The cell the open editor writes into.
    int editRow = 0;
    int editColumn = 0;
    // The last press lay outside the run cells: on a header, the corner or the empty area.
    bool mouseOutside = false;
    // The last press opened the row menu, so its release opens no column menu over it.
    bool rowMenuFromPress = false;
};
