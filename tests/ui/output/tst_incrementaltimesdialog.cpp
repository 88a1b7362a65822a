#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "core/SettingKeys.h"
#include "exchange/TimeSlip.h"
#include "feed/WeatherStation.h"
#include "pages/PageDocument.h"
#include "ui/output/IncrementalTimesCommand.h"
#include "ui/output/IncrementalTimesDialog.h"
#include "ui/output/ViewerWindow.h"
#include "ui/shell/MainWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

namespace {

// One record of the receiver's log, 21 fields, with a full set of marks.
QString slip(const QString& category, const QString& car, const QString& lane, double base) {
    QStringList fields;
    for (int i = 0; i < TimeSlipFieldCount; ++i)
        fields.append(QStringLiteral("x%1").arg(i));
    fields[SlipRunTime] = QStringLiteral("10/12/2025 14:00:00");
    fields[SlipCategory] = category;
    fields[SlipCarNumber] = car;
    fields[SlipLane] = lane;
    const auto mark = [base](double at) { return QString::number(at + base, 'f', 3); };
    fields[Slip60ft] = mark(1.0);
    fields[Slip330ft] = mark(3.0);
    fields[Slip660ft] = mark(5.0);
    fields[Slip660Mph] = mark(100.0);
    fields[Slip1000ft] = mark(6.5);
    fields[Slip1000Mph] = mark(130.0);
    fields[Slip1320ft] = mark(8.0);
    fields[Slip1320Mph] = mark(150.0);
    return fields.join(u',') + QStringLiteral("\r\n");
}

QList<ViewerWindow*> viewers(MainWindow& main) {
    QList<ViewerWindow*> list;
    for (QMdiSubWindow* child : main.mdiArea()->subWindowList())
        if (auto* viewer = qobject_cast<ViewerWindow*>(child->widget()))
            list << viewer;
    return list;
}

QStringList texts(const PageDocument& document, int page) {
    QStringList list;
    for (const PageDocument::Item& item : document.page(page))
        if (item.kind == PageDocument::Item::Kind::Text)
            list.append(item.text);
    return list;
}

} // namespace

class TestIncrementalTimesDialog : public QObject {
    Q_OBJECT
    std::unique_ptr<TestHome> home;
    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<ScriptedDialogs> dialogs;
    std::unique_ptr<WeatherStation> station;
    std::unique_ptr<MainWindow> main;

    void writeLog(const QString& text) {
        const QString path = folder->filePath(QStringLiteral("icard.csv"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(text.toUtf8());
        Registry::set(SettingKeys::ReceiverLogFile, path);
    }

    IncrementalTimesDialog* ask() {
        main->dispatch(QStringLiteral("miIncrementalTimes"));
        return main->findChild<IncrementalTimesDialog*>(QStringLiteral("frmIncrementalTimes"));
    }

    template <typename T> static T* child(QWidget* dialog, const char* name) {
        return dialog->findChild<T*>(QLatin1String(name));
    }

private slots:
    void init() {
        home = std::make_unique<TestHome>();
        folder = std::make_unique<QTemporaryDir>();
        dialogs = std::make_unique<ScriptedDialogs>();
        station = std::make_unique<WeatherStation>();
        main = std::make_unique<MainWindow>(*station);
        IncrementalTimesCommand::add(*main);
    }
    void cleanup() {
        main.reset();
        station.reset();
        dialogs.reset();
        folder.reset();
        home.reset();
    }

    // Without a log the dialog says so, and OK stays disabled; Cancel closes it.
    void withoutALogOkIsDisabled() {
        IncrementalTimesDialog* dialog = ask();
        QVERIFY(dialog);
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text, QStringLiteral("Unable to load iCard Times!"));
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Tarnwick - iCard Incremental Times"));
        QCOMPARE(dialogs->messages[0].icon, Dialogs::Icon::Information);
        QVERIFY(!child<QPushButton>(dialog, "cmdOK")->isEnabled());
        QPointer<IncrementalTimesDialog> alive(dialog);
        QTest::mouseClick(child<QPushButton>(dialog, "cmdCancel"), Qt::LeftButton);
        QTRY_VERIFY(!alive);
        QVERIFY(viewers(*main).isEmpty());
    }

    // A log cut off inside a pair: the reader's message first, then the dialog's.
    void anUnreadableLogGivesBothMessages() {
        writeLog(slip("Pro Q1", "7", "L", 0));
        IncrementalTimesDialog* dialog = ask();
        QCOMPARE(dialogs->messages.size(), 2);
        QCOMPARE(dialogs->messages[0].text, timeSlipLogUnreadable().text);
        QCOMPARE(dialogs->messages[1].text, QStringLiteral("Unable to load iCard Times!"));
        QVERIFY(!child<QPushButton>(dialog, "cmdOK")->isEnabled());
        dialog->reject();
    }

    // The dialog's controls and captions, and the categories of the log, each once, the first
    // chosen.
    void theDialogOffersTheLogsCategories() {
        writeLog(slip("Pro Q1", "7", "L", 0) + slip("Pro Q1", "12", "R", 0.1) +
                 slip("Stock Q1", "3", "L", 0) + slip("Stock Q1", "4", "R", 0) +
                 slip("Pro Q1", "5", "L", 0.2) + slip("Pro Q1", "6", "R", 0.3));
        IncrementalTimesDialog* dialog = ask();
        QVERIFY(dialog);
        QVERIFY(dialogs->messages.isEmpty());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("iCard Incremental Times"));
        auto* list = child<QComboBox>(dialog, "cboCategorySession");
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->itemText(0), QStringLiteral("Pro Q1"));
        QCOMPARE(list->itemText(1), QStringLiteral("Stock Q1"));
        QCOMPARE(list->currentIndex(), 0);
        QVERIFY(child<QLineEdit>(dialog, "txtCar1") && child<QLineEdit>(dialog, "txtCar2"));
        QCOMPARE(child<QCheckBox>(dialog, "chkTaggedCars")->text(),
                 QStringLiteral("Only Show Tagged Cars"));
        QCOMPARE(child<QPushButton>(dialog, "cmdOK")->text(), QStringLiteral("&OK"));
        QCOMPARE(child<QPushButton>(dialog, "cmdCancel")->text(), QStringLiteral("&Cancel"));
        QStringList labels;
        for (QLabel* label : dialog->findChildren<QLabel*>())
            labels << label->text();
        QVERIFY(labels.contains(QStringLiteral("Category && Session")));
        QVERIFY(labels.contains(QStringLiteral("Tag) Car Number 1")));
        QVERIFY(labels.contains(QStringLiteral("Tag) Car Number 2")));
        dialog->reject();
    }

    // OK closes the dialog, which deletes itself once it has finished; the report is built
    // only after that, so the dialog is never touched once gone. Building the report inside
    // the dialog's own OK, with the events let through there, deleted the dialog before it
    // had finished and ended the whole program.
    void okFinishesTheDialogBeforeTheReportIsBuilt() {
        writeLog(slip("Pro Q1", "7", "L", 0) + slip("Pro Q1", "12", "R", 0.1));
        IncrementalTimesDialog* dialog = ask();
        QPointer<IncrementalTimesDialog> alive(dialog);
        int finished = 0;
        qsizetype viewersWhenFinished = -1;
        connect(dialog, &QDialog::finished, this, [&](int result) {
            ++finished;
            QCOMPARE(result, int(QDialog::Accepted));
            viewersWhenFinished = viewers(*main).size();
        });
        QTest::mouseClick(child<QPushButton>(dialog, "cmdOK"), Qt::LeftButton);
        QCOMPARE(finished, 1);
        QCOMPARE(viewersWhenFinished, 0);
        QVERIFY(!alive || !alive->isVisible());
        QTRY_VERIFY(!alive);
        QTRY_COMPARE(viewers(*main).size(), 1);
        QCOMPARE(finished, 1);
    }

    // OK shows the report in the report viewer; a second report replaces the first, and with
    // the box ticked only the tag cars are ranked.
    void okShowsTheReportInTheReportViewer() {
        writeLog(slip("Pro Q1", "7", "L", 0) + slip("Pro Q1", "12", "R", 0.1) +
                 slip("Stock Q1", "3", "L", 0) + slip("Stock Q1", "4", "R", 0) +
                 slip("Pro Q1", "5", "L", 0.2) + slip("Pro Q1", "6", "R", 0.3));
        IncrementalTimesDialog* dialog = ask();
        QPointer<IncrementalTimesDialog> alive(dialog);
        QTest::mouseClick(child<QPushButton>(dialog, "cmdOK"), Qt::LeftButton);
        QTRY_VERIFY(!alive);
        QCOMPARE(viewers(*main).size(), 1);
        ViewerWindow* viewer = viewers(*main).first();
        QCOMPARE(viewer->objectName(), QStringLiteral("frmReportViewer"));
        QStringList shown = texts(viewer->document(), 0);
        QCOMPARE(shown.first(), QStringLiteral("Pro Q1"));
        for (const char* rank : {"1)", "2)", "3)", "4)"})
            QVERIFY(shown.contains(QLatin1String(rank)));
        QVERIFY(!shown.contains(QStringLiteral("5)")));
        QVERIFY(shown.contains(QStringLiteral("Page 1 of 1")));

        dialog = ask();
        child<QLineEdit>(dialog, "txtCar1")->setText(QStringLiteral("12"));
        child<QLineEdit>(dialog, "txtCar2")->setText(QStringLiteral("6"));
        child<QCheckBox>(dialog, "chkTaggedCars")->setChecked(true);
        alive = dialog;
        QTest::mouseClick(child<QPushButton>(dialog, "cmdOK"), Qt::LeftButton);
        QTRY_VERIFY(!alive);
        QTRY_COMPARE(viewers(*main).size(), 1);
        shown = texts(viewers(*main).first()->document(), 0);
        QVERIFY(shown.contains(QStringLiteral("2)")));
        QVERIFY(!shown.contains(QStringLiteral("3)")));
        QVERIFY(!shown.contains(QStringLiteral("7")) && !shown.contains(QStringLiteral("5")));
        QVERIFY(shown.contains(QStringLiteral("12")) && shown.contains(QStringLiteral("6")));
    }
};

QTEST_MAIN(TestIncrementalTimesDialog)
#include "tst_incrementaltimesdialog.moc"
