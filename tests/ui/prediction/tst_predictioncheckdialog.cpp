#include "../PredictionWindows.h"
#include "common/ModelByHand.h"
#include "common/RunColumns.h"
#include "common/TestHome.h"
#include "core/ScriptedDialogs.h"
#include "ui/prediction/PredictionCheckDialog.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QRandomGenerator>
#include <QTableWidget>
#include <QTest>
#include <cmath>
#include <memory>
#include <qcustomplot.h>

namespace {

using namespace RunColumns;

double meanError(const QList<Run>& runs, int run, double pf) {
    double sum = 0;
    for (int reference = 0; reference < runs.size(); ++reference)
        if (reference != run)
            sum +=
                std::fabs(runs[run].et - ModelByHand::etAt(runs[reference].et, runs[reference].aa,
                                                           runs[run].aa, pf));
    return sum / double(runs.size() - 1);
}

double meanError(const QList<Run>& runs, double pf) {
    double sum = 0;
    for (int run = 0; run < runs.size(); ++run)
        sum += meanError(runs, run, pf);
    return sum / double(runs.size());
}

// Forty runs of a car with a factor of 5, ten minutes apart from 10:00am, with a little
// timing noise, times kept to 4 decimals and altitudes to whole feet.
QList<Run> fortyRuns() {
    QRandomGenerator random(40);
    const double sensitivity = 8.5e-6 - 5.0 * 8.5e-7;
    QList<Run> runs;
    for (int i = 0; i < 40; ++i) {
        const double aa = std::round(1500 + random.generateDouble() * 2000);
        const double noise = (random.generateDouble() * 2 - 1) * 0.004;
        runs.append({std::round((7.9 * std::exp(sensitivity * aa) + noise) * 1e4) / 1e4, aa});
    }
    return runs;
}

void fill(RaceLogWindow* log, const QList<Run>& runs) {
    for (int i = 0; i < runs.size(); ++i) {
        if (i > 0)
            log->grid->newRun();
        const QTime time = QTime(10, 0).addSecs(600 * i);
        setCells(log, i + 1,
                 {{Time, time.toString("hh:mmap")},
                  {Ft1320, QString::number(runs[i].et, 'f', 4)},
                  {AA, QString::number(runs[i].aa)}});
    }
}

QString fixed(double value) {
    return QString::number(value, 'f', 4);
}

// An error as the table shows it: the sign of what the four decimals keep.
QString signedFixed(double value) {
    const QString text = fixed(value);
    if (text == "0.0000" || text == "-0.0000")
        return QStringLiteral("0.0000");
    return value > 0 ? "+" + text : text;
}

} // namespace

class TestPredictionCheckDialog : public QObject {
    Q_OBJECT

    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;

    PredictionCheckDialog* openCheck(RaceLogWindow* log) {
        QAction* command = log->grid->rowMenu()->findChild<QAction*>("miPredictionCheck");
        if (!command)
            return nullptr;
        command->trigger();
        return log->findChild<PredictionCheckDialog*>("frmPredictionCheck");
    }

    // The dialog switched to every run predicted from all the others.
    PredictionCheckDialog* openCheckFromEveryOtherRun(RaceLogWindow* log) {
        PredictionCheckDialog* dialog = openCheck(log);
        dialog->findChild<QRadioButton*>("optEveryOther")->click();
        return dialog;
    }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
    }
    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    void theCommandOpensOneDialogForTheLog() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        QAction* command = log->grid->rowMenu()->findChild<QAction*>("miPredictionCheck");
        QVERIFY(command);
        QCOMPARE(command->text(), QStringLiteral("Prediction Check..."));
        PredictionCheckDialog* dialog = openCheck(log);
        QVERIFY(dialog);
        QVERIFY(dialog->isVisible());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Prediction Check"));
        QCOMPARE(openCheck(log), dialog);
        QCOMPARE(log->findChildren<PredictionCheckDialog*>().size(), 1);
    }

    void aFortyRunLogIsCheckedRunByRun() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        const QList<Run> runs = fortyRuns();
        fill(log, runs);
        log->document().setField(RaceLog::Field::PF, "4.6");
        PredictionCheckDialog* dialog = openCheckFromEveryOtherRun(log);
        auto* grid = dialog->findChild<QTableWidget*>("gridCheck");
        QCOMPARE(grid->rowCount(), 40);
        QCOMPARE(grid->horizontalHeaderItem(3)->text(), QStringLiteral("Predicted ET"));

        int worst = 0;
        for (int i = 0; i < 40; ++i) {
            // Ten minutes either side: the run before is the one a crew had in hand.
            const int reference = i == 0 ? 1 : i - 1;
            const double predicted =
                ModelByHand::etAt(runs[reference].et, runs[reference].aa, runs[i].aa, 4.6);
            const double error = runs[i].et - predicted;
            QCOMPARE(grid->item(i, 0)->text(), QString::number(i + 1));
            QCOMPARE(grid->item(i, 1)->text(), fixed(runs[i].et));
            QCOMPARE(grid->item(i, 2)->text(), QString::number(reference + 1));
            QCOMPARE(grid->item(i, 3)->text(), fixed(predicted));
            QCOMPARE(grid->item(i, 4)->text(), signedFixed(error));
            QCOMPARE(grid->item(i, 5)->text(), fixed(meanError(runs, i, 4.6)));
            if (meanError(runs, i, 4.6) > meanError(runs, worst, 4.6))
                worst = i;
        }
        const QString summary = dialog->findChild<QLabel*>("lblSummary")->text();
        QCOMPARE(summary, QStringLiteral("PF 4.6: 40 runs checked, 1560 predictions. Mean "
                                         "absolute error %1 s. Worst run: #%2, off by %3 s "
                                         "on average.")
                              .arg(fixed(meanError(runs, 4.6)))
                              .arg(worst + 1)
                              .arg(fixed(meanError(runs, worst, 4.6))));

        // Every prediction is counted once in the picture of the spread.
        auto* plot = dialog->findChild<QCustomPlot*>("plotErrors");
        auto* bars = qobject_cast<QCPBars*>(plot->plottable(0));
        double counted = 0;
        for (auto it = bars->data()->constBegin(); it != bars->data()->constEnd(); ++it)
            counted += it->value;
        QCOMPARE(counted, 1560.0);
    }

    void useFactorWritesTheBestFactorAsOneStep() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        const QList<Run> runs = fortyRuns();
        fill(log, runs);
        log->document().setField(RaceLog::Field::PF, "3");
        PredictionCheckDialog* dialog = openCheckFromEveryOtherRun(log);

        int best = 0;
        double least = 1e9;
        for (int hundredths = -2000; hundredths <= 3000; ++hundredths) {
            const double error = meanError(runs, hundredths / 100.0);
            if (error < least) {
                least = error;
                best = hundredths;
            }
        }
        const QString bestText = QString::number(best / 100.0, 'f', 2);
        QVERIFY(std::abs(best - 500) <= 10); // the car's own factor, give or take the noise
        QCOMPARE(dialog->findChild<QLabel*>("lblBestPF")->text(),
                 "Best PF: " + bestText + ", mean absolute error " +
                     fixed(meanError(runs, best / 100.0)) + " s");

        auto* use = dialog->findChild<QPushButton*>("cmdUsePF");
        QVERIFY(use->isEnabled());
        const int steps = log->document().undoStack().count();
        use->click();
        QCOMPARE(log->document().content().pf, bestText);
        QCOMPARE(log->sidePanel->pfField->text(), bestText);
        QCOMPARE(log->document().undoStack().count(), steps + 1);
        QCOMPARE(log->document().undoStack().undoText(), QStringLiteral("Use PF"));
        // The dialog checks again with the factor it wrote, which leaves nothing to use.
        QVERIFY(dialog->findChild<QLabel*>("lblSummary")->text().startsWith("PF " + bestText));
        QVERIFY(!use->isEnabled());

        log->document().undoStack().undo();
        QCOMPARE(log->document().content().pf, QStringLiteral("3"));
        QVERIFY(dialog->findChild<QLabel*>("lblSummary")->text().startsWith("PF 3:"));
        QVERIFY(use->isEnabled());
    }

    void aFactorThatIsNoNumberIsSaid() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        fill(log, fortyRuns().mid(0, 3));
        log->document().setField(RaceLog::Field::PF, "-");
        PredictionCheckDialog* dialog = openCheck(log);
        QCOMPARE(dialog->findChild<QLabel*>("lblSummary")->text(),
                 QStringLiteral("The performance factor is not a number!"));
        QCOMPARE(dialog->findChild<QTableWidget*>("gridCheck")->rowCount(), 0);
        QVERIFY(dialog->findChild<QPushButton*>("cmdUsePF")->isEnabled());
    }

    void aLogWithoutTwoComparableRunsHasNoBestFactor() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        setCells(log, 1, {{Ft1320, "9.5"}, {AA, "2000"}});
        PredictionCheckDialog* dialog = openCheckFromEveryOtherRun(log);
        QVERIFY(dialog->findChild<QLabel*>("lblSummary")->text().startsWith("No two runs"));
        QCOMPARE(dialog->findChild<QLabel*>("lblBestPF")->text(), QStringLiteral("Best PF: none"));
        QVERIFY(!dialog->findChild<QPushButton*>("cmdUsePF")->isEnabled());
        // A second run typed in while the dialog is open is checked at once.
        log->grid->newRun();
        log->document().change("Run 2", [](RaceLogData& data) {
            data.grid.setCell(2, Ft1320, "9.6");
            data.grid.setCell(2, AA, "2100");
        });
        QCOMPARE(dialog->findChild<QTableWidget*>("gridCheck")->rowCount(), 2);
    }

    void onTheDayIsTheDefaultAndPredictsEachRunFromTheOneBefore() {
        PredictionWindows windows;
        RaceLogWindow* log = windows.newLog();
        const QList<Run> runs = fortyRuns();
        fill(log, runs);
        log->document().setField(RaceLog::Field::PF, "4.6");
        PredictionCheckDialog* dialog = openCheck(log);
        QVERIFY(dialog->findChild<QRadioButton*>("optOnTheDay")->isChecked());
        QCOMPARE(dialog->findChild<QRadioButton*>("optOnTheDay")->text(),
                 QStringLiteral("As predicted on the &day"));
        QCOMPARE(dialog->findChild<QRadioButton*>("optEveryOther")->text(),
                 QStringLiteral("From &every other run"));
        auto* grid = dialog->findChild<QTableWidget*>("gridCheck");
        QCOMPARE(grid->rowCount(), 39);
        QVERIFY(grid->isColumnHidden(5));

        double sum = 0;
        int worst = 1;
        QList<double> misses;
        for (int i = 1; i < 40; ++i) {
            const double predicted =
                ModelByHand::etAt(runs[i - 1].et, runs[i - 1].aa, runs[i].aa, 4.6);
            const double error = runs[i].et - predicted;
            QCOMPARE(grid->item(i - 1, 0)->text(), QString::number(i + 1));
            QCOMPARE(grid->item(i - 1, 2)->text(), QString::number(i));
            QCOMPARE(grid->item(i - 1, 3)->text(), fixed(predicted));
            QCOMPARE(grid->item(i - 1, 4)->text(), signedFixed(error));
            sum += std::fabs(error);
            if (std::fabs(error) >
                std::fabs(runs[worst].et - ModelByHand::etAt(runs[worst - 1].et, runs[worst - 1].aa,
                                                             runs[worst].aa, 4.6)))
                worst = i;
            if (i >= 20)
                misses.append(std::fabs(error));
        }
        // The likely miss: the 16th smallest of the last twenty misses, to the thousandth.
        std::sort(misses.begin(), misses.end());
        const double worstError =
            std::fabs(runs[worst].et - ModelByHand::etAt(runs[worst - 1].et, runs[worst - 1].aa,
                                                         runs[worst].aa, 4.6));
        QCOMPARE(dialog->findChild<QLabel*>("lblSummary")->text(),
                 QStringLiteral("PF 4.6: 39 runs predicted from the run before them. Mean "
                                "absolute error %1 s. Likely miss: \u00b1%2 s (last 20 "
                                "predictions). Worst run: #%3, off by %4 s.")
                     .arg(fixed(sum / 39))
                     .arg(QString::number(misses[15], 'f', 3))
                     .arg(worst + 1)
                     .arg(fixed(worstError)));

        auto* bars =
            qobject_cast<QCPBars*>(dialog->findChild<QCustomPlot*>("plotErrors")->plottable(0));
        double counted = 0;
        for (auto it = bars->data()->constBegin(); it != bars->data()->constEnd(); ++it)
            counted += it->value;
        QCOMPARE(counted, 39.0);

        if (qEnvironmentVariableIsSet("TARNWICK_KEEP_PICTURES"))
            QVERIFY(dialog->grab().save(qEnvironmentVariable("TARNWICK_KEEP_PICTURES") +
                                        QStringLiteral("/prediction-check.png")));

        // From every other run: all forty, with their mean error over the others.
        dialog->findChild<QRadioButton*>("optEveryOther")->click();
        QCOMPARE(grid->rowCount(), 40);
        QVERIFY(!grid->isColumnHidden(5));
        QVERIFY(dialog->findChild<QLabel*>("lblSummary")->text().contains("1560 predictions"));
    }
};

QTEST_MAIN(TestPredictionCheckDialog)
#include "tst_predictioncheckdialog.moc"
