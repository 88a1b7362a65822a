#include "ui/charts/WeatherDisplayWindow.h"

#include "charts/ViewCaptions.h"
#include "charts/WeatherBoxes.h"
#include "pages/PageFonts.h"

#include <QFontMetricsF>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <array>

namespace {

// The boxes stand in one, three or five columns, read down each column.
constexpr std::array<int, 3> Arrangements{1, 3, 5};
// A box takes three fifths of its column and its label the rest, each less a little room
// for frames and spacing.
constexpr double BoxShare = 0.6;
constexpr double BoxPadding = 14;
// A box is its figures and its frame: the room a row needs beyond the figures.
constexpr double BoxFrame = 12;

// The largest figures that fit a window of this size in this many columns: a pressure of
// 29.921 fits its box, "TEMP:" its label, and a box with its frame fits its row.
double figureSize(const QSize& window, int columns) {
    constexpr double Sample = 100; // the pixel size at which the texts are measured
    QFont figures(QStringLiteral("Tahoma"));
    figures.setPixelSize(int(Sample));
    const QFontMetricsF metrics(figures);
    const double rows = double(WeatherBoxes::Count / columns);
    const double column = window.width() / double(columns);
    const double boxRoom = column * BoxShare - BoxPadding;
    const double labelRoom = column * (1 - BoxShare) - BoxPadding;
    return std::min({(window.height() / rows - BoxFrame) * 0.8,
                     Sample * boxRoom / metrics.horizontalAdvance(QStringLiteral("29.921")),
                     Sample * labelRoom / metrics.horizontalAdvance(QStringLiteral("TEMP:"))});
}

} // namespace

WeatherDisplayWindow::WeatherDisplayWindow(OpenViews& views, QWidget* parent)
    : LiveViewWindow(ViewTable::View::Weather, views, parent), grid(new QGridLayout(this)) {
    PageFonts::install();
    grid->setContentsMargins(6, 6, 6, 6);
    for (const WeatherBoxes::Box& box : WeatherBoxes::Boxes) {
        auto* label = new QLabel(WeatherBoxes::labelText(box), this);
        label->setObjectName(WeatherBoxes::labelName(box));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        auto* text = new QLineEdit(this);
        text->setObjectName(WeatherBoxes::boxName(box));
        text->setReadOnly(true);
        text->setToolTip(box.toolTip.toString());
        label->setToolTip(box.toolTip.toString());
        label->setBuddy(text);
        // The window sets the width, and the figures follow it; a box is as high as its
        // figures, in the middle of its row.
        for (QWidget* widget : {static_cast<QWidget*>(label), static_cast<QWidget*>(text)})
            widget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        labels << label;
        boxList << text;
    }
    resize(sizeHint());
    fitFigures();
}

// Puts the boxes in the columns, in their order down each column.
void WeatherDisplayWindow::arrange(int count) {
    columns = count;
    for (int column = 0; column < 2 * Arrangements.back(); ++column)
        grid->setColumnStretch(column, 0);
    for (int row = 0; row < WeatherBoxes::Count; ++row)
        grid->setRowStretch(row, 0);
    const int rows = WeatherBoxes::Count / columns;
    for (int i = 0; i < WeatherBoxes::Count; ++i) {
        const int row = i % rows;
        const int column = i / rows;
        grid->addWidget(labels[i], row, column * 2, Qt::AlignVCenter);
        grid->addWidget(boxList[i], row, column * 2 + 1, Qt::AlignVCenter);
        grid->setRowStretch(row, 1);
        grid->setColumnStretch(column * 2, 2);
        grid->setColumnStretch(column * 2 + 1, 3);
    }
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

void WeatherDisplayWindow::fitFigures() {
    const auto larger = [this](int a, int b) {
        return figureSize(size(), a) < figureSize(size(), b);
    };
    const int best = *std::max_element(Arrangements.begin(), Arrangements.end(), larger);
    if (best != columns)
        arrange(best);
    QFont figures(QStringLiteral("Tahoma"));
    figures.setPixelSize(std::max(8, int(figureSize(size(), columns))));
    for (QLabel* label : labels)
        label->setFont(figures);
    for (QLineEdit* box : boxList)
        box->setFont(figures);
}
