#include "ui/graphs/RunGraphWindow.h"

#include "ui/charts/ChartPrinting.h"
#include "ui/graphs/RaceLogList.h"
#include "ui/graphs/RunGraph.h"
#include "ui/shell/WindowPlacement.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

RunGraphWindow::RunGraphWindow(OpenRaceLogs& raceLogs, const Look& look, QWidget* parent)
    : QWidget(parent), caption(look.caption), size(look.size) {
    setObjectName(QLatin1String(look.objectName));
    new KeptPlacement(*this, look.placementKey);
    setWindowTitle(caption);
    setAttribute(Qt::WA_DeleteOnClose);

    raceLogList = new QComboBox(this);
    raceLogList->setObjectName(QStringLiteral("cboRaceLogs"));
    raceLogList->setToolTip(QStringLiteral("Race Logs"));
    raceLogList->setMinimumContentsLength(14);
    mouseModeList = new QComboBox(this);
    mouseModeList->setObjectName(QStringLiteral("cboGraph"));
    mouseModeList->addItems(RunGraph::MouseModes);
    cursorModeList = new QComboBox(this);
    cursorModeList->setObjectName(QStringLiteral("cboCursors"));
    cursorModeList->addItems(look.cursorModes);
    graph = new RunGraph(look.cursorCount, this);
    graph->setObjectName(QLatin1String(look.graphName));

    // Nothing is chosen until the user chooses a log.
    listedLogs = new RaceLogList(*raceLogList, raceLogs);
    raceLogList->setCurrentIndex(-1);
    connect(raceLogList, &QComboBox::currentIndexChanged, this, [this](int entry) {
        if (entry >= 0)
            logChosen();
    });
    connect(mouseModeList, &QComboBox::currentIndexChanged, this,
            [this](int mode) { chooseMouseMode(mode); });
    connect(cursorModeList, &QComboBox::currentIndexChanged, this,
            [this](int mode) { chooseCursorMode(mode); });
}

void RunGraphWindow::layOut(std::initializer_list<QWidget*> bar) {
    auto* controls = new QHBoxLayout;
    controls->addWidget(new QLabel(QStringLiteral("Race Logs"), this));
    controls->addWidget(raceLogList);
    for (QWidget* control : bar) {
        if (control)
            controls->addWidget(control);
        else
            controls->addStretch();
    }
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(controls);
    layout->addWidget(graph, 1);

    cursorModeList->setCurrentIndex(0);
    chooseMouseMode(0);
}

void RunGraphWindow::chooseMouseMode(int mode) {
    graph->setMouseMode(mode);
    cursorModeList->setVisible(mode == RunGraph::Cursors);
    if (mode == RunGraph::Cursors) {
        cursorModeList->setCurrentIndex(0);
        chooseCursorMode(0);
    }
}

void RunGraphWindow::chooseCursorMode(int mode) {
    graph->chooseCursorMode(mode);
}

RaceLog* RunGraphWindow::chosenLog() {
    return listedLogs->chosen();
}

void RunGraphWindow::printDocument() {
    ChartPrinting::print(ChartPrinting::drawingOf(*graph));
}

void RunGraphWindow::saveAsPdf() {
    ChartPrinting::saveAsPdf(caption, *graph);
}
