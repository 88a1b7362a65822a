#include "ui/output/ViewerWindow.h"

#include "core/NumberText.h"
#include "core/SettingKeys.h"
#include "core/Settings.h"
#include "ui/output/PagePreview.h"
#include "ui/output/PagePrinting.h"
#include "ui/shell/WindowPlacement.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollArea>
#include <QToolBar>
#include <QVBoxLayout>
#include <cmath>

namespace {

constexpr double LeastScale = 0.25;
constexpr double MostScale = 4;
constexpr double ScaleStep = 0.25;

QString placementKey(Viewers::Kind kind) {
    return SettingKeys::placementPath(Viewers::viewer(kind).branch);
}

} // namespace

ViewerWindow* ViewerWindow::open(QMdiArea& mdi, Viewers::Kind kind, PageDocument document,
                                 const QString& caption) {
    const QString name = Viewers::viewer(kind).objectName.toString();
    for (QMdiSubWindow* child : mdi.subWindowList())
        if (child->widget() && child->widget()->objectName() == name) {
            child->close();
            delete child;
        }
    auto* viewer = new ViewerWindow(kind, std::move(document));
    QMdiSubWindow* frame = mdi.addSubWindow(viewer);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    if (!caption.isEmpty())
        viewer->setWindowTitle(caption);
    frame->show();
    viewer->show();
    return viewer;
}

ViewerWindow::ViewerWindow(Viewers::Kind viewerKind, PageDocument document, QWidget* parent)
    : QWidget(parent), kind(viewerKind), pages(std::move(document)), zoom(Settings::loadScale()),
      preview(new PagePreview), area(new QScrollArea(this)), pageLabel(new QLabel(this)) {
    const Viewers::Viewer& row = Viewers::viewer(kind);
    setObjectName(row.objectName.toString());
    setWindowTitle(row.caption.toString());
    setAttribute(Qt::WA_DeleteOnClose);
    // The place of the window is kept for the next viewer.
    new KeptPlacement(*this, placementKey(kind));

    area->setWidget(preview);
    area->setAlignment(Qt::AlignCenter);
    area->setBackgroundRole(QPalette::Dark);
    pageLabel->setObjectName(QStringLiteral("lblPage"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    addTools();
    layout->addWidget(area, 1);
    layout->addWidget(pageLabel);
    showPage(0);
}

// The preview's own tool strip: pages, zoom, paper and PDF. The page and zoom keys work
// wherever the focus is inside this viewer, so each open viewer pages through its own
// document.
void ViewerWindow::addTools() {
    auto* tools = new QToolBar(this);
    tools->setObjectName(QStringLiteral("tbViewer"));
    const struct {
        const char* name;
        const char* caption;
        void (ViewerWindow::*command)();
        QKeySequence keys;
    } commands[] = {
        {"FirstPage", "First Page", &ViewerWindow::firstPage,
         QKeySequence(Qt::CTRL | Qt::Key_Home)},
        {"PreviousPage", "Previous Page", &ViewerWindow::previousPage,
         QKeySequence(Qt::Key_PageUp)},
        {"NextPage", "Next Page", &ViewerWindow::nextPage, QKeySequence(Qt::Key_PageDown)},
        {"LastPage", "Last Page", &ViewerWindow::lastPage, QKeySequence(Qt::CTRL | Qt::Key_End)},
        {"ZoomIn", "Zoom In", &ViewerWindow::zoomIn, QKeySequence::ZoomIn},
        {"ZoomOut", "Zoom Out", &ViewerWindow::zoomOut, QKeySequence::ZoomOut},
        {"PrintDocument", "Print...", &ViewerWindow::printDocument, {}},
        {"SaveAsPDF", "Save As PDF...", &ViewerWindow::saveAsPdf, {}},
    };
    for (const auto& command : commands) {
        QAction* action = tools->addAction(QLatin1String(command.caption));
        action->setObjectName(QLatin1String(command.name));
        action->setToolTip(QLatin1String(command.caption));
        action->setShortcut(command.keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
        connect(action, &QAction::triggered, this, command.command);
    }
    layout()->addWidget(tools);
}

void ViewerWindow::firstPage() {
    showPage(0);
}

void ViewerWindow::lastPage() {
    showPage(pageCount() - 1);
}

void ViewerWindow::nextPage() {
    if (currentPage() < pageCount())
        showPage(current + 1);
}

void ViewerWindow::previousPage() {
    if (currentPage() > 1)
        showPage(current - 1);
}

void ViewerWindow::zoomIn() {
    if (zoom < MostScale)
        setZoom(zoom + ScaleStep);
}

void ViewerWindow::zoomOut() {
    if (zoom > LeastScale)
        setZoom(zoom - ScaleStep);
}

// A step from a zoom such as 3.9 lands on 4.15 as written, not a binary neighbour of it.
void ViewerWindow::setZoom(double scale) {
    zoom = std::round(scale * 1e9) / 1e9;
    showPage(current);
}

void ViewerWindow::printDocument() {
    PagePrinting::printPages(pages);
}

void ViewerWindow::saveAsPdf() {
    PagePrinting::savePagesAsPdf(pages, kind);
}

// The zoom is kept for the next document.
void ViewerWindow::closeEvent(QCloseEvent* event) {
    Settings::saveScale(zoom);
    event->accept();
}

void ViewerWindow::showPage(int index) {
    current = qBound(0, index, pageCount() - 1);
    preview->showPage(pages, current, zoom);
    pageLabel->setText(QStringLiteral("Page %1 of %2").arg(currentPage()).arg(pageCount()));
}
