#include "ui/racelog/ConfigurationDialog.h"

#include "ui/shell/DialogParts.h"

#include "core/Dialogs.h"
#include "core/NumberText.h"
#include "core/Registry.h"
#include "feed/PagerSchedule.h"
#include "racelog/KeyFilters.h"
#include "racelog/RaceLogDefaults.h"
#include "racelog/SidePanelRules.h"
#include "ui/racelog/ConfigurationTexts.h"
#include "ui/racelog/TextFieldRules.h"
#include "ui/shell/CentreOnScreen.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace RaceLogDefaults;

namespace {

constexpr int DialogWidth = 460;

template <typename Widget> Widget* named(Widget* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QPushButton* button(const char* name, const QString& caption) {
    return DialogParts::namedButton(QLatin1String(name), caption);
}

QLabel* label(const char* name, const QString& caption, QWidget* buddy) {
    auto* item = named(new QLabel(caption), name);
    item->setBuddy(buddy);
    return item;
}

QLabel* helpText(const char* name, const QString& text) {
    auto* item = named(new QLabel(text), name);
    item->setWordWrap(true);
    return item;
}

// A list the user also types into. It neither completes what is typed nor keeps it as an
// entry of its own: entries come from the settings and from the dialog's commands.
QComboBox* typedList(const char* name) {
    auto* box = named(new QComboBox, name);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr);
    return box;
}

// A list filled again from the settings starts with no entry chosen and no text.
void refill(QComboBox* box, const QStringList& entries) {
    box->clear();
    box->addItems(entries);
    box->setCurrentIndex(-1);
    box->setEditText(QString());
}

QString numberOrZero(const QString& text) {
    return NumberText::isNumeric(text) ? text : QStringLiteral("0");
}

} // namespace

ConfigurationDialog::ConfigurationDialog(std::function<void(int)> setPagerFrequency,
                                         QWidget* parent)
    : QDialog(parent), setPagerFrequency(std::move(setPagerFrequency)) {
    setObjectName(QStringLiteral("frmConfiguration"));
    setWindowTitle(QStringLiteral("Configuration"));

    tabs = named(new QTabWidget, "tabConfiguration");
    tabs->addTab(defaultsPage(), QStringLiteral("Defaults"));
    tabs->addTab(tracksPage(), QStringLiteral("Race Tracks"));
    tabs->addTab(templatesPage(), QStringLiteral(" Templates"));
    tabs->setMinimumWidth(DialogWidth);

    okButton = button("cmdOK", QStringLiteral("OK"));
    cancelButton = button("cmdCancel", QStringLiteral("Cancel"));
    QHBoxLayout* buttons = DialogParts::closingButtons({okButton, cancelButton});

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addLayout(buttons);

    addFieldRules();
    connectCommands();
    load();
}

QWidget* ConfigurationDialog::defaultsPage() {
    pageIdentifierList = typedList("cboPageIdentifier");
    saveSettingButton = button("cmdSaveSetting", QStringLiteral("&Save"));
    removeSettingButton = button("cmdRemoveSetting", QStringLiteral("&Remove"));
    saveSettingButton->setEnabled(false);
    removeSettingButton->setEnabled(false);
    auto* types = named(new QGroupBox(QStringLiteral("Predict Defaults")), "fraPredictDefaults");
    auto* typeRows = new QGridLayout(types);
    typeRows->addWidget(
        label("lblPageIdentifier", QStringLiteral("Page Identifier"), pageIdentifierList), 0, 0, 1,
        2);
    typeRows->addWidget(pageIdentifierList, 1, 0, 1, 2);
    typeRows->addWidget(saveSettingButton, 2, 0);
    typeRows->addWidget(removeSettingButton, 2, 1);

    carNumberField = named(new QLineEdit, "txtCarNumber");
    pfField = named(new QLineEdit, "txtPF");
    tsrField = named(new QLineEdit, "txtTSR");
    targetEtField = named(new QLineEdit, "txtTargetET");
    auto* fields = named(new QGroupBox(QStringLiteral("Setting Defaults")), "fraSettingDefaults");
    auto* fieldRows = new QFormLayout(fields);
    fieldRows->addRow(label("lblCarNumber", QStringLiteral("Car Number"), carNumberField),
                      carNumberField);
    fieldRows->addRow(label("lblPF", QStringLiteral("Performance Factor"), pfField), pfField);
    fieldRows->addRow(label("lblTSR", QStringLiteral("Throttle Stop Ratio"), tsrField), tsrField);
    fieldRows->addRow(label("lblTargetET", QStringLiteral("Target ET"), targetEtField),
                      targetEtField);

    // "1min" to "9min", each holding its number of send timer ticks.
    pagerFrequencyList = named(new QComboBox, "cboPagerFrequency");
    for (int minutes = 1; minutes <= PagerFrequencyChoices; ++minutes)
        pagerFrequencyList->addItem(QString::number(minutes) + QStringLiteral("min"),
                                    minutes * TicksPerMinute);
    auto* frequency = new QFormLayout;
    frequency->addRow(
        label("lblPagerFrequency", QStringLiteral("Pager Frequency"), pagerFrequencyList),
        pagerFrequencyList);

    auto* sides = new QHBoxLayout;
    sides->addWidget(types);
    sides->addWidget(fields);
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->addLayout(sides);
    layout->addLayout(frequency);
    layout->addWidget(helpText("lblDefaultsHelp", ConfigurationTexts::DefaultsHelp));
    layout->addStretch();
    return page;
}

QWidget* ConfigurationDialog::tracksPage() {
    raceTrackList = typedList("cboRaceTrack");
    addTrackButton = button("cmdAdd", QStringLiteral("&Add"));
    removeTrackButton = button("cmdRemove", QStringLiteral("&Remove"));
    auto* tracks = named(new QGroupBox(QStringLiteral("Tracks")), "fraTracks");
    auto* rows = new QHBoxLayout(tracks);
    rows->addWidget(raceTrackList, 1);
    rows->addWidget(addTrackButton);
    rows->addWidget(removeTrackButton);

    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(tracks);
    layout->addWidget(helpText("lblRaceTracksHelp", ConfigurationTexts::RaceTracksHelp));
    layout->addStretch();
    return page;
}

QWidget* ConfigurationDialog::templatesPage() {
    defaultTemplateOption =
        named(new QRadioButton(QStringLiteral("System Default")), "optTemplateDefault");
    folderTemplateOption = named(new QRadioButton(QStringLiteral("Folder:")), "optFolder");
    templateFileField = named(new QLineEdit, "txtTemplateFile");
    folderButton = button("cmdFolder", QStringLiteral("..."));
    auto* excel = named(new QGroupBox(QStringLiteral("Excel Export")), "fraExcelExport");
    auto* rows = new QGridLayout(excel);
    rows->addWidget(defaultTemplateOption, 0, 0, 1, 3);
    rows->addWidget(folderTemplateOption, 1, 0);
    rows->addWidget(templateFileField, 1, 1);
    rows->addWidget(folderButton, 1, 2);

    iCardLogFileField = named(new QLineEdit, "txtICardLogFile");
    browseICardLogButton = button("cmdBrowseICardLog", QStringLiteral("Browse..."));
    auto* slips = named(new QGroupBox(QStringLiteral("iCard")), "fraICard");
    auto* slipRows = new QHBoxLayout(slips);
    slipRows->addWidget(
        label("lblICardLogFile", QStringLiteral("iCard log file"), iCardLogFileField));
    slipRows->addWidget(iCardLogFileField, 1);
    slipRows->addWidget(browseICardLogButton);

    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(excel);
    layout->addWidget(slips);
    layout->addWidget(helpText("lblTemplatesHelp", ConfigurationTexts::TemplatesHelp));
    layout->addStretch();
    return page;
}

// The fields put themselves right without a word: a default that is no number is 0.
void ConfigurationDialog::addFieldRules() {
    auto* rules = new TextFieldRules(this);
    rules->add(carNumberField, KeyFilters::carNumber, [] {});
    rules->add(pfField, KeyFilters::signedNumber,
               [this] { pfField->setText(numberOrZero(pfField->text())); });
    rules->add(tsrField, KeyFilters::unsignedNumber,
               [this] { tsrField->setText(numberOrZero(tsrField->text())); });
    rules->add(targetEtField, KeyFilters::unsignedNumber, [this] {
        targetEtField->setText(SidePanelRules::settledTargetET(targetEtField->text()));
    });
    rules->add(
        {pageIdentifierList, pageIdentifierList->lineEdit(), KeyFilters::typeName, false,
         [this] { pageIdentifierList->setEditText(pageIdentifierList->currentText().trimmed()); }});
}

// What the user does, and only that: the load fills the lists and fields without running
// any of these.
void ConfigurationDialog::connectCommands() {
    for (QLineEdit* edited :
         {carNumberField, pfField, tsrField, targetEtField, pageIdentifierList->lineEdit()})
        connect(edited, &QLineEdit::textEdited, saveSettingButton,
                [this] { saveSettingButton->setEnabled(true); });
    connect(saveSettingButton, &QPushButton::clicked, this, &ConfigurationDialog::saveSetting);
    connect(removeSettingButton, &QPushButton::clicked, this, &ConfigurationDialog::removeSetting);
    connect(pageIdentifierList, &QComboBox::activated, this,
            &ConfigurationDialog::pageIdentifierChosen);
    connect(pagerFrequencyList, &QComboBox::activated, this,
            &ConfigurationDialog::pagerFrequencyChosen);
    connect(addTrackButton, &QPushButton::clicked, this, &ConfigurationDialog::addTrack);
    connect(removeTrackButton, &QPushButton::clicked, this, &ConfigurationDialog::removeTrack);
    connect(folderButton, &QPushButton::clicked, this, &ConfigurationDialog::chooseTemplate);
    connect(browseICardLogButton, &QPushButton::clicked, this,
            &ConfigurationDialog::chooseTimeSlipLog);
    connect(okButton, &QPushButton::clicked, this, [this] {
        save();
        accept();
    });
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

// --- The load ---

void ConfigurationDialog::load() {
    // At the size its contents ask for.
    adjustSize();
    centreOnScreen(*this);
    loadTemplate();
    loadTimeSlipLog();
    fillRaceTracks();
    if (!loadPagerFrequency()) {
        Dialogs::inform(QStringLiteral("Error loading configuration form!"),
                        QStringLiteral("Configuration"), Dialogs::Icon::None);
        return;
    }
    fillPageIdentifiers();
    loadFields();
}

// The shipped template is the system default; any other path is the user's own folder.
void ConfigurationDialog::loadTemplate() {
    const QString path = Registry::get(SettingKeys::MasterTemplate);
    if (path == Registry::NoKeyValue || path == systemTemplatePath()) {
        defaultTemplateOption->setChecked(true);
        return;
    }
    templateFileField->setText(path);
    folderTemplateOption->setChecked(true);
}

// Only the program's own setting is shown: the receiver's, when its software has written one,
// is read before it and is not the user's to change here.
void ConfigurationDialog::loadTimeSlipLog() {
    const QString path = Registry::get(SettingKeys::TimeSlipLogFile);
    if (path != Registry::NoKeyValue)
        iCardLogFileField->setText(path);
}

void ConfigurationDialog::fillRaceTracks() {
    refill(raceTrackList, raceTracks());
}

// A frequency between two choices shows the lower one and stays in force until the user
// picks a choice; a frequency below one minute shows none.
bool ConfigurationDialog::loadPagerFrequency() {
    const std::optional<qint32> frequency =
        PagerSchedule::storedFrequency(Registry::get(SettingKeys::PagerFrequency));
    if (!frequency)
        return false;
    setPagerFrequency(*frequency);
    pagerFrequencyList->setCurrentIndex(pagerFrequencyChoice(*frequency));
    return true;
}

void ConfigurationDialog::fillPageIdentifiers() {
    refill(pageIdentifierList, raceLogTypes());
}

// The fields of the type named in the list's text, or of the general defaults when it is
// empty. Each field's objectName is "txt" and the name of its value: "txtPF" shows PF.
void ConfigurationDialog::loadFields() {
    const QString key = typeKey(pageIdentifierList->currentText());
    for (const SettingKey* value : DefaultValues) {
        const QString name = value->valueName();
        if (const auto shown = shownText(*value, Registry::get(key, name)))
            findChild<QLineEdit*>(QStringLiteral("txt") + name)->setText(*shown);
    }
}

// --- Saving ---

void ConfigurationDialog::save() {
    saveTemplate();
    saveTimeSlipLog();
    saveFields();
}

// A path that names no file is passed over without a word.
void ConfigurationDialog::saveTemplate() {
    if (const auto path =
            templateToStore(defaultTemplateOption->isChecked(), templateFileField->text()))
        Registry::set(SettingKeys::MasterTemplate, *path);
}

// An emptied field forgets the file, so the import says again that no log is set.
void ConfigurationDialog::saveTimeSlipLog() {
    const QString path = iCardLogFileField->text().trimmed();
    if (path.isEmpty())
        Registry::deleteKeyValue(Registry::HKEY_CURRENT_USER,
                                 SettingKeys::TimeSlipLogFile.keyPath(),
                                 SettingKeys::TimeSlipLogFile.valueName());
    else
        Registry::set(SettingKeys::TimeSlipLogFile, path);
}

void ConfigurationDialog::saveFields() {
    const QString key = typeKey(pageIdentifierList->currentText());
    for (const SettingKey* value : DefaultValues) {
        const QString name = value->valueName();
        const QString text = findChild<QLineEdit*>(QStringLiteral("txt") + name)->text();
        if (isStored(*value, text))
            Registry::set(key, name, text);
    }
}

// --- The commands ---

void ConfigurationDialog::saveSetting() {
    saveSettingButton->setEnabled(false);
    save();
    const QString name = pageIdentifierList->currentText();
    if (!name.isEmpty() &&
        pageIdentifierList->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        pageIdentifierList->addItem(name);
}

void ConfigurationDialog::removeSetting() {
    removeSettingButton->setEnabled(false);
    Registry::deleteKey(Registry::HKEY_CURRENT_USER, SettingKeys::RaceLogTypes.keyPath(),
                        pageIdentifierList->currentText());
    fillPageIdentifiers();
}

void ConfigurationDialog::pageIdentifierChosen() {
    loadFields();
    removeSettingButton->setEnabled(true);
}

// The pager takes the new frequency at once, and it stays whatever the dialog ends with.
void ConfigurationDialog::pagerFrequencyChosen(int choice) {
    const int ticks = pagerFrequencyList->itemData(choice).toInt();
    setPagerFrequency(ticks);
    Registry::set(SettingKeys::PagerFrequency, NumberText::general(float(ticks)));
}

// Tracks are told apart by their exact names: "Bristol" and "bristol" are two tracks.
void ConfigurationDialog::addTrack() {
    const QString name = raceTrackList->currentText().trimmed();
    if (name.isEmpty() ||
        raceTrackList->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0)
        return;
    raceTrackList->addItem(name);
    Registry::set(SettingKeys::Tracks, name, TrackData);
}

// Race logs that hold the track keep it: they store its name, not a reference.
void ConfigurationDialog::removeTrack() {
    Registry::deleteKeyValue(Registry::HKEY_CURRENT_USER, SettingKeys::Tracks.keyPath(),
                             raceTrackList->currentText().trimmed());
    fillRaceTracks();
}

// The chosen path counts only while "Folder:" is selected; choosing does not select it.
void ConfigurationDialog::chooseTemplate() {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Choose Excel Template");
    // The export fills in workbooks of today's format only.
    request.filter = QStringLiteral("Excel Workbooks (*.xlsx) |*.xlsx|");
    request.fileName = QStringLiteral("*.xlsx");
    if (const QString folder = Registry::get(SettingKeys::FileDialogFolder);
        folder != Registry::NoKeyValue)
        request.initialFolder = folder;
    if (const auto choice = Dialogs::chooseFile(request))
        templateFileField->setText(choice->path);
}

void ConfigurationDialog::chooseTimeSlipLog() {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Choose iCard Log File");
    request.filter = QStringLiteral("iCard Race Log Files (*.csv) |*.csv|All Files (*.*) |*.*|");
    request.fileName = QStringLiteral("*.csv");
    if (const QString folder = Registry::get(SettingKeys::FileDialogFolder);
        folder != Registry::NoKeyValue)
        request.initialFolder = folder;
    if (const auto choice = Dialogs::chooseFile(request))
        iCardLogFileField->setText(choice->path);
}
