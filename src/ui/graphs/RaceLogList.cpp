#include "ui/graphs/RaceLogList.h"

#include "core/OpenRaceLogs.h"
#include "racelog/RaceLog.h"
#include "ui/racelog/RaceLogWindow.h"

#include <QComboBox>
#include <QSignalBlocker>

namespace {

RaceLogWindow* windowIn(const OpenRaceLogs& logs, int slot) {
    return dynamic_cast<RaceLogWindow*>(logs.at(slot));
}

} // namespace

RaceLogList::RaceLogList(QComboBox& comboBox, OpenRaceLogs& openLogs)
    : QObject(&comboBox), list(comboBox), logs(openLogs) {
    fill();
    connect(&logs, &OpenRaceLogs::opened, this, &RaceLogList::add);
}

void RaceLogList::fill() {
    for (int slot = 0; slot < logs.slotCount(); ++slot)
        add(slot);
}

// In slot order; a slot already listed (its log closed, a new one took the slot) is named
// afresh.
void RaceLogList::add(int slot) {
    RaceLogWindow* window = windowIn(logs, slot);
    if (!window)
        return;
    const QString identifier = window->document().field(RaceLog::Field::PageIdentifier);
    const QString name = identifier.isEmpty()
                             ? QStringLiteral("Race Log# ") + QString::number(slot + 1)
                             : identifier;
    int row = 0;
    while (row < list.count() && list.itemData(row).toInt() < slot)
        ++row;
    if (row < list.count() && list.itemData(row).toInt() == slot)
        list.setItemText(row, name);
    else
        list.insertItem(row, name, slot);
}

RaceLog* RaceLogList::chosen() {
    const int row = list.currentIndex();
    if (row < 0)
        return nullptr;
    if (RaceLogWindow* window = windowIn(logs, list.itemData(row).toInt()))
        return &window->document();
    {
        const QSignalBlocker quiet(&list);
        list.removeItem(row);
        list.setCurrentIndex(-1);
    }
    // Choosing the first entry left runs the window's choice for it, as a user's would.
    if (list.count() > 0)
        list.setCurrentIndex(0);
    return nullptr;
}
