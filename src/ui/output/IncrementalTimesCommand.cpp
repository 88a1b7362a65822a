#include "ui/output/IncrementalTimesCommand.h"

#include "exchange/TimeSlip.h"
#include "pages/PageDocument.h"
#include "pages/Viewers.h"
#include "ui/output/IncrementalTimesDialog.h"
#include "ui/output/ViewerWindow.h"
#include "ui/shell/MainWindow.h"

#include <QMetaObject>

namespace IncrementalTimesCommand {

namespace {

void ask(MainWindow& main) {
    auto* dialog = new IncrementalTimesDialog(&main);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->load();
    QObject::connect(dialog, &QDialog::accepted, &main, [&main, dialog] {
        // The report, which takes a moment, is built once the dialog has finished closing
        // and is gone from the screen: the dialog deletes itself on the way, so nothing of it
        // may be touched after this handler.
        QMetaObject::invokeMethod(
            &main, [&main, request = dialog->request()] { showReport(*main.mdiArea(), request); },
            Qt::QueuedConnection);
    });
    dialog->open();
}

} // namespace

void add(MainWindow& main) {
    main.setCommand(QStringLiteral("miIncrementalTimes"), [&main] { ask(main); });
}

ViewerWindow* showReport(QMdiArea& area, const IncrementalTimes::Request& request) {
    TimeSlipLog log;
    if (loadTimeSlipLog(log) != TimeSlipLoad::Read)
        return nullptr;
    PageDocument document = Viewers::newDocument(Viewers::Kind::Report);
    IncrementalTimes::write(document, log, request);
    return ViewerWindow::open(area, Viewers::Kind::Report, std::move(document), QString());
}

} // namespace IncrementalTimesCommand
