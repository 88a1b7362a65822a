#include "common/TestHome.h"
#include "core/DateText.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "feed/WeatherStation.h"
#include "racelog/CellColor.h"
#include "racelog/Database.h"
#include "racelog/LogFieldTable.h"
#include "racelog/RunTable.h"
#include "ui/racelog/LogSidePanel.h"
#include "ui/racelog/RaceLogWindow.h"
#include "ui/racelog/RunGrid.h"
#include "ui/racelog/ShowColumnMenu.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <memory>

namespace {

const QString LogColumnsKey = QStringLiteral("SOFTWARE\\Zorvane\\LogColumns\\");
const QString DefaultsKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\");

QStringList items(const QComboBox* box) {
    QStringList all;
    for (int i = 0; i < box->count(); ++i)
        all << box->itemText(i);
    return all;
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A log window on its own, loaded as a new log of a type in a slot.
struct LogWindow {
    explicit LogWindow(const QString& type = QString(), int slot = 0) {
        log.document().setSlot(slot);
        log.raceLogType = type;
        log.resize(900, 500);
        log.load(QColor(0x33, 0x66, 0x99));
    }
    RunTable& table() { return log.grid->table(); }
    LogSidePanel& panel() { return *log.sidePanel; }
    QAction* menuItem(const char* name) { return log.showColumnMenu->findChild<QAction*>(name); }
    // Shown and in front, with the side panel open, so fields can take the focus.
    void showWithPanel() {
        log.show();
        QVERIFY(QTest::qWaitForWindowActive(&log));
        emit log.grid->panelToggleRequested();
    }
    // Enters one field and leaves it for another.
    void leave(QWidget* field, QWidget* next) {
        field->setFocus();
        QVERIFY(field->hasFocus());
        next->setFocus();
    }

    WeatherStation station;
    RunClipboard::Runs clipboard;
    RaceLogWindow log{station, clipboard};
};

} // namespace

class TestRaceLogWindow : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<ScriptedDialogs> dialogs;

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        dialogs = std::make_unique<ScriptedDialogs>();
    }
    void cleanup() {
        dialogs.reset();
        home.reset();
    }

    void aNewLogHasOneEmptyRunAndItIsTheReference() {
        LogWindow window;
        RaceLogWindow& log = window.log;
        QCOMPARE(log.objectName(), QStringLiteral("frmLog"));
        QCOMPARE(log.grid->objectName(), QStringLiteral("gridLog"));
        QCOMPARE(window.table().tableRows(), 2);
        QCOMPARE(window.table().cell(1, 0), QStringLiteral("1"));
        for (int column = 1; column < RunTable::ColumnCount; ++column)
            QCOMPARE(window.table().cell(1, column), QString());
        QCOMPARE(items(window.panel().referenceRunList), QStringList{"1"});
        QCOMPARE(window.panel().referenceRunList->currentIndex(), 0);
        QVERIFY(window.table().look(1, 0).bold);
        QCOMPARE(window.table().look(1, 0).background, CellColor::ReferenceRun);
        QVERIFY(log.document().filePath().isEmpty());
        QVERIFY(log.document().fileTitle().isEmpty());
        QVERIFY(log.document().prediction().line().pagerMessage.isEmpty());
        QCOMPARE(log.windowTitle(), QString());
    }

    void aNewLogStartsWithTheFieldsOfAnEmptyLog() {
        LogWindow window;
        LogSidePanel& panel = window.panel();
        QCOMPARE(panel.pfField->text(), QStringLiteral("0"));
        QCOMPARE(panel.tsrField->text(), QStringLiteral("0"));
        QCOMPARE(panel.targetEtField->text(), QStringLiteral("0.00"));
        QCOMPARE(panel.aaField->text(), QStringLiteral("0.00"));
        QCOMPARE(panel.vpField->text(), QStringLiteral("0.00"));
        QCOMPARE(panel.dateField->text(), QString());
        QCOMPARE(panel.carNumberField->text(), QString());
        QCOMPARE(panel.pageIdentifierField->text(), QString());
    }

    void theSidePanelHasItsTabsAndCaptions() {
        LogWindow window;
        LogSidePanel& panel = window.panel();
        QCOMPARE(panel.objectName(), QStringLiteral("tabLog"));
        QCOMPARE(panel.count(), 3);
        QCOMPARE(panel.tabText(0), QStringLiteral(" Settings"));
        QCOMPARE(panel.tabText(1), QStringLiteral(" Notes"));
        QCOMPARE(panel.tabText(2), QStringLiteral("Predict..."));
        const QList<QPair<const char*, QString>> captions{{"lblDate", "Date"},
                                                          {"lblRaceTrack", "Race Track"},
                                                          {"lblPF", "Performance Factor"},
                                                          {"lblTSR", "Throttle Stop Ratio"},
                                                          {"lblPageIdentifier", "Page Identifier"},
                                                          {"lblCarNumber", "Car Number"},
                                                          {"lblFileName", "File Name"},
                                                          {"lblTargetET", "Target ET"},
                                                          {"lblAA", "AA"},
                                                          {"lblVP", "VP"},
                                                          {"lblRefRun", "Reference Run"}};
        for (const auto& [name, caption] : captions)
            QCOMPARE(panel.findChild<QLabel*>(name)->text(), caption);
        QCOMPARE(panel.findChild<QToolButton*>("imgDate")->toolTip(),
                 QStringLiteral("Today's Date"));
        QCOMPARE(panel.findChild<QPushButton*>("cmdPredict")->text(), QStringLiteral("Predict"));
        QCOMPARE(panel.pagerPredictionsBox->text(), QStringLiteral("Pager Predictions"));
        QVERIFY(panel.findChild<QPlainTextEdit*>("txtNotes"));
        QVERIFY(panel.raceTrackList->isEditable());
        QVERIFY(panel.fileNameField->isReadOnly());
        QCOMPARE(panel.pageIdentifierField->maxLength(), 15);
        QCOMPARE(panel.carNumberField->maxLength(), 5);
    }

    void theRaceTracksFillTheList() {
        Registry::set("SOFTWARE\\Zorvane\\Main\\Tracks\\", "Rockwell Dragway", "0");
        Registry::set("SOFTWARE\\Zorvane\\Main\\Tracks\\", "Brainerd", "0");
        LogWindow window;
        QStringList tracks = items(window.panel().raceTrackList);
        tracks.sort();
        QCOMPARE(tracks, (QStringList{"Brainerd", "Rockwell Dragway"}));
        QCOMPARE(window.panel().raceTrackList->currentText(), QString());
    }

    void aTypedLogTakesItsNameAndDefaults() {
        const QString key = DefaultsKey + "Bracket\\";
        Registry::set(key, "PF", "5.5");
        Registry::set(key, "TSR", "fast");
        Registry::set(key, "CarNumber", " 7X ");
        Registry::set(key, "TargetET", "9.5");
        Registry::set(DefaultsKey, "PF", "3");
        LogWindow window("Bracket");
        LogSidePanel& panel = window.panel();
        QCOMPARE(window.log.windowTitle(), QStringLiteral("Bracket"));
        QCOMPARE(panel.pageIdentifierField->text(), QStringLiteral("Bracket"));
        QCOMPARE(panel.pfField->text(), QStringLiteral("5.5"));
        QCOMPARE(panel.tsrField->text(), QStringLiteral("0"));
        QCOMPARE(panel.carNumberField->text(), QStringLiteral("7X"));
        QCOMPARE(panel.targetEtField->text(), QStringLiteral("9.5"));
    }

    void aLogOfNoTypeTakesTheGeneralDefaults() {
        Registry::set(DefaultsKey, "PF", "3");
        Registry::set(DefaultsKey, "TSR", "0.25");
        Registry::set(DefaultsKey, "TargetET", "none");
        LogWindow window;
        QCOMPARE(window.panel().pfField->text(), QStringLiteral("3"));
        QCOMPARE(window.panel().tsrField->text(), QStringLiteral("0.25"));
        QCOMPARE(window.panel().targetEtField->text(), QStringLiteral("0.00"));
        QCOMPARE(window.panel().carNumberField->text(), QString());
        QCOMPARE(window.panel().pageIdentifierField->text(), QString());
    }

    void oneRunHasNoBandAndTheSecondRunIsBanded() {
        LogWindow window;
        window.log.paintRowBands();
        for (int column = 1; column < RunTable::ColumnCount; ++column)
            QVERIFY(window.table().look(1, column).background != CellColor::Band);
        window.table().addRun();
        window.log.paintRowBands();
        for (int column = 1; column < RunTable::ColumnCount; ++column) {
            QCOMPARE(window.table().look(2, column).background, CellColor::Band);
            QVERIFY(window.table().look(1, column).background != CellColor::Band);
        }
    }

    void theGridStartsWithItsWidthsAndCaptions() {
        LogWindow window;
        RunTable& table = window.table();
        RunGrid* grid = window.log.grid;
        QCOMPARE(grid->cornerText(), QStringLiteral(">>>"));
        QCOMPARE(grid->verticalHeader()->width(), 38);
        for (int column = 1; column < RunTable::ColumnCount; ++column)
            QCOMPARE(grid->columnWidth(column - 1), 67);
        QCOMPARE(grid->model()->headerData(13, Qt::Horizontal).toString(),
                 QStringLiteral("Timer 2"));
        QCOMPARE(table.cell(0, 14), QStringLiteral("Timer 2"));
        QCOMPARE(table.cell(0, 15), QStringLiteral("Timer 1"));
        QCOMPARE(table.cell(0, 18), QStringLiteral("T. Temp"));
        QCOMPARE(table.cell(0, 33), QStringLiteral("AL"));
        QCOMPARE(table.data(table.index(0, 5), Qt::TextAlignmentRole).toInt(),
                 int(Qt::AlignCenter));
    }

    void aStoredZeroUnderTrackTempHidesColumn18() {
        Registry::set(LogColumnsKey, "Track Temp", "0");
        Registry::set(LogColumnsKey, "RT", "1");
        Registry::set(LogColumnsKey, "60 ft", "no");
        LogWindow window;
        QHeaderView* header = window.log.grid->horizontalHeader();
        QVERIFY(header->isSectionHidden(17));
        QVERIFY(window.log.grid->isRunColumnHidden(18));
        QVERIFY(!window.menuItem("miTrackTemp")->isChecked());
        QVERIFY(!header->isSectionHidden(3));
        QVERIFY(!header->isSectionHidden(5));
        QCOMPARE(header->sectionSize(3), 67);
        QCOMPARE(header->sectionSize(5), 67);
        QVERIFY(!window.log.grid->shownColumns().contains(18));
        QVERIFY(window.menuItem("miRT")->isChecked());
    }

    void aValueUnderTheHeaderCaptionHasNoEffect() {
        Registry::set(LogColumnsKey, "T. Temp", "0");
        LogWindow window;
        QVERIFY(!window.log.grid->isRunColumnHidden(18));
        QCOMPARE(window.log.grid->columnWidth(17), 67);
        QCOMPARE(window.table().cell(0, 18), QStringLiteral("T. Temp"));
    }

    void theShowColumnMenuListsTheColumnsChecked() {
        LogWindow window;
        ShowColumnMenu* menu = window.log.showColumnMenu;
        QCOMPARE(menu->objectName(), QStringLiteral("miShowColumn"));
        QCOMPARE(menu->title(), QStringLiteral("Show Column"));
        QStringList names;
        for (QAction* item : menu->actions()) {
            QVERIFY(item->isCheckable());
            QVERIFY(item->isChecked());
            names << item->objectName();
        }
        QCOMPARE(names,
                 (QStringList{"miLane",      "miRT",     "miDelayBox", "miDialIn", "miTrackTemp",
                              "mi60ft",      "mi330ft",  "mi660ft",    "mi660mph", "mi1000ft",
                              "mi1000mph",   "mi1320ft", "mi1320mph",  "miTimer2", "miTimer1",
                              "miShiftTime", "miAA",     "miDA",       "miVP",     "miABP",
                              "miTemp",      "miRH",     "miAH",       "miGR",     "miDP",
                              "miADR",       "miPA",     "miWD",       "miWS",     "miWG",
                              "miAL"}));
        QCOMPARE(window.menuItem("miTrackTemp")->text(), QStringLiteral("Track Temp"));
    }

    void toggledOffAndOnAColumnComesBackWider() {
        LogWindow window;
        RunGrid* grid = window.log.grid;
        QAction* item = window.menuItem("mi1320mph");
        item->trigger();
        QVERIFY(grid->isColumnHidden(12));
        QVERIFY(!item->isChecked());
        item->trigger();
        QVERIFY(!grid->isColumnHidden(12));
        QCOMPARE(grid->columnWidth(12), 76);
        QCOMPARE(grid->model()->headerData(12, Qt::Horizontal).toString(),
                 QStringLiteral("1320 MPH"));
        QVERIFY(item->isChecked());

        window.menuItem("miTrackTemp")->trigger();
        window.menuItem("miTrackTemp")->trigger();
        QVERIFY(!grid->isColumnHidden(17));
        QCOMPARE(grid->model()->headerData(17, Qt::Horizontal).toString(),
                 QStringLiteral("T. Temp"));
    }

    void aColumnHiddenByTheMenuIsSavedAndShownAfterAReload() {
        const QString path = home->root() + "/hidden.trl";
        {
            LogWindow window;
            window.table().setCell(1, 6, "1.0234");
            window.menuItem("mi60ft")->trigger();
            QVERIFY(window.log.grid->isRunColumnHidden(6));
            window.log.logFile(path, "hidden.trl");
            dialogs->queueAnswer(Dialogs::Answer::Yes);
            QVERIFY(window.log.saveLog(window.log.document().filePath()));
        }
        LogWindow reloaded;
        QVERIFY(reloaded.log.loadFile(path));
        QVERIFY(!reloaded.log.grid->isRunColumnHidden(6));
        QCOMPARE(reloaded.log.grid->columnWidth(5), 67);
        QCOMPARE(reloaded.table().cell(0, 6), QStringLiteral("60 ft"));
        QCOMPARE(reloaded.table().cell(1, 6), QStringLiteral("1.0234"));
    }

    void theCornerCellOpensAndClosesThePanel() {
        LogWindow window;
        RaceLogWindow& log = window.log;
        log.show();
        QVERIFY(QTest::qWaitForWindowActive(&log));
        QVERIFY(window.panel().isHidden());
        QCOMPARE(log.grid->x(), 0);
        QCOMPARE(log.grid->width(), log.width());

        emit log.grid->panelToggleRequested();
        QCOMPARE(window.log.grid->cornerText(), QStringLiteral("<<<"));
        QVERIFY(window.panel().isVisible());
        QCOMPARE(log.grid->x(), window.panel().geometry().right() + 1);
        QCOMPARE(log.grid->geometry().right(), log.width() - 1);
        QCOMPARE(window.panel().height(), log.height());

        emit log.grid->panelToggleRequested();
        QCOMPARE(window.log.grid->cornerText(), QStringLiteral(">>>"));
        QVERIFY(window.panel().isHidden());
        QCOMPARE(log.grid->x(), 0);
        QVERIFY(log.grid->hasFocus());
    }

    void aClickOnTheCornerOpensAndClosesThePanel() {
        LogWindow window;
        window.log.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window.log));
        auto* corner =
            window.log.grid->findChild<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(corner);
        QTest::mouseClick(corner, Qt::LeftButton);
        QCOMPARE(window.log.grid->cornerText(), QStringLiteral("<<<"));
        QVERIFY(window.panel().isVisible());
        QTest::mouseClick(corner, Qt::RightButton);
        QCOMPARE(window.log.grid->cornerText(), QStringLiteral(">>>"));
        QVERIFY(window.panel().isHidden());
        // The release of the right button may have opened the column menu.
        if (QWidget* menu = QApplication::activePopupWidget())
            menu->close();
    }

    void theRowMenuReachesThePanelAndTheReferenceRun() {
        LogWindow window;
        window.log.show();
        QMenu* rows = window.log.grid->rowMenu();
        rows->findChild<QAction*>("miSettings")->trigger();
        QVERIFY(window.panel().isVisible());
        QCOMPARE(window.panel().currentIndex(), 0);
        rows->findChild<QAction*>("miPredict")->trigger();
        QCOMPARE(window.panel().currentIndex(), 2);

        window.log.grid->newRun();
        window.log.grid->setCurrentRunCell(2, 5);
        rows->findChild<QAction*>("miReferenceRun")->trigger();
        QCOMPARE(window.panel().referenceRunList->currentIndex(), 1);
        QVERIFY(window.table().look(2, 0).bold);
        QCOMPARE(window.log.grid->currentRunColumn(), 1);
    }

    void theColumnMenuHoldsTheShowColumnMenu() {
        LogWindow window;
        QVERIFY(window.log.grid->columnMenu()->actions().contains(
            window.log.showColumnMenu->menuAction()));
    }

    void theGridAreaBeyondTheRunsShowsTheMainBackground() {
        LogWindow window;
        window.log.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window.log));
        QWidget* area = window.log.grid->viewport();
        const QImage image = area->grab().toImage();
        QCOMPARE(image.pixelColor(area->width() - 2, area->height() - 2), QColor(0x33, 0x66, 0x99));
        const QRect firstCell = window.log.grid->visualRect(window.table().index(0, 3));
        QVERIFY(image.pixelColor(firstCell.center()) != QColor(0x33, 0x66, 0x99));
    }

    void theTabCommandsOpenThePanelAtTheirTab() {
        LogWindow window;
        window.log.show();
        emit window.log.grid->panelTabRequested(LogSidePanel::PredictTab);
        QCOMPARE(window.log.grid->cornerText(), QStringLiteral("<<<"));
        QVERIFY(window.panel().isVisible());
        QCOMPARE(window.panel().currentIndex(), 2);
        emit window.log.grid->panelTabRequested(LogSidePanel::NotesTab);
        QCOMPARE(window.panel().currentIndex(), 1);
        QVERIFY(window.panel().isVisible());
        QCOMPARE(window.log.grid->cornerText(), QStringLiteral("<<<"));
    }

    void theWindowFollowsItsSize() {
        LogWindow window;
        window.log.show();
        emit window.log.grid->panelToggleRequested();
        window.log.resize(900, 520);
        QCOMPARE(window.panel().height(), 520);
        QCOMPARE(window.log.grid->height(), 520);
        QCOMPARE(window.log.grid->geometry().right(), 899);
    }

    void theGridAreaAndThePanelTakeTheMainBackground() {
        LogWindow window;
        QCOMPARE(window.panel().palette().color(QPalette::Window), QColor(0x33, 0x66, 0x99));
        QVERIFY(window.panel().autoFillBackground());
    }

    void theFieldsLetThroughOnlyTheirKeys() {
        LogWindow window;
        window.showWithPanel();
        LogSidePanel& panel = window.panel();
        const QList<std::tuple<QLineEdit*, QString, QString>> cases{
            {panel.pfField, "a-1.5b", "-1.5"},
            {panel.tsrField, "-0.25x", "0.25"},
            {panel.targetEtField, "9,5.1", "95.1"},
            {panel.aaField, "-21a5", "-215"},
            {panel.vpField, "-0.48", "0.48"},
            {panel.dateField, "4/5x/26", "4/5/26"},
            {panel.pageIdentifierField, "Pro 1x", "Prox"},
            {panel.carNumberField, "ab1-2cd", "AB12C"},
        };
        for (const auto& [field, typed, kept] : cases) {
            field->clear();
            field->setFocus();
            QTest::keyClicks(field, typed);
            QCOMPARE(field->text(), kept);
            QTest::keyClick(field, Qt::Key_Backspace);
            QCOMPARE(field->text(), kept.chopped(1));
        }
    }

    // The panel finds each field's control by the name the table of the fields gives it, and
    // what is typed there goes into the log as one step named after the field.
    void typingInAFieldOfThePanelIsOneStepNamedAfterIt() {
        LogWindow window;
        window.showWithPanel();
        LogSidePanel& panel = window.panel();
        RaceLog& log = window.log.document();
        const QList<std::tuple<RaceLog::Field, QWidget*, QString, QString, QString>> fields{
            {RaceLog::Field::Date, panel.dateField, "txtDate", "5/4/26", "Edit Date"},
            {RaceLog::Field::RaceTrack, panel.raceTrackList, "cboRaceTrack", "Ennis",
             "Edit Race Track"},
            {RaceLog::Field::PF, panel.pfField, "txtPF", "1.5", "Edit Performance Factor"},
            {RaceLog::Field::TSR, panel.tsrField, "txtTSR", "25", "Edit Throttle Stop Ratio"},
            {RaceLog::Field::PageIdentifier, panel.pageIdentifierField, "txtPageIdentifier", "Red",
             "Edit Page Identifier"},
            {RaceLog::Field::CarNumber, panel.carNumberField, "txtCarNumber", "427",
             "Edit Car Number"},
            {RaceLog::Field::Notes, panel.notesField, "txtNotes", "Windy", "Edit Notes"},
            {RaceLog::Field::TargetET, panel.targetEtField, "txtTargetET", "95", "Edit Target ET"},
            {RaceLog::Field::AA, panel.aaField, "txtAA", "21", "Edit AA"},
            {RaceLog::Field::VP, panel.vpField, "txtVP", "48", "Edit VP"},
            {RaceLog::Field::TrackOffset, panel.trackOffsetField, "txtTrackOffset", "5",
             "Edit Track Offset"},
        };
        QCOMPARE(LogFieldTable::Rows.size(), std::size_t(fields.size()));
        for (const auto& [field, control, name, typed, step] : fields) {
            QCOMPARE(QLatin1String(LogFieldTable::row(field).controlName), name);
            QCOMPARE(panel.findChildren<QWidget*>(name).size(), 1);
            QCOMPARE(panel.findChild<QWidget*>(name), control);
            const QString before = log.field(field);
            const int steps = log.undoStack().count();
            auto* list = qobject_cast<QComboBox*>(control);
            QTest::keyClicks(list ? list->lineEdit() : control, typed);
            QCOMPARE(log.field(field), before + typed);
            QCOMPARE(log.undoStack().count(), steps + 1);
            QCOMPARE(log.undoStack().undoText(), step);
        }
    }

    void enteringAFieldSelectsItsText() {
        LogWindow window;
        window.showWithPanel();
        window.panel().tsrField->setText("0.25");
        window.panel().tsrField->setFocus();
        QTRY_COMPARE(window.panel().tsrField->selectedText(), QStringLiteral("0.25"));
    }

    void aPerformanceFactorThatIsNoNumberIsReported() {
        LogWindow window;
        window.showWithPanel();
        LogSidePanel& panel = window.panel();
        panel.pfField->setText("-");
        window.leave(panel.pfField, panel.tsrField);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text,
                 QStringLiteral("The performance factor is not a number!"));
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Performance Factor"));
        QCOMPARE(dialogs->messages[0].icon, Dialogs::Icon::Information);
        QCOMPARE(panel.pfField->text(), QStringLiteral("-"));
        QVERIFY(panel.pfField->hasFocus());
    }

    void aThrottleStopRatioThatIsNoNumberIsReported() {
        LogWindow window;
        window.showWithPanel();
        LogSidePanel& panel = window.panel();
        panel.tsrField->setText(".");
        window.leave(panel.tsrField, panel.pfField);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text,
                 QStringLiteral("The throttle stop ratio is not a number!"));
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Throttle Stop Ratio"));
        QCOMPARE(panel.tsrField->text(), QStringLiteral("."));
        QVERIFY(panel.tsrField->hasFocus());

        panel.tsrField->setText("0.25");
        window.leave(panel.tsrField, panel.pfField);
        QCOMPARE(dialogs->messages.size(), 1);
        QVERIFY(panel.pfField->hasFocus());
    }

    void theTargetEtIsRepairedAndRewritten() {
        LogWindow window;
        window.showWithPanel();
        LogSidePanel& panel = window.panel();
        panel.setCurrentIndex(LogSidePanel::PredictTab);
        panel.targetEtField->setText("9.5");
        window.leave(panel.targetEtField, panel.aaField);
        QCOMPARE(panel.targetEtField->text(), QStringLiteral("9.50"));
        panel.targetEtField->setText(".");
        window.leave(panel.targetEtField, panel.aaField);
        QCOMPARE(panel.targetEtField->text(), QStringLiteral("0.00"));
        QVERIFY(dialogs->messages.isEmpty());
    }

    void predictInputsThatAreNoNumberBecomeZero() {
        LogWindow window;
        window.showWithPanel();
        LogSidePanel& panel = window.panel();
        panel.setCurrentIndex(LogSidePanel::PredictTab);
        panel.aaField->setText("-");
        window.leave(panel.aaField, panel.vpField);
        QCOMPARE(panel.aaField->text(), QStringLiteral("0"));
        panel.vpField->setText("");
        window.leave(panel.vpField, panel.aaField);
        QCOMPARE(panel.vpField->text(), QStringLiteral("0"));
        panel.aaField->setText("-150");
        window.leave(panel.aaField, panel.vpField);
        QCOMPARE(panel.aaField->text(), QStringLiteral("-150"));
        QVERIFY(dialogs->messages.isEmpty());
    }

    void theDateIsRewrittenOrBecomesToday() {
        LogWindow window;
        window.showWithPanel();
        LogSidePanel& panel = window.panel();
        panel.dateField->setText("4/5/26");
        window.leave(panel.dateField, panel.pfField);
        QCOMPARE(panel.dateField->text(), QStringLiteral("04/05/2026"));
        panel.dateField->setText("99");
        window.leave(panel.dateField, panel.pfField);
        QCOMPARE(panel.dateField->text(), DateText::logDateText(QDate::currentDate()));
        panel.dateField->clear();
        panel.todayButton->click();
        QCOMPARE(panel.dateField->text(), DateText::logDateText(QDate::currentDate()));
    }

    void thePageIdentifierNamesTheWindow() {
        LogWindow window(QString(), 2);
        window.showWithPanel();
        LogSidePanel& panel = window.panel();
        panel.pageIdentifierField->setText("  Pro  ");
        window.leave(panel.pageIdentifierField, panel.pfField);
        QCOMPARE(panel.pageIdentifierField->text(), QStringLiteral("Pro"));
        QCOMPARE(window.log.windowTitle(), QStringLiteral("Pro"));
        panel.pageIdentifierField->setText("   ");
        window.leave(panel.pageIdentifierField, panel.pfField);
        QCOMPARE(panel.pageIdentifierField->text(), QString());
        QCOMPARE(window.log.windowTitle(), QStringLiteral("Race Log# 3"));
    }

    void theLiveWeatherFillsThePredictionInputs() {
        LogWindow window;
        window.log.document().takeLiveWeather(QStringLiteral("2150"), QStringLiteral("0.487"));
        QCOMPARE(window.panel().aaField->text(), QStringLiteral("2150"));
        QCOMPARE(window.panel().vpField->text(), QStringLiteral("0.487"));
        window.log.document().takeLiveWeather(QStringLiteral("-120"), QStringLiteral("0.5"));
        QCOMPARE(window.panel().aaField->text(), QStringLiteral("-120"));
        QCOMPARE(window.panel().vpField->text(), QStringLiteral("0.5"));
    }

    void logFileKeepsThePathAndShowsTheName() {
        LogWindow window;
        window.log.logFile("/races/2026-05-04.trl", "2026-05-04.trl");
        QCOMPARE(window.log.document().filePath(), QStringLiteral("/races/2026-05-04.trl"));
        QCOMPARE(window.log.document().fileTitle(), QStringLiteral("2026-05-04.trl"));
        QCOMPARE(window.panel().fileNameField->text(), QStringLiteral("2026-05-04.trl"));
        QCOMPARE(window.panel().fileNameField->toolTip(), QStringLiteral("/races/2026-05-04.trl"));
        QCOMPARE(window.log.fileExtension("print.pdf"), QStringLiteral("pdf"));
    }

    void theReferenceRunIsMarkedAndBecomesCurrent() {
        LogWindow window;
        window.log.grid->newRun();
        emit window.log.grid->referenceRunRequested(2);
        QCOMPARE(window.panel().referenceRunList->currentIndex(), 1);
        QVERIFY(window.table().look(2, 0).bold);
        QCOMPARE(window.table().look(2, 0).background, CellColor::ReferenceRun);
        QVERIFY(!window.table().look(1, 0).bold);
        QCOMPARE(window.table().look(1, 0).background, CellColor::ButtonFace);
        QCOMPARE(window.log.grid->currentRunRow(), 2);
        QCOMPARE(window.log.grid->currentRunColumn(), 1);

        window.panel().referenceRunList->setCurrentIndex(0);
        QVERIFY(window.table().look(1, 0).bold);
        QVERIFY(!window.table().look(2, 0).bold);
        QCOMPARE(window.log.grid->currentRunRow(), 1);
        QVERIFY(dialogs->messages.isEmpty());
    }

    void aReferenceRunThatCannotBeMarkedIsReported() {
        LogWindow window;
        window.panel().referenceRunList->addItem("2"); // a list longer than the table
        window.panel().referenceRunList->setCurrentIndex(1);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text,
                 QStringLiteral("Error on combo box ref run selection!"));
        QCOMPARE(dialogs->messages[0].icon, Dialogs::Icon::Critical);
        emit window.log.grid->referenceRunRequested(3);
        QCOMPARE(dialogs->messages.size(), 2);
    }

    void saveWithoutAPathAsksForAFileAndRemembersIt() {
        Registry::set("SOFTWARE\\Zorvane\\Main\\Tracks\\", "Brainerd", "0");
        LogWindow window;
        window.log.setWindowTitle("Race Log# 1");
        window.panel().raceTrackList->setEditText("Brainerd");
        window.panel().pfField->setText("5.5");
        window.table().setCell(1, 15, "1.25");
        const QString folder = home->root() + "/races";
        QVERIFY(QDir().mkpath(folder));
        const QString path = folder + "/day.trl";
        dialogs->queueFile(path);

        QVERIFY(window.log.saveLog(QString()));
        QCOMPARE(dialogs->fileRequests.size(), 1);
        const Dialogs::FileRequest& request = dialogs->fileRequests[0];
        QVERIFY(request.save);
        QCOMPARE(request.title, QStringLiteral("Save Race Log - Race Log# 1"));
        QCOMPARE(request.fileName,
                 DateText::fileStamp(QDate::currentDate()) + QStringLiteral(" Brainerd.trl"));
        QCOMPARE(request.initialFolder, QCoreApplication::applicationDirPath());
        QVERIFY(dialogs->messages.isEmpty());
        QCOMPARE(window.log.document().filePath(), path);
        QCOMPARE(window.panel().fileNameField->text(), QStringLiteral("day.trl"));
        QCOMPARE(Registry::get("SOFTWARE\\Zorvane\\RaceLog\\Path", "0"), folder);

        RaceLogData saved;
        QVERIFY(Database::loadLog(path, saved));
        QCOMPARE(saved.pf, QStringLiteral("5.5"));
        QCOMPARE(saved.raceTrack, QStringLiteral("Brainerd"));
        QCOMPARE(saved.grid.cell(1, 15), QStringLiteral("1.25"));
    }

    void saveTakesTheCellBeingEdited() {
        const QString path = home->root() + "/edited.trl";
        LogWindow window;
        window.log.show();
        window.log.logFile(path, "edited.trl");
        window.log.grid->setCurrentRunCell(1, 6);
        window.log.grid->beginCellEdit('7');
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        QVERIFY(window.log.saveLog(path));
        QCOMPARE(window.table().cell(1, 6), QStringLiteral("7"));
        RaceLogData saved;
        QVERIFY(Database::loadLog(path, saved));
        QCOMPARE(saved.grid.cell(1, 6), QStringLiteral("7.0000"));
    }

    void cancelInTheSaveDialogueSavesNothingAndSucceeds() {
        LogWindow window;
        dialogs->queueFile(QString());
        QVERIFY(window.log.saveLog(QString()));
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QVERIFY(window.log.document().filePath().isEmpty());
        QVERIFY(QDir(home->root()).entryList({"*.trl"}).isEmpty());
    }

    void saveToTheKnownFileAsksFirst() {
        const QString path = home->root() + "/known.trl";
        LogWindow window;
        window.log.setWindowTitle("Pro");
        window.log.logFile(path, "known.trl");
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        QVERIFY(window.log.saveLog(path));
        QCOMPARE(dialogs->messages.size(), 1);
        const Dialogs::Message& question = dialogs->messages[0];
        QCOMPARE(question.text,
                 QStringLiteral("Do you want to save the information for:\r\n  Pro"));
        QCOMPARE(question.title, QStringLiteral("Save Race Log?"));
        QCOMPARE(question.icon, Dialogs::Icon::Question);
        QCOMPARE(question.buttons, Dialogs::Buttons::YesNo);
        QVERIFY(QFileInfo::exists(path));

        // No keeps the file as it was.
        const QByteArray before = contents(path);
        window.table().setCell(1, 6, "1.1111");
        window.panel().pfField->setText("8");
        dialogs->queueAnswer(Dialogs::Answer::No);
        QVERIFY(window.log.saveLog(path));
        QCOMPARE(contents(path), before);
        QVERIFY(dialogs->fileRequests.isEmpty());

        dialogs->queueAnswer(Dialogs::Answer::Yes);
        QVERIFY(window.log.saveLog(path));
        RaceLogData saved;
        QVERIFY(Database::loadLog(path, saved));
        QCOMPARE(saved.pf, QStringLiteral("8"));
        QCOMPARE(saved.grid.cell(1, 6), QStringLiteral("1.1111"));
    }

    void aSaveThatFailsSaysSoAndFails() {
        LogWindow window;
        const QString path = home->root() + "/gone/log.trl";
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        QVERIFY(!window.log.saveLog(path));
        QCOMPARE(dialogs->messages.size(), 2);
        QCOMPARE(dialogs->messages[1].text, QStringLiteral("Unable to create log database!"));
        QCOMPARE(dialogs->messages[1].title, QStringLiteral("Database Create"));
        QCOMPARE(dialogs->messages[1].icon, Dialogs::Icon::Critical);

        // A file that is no race log is not written over.
        const QString text = home->root() + "/notes.trl";
        QFile file(text);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("not a race log\n");
        file.close();
        dialogs->queueAnswer(Dialogs::Answer::Yes);
        QVERIFY(!window.log.saveLog(text));
        QCOMPARE(dialogs->messages.last().text,
                 QStringLiteral("Unable to save race log table data!"));
        QCOMPARE(contents(text), QByteArray("not a race log\n"));
    }

    void aLoadedFileFillsTheWindow() {
        const QString path = home->root() + "/pro.trl";
        {
            RaceLogData data;
            data.grid.addRun();
            data.grid.addRun();
            data.grid.setCell(2, 12, "9.5123");
            data.refRunItems = QStringList{"1", "2", "3"};
            data.refRunIndex = 1;
            data.pageIdentifier = "Pro";
            data.date = "05/04/2026";
            data.carNumber = "A123";
            data.raceTrack = "Brainerd";
            data.pf = "5.5";
            data.notes = "Cool evening";
            data.aa = "2150";
            QCOMPARE(Database::saveRaceLog(path, data), Database::SaveResult::Ok);
        }
        LogWindow window;
        QVERIFY(window.log.loadFile(path));
        LogSidePanel& panel = window.panel();
        QCOMPARE(window.log.windowTitle(), QStringLiteral("Pro"));
        QCOMPARE(window.table().tableRows(), 4);
        QCOMPARE(window.table().cell(2, 12), QStringLiteral("9.5123"));
        QCOMPARE(items(panel.referenceRunList), (QStringList{"1", "2", "3"}));
        QCOMPARE(panel.referenceRunList->currentIndex(), 1);
        QVERIFY(window.table().look(2, 0).bold);
        QCOMPARE(window.log.grid->currentRunRow(), 2);
        QCOMPARE(panel.dateField->text(), QStringLiteral("05/04/2026"));
        QCOMPARE(panel.carNumberField->text(), QStringLiteral("A123"));
        QCOMPARE(panel.raceTrackList->currentText(), QStringLiteral("Brainerd"));
        QCOMPARE(panel.pfField->text(), QStringLiteral("5.5"));
        QCOMPARE(panel.notesField->toPlainText(), QStringLiteral("Cool evening"));
        QCOMPARE(panel.aaField->text(), QStringLiteral("2150"));
        QCOMPARE(panel.vpField->text(), QStringLiteral("0"));
    }

    // "Racepak" hands the weather of the selected run to the Racepak software through its
    // file, without a word; a run without a correction factor leaves the file as it was.
    void racepakWritesTheSelectedRunsWeather() {
        LogWindow window;
        RunTable& table = window.table();
        table.addRun();
        for (const auto& [column, text] :
             std::initializer_list<std::pair<int, QString>>{{20, "1850"},
                                                            {21, "0.412"},
                                                            {22, "29.35"},
                                                            {23, "75.5"},
                                                            {24, "42"},
                                                            {26, "58.3"},
                                                            {27, "51.2"},
                                                            {28, "96.12"},
                                                            {29, "540"}})
            table.setCell(2, column, text);
        table.setCell(1, 22, QStringLiteral("29.92"));
        window.log.grid->setCurrentRunCell(2, 3);
        QAction* racepak = window.log.grid->rowMenu()->findChild<QAction*>("miRacepak");
        QVERIFY(racepak);
        QCOMPARE(racepak->text(), QStringLiteral("Racepak"));
        racepak->trigger();

        const QString path =
            home->dataHome() + QStringLiteral("/Zorvane/Racepak/zorvaneracepak.dat");
        const QList<QByteArray> lines = contents(path).split('\n');
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines[0].startsWith("mm/dd/yyyy hh:mm:ss, Temp, Humidity, "));
        QVERIFY(lines[0].endsWith(", Dew Point, Wet Bulb Temp\r"));
        // The moment of the command comes first, then the run's weather.
        QVERIFY(QDateTime::fromString(QString::fromLatin1(lines[1].left(19)),
                                      QStringLiteral("MM/dd/yyyy hh:mm:ss"))
                    .isValid());
        QCOMPARE(lines[1].mid(19),
                 ", 75.5, 42, 29.35, 540, 1.0492, 1850, 96.12, 58.3, 0.412, 0, 51.2, 0\r");
        QVERIFY(lines[2].isEmpty());

        // Run 1 has a pressure but no temperature: nothing changes.
        const QByteArray before = contents(path);
        window.log.grid->setCurrentRunCell(1, 3);
        racepak->trigger();
        QCOMPARE(contents(path), before);
        QVERIFY(dialogs->messages.isEmpty());
    }
};

QTEST_MAIN(TestRaceLogWindow)
#include "tst_racelogwindow.moc"
