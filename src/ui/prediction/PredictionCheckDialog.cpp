#include "ui/prediction/PredictionCheckDialog.h"

#include "core/NumberText.h"
#include "prediction/LikelyMiss.h"
#include "prediction/TrustTexts.h"
#include "racelog/RaceLog.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>
#include <cmath>
#include <qcustomplot.h>

namespace {

using NumberText::format;

const QString Title = QStringLiteral("Prediction Check");

QString seconds(double value) {
    return format(value, "0.0000") + QStringLiteral(" s");
}

// An error with its sign shown, as far as the shown digits go: "+0.0123", "-0.0040", and
// "0.0000" for an error that rounds away.
QString signedSeconds(double value) {
    const double shown = std::round(value * 1e4) / 1e4;
    if (shown == 0)
        return QStringLiteral("0.0000");
    return (shown > 0 ? QStringLiteral("+") : QString()) + format(shown, "0.0000");
}

QTableWidgetItem* cell(const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return item;
}

} // namespace

PredictionCheckDialog::PredictionCheckDialog(RaceLog& log, QWidget* parent)
    : QDialog(parent), log(log) {
    setObjectName(QStringLiteral("frmPredictionCheck"));
    setWindowTitle(Title);
    setAttribute(Qt::WA_DeleteOnClose);
    buildControls();
    // Whatever changes the log, or takes a change back, changes what its runs say.
    connect(&log.undoStack(), &QUndoStack::indexChanged, this, &PredictionCheckDialog::check);
    connect(usePfButton, &QPushButton::clicked, this, &PredictionCheckDialog::useBestFactor);
    connect(closeButton, &QPushButton::clicked, this, &QDialog::close);
    for (QRadioButton* button : {onTheDayButton, everyOtherButton})
        connect(button, &QRadioButton::toggled, this, [this](bool on) {
            if (on)
                check();
        });
    check();
}

PredictionCheckDialog* PredictionCheckDialog::showFor(RaceLog& log, QWidget* parent) {
    auto* dialog = parent->findChild<PredictionCheckDialog*>(QString(), Qt::FindDirectChildrenOnly);
    if (!dialog)
        dialog = new PredictionCheckDialog(log, parent);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    return dialog;
}

void PredictionCheckDialog::buildControls() {
    onTheDayButton = new QRadioButton(QStringLiteral("As predicted on the &day"));
    onTheDayButton->setObjectName(QStringLiteral("optOnTheDay"));
    onTheDayButton->setToolTip(
        QStringLiteral("Each run predicted from the run made before it, as the crew had it"));
    onTheDayButton->setChecked(true);
    everyOtherButton = new QRadioButton(QStringLiteral("From &every other run"));
    everyOtherButton->setObjectName(QStringLiteral("optEveryOther"));
    everyOtherButton->setToolTip(
        QStringLiteral("Each run predicted from all the others: how well the factor fits"));

    summaryLabel = new QLabel;
    summaryLabel->setObjectName(QStringLiteral("lblSummary"));
    summaryLabel->setWordWrap(true);

    gridCheck = new QTableWidget(0, 6);
    gridCheck->setObjectName(QStringLiteral("gridCheck"));
    gridCheck->setHorizontalHeaderLabels(
        {"Run", "ET", "Reference", "Predicted ET", "Error", "Mean Error"});
    gridCheck->horizontalHeaderItem(5)->setToolTip(
        QStringLiteral("The mean absolute error of the run predicted from every other run"));
    gridCheck->verticalHeader()->hide();
    gridCheck->verticalHeader()->setDefaultSectionSize(gridCheck->fontMetrics().height() + 6);
    gridCheck->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    gridCheck->setSelectionBehavior(QAbstractItemView::SelectRows);

    plotErrors = new QCustomPlot;
    plotErrors->setObjectName(QStringLiteral("plotErrors"));
    plotErrors->setMinimumSize(260, 200);
    plotErrors->xAxis->setLabel(QStringLiteral("Error, actual - predicted (s)"));
    plotErrors->yAxis->setLabel(QStringLiteral("Predictions"));
    auto* bars = new QCPBars(plotErrors->xAxis, plotErrors->yAxis);
    bars->setName(QStringLiteral("errors"));
    bars->setPen(QPen(QColor(0, 70, 140)));
    bars->setBrush(QColor(70, 130, 200));
    // A perfect prediction: the errors of a well-tuned log gather round this line.
    auto* zero = new QCPItemStraightLine(plotErrors);
    zero->point1->setCoords(0, 0);
    zero->point2->setCoords(0, 1);
    zero->setPen(QPen(QColor(200, 40, 40), 1, Qt::DashLine));

    bestPfLabel = new QLabel;
    bestPfLabel->setObjectName(QStringLiteral("lblBestPF"));
    usePfButton = new QPushButton(QStringLiteral("&Use PF"));
    usePfButton->setObjectName(QStringLiteral("cmdUsePF"));
    usePfButton->setToolTip(QStringLiteral("Write the best performance factor into the race log"));
    closeButton = new QPushButton(QStringLiteral("Close"));
    closeButton->setObjectName(QStringLiteral("cmdClose"));

    auto* split = new QSplitter;
    split->addWidget(gridCheck);
    split->addWidget(plotErrors);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);
    auto* bar = new QHBoxLayout;
    bar->addWidget(bestPfLabel);
    bar->addWidget(usePfButton);
    bar->addStretch();
    bar->addWidget(closeButton);
    auto* modes = new QHBoxLayout;
    modes->addWidget(onTheDayButton);
    modes->addWidget(everyOtherButton);
    modes->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(modes);
    layout->addWidget(summaryLabel);
    layout->addWidget(split, 1);
    layout->addLayout(bar);
    resize(820, 480);
}

PredictionCheck::Mode PredictionCheckDialog::mode() const {
    return onTheDayButton->isChecked() ? PredictionCheck::Mode::OnTheDay
                                       : PredictionCheck::Mode::EveryOther;
}

void PredictionCheckDialog::check() {
    const PredictionCheck::Report report = PredictionCheck::check(log, mode());
    showSummary(report);
    showRuns(report);
    showErrors(report);
    showBestFactor(report.best);
}

void PredictionCheckDialog::showSummary(const PredictionCheck::Report& report) {
    if (!report.factorIsNumber) {
        summaryLabel->setText(QStringLiteral("The performance factor is not a number!"));
        return;
    }
    if (report.runs.isEmpty()) {
        summaryLabel->setText(QStringLiteral(
            "No two runs have a time at the same distance and an AA, so no run can be "
            "predicted from another."));
        return;
    }
    double worstError = 0;
    for (const auto& run : report.runs) {
        if (run.nearest.run == report.worstRun)
            worstError = run.meanAbsoluteError;
    }
    if (mode() == PredictionCheck::Mode::OnTheDay) {
        summaryLabel->setText(
            QStringLiteral("PF %1: %2 runs predicted from the run before them. Mean absolute "
                           "error %3. %4. Worst run: #%5, off by %6.")
                .arg(log.content().pf)
                .arg(report.runs.size())
                .arg(seconds(report.meanAbsoluteError))
                .arg(TrustTexts::likelyMiss(LikelyMiss::of(report.predictions)))
                .arg(report.worstRun)
                .arg(seconds(worstError)));
        return;
    }
    summaryLabel->setText(
        QStringLiteral("PF %1: %2 runs checked, %3 predictions. Mean absolute error %4. "
                       "Worst run: #%5, off by %6 on average.")
            .arg(log.content().pf)
            .arg(report.runs.size())
            .arg(report.predictions.size())
            .arg(seconds(report.meanAbsoluteError))
            .arg(report.worstRun)
            .arg(seconds(worstError)));
}

// On the day a run has one prediction, so its mean error is its error and is not shown.
void PredictionCheckDialog::showRuns(const PredictionCheck::Report& report) {
    gridCheck->setColumnHidden(5, mode() == PredictionCheck::Mode::OnTheDay);
    gridCheck->setRowCount(int(report.runs.size()));
    for (int row = 0; row < report.runs.size(); ++row) {
        const PredictionCheck::RunCheck& run = report.runs[row];
        const PredictionCheck::Prediction& nearest = run.nearest;
        gridCheck->setItem(row, 0, cell(QString::number(nearest.run)));
        gridCheck->setItem(row, 1, cell(format(nearest.actualEt, "0.0000")));
        gridCheck->setItem(row, 2, cell(QString::number(nearest.reference)));
        gridCheck->setItem(row, 3, cell(format(nearest.et.predictedEt, "0.0000")));
        gridCheck->setItem(row, 4, cell(signedSeconds(nearest.error())));
        gridCheck->setItem(row, 5, cell(format(run.meanAbsoluteError, "0.0000")));
    }
}

void PredictionCheckDialog::showErrors(const PredictionCheck::Report& report) {
    const PredictionCheck::Histogram bins = PredictionCheck::histogram(report.predictions);
    QVector<double> keys;
    QVector<double> counts;
    for (int i = 0; i < bins.counts.size(); ++i) {
        keys.append(bins.start + (i + 0.5) * bins.width);
        counts.append(bins.counts[i]);
    }
    auto* bars = qobject_cast<QCPBars*>(plotErrors->plottable(0));
    bars->setWidth(bins.width);
    bars->setData(keys, counts, true);
    if (!keys.isEmpty()) {
        plotErrors->xAxis->setRange(bins.start, bins.start + bins.width * bins.counts.size());
        plotErrors->yAxis->setRange(0, *std::max_element(counts.begin(), counts.end()) * 1.1);
    }
    plotErrors->replot();
}

void PredictionCheckDialog::showBestFactor(const std::optional<PredictionCheck::BestFactor>& best) {
    bestFactor = best ? format(best->performanceFactor, "0.00") : QString();
    bestPfLabel->setText(best ? QStringLiteral("Best PF: %1, mean absolute error %2")
                                    .arg(bestFactor, seconds(best->meanAbsoluteError))
                              : QStringLiteral("Best PF: none"));
    const auto current = NumberText::toDouble(log.content().pf);
    usePfButton->setEnabled(best && (!current || *current != best->performanceFactor));
}

void PredictionCheckDialog::useBestFactor() {
    const QString factor = bestFactor;
    log.change(QStringLiteral("Use PF"), [&factor](RaceLogData& data) { data.pf = factor; });
}
