#pragma once

#include "prediction/PredictionCheck.h"

#include <QDialog>

class QCustomPlot;
class QLabel;
class QPushButton;
class QRadioButton;
class QTableWidget;
class RaceLog;

// "Prediction Check": the runs of a race log predicted from other runs, as a table of the runs
// with their prediction, a summary of how far off the predictions were, a picture of the
// spread of the errors, and the performance factor that would have erred least. "As predicted
// on the day" predicts each run from the run made before it, as the crew did; "From every
// other run" predicts each run from all the others and shows the one nearest in time. "Use
// PF" writes the best factor into the log as one step of its undo history. The dialog follows
// the log: any change of it, or its undo, checks again.
class PredictionCheckDialog : public QDialog {
    Q_OBJECT
public:
    PredictionCheckDialog(RaceLog& log, QWidget* parent);

    // The dialog of the log, opened or brought to the front.
    static PredictionCheckDialog* showFor(RaceLog& log, QWidget* parent);

private:
    void buildControls();
    PredictionCheck::Mode mode() const;
    void check();
    void showSummary(const PredictionCheck::Report& report);
    void showRuns(const PredictionCheck::Report& report);
    void showErrors(const PredictionCheck::Report& report);
    void showBestFactor(const std::optional<PredictionCheck::BestFactor>& best);
    void useBestFactor();

    RaceLog& log;
    QRadioButton* onTheDayButton;
    QRadioButton* everyOtherButton;
    QLabel* summaryLabel;
    QTableWidget* gridCheck;
    QCustomPlot* plotErrors;
    QLabel* bestPfLabel;
    QPushButton* usePfButton;
    QPushButton* closeButton;
    QString bestFactor; // the text Use PF writes; empty when there is none
};
