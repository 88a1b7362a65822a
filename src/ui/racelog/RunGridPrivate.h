#pragma once

#include "ui/racelog/RunGrid.h"
#include "ui/racelog/RunMenus.h"

class CellEditors;
class QAbstractButton;

// What a run grid keeps besides the view: the window's run table and reference run list, the
// cell editors, the menus, and what the last mouse press left behind.
struct RunGrid::Private {
    Private(AppState& state, RunTable& table, QComboBox& cboRefRun, QWidget* grid)
        : state(state), table(table), cboRefRun(cboRefRun), menus(grid) {}

    AppState& state;
    RunTable& table;
    QComboBox& cboRefRun;
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
