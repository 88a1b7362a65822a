#pragma once

#include <QDialog>

#include <functional>

class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

// What a new race log starts from: the general defaults and the named race log types with
// their four default values, the pager frequency, the race tracks and the Excel template;
// and where the timing receiver's log of time slips is kept.
// The dialog keeps nothing of its own: the types' values, the template and the time-slip log
// are written by OK
// and by Save, while the frequency, the tracks and a removed type are written the moment
// they change, so Cancel does not take them back.
class ConfigurationDialog : public QDialog {
    Q_OBJECT
public:
    // setPagerFrequency sets the main window's frequency, which the pager follows at once.
    explicit ConfigurationDialog(std::function<void(int)> setPagerFrequency,
                                 QWidget* parent = nullptr);

private:
    // Building the window.
    QWidget* defaultsPage();
    QWidget* tracksPage();
    QWidget* templatesPage();
    void addFieldRules();
    void connectCommands();

    // The load, step by step in order.
    void load();
    void loadTemplate();
    void loadTimeSlipLog();
    void fillRaceTracks();
    bool loadPagerFrequency();
    void fillPageIdentifiers();
    void loadFields();

    // Saving, by OK and by Save.
    void save();
    void saveTemplate();
    void saveTimeSlipLog();
    void saveFields();

    // The commands.
    void saveSetting();
    void removeSetting();
    void pageIdentifierChosen();
    void pagerFrequencyChosen(int choice);
    void addTrack();
    void removeTrack();
    void chooseTemplate();
    void chooseTimeSlipLog();

    std::function<void(int)> setPagerFrequency;

    QTabWidget* tabs;
    // Defaults.
    QComboBox* pageIdentifierList;
    QPushButton* saveSettingButton;
    QPushButton* removeSettingButton;
    QLineEdit* carNumberField;
    QLineEdit* pfField;
    QLineEdit* tsrField;
    QLineEdit* targetEtField;
    QComboBox* pagerFrequencyList;
    // Race Tracks.
    QComboBox* raceTrackList;
    QPushButton* addTrackButton;
    QPushButton* removeTrackButton;
    // Templates.
    QRadioButton* defaultTemplateOption;
    QRadioButton* folderTemplateOption;
    QLineEdit* templateFileField;
    QPushButton* folderButton;
    // The timing receiver's log, for a PC where the receiver's software doesn't say where it is.
    QLineEdit* iCardLogFileField;
    QPushButton* browseICardLogButton;

    QPushButton* okButton;
    QPushButton* cancelButton;
};
