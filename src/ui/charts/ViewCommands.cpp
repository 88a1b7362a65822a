#include "ui/charts/ViewCommands.h"

#include "core/AppState.h"
#include "ui/charts/ViewWindows.h"
#include "ui/shell/MainWindow.h"

namespace ViewCommands {

void add(MainWindow& main, AppState& state) {
    for (const ViewTable::Entry& entry : ViewTable::Views)
        main.setCommand(entry.command.toString(), [&main, &state, view = entry.view] {
            ViewWindows::show(*main.mdiArea(), state.views, view);
        });
}

} // namespace ViewCommands
