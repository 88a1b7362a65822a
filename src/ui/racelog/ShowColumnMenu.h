#pragma once

#include <QMenu>

class RunGrid;

// The "Show Column" submenu of a race log window (objectName "miShowColumn"): one checked
// item for each of the 31 columns that can be hidden, in the order the user knows them. A
// click hides a shown column or shows a hidden one, in this window only; nothing is stored.
class ShowColumnMenu : public QMenu {
    Q_OBJECT
public:
    explicit ShowColumnMenu(RunGrid& grid, QWidget* parent = nullptr);

    // Runs the item of a column once, as a click on it does.
    void toggleColumn(int column);

private:
    QAction* item(int column) const;

    RunGrid& grid;
};
