#include "ui/graphs/TrendFinderWindow.h"

#include "core/Dialogs.h"
#include "core/NumberText.h"
#include "core/SettingKeys.h"
#include "prediction/TrendColumns.h"
#include "racelog/OpenRaceLogs.h"
#include "racelog/RaceLog.h"
#include "ui/graphs/RunGraph.h"

#include <QComboBox>
#include <QLabel>
#include <array>

namespace {

const QString Caption = QStringLiteral("Run / Weather Information");

// A colour for each quantity, in the order of the quantity list, that stands out on the dark
// chart.
const std::array<QColor, TrendColumns::Quantities.size()> PlotColors{{
    {255, 220, 0},
    {255, 160, 0},
    {255, 100, 60},
    {255, 60, 160},
    {255, 255, 255},
    {0, 200, 255},
    {255, 80, 80},
    {80, 160, 255},
    {0, 255, 120},
    {180, 120, 255},
    {160, 255, 0},
    {0, 255, 255},
    {255, 140, 200},
}};

QString placementKey() {
    return SettingKeys::placementPath(u"Graph");
}

} // namespace

TrendFinderWindow::TrendFinderWindow(OpenRaceLogs& raceLogs, QWidget* parent)
    : RunGraphWindow(raceLogs,
                     {"frmGraph",
                      Caption,
                      placementKey(),
                      {820, 520},
                      {QStringLiteral("Float"), QStringLiteral("Snap")},
                      1,
                      "runGraph"},
                     parent) {
    quantityList = new QComboBox(this);
    quantityList->setObjectName(QStringLiteral("cboChart"));
    for (const TrendColumns::Quantity& quantity : TrendColumns::Quantities)
        quantityList->addItem(quantity.entry.toString());
    quantityList->setCurrentIndex(-1);
    cursorLabel = new QLabel(QStringLiteral("0.0000"), this);
    cursorLabel->setObjectName(QStringLiteral("lblCursor"));
    cursorLabel->setMinimumWidth(
        cursorLabel->fontMetrics().horizontalAdvance(QStringLiteral("00000.0000")));

    graph->xAxis->setLabel(QStringLiteral("Run"));
    for (std::size_t i = 0; i < TrendColumns::Quantities.size(); ++i) {
        QCPGraph* plot =
            graph->addPlot(TrendColumns::Quantities[i].plot.toString(), PlotColors[i], true);
        plot->removeFromLegend();
    }
    graph->legend->setBrush(QColor(0, 0, 0, 200));
    graph->legend->setBorderPen(QPen(QColor(200, 200, 200)));
    graph->legend->setTextColor(QColor(200, 200, 200));

    // Choosing the same quantity again appends its column once more.
    connect(quantityList, &QComboBox::activated, this, &TrendFinderWindow::drawQuantity);
    connect(graph, &RunGraph::cursorMoved, this, [this] {
        cursorLabel->setText(
            NumberText::format(float(graph->cursorPosition(0).y()), QStringLiteral("0.0000")));
    });
    layOut({quantityList, mouseModeList, cursorModeList, cursorLabel, nullptr});
}

QWidget* TrendFinderWindow::make(OpenRaceLogs& raceLogs) {
    return new TrendFinderWindow(raceLogs);
}

void TrendFinderWindow::logChosen() {
    Dialogs::Message question;
    question.text = QStringLiteral("Question:\r\n  Would you like to clear the graph?");
    question.title = QStringLiteral("Graph Clear");
    question.icon = Dialogs::Icon::Question;
    question.buttons = Dialogs::Buttons::YesNo;
    question.defaultAnswer = Dialogs::Answer::Yes;
    if (Dialogs::show(question) != Dialogs::Answer::Yes)
        return;
    graph->clearData();
    for (int i = 0; i < graph->graphCount(); ++i)
        graph->graph(i)->removeFromLegend();
    graph->legend->setVisible(false);
}

// The column goes on after the points its plot holds, one run further along for each value.
void TrendFinderWindow::drawQuantity(int index) {
    if (index < 0 || index >= int(TrendColumns::Quantities.size()))
        return;
    RaceLog* log = chosenLog();
    if (!log)
        return;
    const TrendColumns::Quantity& quantity = TrendColumns::Quantities[std::size_t(index)];
    const RunTable& runs = log->runs();
    const std::vector<float> values =
        TrendColumns::values([&runs](int row, int column) { return runs.cell(row, column); },
                             runs.tableRows() - 1, quantity.column);
    QCPGraph* plot = graph->plot(quantity.plot.toString());
    double run = plot->dataCount();
    for (const float value : values)
        plot->addData(run += 1, value);
    if (!plot->data()->isEmpty()) {
        plot->addToLegend();
        graph->legend->setVisible(true);
    }
    graph->fitAxes();
}
