#include "ui/racelog/ShowColumnMenu.h"

#include "racelog/ColumnTable.h"
#include "ui/racelog/RunGrid.h"

ShowColumnMenu::ShowColumnMenu(RunGrid& grid, QWidget* parent)
    : QMenu(QStringLiteral("Show Column"), parent), grid(grid) {
    setObjectName(QStringLiteral("miShowColumn"));
    for (int number : ColumnTable::ShowColumnMenuOrder) {
        const ColumnTable::Column& column = ColumnTable::Columns[number];
        QAction* action = addAction(column.menuText.toString());
        action->setObjectName(column.menuItem.toString());
        action->setData(number);
        // The check mark turns over with the click; the column follows it.
        action->setCheckable(true);
        action->setChecked(true);
        connect(action, &QAction::triggered, this, [this, number](bool shown) {
            if (shown)
                this->grid.showRunColumn(number);
            else
                this->grid.hideRunColumn(number);
        });
    }
}

void ShowColumnMenu::toggleColumn(int column) {
    if (QAction* action = item(column))
        action->trigger();
}

QAction* ShowColumnMenu::item(int column) const {
    for (QAction* action : actions()) {
        if (action->data().toInt() == column)
            return action;
    }
    return nullptr;
}
