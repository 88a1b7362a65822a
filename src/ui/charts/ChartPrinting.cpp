#include "ui/charts/ChartPrinting.h"

#include "core/DateText.h"
#include "core/Dialogs.h"
#include "core/ProgramFolder.h"
#include "core/Registry.h"
#include "core/SettingKeys.h"
#include "pages/ChartPage.h"
#include "pages/PdfFile.h"

#include <QFileInfo>
#include <QPainter>
#include <QPrinter>
#include <QWidget>
#include <qcustomplot.h>

namespace ChartPrinting {

namespace {

constexpr double TwipsPerInch = 1440;

// The chart's size on the screen in twips, a tenth of which gives its size on the page.
QSizeF pageSizeOf(const QWidget& chart) {
    const double twipsPerPixel = TwipsPerInch / chart.logicalDpiX();
    return QSizeF(chart.width() * twipsPerPixel / 10, chart.height() * twipsPerPixel / 10);
}

QString startFolder() {
    const QString folder = Registry::get(SettingKeys::FileDialogFolder);
    return folder.isEmpty() ? ProgramFolder::forUserFiles() : folder;
}

} // namespace

Drawing drawingOf(QCustomPlot& chart) {
    QPicture commands;
    QCPPainter painter(&commands);
    painter.setMode(QCPPainter::pmNoCaching);
    painter.setMode(QCPPainter::pmNonCosmetic);
    chart.toPainter(&painter, chart.width(), chart.height());
    painter.end();
    return Drawing(commands, chart.size());
}

void print(const Drawing& drawing) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    if (!Dialogs::usePrinter(printer))
        return;
    QPainter painter;
    if (!painter.begin(&printer))
        return;
    // The chart at its size on the screen: its pixels at the 96 dots an inch of the screen.
    const double scale = printer.resolution() / 96.0;
    drawing.paint(painter, QRectF(QPointF(0, 0), drawing.size() * scale));
}

QString proposedName(const QString& label) {
    return label + u' ' + DateText::fileStamp(QDate::currentDate());
}

void saveAsPdf(const QString& label, QWidget& chart, const std::function<Drawing()>& drawing) {
    Dialogs::FileRequest request;
    request.save = true;
    request.title = QStringLiteral("PDF ") + label + QStringLiteral(" Export");
    request.fileName = proposedName(label);
    request.filter = QStringLiteral("Adobe Acrobat Files (*.pdf) |*.pdf|") +
                     QStringLiteral("All Files (*.*) |*.*|");
    request.filterIndex = 1;
    request.initialFolder = startFolder();
    request.confirmOverwrite = true;
    const std::optional<Dialogs::FileChoice> choice = Dialogs::chooseFile(request);
    if (!choice || choice->path.isEmpty())
        return;
    // Readings that came in while the dialog was open reached the chart in the dialog's own
    // event loop: the page shows the chart as it stands once the dialog has closed.
    const PageDocument page =
        ChartPage::layout(label, drawing(), pageSizeOf(chart), QDateTime::currentDateTime());
    QString path = choice->path;
    if (QFileInfo(path).suffix() != QStringLiteral("pdf"))
        path += QStringLiteral(".pdf");
    writePdf(page, path);
}

void saveAsPdf(const QString& label, QCustomPlot& chart) {
    saveAsPdf(label, chart, [&chart] { return drawingOf(chart); });
}

} // namespace ChartPrinting
