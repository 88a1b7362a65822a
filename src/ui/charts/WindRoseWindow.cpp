#include "ui/charts/WindRoseWindow.h"

#include "charts/ViewCaptions.h"
#include "charts/WindRoseDrawing.h"
#include "core/NumberText.h"
#include "ui/charts/ChartPrinting.h"

#include <QAction>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <limits>

WindRosePlot::WindRosePlot(const WindRose& windRose, QWidget* parent)
    : QWidget(parent), rose(windRose) {
    setObjectName(QStringLiteral("plot"));
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void WindRosePlot::redraw() {
    if (size().isEmpty()) {
        image = QImage();
        return;
    }
    const qreal ratio = devicePixelRatioF();
    image = QImage(size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    WindRoseDrawing::draw(painter, rose, size());
    ++draws;
    update();
}

Drawing WindRosePlot::drawing() const {
    return Drawing::record(
        size(), [this](QPainter& painter) { WindRoseDrawing::draw(painter, rose, size()); });
}

void WindRosePlot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawImage(QPoint(0, 0), image);
}

void WindRosePlot::resizeEvent(QResizeEvent*) {
    redraw();
}

void WindRosePlot::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton)
        emit rightButtonPressed(event->globalPosition().toPoint());
}

WindRoseWindow::WindRoseWindow(OpenViews& views, QWidget* parent)
    : LiveViewWindow(ViewTable::View::RosePlot, views, parent) {
    surface = new WindRosePlot(model, this);
    // The labels stand over the plot, the head wind at its top and the tail wind at its foot.
    headWind = new QLabel(QStringLiteral("Head Wind"), this);
    headWind->setObjectName(QStringLiteral("lblHeadWind"));
    tailWind = new QLabel(QStringLiteral("Tail Wind"), this);
    tailWind->setObjectName(QStringLiteral("lblTailWind"));
    for (QLabel* label : {headWind, tailWind}) {
        label->setAlignment(Qt::AlignCenter);
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        label->adjustSize();
    }

    options = new QMenu(QStringLiteral("Options"), this);
    options->setObjectName(QStringLiteral("miOptions"));
    const auto add = [this](const char* name, const QString& text, auto slot) {
        QAction* action = options->addAction(text);
        action->setObjectName(QLatin1String(name));
        connect(action, &QAction::triggered, this, slot);
    };
    add("miPrint", QStringLiteral("Print"), [this] { printDocument(); });
    add("mnuPDFExport", QStringLiteral("PDF Export..."), [this] { saveAsPdf(); });
    options->addSeparator();
    add("miClear", QStringLiteral("Clear"), [this] { clearSums(); });
    connect(surface, &WindRosePlot::rightButtonPressed, options,
            [this](const QPoint& at) { options->popup(at); });

    resize(sizeHint());
    fitToWindow();
}

LiveViewWindow* WindRoseWindow::make(ViewTable::View, OpenViews& views) {
    return new WindRoseWindow(views);
}

void WindRoseWindow::showReading(const WeatherRecord& reading, const QString& statusLine) {
    setWindowTitle(ViewCaptions::caption(view(), reading, 0, statusLine));
    // A direction beyond a 16-bit number ends the update before the rose is touched.
    if (reading.WD < std::numeric_limits<qint16>::min() ||
        reading.WD > std::numeric_limits<qint16>::max())
        return;
    addWind(float(reading.WS), qint16(reading.WD));
}

void WindRoseWindow::addLoggedPoint(float, const QList<float>& values) {
    if (values.size() < 2)
        return;
    const std::optional<qint32> direction = NumberText::roundToInt32(values[0]);
    if (!direction || *direction < std::numeric_limits<qint16>::min() ||
        *direction > std::numeric_limits<qint16>::max())
        return;
    model.addWind(values[1], qint16(*direction));
}

// A replayed day is drawn once, at its end.
void WindRoseWindow::endOfReplay() {
    surface->redraw();
}

void WindRoseWindow::clear() {
    clearSums();
}

void WindRoseWindow::addWind(float value, qint16 direction) {
    if (model.addWind(value, direction))
        surface->redraw();
}

void WindRoseWindow::clearSums() {
    model.clearSums();
    surface->redraw();
}

void WindRoseWindow::printDocument() {
    ChartPrinting::print(surface->drawing());
}

void WindRoseWindow::saveAsPdf() {
    ChartPrinting::saveAsPdf(QStringLiteral("Rose Plot"), *surface,
                             [this] { return surface->drawing(); });
}

void WindRoseWindow::resizeEvent(QResizeEvent*) {
    // A minimised window keeps the plot it had.
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (frame && frame->isMinimized())
        return;
    fitToWindow();
}

// The plot fills the window; the labels span its width, one at the top, one at the foot.
void WindRoseWindow::fitToWindow() {
    surface->setGeometry(rect());
    headWind->setGeometry(0, 0, width(), headWind->height());
    tailWind->setGeometry(0, surface->height() - tailWind->height(), width(), tailWind->height());
}
