#pragma once

#include "racelog/RaceLog.h"

#include <QTabWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

// The side panel of a race log window (objectName "tabLog"): the log's settings, its notes
// and the inputs of its prediction, on three tabs. Each text field filters the keys typed
// into it, selects its whole text when entered, and puts right or complains about what it
// holds when left.
class LogSidePanel : public QTabWidget {
    Q_OBJECT
public:
    enum Tab { SettingsTab = 0, NotesTab = 1, PredictTab = 2 };

    explicit LogSidePanel(QWidget* parent = nullptr);

    // The height at which every tab shows all of its fields without scrolling.
    int heightShowingEveryField() const;

    // The race tracks the user keeps, as the items of raceTrackList.
    void fillRaceTracks();

    // Shows the fields of the log and keeps showing them as they change; what the user types
    // goes into the log at once. The choice of a reference run is the window's to make.
    void showLog(RaceLog& log);

    // The settings tab.
    QLineEdit* dateField;
    QToolButton* todayButton;
    QComboBox* raceTrackList;
    QLineEdit* pfField;
    QLineEdit* tsrField;
    QLineEdit* pageIdentifierField;
    QLineEdit* carNumberField;
    QLineEdit* fileNameField;
    // The notes tab.
    QPlainTextEdit* notesField;
    // The predict tab.
    QLineEdit* targetEtField;
    QLineEdit* aaField;
    QLineEdit* vpField;
    QComboBox* referenceRunList;
    QLineEdit* trackOffsetField;
    QPushButton* useTrackButton;
    QPushButton* predictButton;
    QCheckBox* pagerPredictionsBox;
    // How far to trust the prediction: the likely miss, the track's drift and the outlook.
    QLabel* spreadLabel;
    QLabel* trackLabel;
    QLabel* outlookLabel;

signals:
    // The page identifier was left; its text is trimmed.
    void pageIdentifierLeft(const QString& identifier);
    void predictRequested();

private:
    QWidget* settingsPage();
    QWidget* notesPage();
    QWidget* predictPage();
    void addFieldRules();
    // The control that shows the field, found by the name the table of the fields gives it.
    QWidget* fieldControl(RaceLog::Field field) const;
    void showField(const RaceLog& log, RaceLog::Field field);
    void showReferenceRuns(const RaceLog& log);
    void showFile(const RaceLog& log);
    void showTrust(const RaceLog& log);
    void complain(QLineEdit* field, const QString& text, const QString& title);
};
