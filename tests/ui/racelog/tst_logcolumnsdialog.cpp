#include "common/TestHome.h"
#include "core/Registry.h"
#include "racelog/ColumnTable.h"
#include "ui/racelog/LogColumnsDialog.h"

#include <QCheckBox>
#include <QFile>
#include <QGroupBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <memory>

namespace {

const QString LogColumnsKey = QStringLiteral("SOFTWARE\\Zorvane\\LogColumns\\");

QStringList storedNames() {
    QStringList names;
    Registry::enumValues(Registry::HKEY_CURRENT_USER, LogColumnsKey, names);
    names.sort();
    return names;
}

QStringList allCaptions() {
    QStringList captions;
    for (const int number : ColumnTable::ShowColumnMenuOrder)
        captions << ColumnTable::Columns[number].visibilityValue.toString();
    captions.sort();
    return captions;
}

QByteArray storeContents() {
    QFile file(Registry::storeFilePath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The dialog as the user sees it, shown so that its boxes can be clicked.
struct Dialog {
    Dialog() {
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
    }
    QCheckBox* box(const QString& name) { return form.findChild<QCheckBox*>(name); }
    QCheckBox* boxOf(int column) { return box(ColumnTable::Columns[column].checkBox.toString()); }
    // Clicks a box on its mark.
    void tick(const char* name) {
        QCheckBox* mark = box(name);
        QTest::mouseClick(mark, Qt::LeftButton, {}, QPoint(6, mark->height() / 2));
    }
    void click(const char* buttonName) {
        QTest::mouseClick(form.findChild<QPushButton*>(buttonName), Qt::LeftButton);
    }
    LogColumnsDialog form;
};

} // namespace

class TestLogColumnsDialog : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;

private slots:
    void init() { home = std::make_unique<TestHome>(); }
    void cleanup() { home.reset(); }

    void theDialogHasItsTitleFrameAndButtons() {
        LogColumnsDialog form;
        QCOMPARE(form.objectName(), QStringLiteral("frmSelectLogColumns"));
        QCOMPARE(form.windowTitle(), QStringLiteral("Select Columns"));
        const QList<QGroupBox*> frames = form.findChildren<QGroupBox*>();
        QCOMPARE(frames.size(), 1);
        QCOMPARE(frames[0]->title(), QStringLiteral("Race Log Columns"));
        QCOMPARE(form.findChild<QPushButton*>("cmdOK")->text(), QStringLiteral("OK"));
        QCOMPARE(form.findChild<QPushButton*>("cmdCancel")->text(), QStringLiteral("Cancel"));
    }

    // One box for each column that can be hidden, captioned with its value name ("Track
    // Temp", not the header "T. Temp"), in the order of the log windows' menu.
    void eachHideableColumnHasItsBoxInMenuOrder() {
        LogColumnsDialog form;
        QGroupBox* frame = form.findChild<QGroupBox*>();
        const QList<QCheckBox*> boxes = frame->findChildren<QCheckBox*>();
        QCOMPARE(boxes.size(), ColumnTable::HideableCount);
        QCOMPARE(form.findChildren<QCheckBox*>().size(), ColumnTable::HideableCount);
        for (int place = 0; place < ColumnTable::HideableCount; ++place) {
            const ColumnTable::Column& column =
                ColumnTable::Columns[ColumnTable::ShowColumnMenuOrder[place]];
            QCheckBox* box = boxes[place];
            QCOMPARE(box->objectName(), column.checkBox.toString());
            QCOMPARE(box->text(), column.visibilityValue.toString());
            QCOMPARE(box->toolTip(), column.checkBoxToolTip.toString());
        }
        QCOMPARE(form.findChild<QCheckBox*>("chkTrackTemp")->text(), QStringLiteral("Track Temp"));
        QCOMPARE(form.findChild<QCheckBox*>("chkTrackTemp")->toolTip(),
                 QStringLiteral("Track Temperature"));
        QCOMPARE(form.findChild<QCheckBox*>("chkTemp")->toolTip(),
                 QStringLiteral("Temperature in degrees F"));
        QCOMPARE(form.findChild<QCheckBox*>("chkLane")->toolTip(), QString());
    }

    void theDialogOpensInTheMiddleOfTheScreen() {
        LogColumnsDialog form;
        const QRect area = form.screen()->geometry();
        QCOMPARE(form.x(), area.left() + (area.width() - form.width()) / 2);
        QCOMPARE(form.y(), area.top() + (area.height() - form.height()) / 2);
    }

    // The log windows show a column for "1" and for no value alike; the dialog tells them
    // apart, and checks a box only for an exact "1".
    void onlyAnExactOneChecksABox() {
        Registry::set(LogColumnsKey, "Lane", "1");
        Registry::set(LogColumnsKey, "Delay Box", "0");
        Registry::set(LogColumnsKey, "Dial-In", "01");
        Registry::set(LogColumnsKey, "Track Temp", "1");
        Registry::set(LogColumnsKey, "AA", "yes");
        Registry::set(LogColumnsKey, "AL", "1");
        Dialog dialog;
        QVERIFY(dialog.box("chkLane")->isChecked());
        QVERIFY(!dialog.box("chkRT")->isChecked()); // no value
        QVERIFY(!dialog.box("chkDelayBox")->isChecked());
        QVERIFY(!dialog.box("chkDialIn")->isChecked());
        QVERIFY(dialog.box("chkTrackTemp")->isChecked());
        QVERIFY(!dialog.box("chkAA")->isChecked());
        QVERIFY(dialog.box("chkAL")->isChecked());
        int checked = 0;
        for (QCheckBox* box : dialog.form.findChildren<QCheckBox*>())
            checked += box->isChecked() ? 1 : 0;
        QCOMPARE(checked, 3);
    }

    // Column 18 is stored under its box's caption; its header names nothing.
    void theTrackTemperatureIsReadUnderItsCaptionNotItsHeader() {
        Registry::set(LogColumnsKey, "T. Temp", "1");
        Dialog dialog;
        QVERIFY(!dialog.boxOf(18)->isChecked());
    }

    void okWritesEveryBoxAndCloses() {
        Registry::set(LogColumnsKey, "Lane", "1");
        Registry::set(LogColumnsKey, "RT", "1");
        Dialog dialog;
        dialog.tick("chkRT");
        dialog.tick("chkWG");
        dialog.tick("chkTrackTemp");
        dialog.click("cmdOK");
        QVERIFY(!dialog.form.isVisible());
        QCOMPARE(dialog.form.result(), int(QDialog::Accepted));
        QCOMPARE(storedNames(), allCaptions());
        for (const int number : ColumnTable::ShowColumnMenuOrder) {
            const QString name = ColumnTable::Columns[number].visibilityValue.toString();
            const bool shown = name == u"Lane" || name == u"WG" || name == u"Track Temp";
            QCOMPARE(Registry::get(LogColumnsKey, name),
                     shown ? QStringLiteral("1") : QStringLiteral("0"));
        }
        QCOMPARE(Registry::get(LogColumnsKey, "T. Temp"), Registry::NoKeyValue);
    }

    // Where the dialog was never confirmed every log shows every column, yet no box is
    // checked: OK at once hides all 31.
    void okOnANeverConfirmedMachineHidesEveryColumn() {
        Dialog dialog;
        for (QCheckBox* box : dialog.form.findChildren<QCheckBox*>())
            QVERIFY(!box->isChecked());
        dialog.click("cmdOK");
        QCOMPARE(storedNames(), allCaptions());
        for (const QString& name : allCaptions())
            QCOMPARE(Registry::get(LogColumnsKey, name), QStringLiteral("0"));
    }

    void cancelAfterChangesLeavesTheSettingsAsTheyWere() {
        Registry::set(LogColumnsKey, "Lane", "1");
        Registry::set(LogColumnsKey, "RT", "0");
        Registry::set(LogColumnsKey, "Track Temp", "maybe");
        const QByteArray before = storeContents();
        Dialog dialog;
        dialog.tick("chkLane");
        dialog.tick("chkRT");
        dialog.tick("chkAL");
        QVERIFY(!dialog.box("chkLane")->isChecked());
        QVERIFY(dialog.box("chkRT")->isChecked());
        dialog.click("cmdCancel");
        QVERIFY(!dialog.form.isVisible());
        QCOMPARE(dialog.form.result(), int(QDialog::Rejected));
        QCOMPARE(storeContents(), before);
        QCOMPARE(storedNames(), (QStringList{"Lane", "RT", "Track Temp"}));
    }

    void cancelOnANeverConfirmedMachineCreatesNothing() {
        Dialog dialog;
        dialog.tick("chkLane");
        dialog.click("cmdCancel");
        QStringList names;
        QVERIFY(!Registry::enumValues(Registry::HKEY_CURRENT_USER, LogColumnsKey, names));
    }
};

QTEST_MAIN(TestLogColumnsDialog)
#include "tst_logcolumnsdialog.moc"
