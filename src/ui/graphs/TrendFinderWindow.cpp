#include "ui/graphs/TrendFinderWindow.h"

#include "core/Dialogs.h"
#include "core/NumberText.h"
#include "core/SettingKeys.h"
#include "prediction/TrendColumns.h"
#include "racelog/OpenRaceLogs.h"
#include "racelog/RaceLog.h"
#include "ui/charts/ChartPrinting.h"
#include "ui/graphs/RaceLogList.h"
#include "ui/graphs/RunGraph.h"
#include "ui/shell/WindowPlacement.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
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

TrendFinderWindow::TrendFinderWindow(OpenRaceLogs& raceLogs, QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmGraph"));
    new KeptPlacement(*this, placementKey());
    setWindowTitle(Caption);
    setAttribute(Qt::WA_DeleteOnClose);

    cboRaceLogs = new QComboBox(this);
    cboRaceLogs->setObjectName(QStringLiteral("cboRaceLogs"));
    cboRaceLogs->setToolTip(QStringLiteral("Race Logs"));
    cboRaceLogs->setMinimumContentsLength(14);
    cboChart = new QComboBox(this);
    cboChart->setObjectName(QStringLiteral("cboChart"));
    for (const TrendColumns::Quantity& quantity : TrendColumns::Quantities)
        cboChart->addItem(quantity.entry.toString());
    cboChart->setCurrentIndex(-1);
    cboGraph = new QComboBox(this);
    cboGraph->setObjectName(QStringLiteral("cboGraph"));
    cboGraph->addItems(RunGraph::MouseModes);
    cboCursors = new QComboBox(this);
    cboCursors->setObjectName(QStringLiteral("cboCursors"));
    cboCursors->addItems({QStringLiteral("Float"), QStringLiteral("Snap")});
    lblCursor = new QLabel(QStringLiteral("0.0000"), this);
    lblCursor->setObjectName(QStringLiteral("lblCursor"));
    lblCursor->setMinimumWidth(
        lblCursor->fontMetrics().horizontalAdvance(QStringLiteral("00000.0000")));

    runGraph = new RunGraph(1, this);
    runGraph->setObjectName(QStringLiteral("runGraph"));
    runGraph->xAxis->setLabel(QStringLiteral("Run"));
    for (std::size_t i = 0; i < TrendColumns::Quantities.size(); ++i) {
        QCPGraph* plot =
            runGraph->addPlot(TrendColumns::Quantities[i].plot.toString(), PlotColors[i], true);
        plot->removeFromLegend();
    }
    runGraph->legend->setBrush(QColor(0, 0, 0, 200));
    runGraph->legend->setBorderPen(QPen(QColor(200, 200, 200)));
    runGraph->legend->setTextColor(QColor(200, 200, 200));

    auto* controls = new QHBoxLayout;
    controls->addWidget(new QLabel(QStringLiteral("Race Logs"), this));
    controls->addWidget(cboRaceLogs);
    controls->addWidget(cboChart);
    controls->addWidget(cboGraph);
    controls->addWidget(cboCursors);
    controls->addWidget(lblCursor);
    controls->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(controls);
    layout->addWidget(runGraph, 1);

    // Choosing a log draws nothing; the quantity chosen afterwards does.
    logs = new RaceLogList(*cboRaceLogs, raceLogs);
    cboRaceLogs->setCurrentIndex(-1);
    connect(cboRaceLogs, &QComboBox::currentIndexChanged, this, &TrendFinderWindow::askToClear);
    // Choosing the same quantity again appends its column once more.
    connect(cboChart, &QComboBox::activated, this, &TrendFinderWindow::drawQuantity);
    connect(cboGraph, &QComboBox::currentIndexChanged, this, &TrendFinderWindow::chooseMouseMode);
    connect(cboCursors, &QComboBox::currentIndexChanged, runGraph, &RunGraph::chooseCursorMode);
    connect(runGraph, &RunGraph::cursorMoved, this, [this] {
        lblCursor->setText(
            NumberText::Format(float(runGraph->cursorPosition(0).y()), QStringLiteral("0.0000")));
    });

    cboCursors->setCurrentIndex(0);
    chooseMouseMode(0);
}

QWidget* TrendFinderWindow::make(OpenRaceLogs& raceLogs) {
    return new TrendFinderWindow(raceLogs);
}

QSize TrendFinderWindow::sizeHint() const {
    return {820, 520};
}

// A new log may be laid over what stands or start on a clean chart.
void TrendFinderWindow::askToClear() {
    if (cboRaceLogs->currentIndex() < 0)
        return;
    Dialogs::Message question;
    question.text = QStringLiteral("Question:\r\n  Would you like to clear the graph?");
    question.title = QStringLiteral("Graph Clear");
    question.icon = Dialogs::Icon::Question;
    question.buttons = Dialogs::Buttons::YesNo;
    question.defaultAnswer = Dialogs::Answer::Yes;
    if (Dialogs::Show(question) != Dialogs::Answer::Yes)
        return;
    runGraph->clearData();
    for (int i = 0; i < runGraph->graphCount(); ++i)
        runGraph->graph(i)->removeFromLegend();
    runGraph->legend->setVisible(false);
}

// The column goes on after the points its plot holds, one run further along for each value.
void TrendFinderWindow::drawQuantity(int index) {
    if (index < 0 || index >= int(TrendColumns::Quantities.size()) ||
        cboRaceLogs->currentIndex() < 0)
        return;
    RaceLog* log = logs->chosen();
    if (!log)
        return;
    const TrendColumns::Quantity& quantity = TrendColumns::Quantities[std::size_t(index)];
    const RunTable& runs = log->runs();
    const std::vector<float> values =
        TrendColumns::values([&runs](int row, int column) { return runs.cell(row, column); },
                             runs.tableRows() - 1, quantity.column);
    QCPGraph* plot = runGraph->plot(quantity.plot.toString());
    double run = plot->dataCount();
    for (const float value : values)
        plot->addData(run += 1, value);
    if (!plot->data()->isEmpty()) {
        plot->addToLegend();
        runGraph->legend->setVisible(true);
    }
    runGraph->fitAxes();
}

void TrendFinderWindow::chooseMouseMode(int mode) {
    runGraph->setMouseMode(mode);
    cboCursors->setVisible(mode == RunGraph::Cursors);
    if (mode == RunGraph::Cursors) {
        cboCursors->setCurrentIndex(0);
        runGraph->chooseCursorMode(0);
    }
}

void TrendFinderWindow::printDocument() {
    ChartPrinting::print(ChartPrinting::drawingOf(*runGraph));
}

void TrendFinderWindow::saveAsPdf() {
    ChartPrinting::saveAsPdf(Caption, *runGraph);
}
