#include "ui/output/PagePrinting.h"

#include "core/Dialogs.h"
#include "pages/PagePainter.h"
#include "pages/PdfFile.h"

#include <QPainter>
#include <QPrinter>

namespace PagePrinting {

void printPages(const PageDocument& document) {
    QPrinter printer(QPrinter::HighResolution);
    // The printer takes the page upright and turns it by its orientation.
    const QSizeF size = document.pageSize();
    const bool landscape = size.width() > size.height();
    printer.setPageSize(
        QPageSize((landscape ? size.transposed() : size) / 10, QPageSize::Millimeter));
    printer.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setFullPage(true);
    printer.setDocName(document.metadata.title);
    printer.setCreator(document.metadata.creator);
    printer.setFromTo(1, document.pageCount());
    if (!Dialogs::choosePrinter(printer))
        return;
    QPainter painter;
    if (!painter.begin(&printer))
        return;
    // The pages the user asked for, all of them unless a range was chosen.
    const bool range = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
    const int first = range ? printer.fromPage() - 1 : 0;
    const int last =
        range ? qMin(printer.toPage(), document.pageCount()) - 1 : document.pageCount() - 1;
    const QRectF paper = printer.paperRect(QPrinter::DevicePixel);
    for (int page = first; page <= last; ++page) {
        if (page > first)
            printer.newPage();
        drawPage(painter, document, page, QRectF(QPointF(), paper.size()));
    }
}

void savePagesAsPdf(const PageDocument& document, Viewers::Kind kind) {
    Dialogs::FileRequest request;
    request.save = true;
    request.title = QStringLiteral("Save As PDF");
    request.filter = QStringLiteral("Adobe Acrobat PDF Files (*.pdf) |*.pdf|") +
                     QStringLiteral("All Files (*.*) |*.*|");
    request.filterIndex = 1;
    request.fileName = Viewers::proposedPdfName(kind, QDate::currentDate());
    const std::optional<Dialogs::FileChoice> choice = Dialogs::chooseFile(request);
    if (choice && Viewers::isPdfName(choice->path))
        writePdf(document, choice->path);
}

} // namespace PagePrinting
