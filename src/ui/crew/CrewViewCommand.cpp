#include "ui/crew/CrewViewCommand.h"

#include "ui/crew/CrewViewDialog.h"
#include "ui/shell/MainWindow.h"

namespace CrewViewCommand {

void add(MainWindow& main, CrewView& crew) {
    main.setCommand(QStringLiteral("miCrewView"), [&main, &crew] {
        CrewViewDialog dialog(crew, &main);
        dialog.exec();
    });
}

} // namespace CrewViewCommand
