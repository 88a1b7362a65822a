#include "ui/output/IncrementalTimesCommand.h"

#include "output/PageDocument.h"
#include "output/TimeSlip.h"
#include "output/Viewers.h"
#include "ui/output/IncrementalTimesDialog.h"
#include "ui/output/ViewerWindow.h"
#include "ui/shell/MainWindow.h"

#include <QCoreApplication>

namespace IncrementalTimesCommand {

namespace {

void ask(MainWindow& main) {
    auto* dialog = new IncrementalTimesDialog(&main);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->load();
    QObject::connect(dialog, &QDialog::accepted, &main, [&main, dialog] {
        const IncrementalTimes::Request request = dialog->request();
        // The dialog is gone from the screen before the report, which takes a moment, is
        // built.
        dialog->hide();
        QCoreApplication::processEvents();
        showReport(*main.mdiArea(), request);
    });
    dialog->open();
}

} // namespace

void add(MainWindow& main, AppState&) {
    main.setCommand(QStringLiteral("miIncrementalTimes"), [&main] { ask(main); });
}

ViewerWindow* showReport(QMdiArea& area, const IncrementalTimes::Request& request) {
    TimeSlipLog log;
    if (LoadTimeSlipLog(log) != TimeSlipLoad::Read)
        return nullptr;
    PageDocument document = Viewers::newDocument(Viewers::Kind::Report);
    IncrementalTimes::Write(document, log, request);
    return ViewerWindow::open(area, Viewers::Kind::Report, std::move(document), QString());
}

} // namespace IncrementalTimesCommand
