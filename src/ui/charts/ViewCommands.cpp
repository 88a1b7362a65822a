#include "ui/charts/ViewCommands.h"

#include "core/OpenViews.h"
#include "ui/charts/ViewWindows.h"
#include "ui/shell/MainWindow.h"

namespace ViewCommands {

void add(MainWindow& main, OpenViews& views) {
    for (const ViewTable::Entry& entry : ViewTable::Views)
        main.setCommand(entry.command.toString(), [&main, &views, view = entry.view] {
            ViewWindows::show(*main.mdiArea(), views, view);
        });
}

} // namespace ViewCommands
