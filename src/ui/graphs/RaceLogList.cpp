#include "ui/graphs/RaceLogList.h"

#include "racelog/OpenRaceLogs.h"
#include "racelog/RaceLog.h"
#include "racelog/RaceLogSlots.h"

#include <QComboBox>
#include <QSignalBlocker>

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
    const RaceLog* log = logs.at(slot);
    if (!log)
        return;
    const QString identifier = log->field(RaceLog::Field::PageIdentifier);
    const QString name = identifier.isEmpty() ? RaceLogSlots::numberedCaption(slot) : identifier;
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
    if (RaceLog* log = logs.at(list.itemData(row).toInt()))
        return log;
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
