#pragma once

#include "core/ViewTable.h"

class OpenViews;
class QMdiArea;

// Where the live view windows are made: one window at most for each view of the view table.
namespace ViewWindows {

// Brings the view's window to the front when it is open. Otherwise makes it in the MDI
// area at the place it had when it was last closed, lets it join the open views and shows it.
void show(QMdiArea& area, OpenViews& views, ViewTable::View view);

} // namespace ViewWindows
