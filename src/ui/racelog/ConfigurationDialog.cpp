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
    return DialogParts::NamedButton(QLatin1String(name), caption);
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
    return NumberText::IsNumeric(text) ? text : QStringLiteral("0");
}

} // namespace

ConfigurationDialog::ConfigurationDialog(std::function<void(int)> setPagerFrequency,
                                         QWidget* parent)
    : QDialog(parent), setPagerFrequency(std::move(setPagerFrequency)) {
    setObjectName(QStringLiteral("frmConfiguration"));
    setWindowTitle(QStringLiteral("Configuration"));

    tabConfiguration = named(new QTabWidget, "tabConfiguration");
    tabConfiguration->addTab(defaultsPage(), QStringLiteral("Defaults"));
    tabConfiguration->addTab(tracksPage(), QStringLiteral("Race Tracks"));
    tabConfiguration->addTab(templatesPage(), QStringLiteral(" Templates"));
    tabConfiguration->setMinimumWidth(DialogWidth);

    cmdOK = button("cmdOK", QStringLiteral("OK"));
    cmdCancel = button("cmdCancel", QStringLiteral("Cancel"));
    QHBoxLayout* buttons = DialogParts::ClosingButtons({cmdOK, cmdCancel});

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabConfiguration);
    layout->addLayout(buttons);

    addFieldRules();
    connectCommands();
    load();
}

QWidget* ConfigurationDialog::defaultsPage() {
    cboPageIdentifier = typedList("cboPageIdentifier");
    cmdSaveSetting = button("cmdSaveSetting", QStringLiteral("&Save"));
    cmdRemoveSetting = button("cmdRemoveSetting", QStringLiteral("&Remove"));
    cmdSaveSetting->setEnabled(false);
    cmdRemoveSetting->setEnabled(false);
    auto* types = named(new QGroupBox(QStringLiteral("Predict Defaults")), "fraPredictDefaults");
    auto* typeRows = new QGridLayout(types);
    typeRows->addWidget(
        label("lblPageIdentifier", QStringLiteral("Page Identifier"), cboPageIdentifier), 0, 0, 1,
        2);
    typeRows->addWidget(cboPageIdentifier, 1, 0, 1, 2);
    typeRows->addWidget(cmdSaveSetting, 2, 0);
    typeRows->addWidget(cmdRemoveSetting, 2, 1);

    txtCarNumber = named(new QLineEdit, "txtCarNumber");
    txtPF = named(new QLineEdit, "txtPF");
    txtTSR = named(new QLineEdit, "txtTSR");
    txtTargetET = named(new QLineEdit, "txtTargetET");
    auto* fields = named(new QGroupBox(QStringLiteral("Setting Defaults")), "fraSettingDefaults");
    auto* fieldRows = new QFormLayout(fields);
    fieldRows->addRow(label("lblCarNumber", QStringLiteral("Car Number"), txtCarNumber),
                      txtCarNumber);
    fieldRows->addRow(label("lblPF", QStringLiteral("Performance Factor"), txtPF), txtPF);
    fieldRows->addRow(label("lblTSR", QStringLiteral("Throttle Stop Ratio"), txtTSR), txtTSR);
    fieldRows->addRow(label("lblTargetET", QStringLiteral("Target ET"), txtTargetET), txtTargetET);

    // "1min" to "9min", each holding its number of send timer ticks.
    cboPagerFrequency = named(new QComboBox, "cboPagerFrequency");
    for (int minutes = 1; minutes <= PagerFrequencyChoices; ++minutes)
        cboPagerFrequency->addItem(QString::number(minutes) + QStringLiteral("min"),
                                   minutes * TicksPerMinute);
    auto* frequency = new QFormLayout;
    frequency->addRow(
        label("lblPagerFrequency", QStringLiteral("Pager Frequency"), cboPagerFrequency),
        cboPagerFrequency);

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
    cboRaceTrack = typedList("cboRaceTrack");
    cmdAdd = button("cmdAdd", QStringLiteral("&Add"));
    cmdRemove = button("cmdRemove", QStringLiteral("&Remove"));
    auto* tracks = named(new QGroupBox(QStringLiteral("Tracks")), "fraTracks");
    auto* rows = new QHBoxLayout(tracks);
    rows->addWidget(cboRaceTrack, 1);
    rows->addWidget(cmdAdd);
    rows->addWidget(cmdRemove);

    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(tracks);
    layout->addWidget(helpText("lblRaceTracksHelp", ConfigurationTexts::RaceTracksHelp));
    layout->addStretch();
    return page;
}

QWidget* ConfigurationDialog::templatesPage() {
    optTemplateDefault =
        named(new QRadioButton(QStringLiteral("System Default")), "optTemplateDefault");
    optFolder = named(new QRadioButton(QStringLiteral("Folder:")), "optFolder");
    txtTemplateFile = named(new QLineEdit, "txtTemplateFile");
    cmdFolder = button("cmdFolder", QStringLiteral("..."));
    auto* excel = named(new QGroupBox(QStringLiteral("Excel Export")), "fraExcelExport");
    auto* rows = new QGridLayout(excel);
    rows->addWidget(optTemplateDefault, 0, 0, 1, 3);
    rows->addWidget(optFolder, 1, 0);
    rows->addWidget(txtTemplateFile, 1, 1);
    rows->addWidget(cmdFolder, 1, 2);

    txtICardLogFile = named(new QLineEdit, "txtICardLogFile");
    cmdBrowseICardLog = button("cmdBrowseICardLog", QStringLiteral("Browse..."));
    auto* slips = named(new QGroupBox(QStringLiteral("iCard")), "fraICard");
    auto* slipRows = new QHBoxLayout(slips);
    slipRows->addWidget(
        label("lblICardLogFile", QStringLiteral("iCard log file"), txtICardLogFile));
    slipRows->addWidget(txtICardLogFile, 1);
    slipRows->addWidget(cmdBrowseICardLog);

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
    rules->add(txtCarNumber, KeyFilters::CarNumber, [] {});
    rules->add(txtPF, KeyFilters::SignedNumber,
               [this] { txtPF->setText(numberOrZero(txtPF->text())); });
    rules->add(txtTSR, KeyFilters::UnsignedNumber,
               [this] { txtTSR->setText(numberOrZero(txtTSR->text())); });
    rules->add(txtTargetET, KeyFilters::UnsignedNumber, [this] {
        txtTargetET->setText(SidePanelRules::settledTargetET(txtTargetET->text()));
    });
    rules->add(
        {cboPageIdentifier, cboPageIdentifier->lineEdit(), KeyFilters::TypeName, false,
         [this] { cboPageIdentifier->setEditText(cboPageIdentifier->currentText().trimmed()); }});
}

// What the user does, and only that: the load fills the lists and fields without running
// any of these.
void ConfigurationDialog::connectCommands() {
    for (QLineEdit* edited :
         {txtCarNumber, txtPF, txtTSR, txtTargetET, cboPageIdentifier->lineEdit()})
        connect(edited, &QLineEdit::textEdited, cmdSaveSetting,
                [this] { cmdSaveSetting->setEnabled(true); });
    connect(cmdSaveSetting, &QPushButton::clicked, this, &ConfigurationDialog::saveSetting);
    connect(cmdRemoveSetting, &QPushButton::clicked, this, &ConfigurationDialog::removeSetting);
    connect(cboPageIdentifier, &QComboBox::activated, this,
            &ConfigurationDialog::pageIdentifierChosen);
    connect(cboPagerFrequency, &QComboBox::activated, this,
            &ConfigurationDialog::pagerFrequencyChosen);
    connect(cmdAdd, &QPushButton::clicked, this, &ConfigurationDialog::addTrack);
    connect(cmdRemove, &QPushButton::clicked, this, &ConfigurationDialog::removeTrack);
    connect(cmdFolder, &QPushButton::clicked, this, &ConfigurationDialog::chooseTemplate);
    connect(cmdBrowseICardLog, &QPushButton::clicked, this,
            &ConfigurationDialog::chooseTimeSlipLog);
    connect(cmdOK, &QPushButton::clicked, this, [this] {
        save();
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
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
        Dialogs::Inform(QStringLiteral("Error loading configuration form!"),
                        QStringLiteral("Configuration"), Dialogs::Icon::None);
        return;
    }
    fillPageIdentifiers();
    loadFields();
}

// The shipped template is the system default; any other path is the user's own folder.
void ConfigurationDialog::loadTemplate() {
    const QString path = Registry::Get(SettingKeys::MasterTemplate);
    if (path == Registry::NoKeyValue || path == SystemTemplatePath()) {
        optTemplateDefault->setChecked(true);
        return;
    }
    txtTemplateFile->setText(path);
    optFolder->setChecked(true);
}

// Only the program's own setting is shown: the receiver's, when its software has written one,
// is read before it and is not the user's to change here.
void ConfigurationDialog::loadTimeSlipLog() {
    const QString path = Registry::Get(SettingKeys::TimeSlipLogFile);
    if (path != Registry::NoKeyValue)
        txtICardLogFile->setText(path);
}

void ConfigurationDialog::fillRaceTracks() {
    refill(cboRaceTrack, RaceTracks());
}

// A frequency between two choices shows the lower one and stays in force until the user
// picks a choice; a frequency below one minute shows none.
bool ConfigurationDialog::loadPagerFrequency() {
    const std::optional<qint32> frequency =
        PagerSchedule::storedFrequency(Registry::Get(SettingKeys::PagerFrequency));
    if (!frequency)
        return false;
    setPagerFrequency(*frequency);
    cboPagerFrequency->setCurrentIndex(PagerFrequencyChoice(*frequency));
    return true;
}

void ConfigurationDialog::fillPageIdentifiers() {
    refill(cboPageIdentifier, RaceLogTypes());
}

// The fields of the type named in the list's text, or of the general defaults when it is
// empty. Each field is named for its value: txtPF shows PF.
void ConfigurationDialog::loadFields() {
    const QString key = TypeKey(cboPageIdentifier->currentText());
    for (const SettingKey* value : DefaultValues) {
        const QString name = value->valueName();
        if (const auto shown = ShownText(*value, Registry::Get(key, name)))
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
    if (const auto path = TemplateToStore(optTemplateDefault->isChecked(), txtTemplateFile->text()))
        Registry::Set(SettingKeys::MasterTemplate, *path);
}

// An emptied field forgets the file, so the import says again that no log is set.
void ConfigurationDialog::saveTimeSlipLog() {
    const QString path = txtICardLogFile->text().trimmed();
    if (path.isEmpty())
        Registry::DeleteKeyValue(Registry::HKEY_CURRENT_USER,
                                 SettingKeys::TimeSlipLogFile.keyPath(),
                                 SettingKeys::TimeSlipLogFile.valueName());
    else
        Registry::Set(SettingKeys::TimeSlipLogFile, path);
}

void ConfigurationDialog::saveFields() {
    const QString key = TypeKey(cboPageIdentifier->currentText());
    for (const SettingKey* value : DefaultValues) {
        const QString name = value->valueName();
        const QString text = findChild<QLineEdit*>(QStringLiteral("txt") + name)->text();
        if (IsStored(*value, text))
            Registry::Set(key, name, text);
    }
}

// --- The commands ---

void ConfigurationDialog::saveSetting() {
    cmdSaveSetting->setEnabled(false);
    save();
    const QString name = cboPageIdentifier->currentText();
    if (!name.isEmpty() &&
        cboPageIdentifier->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        cboPageIdentifier->addItem(name);
}

void ConfigurationDialog::removeSetting() {
    cmdRemoveSetting->setEnabled(false);
    Registry::DeleteKey(Registry::HKEY_CURRENT_USER, SettingKeys::RaceLogTypes.keyPath(),
                        cboPageIdentifier->currentText());
    fillPageIdentifiers();
}

void ConfigurationDialog::pageIdentifierChosen() {
    loadFields();
    cmdRemoveSetting->setEnabled(true);
}

// The pager takes the new frequency at once, and it stays whatever the dialog ends with.
void ConfigurationDialog::pagerFrequencyChosen(int choice) {
    const int ticks = cboPagerFrequency->itemData(choice).toInt();
    setPagerFrequency(ticks);
    Registry::Set(SettingKeys::PagerFrequency, NumberText::General(float(ticks)));
}

// Tracks are told apart by their exact names: "Bristol" and "bristol" are two tracks.
void ConfigurationDialog::addTrack() {
    const QString name = cboRaceTrack->currentText().trimmed();
    if (name.isEmpty() ||
        cboRaceTrack->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0)
        return;
    cboRaceTrack->addItem(name);
    Registry::Set(SettingKeys::Tracks, name, TrackData);
}

// Race logs that hold the track keep it: they store its name, not a reference.
void ConfigurationDialog::removeTrack() {
    Registry::DeleteKeyValue(Registry::HKEY_CURRENT_USER, SettingKeys::Tracks.keyPath(),
                             cboRaceTrack->currentText().trimmed());
    fillRaceTracks();
}

// The chosen path counts only while "Folder:" is selected; choosing does not select it.
void ConfigurationDialog::chooseTemplate() {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Choose Excel Template");
    // The export fills in workbooks of today's format only.
    request.filter = QStringLiteral("Excel Workbooks (*.xlsx) |*.xlsx|");
    request.fileName = QStringLiteral("*.xlsx");
    if (const QString folder = Registry::Get(SettingKeys::FileDialogFolder);
        folder != Registry::NoKeyValue)
        request.initialFolder = folder;
    if (const auto choice = Dialogs::ChooseFile(request))
        txtTemplateFile->setText(choice->path);
}

void ConfigurationDialog::chooseTimeSlipLog() {
    Dialogs::FileRequest request;
    request.title = QStringLiteral("Choose iCard Log File");
    request.filter = QStringLiteral("iCard Race Log Files (*.csv) |*.csv|All Files (*.*) |*.*|");
    request.fileName = QStringLiteral("*.csv");
    if (const QString folder = Registry::Get(SettingKeys::FileDialogFolder);
        folder != Registry::NoKeyValue)
        request.initialFolder = folder;
    if (const auto choice = Dialogs::ChooseFile(request))
        txtICardLogFile->setText(choice->path);
}
