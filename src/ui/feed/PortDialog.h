#pragma once

#include "feed/PortSettings.h"

#include <QDialog>
#include <QList>
#include <QMap>

class FeedWatchdog;
class InstrumentConnection;
class QComboBox;
class QFormLayout;
class QLineEdit;
class QPushButton;

// The port settings: which COM port and line settings the instrument is read with, and which
// relay host and port the TCP link goes to. Apply and OK put the choice into memory and
// reopen the links at once; the settings tree gets them only when the program ends. Also how
// long the feed may stay quiet before the program warns that its weather is old, which is
// kept at once.
class PortDialog : public QDialog {
    Q_OBJECT
public:
    PortDialog(InstrumentConnection& connection, FeedWatchdog& watchdog, QWidget* parent = nullptr);

private:
    // One list of the serial line and the setting it shows.
    struct LineList {
        QComboBox* box;
        qint16 PortSettings::*setting;
        int defaultIndex; // what Restore Defaults picks
    };

    InstrumentConnection& connection;
    FeedWatchdog& watchdog;
    QComboBox* comPortList;
    QLineEdit* deviceField = nullptr; // where a COM entry has no fixed device name
    QList<LineList> lineLists;
    QComboBox* hostList;
    QComboBox* portList;
    QLineEdit* warnAfterField;
    QPushButton* okButton;
    QPushButton* cancelButton;
    QPushButton* applyButton;
    QPushButton* restoreDefaultsButton;
    QMap<int, QString> editedDevices; // by COM entry, until Apply or OK stores them

    void buildLists(QFormLayout* form);
    void showSettings();
    void followChanges();
    void centreOnScreen();

    void listChanged();
    void comPortChanged(int index);
    void showDevice(int comPort);
    void deviceEdited(const QString& device);
    void hostOrPortChanged();
    void restoreDefaults();
    void apply();
    void storeToMemory();
};
