#include "ui/charts/WindGaugeWindow.h"

#include "charts/ViewCaptions.h"
#include "charts/WindGauge.h"
#include "pages/PageFonts.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

WindDial::WindDial(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("windDirection"));
    setMinimumSize(80, 80);
}

void WindDial::setMark(int mark) {
    if (mark < 1 || mark > WindGauge::MarkCount || mark == pointerMark)
        return;
    pointerMark = mark;
    update();
}

void WindDial::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    WindGauge::draw(painter, pointerMark, size());
}

WindGaugeWindow::WindGaugeWindow(OpenViews& views, QWidget* parent)
    : LiveViewWindow(ViewTable::View::WindDirection, views, parent) {
    PageFonts::install();
    windDirection = new WindDial(this);
    value = new QLabel(QStringLiteral("0"), this);
    value->setObjectName(QStringLiteral("lblWindDirection"));
    value->setAlignment(Qt::AlignCenter);
    QFont figures(QStringLiteral("Tahoma"));
    figures.setPointSize(18);
    figures.setBold(true);
    value->setFont(figures);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(windDirection, 1);
    layout->addWidget(value);
    resize(sizeHint());
}

LiveViewWindow* WindGaugeWindow::make(ViewTable::View, OpenViews& views) {
    return new WindGaugeWindow(views);
}

void WindGaugeWindow::showReading(const WeatherRecord& reading, const QString& statusLine) {
    value->setText(QString::number(reading.WD));
    setWindowTitle(ViewCaptions::caption(view(), reading, 0, statusLine));
    windDirection->setMark(WindGauge::markOf(reading.WD));
}
