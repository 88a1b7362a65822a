#include "common/TestHome.h"
#include "core/Registry.h"
#include "core/ScriptedDialogs.h"
#include "ui/racelog/ConfigurationDialog.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTabWidget>
#include <QTest>
#include <memory>

namespace {

const QString DefaultsKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\Defaults\\");
const QString TracksKey = QStringLiteral("SOFTWARE\\Zorvane\\Main\\Tracks\\");
const QString TemplatesKey = QStringLiteral("SOFTWARE\\Zorvane\\Templates\\");
const QString FileDialogPathKey = QStringLiteral("SOFTWARE\\Zorvane\\RaceLog\\Path");
const QString TimeSlipLogKey = QStringLiteral("SOFTWARE\\Zorvane\\iCard\\LogFile");
const QString ReceiverLogKey = QStringLiteral("SOFTWARE\\iCardRX\\LogFile\\");

QString typeKey(const QString& name) {
    return DefaultsKey + name + u'\\';
}

QString systemTemplate() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/Bramholdtrack.xlsx");
}

QStringList entries(const QComboBox* box) {
    QStringList all;
    for (int i = 0; i < box->count(); ++i)
        all << box->itemText(i);
    return all;
}

QStringList types() {
    QStringList names;
    Registry::enumSubKeys(Registry::HKEY_CURRENT_USER, DefaultsKey, names);
    names.sort();
    return names;
}

QStringList tracks() {
    QStringList names;
    Registry::enumValues(Registry::HKEY_CURRENT_USER, TracksKey, names);
    names.sort();
    return names;
}

void storeDefaults(const QString& key, const QString& pf, const QString& tsr,
                   const QString& carNumber, const QString& targetET) {
    Registry::set(key, "PF", pf);
    Registry::set(key, "TSR", tsr);
    Registry::set(key, "CarNumber", carNumber);
    Registry::set(key, "TargetET", targetET);
}

// The dialog as the user sees it, shown and in front so its fields take the focus, with the
// main window's pager frequency standing in as the list of frequencies it was given.
struct Dialog {
    Dialog() {
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
    }
    template <typename Widget = QWidget> Widget* get(const char* name) {
        Widget* widget = form.findChild<Widget*>(QLatin1String(name));
        if (!widget)
            qFatal("no control %s", name);
        return widget;
    }
    QLineEdit* field(const char* name) { return get<QLineEdit>(name); }
    QComboBox* list(const char* name) { return get<QComboBox>(name); }
    QPushButton* button(const char* name) { return get<QPushButton>(name); }
    QRadioButton* option(const char* name) { return get<QRadioButton>(name); }
    void click(const char* name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    // Clicks an option button on its round mark.
    void select(const char* name) {
        QRadioButton* mark = option(name);
        QTest::mouseClick(mark, Qt::LeftButton, {}, QPoint(6, mark->height() / 2));
    }

    // Types into a field, having entered it as the user does.
    void type(const char* name, const QString& text) {
        QWidget* target = get(name);
        target->setFocus();
        QCoreApplication::processEvents(); // what entering the field does
        QTest::keyClicks(target, text);
    }
    // Enters a field and leaves it for another.
    void leave(const char* name, const char* next = "txtCarNumber") {
        get(name)->setFocus();
        QVERIFY(get(name)->hasFocus());
        get(next)->setFocus();
    }
    // Opens a list and clicks one of its entries.
    void choose(const char* name, int entry) {
        QComboBox* box = list(name);
        box->showPopup();
        QAbstractItemView* view = box->view();
        QTRY_VERIFY(view->isVisible());
        const QModelIndex index = view->model()->index(entry, 0);
        view->scrollTo(index);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
        QTRY_VERIFY(!view->isVisible());
    }
    // Selects a type's entry and shows its fields.
    void chooseType(const QString& name) {
        const int entry = entries(list("cboPageIdentifier")).indexOf(name);
        QVERIFY(entry >= 0);
        choose("cboPageIdentifier", entry);
    }

    QList<int> frequencies; // every frequency the main window was given
    ConfigurationDialog form{[this](int frequency) { frequencies << frequency; }};
};

} // namespace

class TestConfigurationDialog : public QObject {
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

    // --- The window ---

    void theDialogHasItsTitleAndThreeTabs() {
        Dialog dialog;
        QCOMPARE(dialog.form.objectName(), QStringLiteral("frmConfiguration"));
        QCOMPARE(dialog.form.windowTitle(), QStringLiteral("Configuration"));
        auto* tabs = dialog.form.findChild<QTabWidget*>();
        QCOMPARE(tabs->count(), 3);
        QCOMPARE(tabs->tabText(0), QStringLiteral("Defaults"));
        QCOMPARE(tabs->tabText(1), QStringLiteral("Race Tracks"));
        QCOMPARE(tabs->tabText(2), QStringLiteral(" Templates"));
        QVERIFY(dialog.list("cboPageIdentifier")->isEditable());
        QVERIFY(dialog.list("cboRaceTrack")->isEditable());
        QVERIFY(!dialog.list("cboPagerFrequency")->isEditable());
        QVERIFY(dialog.button("cmdOK"));
        QVERIFY(dialog.button("cmdCancel"));
        QVERIFY(dialog.button("cmdFolder"));
        QVERIFY(dialog.field("txtTemplateFile"));
    }

    void eachControlStandsInItsFrameOnItsTab() {
        Dialog dialog;
        auto* tabs = dialog.form.findChild<QTabWidget*>();
        const QList<std::tuple<int, QString, QStringList>> frames{
            {0, "Predict Defaults", {"cboPageIdentifier", "cmdSaveSetting", "cmdRemoveSetting"}},
            {0, "Setting Defaults", {"txtCarNumber", "txtPF", "txtTSR", "txtTargetET"}},
            {1, "Tracks", {"cboRaceTrack", "cmdAdd", "cmdRemove"}},
            {2,
             "Excel Export",
             {"optTemplateDefault", "optFolder", "txtTemplateFile", "cmdFolder"}},
            {2, "iCard", {"txtICardLogFile", "cmdBrowseICardLog"}},
        };
        for (const auto& [tab, title, controls] : frames) {
            QGroupBox* frame = nullptr;
            for (QGroupBox* each : tabs->widget(tab)->findChildren<QGroupBox*>()) {
                if (each->title() == title)
                    frame = each;
            }
            QVERIFY2(frame, qPrintable(title));
            for (const QString& name : controls)
                QVERIFY2(frame->findChild<QWidget*>(name), qPrintable(name));
        }
        QVERIFY(tabs->widget(0)->findChild<QComboBox*>("cboPagerFrequency"));
    }

    void theControlsHaveTheirCaptions() {
        Dialog dialog;
        QCOMPARE(dialog.button("cmdSaveSetting")->text(), QStringLiteral("&Save"));
        QCOMPARE(dialog.button("cmdRemoveSetting")->text(), QStringLiteral("&Remove"));
        QCOMPARE(dialog.button("cmdAdd")->text(), QStringLiteral("&Add"));
        QCOMPARE(dialog.button("cmdRemove")->text(), QStringLiteral("&Remove"));
        QCOMPARE(dialog.option("optTemplateDefault")->text(), QStringLiteral("System Default"));
        QCOMPARE(dialog.option("optFolder")->text(), QStringLiteral("Folder:"));
        const QList<std::pair<const char*, QString>> labels{
            {"cboPageIdentifier", "Page Identifier"},
            {"txtCarNumber", "Car Number"},
            {"txtPF", "Performance Factor"},
            {"txtTSR", "Throttle Stop Ratio"},
            {"txtTargetET", "Target ET"},
            {"cboPagerFrequency", "Pager Frequency"},
        };
        for (const auto& [control, caption] : labels) {
            QLabel* found = nullptr;
            for (QLabel* label : dialog.form.findChildren<QLabel*>()) {
                if (label->buddy() == dialog.get(control))
                    found = label;
            }
            QVERIFY2(found, control);
            QCOMPARE(found->text(), caption);
        }
    }

    void eachTabShowsItsHelpText() {
        Dialog dialog;
        auto* tabs = dialog.form.findChild<QTabWidget*>();
        const QStringList texts{
            "All data located here is used upon creation of a new race log. This is to quicken "
            "the time it takes to get up and running with Zorvane predictions and limit the need "
            "for repetitive data entry. Please be sure to verify all settings before relying on "
            "software predictions and pages.",
            "Here is the place you add or remove the race tracks you visit. To add a track, you "
            "type in the name as you would like to see it. Abbreviations are acceptable as long "
            "you can remember what they stand for. After you have entered in a track name, click "
            "the add button to add it to the race log track name listing. This will give you the "
            "opportunity to select the track for the next race log creation instead of having to "
            "retype it. To remove a track, select the track name to remove and click remove. This "
            "will not remove the track name from previously created race logs.",
            "A template is used for exporting race log information into Microsoft's Excel. Any "
            "number of templates can be created and managed. With the use of templates, it is "
            "possible to build custom forms for printing and do additional mathematical "
            "calculations for improved predictions. Not to mention, a template can be used for "
            "printing your race log information.",
        };
        for (int tab = 0; tab < 3; ++tab) {
            QStringList shown;
            for (QLabel* label : tabs->widget(tab)->findChildren<QLabel*>())
                shown << label->text();
            QVERIFY2(shown.contains(texts[tab]), qPrintable(tabs->tabText(tab)));
        }
    }

    void theFrequencyListHoldsNineMinutesInSendTicks() {
        Dialog dialog;
        QComboBox* box = dialog.list("cboPagerFrequency");
        QCOMPARE(entries(box), (QStringList{"1min", "2min", "3min", "4min", "5min", "6min", "7min",
                                            "8min", "9min"}));
        for (int i = 0; i < box->count(); ++i)
            QCOMPARE(box->itemData(i).toInt(), (i + 1) * 15);
    }

    void theDialogOpensInTheMiddleOfTheScreen() {
        ConfigurationDialog form([](int) {});
        const QRect area = form.screen()->geometry();
        QCOMPARE(form.x(), area.left() + (area.width() - form.width()) / 2);
        QCOMPARE(form.y(), area.top() + (area.height() - form.height()) / 2);
    }

    void saveAndRemoveStartDisabled() {
        Registry::set(typeKey("Red"), "PF", "1");
        Dialog dialog;
        QVERIFY(!dialog.button("cmdSaveSetting")->isEnabled());
        QVERIFY(!dialog.button("cmdRemoveSetting")->isEnabled());
    }

    // --- The load ---

    void theTemplateOptionFollowsTheStoredPath_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("systemDefault");
        QTest::addColumn<QString>("shownPath");
        QTest::newRow("none") << QString() << true << QString();
        QTest::newRow("the shipped one") << systemTemplate() << true << QString();
        QTest::newRow("the user's own")
            << "/home/team/sheets/custom.xlsx" << false << "/home/team/sheets/custom.xlsx";
    }
    void theTemplateOptionFollowsTheStoredPath() {
        QFETCH(QString, stored);
        QFETCH(bool, systemDefault);
        QFETCH(QString, shownPath);
        if (!stored.isEmpty())
            Registry::set(TemplatesKey, "MasterTemplate", stored);
        Dialog dialog;
        QCOMPARE(dialog.option("optTemplateDefault")->isChecked(), systemDefault);
        QCOMPARE(dialog.option("optFolder")->isChecked(), !systemDefault);
        QCOMPARE(dialog.field("txtTemplateFile")->text(), shownPath);
    }

    void theTracksAreListedFromTheSettings() {
        Registry::set(TracksKey, "Bristol", "0");
        Registry::set(TracksKey, "Gainesville", "0");
        Dialog dialog;
        QStringList listed = entries(dialog.list("cboRaceTrack"));
        listed.sort();
        QCOMPARE(listed, (QStringList{"Bristol", "Gainesville"}));
        QCOMPARE(dialog.list("cboRaceTrack")->currentText(), QString());
    }

    // A frequency between two choices shows the lower one; below one minute none.
    void theStoredFrequencyIsGivenToTheMainWindowAndShown_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("frequency");
        QTest::addColumn<int>("entry");
        QTest::newRow("none") << QString() << 75 << 4;
        QTest::newRow("no number") << "abc" << 75 << 4;
        QTest::newRow("5min") << "75" << 75 << 4;
        QTest::newRow("between 5min and 6min") << "76" << 76 << 4;
        QTest::newRow("1min") << "15" << 15 << 0;
        QTest::newRow("9min") << "135" << 135 << 8;
        QTest::newRow("above 9min") << "136" << 75 << 4;
        QTest::newRow("below 0") << "-1" << 75 << 4;
        QTest::newRow("0") << "0" << 0 << -1;
        QTest::newRow("below 1min") << "14" << 14 << -1;
        QTest::newRow("a half, to the even") << "30.5" << 30 << 1;
    }
    void theStoredFrequencyIsGivenToTheMainWindowAndShown() {
        QFETCH(QString, stored);
        QFETCH(int, frequency);
        QFETCH(int, entry);
        if (!stored.isEmpty())
            Registry::set(DefaultsKey, "PagerFrequency", stored);
        Dialog dialog;
        QCOMPARE(dialog.frequencies, QList<int>{frequency});
        QCOMPARE(dialog.list("cboPagerFrequency")->currentIndex(), entry);
        // Showing it writes nothing.
        QCOMPARE(Registry::get(DefaultsKey, "PagerFrequency"),
                 stored.isEmpty() ? Registry::NoKeyValue : stored);
        QVERIFY(dialogs->messages.isEmpty());
    }

    // 76 ticks show as "5min" and stay in force until the user picks a choice, even the
    // one that is shown.
    void aFrequencyBetweenChoicesIsKeptUntilOneIsChosen() {
        Registry::set(DefaultsKey, "PagerFrequency", "76");
        Dialog dialog;
        QCOMPARE(dialog.list("cboPagerFrequency")->currentText(), QStringLiteral("5min"));
        dialog.click("cmdOK");
        QCOMPARE(Registry::get(DefaultsKey, "PagerFrequency"), QStringLiteral("76"));

        Dialog again;
        QCOMPARE(again.frequencies, QList<int>{76});
        again.choose("cboPagerFrequency", 4);
        QCOMPARE(again.frequencies, (QList<int>{76, 75}));
        QCOMPARE(Registry::get(DefaultsKey, "PagerFrequency"), QStringLiteral("75"));
    }

    // A number too large to be a whole number cannot be taken: the load stops there.
    void aFrequencyBeyondAnyWholeNumberFailsTheLoad() {
        Registry::set(DefaultsKey, "PagerFrequency", "1e12");
        Registry::set(typeKey("Red"), "PF", "1");
        Registry::set(TracksKey, "Bristol", "0");
        Registry::set(DefaultsKey, "PF", "2.5");
        Dialog dialog;
        QCOMPARE(dialogs->messages.size(), 1);
        QCOMPARE(dialogs->messages[0].text, QStringLiteral("Error loading configuration form!"));
        QCOMPARE(dialogs->messages[0].title, QStringLiteral("Configuration"));
        QVERIFY(dialog.frequencies.isEmpty());
        // The steps before it were done, those after it were not.
        QCOMPARE(entries(dialog.list("cboRaceTrack")), QStringList{"Bristol"});
        QVERIFY(entries(dialog.list("cboPageIdentifier")).isEmpty());
        QCOMPARE(dialog.field("txtPF")->text(), QString());
    }

    void theTypesAreListedAndTheGeneralDefaultsShown() {
        storeDefaults(DefaultsKey, "1.5", "0.25", "12A", "9.50");
        storeDefaults(typeKey("Red"), "2", "0.5", "7", "8.90");
        Registry::set(typeKey("Blue Car"), "PF", "3");
        Dialog dialog;
        QStringList listed = entries(dialog.list("cboPageIdentifier"));
        listed.sort();
        QCOMPARE(listed, (QStringList{"Blue Car", "Red"}));
        QCOMPARE(dialog.list("cboPageIdentifier")->currentText(), QString());
        QCOMPARE(dialog.field("txtPF")->text(), QStringLiteral("1.5"));
        QCOMPARE(dialog.field("txtTSR")->text(), QStringLiteral("0.25"));
        QCOMPARE(dialog.field("txtCarNumber")->text(), QStringLiteral("12A"));
        QCOMPARE(dialog.field("txtTargetET")->text(), QStringLiteral("9.50"));
    }

    void defaultsThatAreNoNumbersAreNotShown() {
        storeDefaults(DefaultsKey, "abc", "-", "", "x9");
        Dialog dialog;
        for (const char* name : {"txtPF", "txtTSR", "txtCarNumber", "txtTargetET"})
            QCOMPARE(dialog.field(name)->text(), QString());
    }

    // --- Choosing a type ---

    // A number the type lacks leaves its field as it stood; a car number it lacks empties it.
    void choosingATypeShowsItsDefaults() {
        storeDefaults(DefaultsKey, "1.5", "0.25", "12A", "9.50");
        Registry::set(typeKey("Red"), "PF", "2");
        Registry::set(typeKey("Red"), "TargetET", "abc");
        Dialog dialog;
        dialog.chooseType("Red");
        QCOMPARE(dialog.list("cboPageIdentifier")->currentText(), QStringLiteral("Red"));
        QCOMPARE(dialog.field("txtPF")->text(), QStringLiteral("2"));
        QCOMPARE(dialog.field("txtTSR")->text(), QStringLiteral("0.25"));
        QCOMPARE(dialog.field("txtCarNumber")->text(), QString());
        QCOMPARE(dialog.field("txtTargetET")->text(), QStringLiteral("9.50"));
        QVERIFY(dialog.button("cmdRemoveSetting")->isEnabled());
        QVERIFY(!dialog.button("cmdSaveSetting")->isEnabled());
    }

    // --- Editing and saving a type ---

    void anyEditOfAFieldOrTheNameEnablesSave_data() {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("typed");
        QTest::newRow("car number") << "txtCarNumber"
                                    << "7";
        QTest::newRow("performance factor") << "txtPF"
                                            << "1";
        QTest::newRow("throttle stop ratio") << "txtTSR"
                                             << "1";
        QTest::newRow("target ET") << "txtTargetET"
                                   << "9";
        QTest::newRow("name") << "cboPageIdentifier"
                              << "R";
    }
    void anyEditOfAFieldOrTheNameEnablesSave() {
        QFETCH(QString, control);
        QFETCH(QString, typed);
        Dialog dialog;
        dialog.type(qPrintable(control), typed);
        QVERIFY(dialog.button("cmdSaveSetting")->isEnabled());
        QVERIFY(!dialog.button("cmdRemoveSetting")->isEnabled());
    }

    void saveStoresTheTypeAndListsIt() {
        Dialog dialog;
        dialog.type("cboPageIdentifier", "Red");
        dialog.type("txtCarNumber", "7r");
        dialog.type("txtPF", "1.25");
        dialog.type("txtTSR", "0.5");
        dialog.type("txtTargetET", "8.9");
        dialog.click("cmdSaveSetting");
        QVERIFY(!dialog.button("cmdSaveSetting")->isEnabled());
        QCOMPARE(types(), QStringList{"Red"});
        QCOMPARE(Registry::get(typeKey("Red"), "CarNumber"), QStringLiteral("7R"));
        QCOMPARE(Registry::get(typeKey("Red"), "PF"), QStringLiteral("1.25"));
        QCOMPARE(Registry::get(typeKey("Red"), "TSR"), QStringLiteral("0.5"));
        QCOMPARE(Registry::get(typeKey("Red"), "TargetET"), QStringLiteral("8.90"));
        QCOMPARE(Registry::get(DefaultsKey, "PF"), Registry::NoKeyValue);
        QCOMPARE(entries(dialog.list("cboPageIdentifier")), QStringList{"Red"});
        QVERIFY(dialog.form.isVisible());

        // Saved again, the name is listed once; a name differing in case is another type.
        dialog.type("txtPF", "2");
        dialog.click("cmdSaveSetting");
        QCOMPARE(entries(dialog.list("cboPageIdentifier")), QStringList{"Red"});
        QCOMPARE(Registry::get(typeKey("Red"), "PF"), QStringLiteral("2"));
        dialog.list("cboPageIdentifier")->setFocus();
        dialog.list("cboPageIdentifier")->lineEdit()->selectAll();
        QTest::keyClicks(dialog.list("cboPageIdentifier"), "RED");
        dialog.click("cmdSaveSetting");
        QCOMPARE(entries(dialog.list("cboPageIdentifier")), (QStringList{"Red", "RED"}));
    }

    // With no name the general defaults are saved, and no entry is added.
    void saveWithNoNameStoresTheGeneralDefaults() {
        Dialog dialog;
        dialog.type("txtPF", "1.5");
        dialog.type("txtCarNumber", "12");
        dialog.click("cmdSaveSetting");
        QCOMPARE(Registry::get(DefaultsKey, "PF"), QStringLiteral("1.5"));
        QCOMPARE(Registry::get(DefaultsKey, "CarNumber"), QStringLiteral("12"));
        QVERIFY(types().isEmpty());
        QVERIFY(entries(dialog.list("cboPageIdentifier")).isEmpty());
    }

    // Numbers are stored only as numbers: Enter saves with the field not yet left.
    void aFieldThatIsNoNumberIsNotStored() {
        storeDefaults(DefaultsKey, "1.5", "0.25", "12A", "9.50");
        Dialog dialog;
        dialog.type("txtPF", "2");
        dialog.type("txtTSR", ".");
        QTest::keyClick(dialog.field("txtTSR"), Qt::Key_Return);
        QVERIFY(!dialog.form.isVisible());
        QCOMPARE(dialog.form.result(), int(QDialog::Accepted));
        QCOMPARE(Registry::get(DefaultsKey, "PF"), QStringLiteral("2"));
        QCOMPARE(Registry::get(DefaultsKey, "TSR"), QStringLiteral("0.25"));
    }

    // The car number is stored whatever it is, so an emptied one empties the field of the
    // next log.
    void anEmptiedCarNumberIsStored() {
        storeDefaults(DefaultsKey, "1.5", "0.25", "12A", "9.50");
        Dialog dialog;
        dialog.type("txtCarNumber", QString());
        QTest::keyClick(dialog.field("txtCarNumber"), Qt::Key_Backspace);
        QCOMPARE(dialog.field("txtCarNumber")->text(), QString());
        dialog.click("cmdSaveSetting");
        QCOMPARE(Registry::get(DefaultsKey, "CarNumber"), Registry::NoKeyValue);
        QCOMPARE(Registry::get(DefaultsKey, "PF"), QStringLiteral("1.5"));
        Dialog again;
        QCOMPARE(again.field("txtCarNumber")->text(), QString());
    }

    // The letters are swallowed as they are typed; the empty field left becomes "0".
    void aTypeWithAPerformanceFactorOfLettersStoresZero() {
        Dialog dialog;
        dialog.type("cboPageIdentifier", "Red");
        dialog.type("txtPF", "abc");
        QCOMPARE(dialog.field("txtPF")->text(), QString());
        dialog.leave("txtPF", "txtTSR");
        QCOMPARE(dialog.field("txtPF")->text(), QStringLiteral("0"));
        dialog.click("cmdSaveSetting");
        QCOMPARE(Registry::get(typeKey("Red"), "PF"), QStringLiteral("0"));
        QVERIFY(dialogs->messages.isEmpty());
    }

    // The log's own page identifier takes letters only, but a type's name may hold blanks.
    void aNameWithInnerBlanksIsATypeOfItsOwn() {
        Dialog dialog;
        dialog.type("cboPageIdentifier", "  Red Car 2 ");
        dialog.leave("cboPageIdentifier");
        QCOMPARE(dialog.list("cboPageIdentifier")->currentText(), QStringLiteral("Red Car 2"));
        dialog.type("txtPF", "1.5");
        dialog.click("cmdSaveSetting");
        QCOMPARE(types(), QStringList{"Red Car 2"});
        QCOMPARE(Registry::get(typeKey("Red Car 2"), "PF"), QStringLiteral("1.5"));

        Dialog again;
        QCOMPARE(entries(again.list("cboPageIdentifier")), QStringList{"Red Car 2"});
        QCOMPARE(again.field("txtPF")->text(), QString());
        again.chooseType("Red Car 2");
        QCOMPARE(again.field("txtPF")->text(), QStringLiteral("1.5"));
    }

    // --- Removing a type ---

    void removeDeletesTheTypeAndListsTheRestAgain() {
        storeDefaults(DefaultsKey, "1.5", "0.25", "12A", "9.50");
        storeDefaults(typeKey("Red"), "2", "0.5", "7", "8.90");
        Registry::set(typeKey("Blue"), "PF", "3");
        Dialog dialog;
        dialog.chooseType("Red");
        dialog.click("cmdRemoveSetting");
        QVERIFY(!dialog.button("cmdRemoveSetting")->isEnabled());
        QCOMPARE(types(), QStringList{"Blue"});
        QCOMPARE(Registry::get(typeKey("Red"), "PF"), Registry::NoKeyValue);
        QCOMPARE(entries(dialog.list("cboPageIdentifier")), QStringList{"Blue"});
        QCOMPARE(dialog.list("cboPageIdentifier")->currentText(), QString());
        // The general defaults and the other types stay.
        QCOMPARE(Registry::get(DefaultsKey, "PF"), QStringLiteral("1.5"));
        QCOMPARE(Registry::get(DefaultsKey, "CarNumber"), QStringLiteral("12A"));
        QCOMPARE(Registry::get(typeKey("Blue"), "PF"), QStringLiteral("3"));
        // Cancel does not bring it back.
        dialog.click("cmdCancel");
        QCOMPARE(types(), QStringList{"Blue"});
    }

    // --- The text fields ---

    void theFieldsFilterTheKeysTyped_data() {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        QTest::newRow("car number") << "txtCarNumber"
                                    << "ab1-2 c."
                                    << "AB12C";
        QTest::newRow("performance factor") << "txtPF"
                                            << "-1.5e+x"
                                            << "-1.5";
        QTest::newRow("throttle stop ratio") << "txtTSR"
                                             << "-0.25a"
                                             << "0.25";
        QTest::newRow("target ET") << "txtTargetET"
                                   << "-9,5.1"
                                   << "95.1";
        QTest::newRow("name") << "cboPageIdentifier"
                              << "Red-Car 2!"
                              << "RedCar 2";
    }
    void theFieldsFilterTheKeysTyped() {
        QFETCH(QString, control);
        QFETCH(QString, typed);
        QFETCH(QString, kept);
        Dialog dialog;
        dialog.type(qPrintable(control), typed);
        QLineEdit* text = control.startsWith(u"cbo") ? dialog.list(qPrintable(control))->lineEdit()
                                                     : dialog.field(qPrintable(control));
        QCOMPARE(text->text(), kept);
        QTest::keyClick(dialog.get(qPrintable(control)), Qt::Key_Backspace);
        QCOMPARE(text->text(), kept.chopped(1));
    }

    void enteringAFieldSelectsItsText() {
        storeDefaults(DefaultsKey, "1.5", "0.25", "12A", "9.50");
        Dialog dialog;
        for (const char* name : {"txtCarNumber", "txtPF", "txtTSR", "txtTargetET"}) {
            dialog.field(name)->setFocus();
            QTRY_COMPARE(dialog.field(name)->selectedText(), dialog.field(name)->text());
            QVERIFY(!dialog.field(name)->text().isEmpty());
        }
    }

    void leavingAFieldPutsItRightWithoutAWord_data() {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("settled");
        QTest::newRow("PF no number") << "txtPF"
                                      << "-"
                                      << "0";
        QTest::newRow("PF number") << "txtPF"
                                   << "-1.5"
                                   << "-1.5";
        QTest::newRow("TSR no number") << "txtTSR"
                                       << "."
                                       << "0";
        QTest::newRow("TSR number") << "txtTSR"
                                    << "0.25"
                                    << "0.25";
        QTest::newRow("target ET short") << "txtTargetET"
                                         << "9.5"
                                         << "9.50";
        QTest::newRow("target ET long") << "txtTargetET"
                                        << "9.125"
                                        << "9.125";
        QTest::newRow("target ET no number") << "txtTargetET"
                                             << "."
                                             << "0.00";
        QTest::newRow("target ET empty") << "txtTargetET"
                                         << ""
                                         << "0.00";
        QTest::newRow("car number") << "txtCarNumber"
                                    << ""
                                    << "";
    }
    void leavingAFieldPutsItRightWithoutAWord() {
        QFETCH(QString, control);
        QFETCH(QString, text);
        QFETCH(QString, settled);
        Dialog dialog;
        dialog.field(qPrintable(control))->setText(text);
        dialog.leave(qPrintable(control), "cboPageIdentifier");
        QCOMPARE(dialog.field(qPrintable(control))->text(), settled);
        QVERIFY(dialogs->messages.isEmpty());
    }

    // --- The pager frequency ---

    // The pager takes the new frequency at once, and Cancel does not take it back.
    void aChosenFrequencyIsInForceAtOnceAndCancelKeepsIt() {
        Dialog dialog;
        dialog.choose("cboPagerFrequency", 1);
        QCOMPARE(dialog.frequencies, (QList<int>{75, 30}));
        QCOMPARE(Registry::get(DefaultsKey, "PagerFrequency"), QStringLiteral("30"));
        dialog.choose("cboPagerFrequency", 8);
        QCOMPARE(dialog.frequencies, (QList<int>{75, 30, 135}));
        QCOMPARE(Registry::get(DefaultsKey, "PagerFrequency"), QStringLiteral("135"));
        dialog.click("cmdCancel");
        QVERIFY(!dialog.form.isVisible());
        QCOMPARE(Registry::get(DefaultsKey, "PagerFrequency"), QStringLiteral("135"));
        QCOMPARE(dialog.frequencies.last(), 135);
    }

    // --- The race tracks ---

    void addStoresANewTrackOnce() {
        Dialog dialog;
        dialog.type("cboRaceTrack", "  Bristol ");
        dialog.click("cmdAdd");
        QCOMPARE(entries(dialog.list("cboRaceTrack")), QStringList{"Bristol"});
        QCOMPARE(tracks(), QStringList{"Bristol"});
        QCOMPARE(Registry::get(TracksKey, "Bristol"), QStringLiteral("0"));
        dialog.click("cmdAdd");
        QCOMPARE(entries(dialog.list("cboRaceTrack")), QStringList{"Bristol"});
        QVERIFY(dialog.button("cmdAdd")->isEnabled());
    }

    // Any name a user can type comes back from the store in the next dialog, as another
    // start of the program would read it, and can be removed again.
    void trackNamesWithSlashesComeBackAfterARestart() {
        const QStringList names{"Route 66 / North", "C:\\Tracks\\Home", "50% Grip", "A%2FB"};
        {
            Dialog dialog;
            for (const QString& name : names) {
                dialog.list("cboRaceTrack")->setEditText(name);
                dialog.click("cmdAdd");
            }
        }
        QStringList sorted = names;
        sorted.sort();
        QCOMPARE(tracks(), sorted);
        Dialog next;
        QStringList listed = entries(next.list("cboRaceTrack"));
        listed.sort();
        QCOMPARE(listed, sorted);
        next.list("cboRaceTrack")->setEditText("Route 66 / North");
        next.click("cmdRemove");
        QVERIFY(!tracks().contains("Route 66 / North"));
        QCOMPARE(tracks().size(), 3);
    }

    void anEmptyTrackNameAddsNothing() {
        Dialog dialog;
        dialog.type("cboRaceTrack", "   ");
        dialog.click("cmdAdd");
        QVERIFY(entries(dialog.list("cboRaceTrack")).isEmpty());
        QStringList names;
        QVERIFY(!Registry::enumValues(Registry::HKEY_CURRENT_USER, TracksKey, names));
    }

    void aTrackDifferingOnlyInCaseIsASecondEntry() {
        Registry::set(TracksKey, "Bristol", "0");
        Dialog dialog;
        dialog.type("cboRaceTrack", "bristol");
        dialog.click("cmdAdd");
        QCOMPARE(entries(dialog.list("cboRaceTrack")), (QStringList{"Bristol", "bristol"}));
        QCOMPARE(Registry::get(TracksKey, "bristol"), QStringLiteral("0"));
    }

    void removeDeletesTheTrackAndListsTheRestAgain() {
        Registry::set(TracksKey, "Bristol", "0");
        Registry::set(TracksKey, "Gainesville", "0");
        Dialog dialog;
        dialog.type("cboRaceTrack", " Bristol");
        dialog.click("cmdRemove");
        QCOMPARE(tracks(), QStringList{"Gainesville"});
        QCOMPARE(entries(dialog.list("cboRaceTrack")), QStringList{"Gainesville"});
        QCOMPARE(dialog.list("cboRaceTrack")->currentText(), QString());
    }

    void tracksStayChangedAfterCancel() {
        Registry::set(TracksKey, "Bristol", "0");
        Dialog dialog;
        dialog.type("cboRaceTrack", "Gainesville");
        dialog.click("cmdAdd");
        dialog.list("cboRaceTrack")->setEditText("Bristol");
        dialog.click("cmdRemove");
        dialog.click("cmdCancel");
        QCOMPARE(tracks(), QStringList{"Gainesville"});
    }

    // --- The template and the two ways of ending ---

    void okStoresTheShippedTemplateForTheSystemDefault() {
        Registry::set(TemplatesKey, "MasterTemplate", systemTemplate());
        Dialog dialog;
        dialog.field("txtTemplateFile")->setText(home->root()); // counts only for "Folder:"
        dialog.click("cmdOK");
        QCOMPARE(Registry::get(TemplatesKey, "MasterTemplate"), systemTemplate());
        QVERIFY(!dialog.form.isVisible());
        QCOMPARE(dialog.form.result(), int(QDialog::Accepted));
    }

    void okStoresAFolderTemplateOnlyWhenTheFileExists() {
        const QString workbook = home->root() + QStringLiteral("/team.xlsx");
        QFile file(workbook);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        Registry::set(TemplatesKey, "MasterTemplate", "/gone/old.xlsx");
        {
            Dialog dialog;
            QVERIFY(dialog.option("optFolder")->isChecked());
            dialog.field("txtTemplateFile")->setText(home->root() + QStringLiteral("/none.xlsx"));
            dialog.click("cmdOK");
            QCOMPARE(Registry::get(TemplatesKey, "MasterTemplate"),
                     QStringLiteral("/gone/old.xlsx"));
            QVERIFY(dialogs->messages.isEmpty());
        }
        {
            Dialog dialog;
            dialog.field("txtTemplateFile")->setText(workbook);
            dialog.click("cmdOK");
            QCOMPARE(Registry::get(TemplatesKey, "MasterTemplate"), workbook);
        }
        {
            // A folder is not told apart from a file.
            Dialog dialog;
            dialog.field("txtTemplateFile")->setText(home->root());
            dialog.click("cmdOK");
            QCOMPARE(Registry::get(TemplatesKey, "MasterTemplate"), home->root());
        }
    }

    void saveSettingStoresTheTemplateToo() {
        Dialog dialog;
        dialog.type("txtPF", "1");
        dialog.click("cmdSaveSetting");
        QCOMPARE(Registry::get(TemplatesKey, "MasterTemplate"), systemTemplate());
    }

    void okStoresTheFieldsUnderThePresentName() {
        storeDefaults(typeKey("Red"), "2", "0.5", "7", "8.90");
        Dialog dialog;
        dialog.chooseType("Red");
        dialog.type("txtPF", "3");
        dialog.click("cmdOK");
        QCOMPARE(Registry::get(typeKey("Red"), "PF"), QStringLiteral("3"));
        QCOMPARE(Registry::get(typeKey("Red"), "CarNumber"), QStringLiteral("7"));
        QCOMPARE(Registry::get(DefaultsKey, "PF"), Registry::NoKeyValue);
    }

    void cancelStoresNeitherFieldsNorTemplate() {
        storeDefaults(DefaultsKey, "1.5", "0.25", "12A", "9.50");
        Dialog dialog;
        dialog.type("txtPF", "3");
        dialog.type("cboPageIdentifier", "Red");
        dialog.click("cmdCancel");
        QVERIFY(!dialog.form.isVisible());
        QCOMPARE(dialog.form.result(), int(QDialog::Rejected));
        QCOMPARE(Registry::get(DefaultsKey, "PF"), QStringLiteral("1.5"));
        QVERIFY(types().isEmpty());
        QCOMPARE(Registry::get(TemplatesKey, "MasterTemplate"), Registry::NoKeyValue);
    }

    // --- Choosing a template file ---

    void theTemplateDialogStartsInTheLastFolderUsed() {
        Registry::set(FileDialogPathKey, "0", home->root());
        Dialog dialog;
        dialog.click("cmdFolder");
        QCOMPARE(dialogs->fileRequests.size(), 1);
        const Dialogs::FileRequest& request = dialogs->fileRequests[0];
        QVERIFY(!request.save);
        QCOMPARE(request.title, QStringLiteral("Choose Excel Template"));
        QCOMPARE(request.filter, QStringLiteral("Excel Workbooks (*.xlsx) |*.xlsx|"));
        QCOMPARE(request.fileName, QStringLiteral("*.xlsx"));
        QCOMPARE(request.initialFolder, home->root());
    }

    void theTemplateDialogStartsInItsOwnFolderWhenNoneWasUsed() {
        Dialog dialog;
        dialog.click("cmdFolder");
        QCOMPARE(dialogs->fileRequests.size(), 1);
        QCOMPARE(dialogs->fileRequests[0].initialFolder, QString());
    }

    // The chosen path is shown but counts only once "Folder:" is selected.
    void aChosenTemplateFillsThePathAndLeavesTheOptions() {
        const QString workbook = home->root() + QStringLiteral("/team.xlsx");
        QFile file(workbook);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        Dialog dialog;
        dialogs->queueFile(workbook);
        dialog.click("cmdFolder");
        QCOMPARE(dialog.field("txtTemplateFile")->text(), workbook);
        QVERIFY(dialog.option("optTemplateDefault")->isChecked());
        QVERIFY(!dialog.option("optFolder")->isChecked());
        QCOMPARE(Registry::get(FileDialogPathKey, "0"), Registry::NoKeyValue);

        dialog.select("optFolder");
        QVERIFY(!dialog.option("optTemplateDefault")->isChecked());
        dialog.click("cmdOK");
        QCOMPARE(Registry::get(TemplatesKey, "MasterTemplate"), workbook);
    }

    void aCancelledTemplateDialogChangesNothing() {
        Registry::set(TemplatesKey, "MasterTemplate", "/home/team/custom.xlsx");
        Dialog dialog;
        dialogs->queueFile(QString());
        dialog.click("cmdFolder");
        QCOMPARE(dialog.field("txtTemplateFile")->text(), QStringLiteral("/home/team/custom.xlsx"));
        QVERIFY(dialog.option("optFolder")->isChecked());
    }

    // --- The timing receiver's log ---

    void theTimeSlipLogFieldHasItsCaptionAndButton() {
        Dialog dialog;
        auto* caption = dialog.get<QLabel>("lblICardLogFile");
        QCOMPARE(caption->text(), QStringLiteral("iCard log file"));
        QCOMPARE(caption->buddy(), dialog.field("txtICardLogFile"));
        QCOMPARE(dialog.button("cmdBrowseICardLog")->text(), QStringLiteral("Browse..."));
        QCOMPARE(dialog.field("txtICardLogFile")->text(), QString());
    }

    // The field shows the program's own setting, never the receiver's.
    void theTimeSlipLogFieldShowsTheProgramsSetting() {
        Registry::set(ReceiverLogKey, "LogFile", "/receiver/races.csv");
        Registry::set(TimeSlipLogKey, "LogFile", "/team/races.csv");
        Dialog dialog;
        QCOMPARE(dialog.field("txtICardLogFile")->text(), QStringLiteral("/team/races.csv"));
    }

    void okStoresTheTimeSlipLogUnderTheProgramsKey() {
        Dialog dialog;
        dialog.type("txtICardLogFile", QStringLiteral("/team/event.csv"));
        dialog.click("cmdOK");
        QCOMPARE(Registry::get(TimeSlipLogKey, "LogFile"), QStringLiteral("/team/event.csv"));
        QCOMPARE(Registry::get(ReceiverLogKey, "LogFile"), Registry::NoKeyValue);
    }

    void anEmptiedTimeSlipLogFieldForgetsTheFile() {
        Registry::set(TimeSlipLogKey, "LogFile", "/team/races.csv");
        Dialog dialog;
        dialog.field("txtICardLogFile")->clear();
        dialog.click("cmdOK");
        QCOMPARE(Registry::get(TimeSlipLogKey, "LogFile"), Registry::NoKeyValue);
    }

    void cancelKeepsTheStoredTimeSlipLog() {
        Registry::set(TimeSlipLogKey, "LogFile", "/team/races.csv");
        Dialog dialog;
        dialog.field("txtICardLogFile")->setText(QStringLiteral("/team/other.csv"));
        dialog.click("cmdCancel");
        QCOMPARE(Registry::get(TimeSlipLogKey, "LogFile"), QStringLiteral("/team/races.csv"));
    }

    void browseFillsTheTimeSlipLogField() {
        Registry::set(FileDialogPathKey, "0", home->root());
        const QString log = home->root() + QStringLiteral("/event.csv");
        Dialog dialog;
        dialogs->queueFile(log);
        dialog.click("cmdBrowseICardLog");
        QCOMPARE(dialogs->fileRequests.size(), 1);
        const Dialogs::FileRequest& request = dialogs->fileRequests[0];
        QVERIFY(!request.save);
        QCOMPARE(request.title, QStringLiteral("Choose iCard Log File"));
        QCOMPARE(request.initialFolder, home->root());
        QCOMPARE(dialog.field("txtICardLogFile")->text(), log);
        dialog.click("cmdOK");
        QCOMPARE(Registry::get(TimeSlipLogKey, "LogFile"), log);
    }

    void aCancelledBrowseLeavesTheTimeSlipLogField() {
        Registry::set(TimeSlipLogKey, "LogFile", "/team/races.csv");
        Dialog dialog;
        dialogs->queueFile(QString());
        dialog.click("cmdBrowseICardLog");
        QCOMPARE(dialog.field("txtICardLogFile")->text(), QStringLiteral("/team/races.csv"));
    }
};

QTEST_MAIN(TestConfigurationDialog)
#include "tst_configurationdialog.moc"
