#include "ui/charts/WeatherDisplayWindow.h"

#include "charts/ViewCaptions.h"
#include "charts/WeatherBoxes.h"
#include "output/PageFonts.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace {

// Three columns of five, read down each column.
constexpr int Rows = 5;
constexpr int Columns = 3;

} // namespace

WeatherDisplayWindow::WeatherDisplayWindow(OpenViews& views, QWidget* parent)
    : LiveViewWindow(ViewTable::View::Weather, views, parent) {
    PageFonts::install();
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(6, 6, 6, 6);
    for (int i = 0; i < WeatherBoxes::Count; ++i) {
        const WeatherBoxes::Box& box = WeatherBoxes::Boxes[std::size_t(i)];
        auto* label = new QLabel(WeatherBoxes::labelText(box), this);
        label->setObjectName(WeatherBoxes::labelName(box));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        auto* text = new QLineEdit(this);
        text->setObjectName(WeatherBoxes::boxName(box));
        text->setReadOnly(true);
        text->setToolTip(box.toolTip.toString());
        label->setToolTip(box.toolTip.toString());
        label->setBuddy(text);
        // The figures set the size, not the other way round: the window may be made small.
        for (QWidget* widget : {static_cast<QWidget*>(label), static_cast<QWidget*>(text)})
            widget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        const int row = i % Rows;
        const int column = i / Rows;
        grid->addWidget(label, row, column * 2);
        grid->addWidget(text, row, column * 2 + 1);
        grid->setColumnStretch(column * 2, 2);
        grid->setColumnStretch(column * 2 + 1, 3);
        labels << label;
        boxList << text;
    }
    resize(sizeHint());
    fitFigures();
}

LiveViewWindow* WeatherDisplayWindow::make(ViewTable::View, OpenViews& views) {
    return new WeatherDisplayWindow(views);
}

void WeatherDisplayWindow::showReading(const WeatherRecord& reading, const QString& statusLine) {
    setWindowTitle(ViewCaptions::caption(view(), reading, 0, statusLine));
    for (const QStringView name : WeatherBoxes::FillOrder) {
        const WeatherBoxes::Box& box = WeatherBoxes::find(name);
        boxList[&box - WeatherBoxes::Boxes.data()]->setText(box.text(reading));
    }
}

void WeatherDisplayWindow::resizeEvent(QResizeEvent*) {
    fitFigures();
}

// The figures take about half the height of a row, and no more than lets a box show a
// pressure of 29.921 with room to spare.
void WeatherDisplayWindow::fitFigures() {
    const double rowHeight = height() / double(Rows);
    const double boxWidth = width() / double(Columns) * 3 / 5;
    const int pixels = std::max(8, int(std::min(rowHeight * 0.5, boxWidth / 4.5)));
    QFont figures(QStringLiteral("Tahoma"));
    figures.setPixelSize(pixels);
    for (QLabel* label : labels)
        label->setFont(figures);
    for (QLineEdit* box : boxList)
        box->setFont(figures);
}
