#include "ui/racelog/LogSidePanel.h"

#include "core/DateText.h"
#include "core/Dialogs.h"
#include "core/NumberText.h"
#include "prediction/TrustTexts.h"
#include "racelog/KeyFilters.h"
#include "racelog/LogFieldTable.h"
#include "racelog/RaceLogDefaults.h"
#include "racelog/SidePanelRules.h"
#include "ui/racelog/FieldControl.h"
#include "ui/racelog/TextFieldRules.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>
#include <tuple>

namespace {

constexpr int PanelWidth = 250;

template <typename Widget> Widget* named(Widget* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

// A control that shows a field of the log is named as the table of the fields names it.
template <typename Widget> Widget* newFieldControl(RaceLog::Field field) {
    return named(new Widget, LogFieldTable::row(field).controlName);
}

QLineEdit* lineEdit(RaceLog::Field field, int maxLength = 32767) {
    auto* line = newFieldControl<QLineEdit>(field);
    line->setMaxLength(maxLength);
    return line;
}

void addRow(QFormLayout* form, const char* labelName, const QString& caption, QWidget* field) {
    form->addRow(named(new QLabel(caption), labelName), field);
}

// A field's caption is the one the table of the fields gives it, which also names its steps.
void addFieldRow(QFormLayout* form, const char* labelName, RaceLog::Field field, QWidget* control) {
    addRow(form, labelName, QLatin1String(LogFieldTable::row(field).caption), control);
}

// The fields of a tab stand on an area of their own that scrolls when the tab is short. The
// panel has a fixed width, so the fields take the width there is and the wrapped lines grow
// down, never sideways.
QScrollArea* scrolled(const char* areaName, const char* frameName, QLayout* fields) {
    auto* frame = named(new QWidget, frameName);
    frame->setLayout(fields);
    auto* area = named(new QScrollArea, areaName);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(frame);
    return area;
}

} // namespace

LogSidePanel::LogSidePanel(QWidget* parent) : QTabWidget(parent) {
    setObjectName(QStringLiteral("tabLog"));
    setFixedWidth(PanelWidth);
    addTab(settingsPage(), QStringLiteral(" Settings"));
    addTab(notesPage(), QStringLiteral(" Notes"));
    addTab(predictPage(), QStringLiteral("Predict..."));
    addFieldRules();
    connect(todayButton, &QToolButton::clicked, this,
            [this] { dateField->setText(DateText::logDateText(QDate::currentDate())); });
    connect(predictButton, &QPushButton::clicked, this, &LogSidePanel::predictRequested);
}

// The tabs' bar and frame come on top of the tallest page; a page that scrolls counts with all
// of its fields.
int LogSidePanel::heightShowingEveryField() const {
    int tallestPage = 0;
    int tallestContent = 0;
    for (int i = 0; i < count(); ++i) {
        const QWidget* page = widget(i);
        tallestPage = qMax(tallestPage, page->sizeHint().height());
        const auto* area = qobject_cast<const QScrollArea*>(page);
        const int content = area ? area->widget()->sizeHint().height() + 2 * area->frameWidth()
                                 : page->sizeHint().height();
        tallestContent = qMax(tallestContent, content);
    }
    return sizeHint().height() - tallestPage + qMax(tallestPage, tallestContent);
}

QWidget* LogSidePanel::settingsPage() {
    dateField = lineEdit(RaceLog::Field::Date);
    todayButton = named(new QToolButton, "imgDate");
    todayButton->setIcon(style()->standardIcon(QStyle::SP_FileDialogDetailedView));
    todayButton->setAutoRaise(true);
    todayButton->setToolTip(QStringLiteral("Today's Date"));
    auto* date = new QHBoxLayout;
    date->setContentsMargins(0, 0, 0, 0);
    date->addWidget(dateField);
    date->addWidget(todayButton);
    auto* dateRow = new QWidget;
    dateRow->setLayout(date);

    raceTrackList = newFieldControl<QComboBox>(RaceLog::Field::RaceTrack);
    raceTrackList->setEditable(true);
    raceTrackList->setInsertPolicy(QComboBox::NoInsert);
    pfField = lineEdit(RaceLog::Field::PF);
    tsrField = lineEdit(RaceLog::Field::TSR);
    pageIdentifierField = lineEdit(RaceLog::Field::PageIdentifier, 15);
    carNumberField = lineEdit(RaceLog::Field::CarNumber, 5);
    fileNameField = named(new QLineEdit, "txtFileName");
    fileNameField->setReadOnly(true);

    auto* form = new QFormLayout;
    form->setRowWrapPolicy(QFormLayout::WrapAllRows);
    addFieldRow(form, "lblDate", RaceLog::Field::Date, dateRow);
    addFieldRow(form, "lblRaceTrack", RaceLog::Field::RaceTrack, raceTrackList);
    addFieldRow(form, "lblPF", RaceLog::Field::PF, pfField);
    addFieldRow(form, "lblTSR", RaceLog::Field::TSR, tsrField);
    addFieldRow(form, "lblPageIdentifier", RaceLog::Field::PageIdentifier, pageIdentifierField);
    addFieldRow(form, "lblCarNumber", RaceLog::Field::CarNumber, carNumberField);
    addRow(form, "lblFileName", QStringLiteral("File Name"), fileNameField);
    return scrolled("scrollSettings", "fraSettings", form);
}

QWidget* LogSidePanel::notesPage() {
    notesField = newFieldControl<QPlainTextEdit>(RaceLog::Field::Notes);
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(notesField);
    return page;
}

QWidget* LogSidePanel::predictPage() {
    targetEtField = lineEdit(RaceLog::Field::TargetET);
    aaField = lineEdit(RaceLog::Field::AA);
    vpField = lineEdit(RaceLog::Field::VP);
    referenceRunList = named(new QComboBox, "cboRefRun");
    trackOffsetField = lineEdit(RaceLog::Field::TrackOffset);
    trackOffsetField->setToolTip(
        QStringLiteral("Seconds added to the predicted ET for a track slower than the air says"));
    useTrackButton = named(new QPushButton(QStringLiteral("Use")), "cmdUseTrack");
    useTrackButton->setToolTip(QStringLiteral("Take the track's drift today as the offset"));
    useTrackButton->setEnabled(false);
    auto* offsetRow = new QWidget;
    auto* offset = new QHBoxLayout(offsetRow);
    offset->setContentsMargins(0, 0, 0, 0);
    offset->addWidget(trackOffsetField);
    offset->addWidget(useTrackButton);
    spreadLabel = named(new QLabel, "lblSpread");
    trackLabel = named(new QLabel, "lblTrack");
    outlookLabel = named(new QLabel, "lblOutlook");
    for (QLabel* label : {spreadLabel, trackLabel, outlookLabel})
        label->setWordWrap(true);
    predictButton = named(new QPushButton(QStringLiteral("Predict")), "cmdPredict");
    pagerPredictionsBox =
        named(new QCheckBox(QStringLiteral("Pager Predictions")), "chkPagerPredictions");

    auto* buttons = named(new QWidget, "picButtons");
    auto* buttonRow = new QHBoxLayout(buttons);
    buttonRow->setContentsMargins(0, 0, 0, 0);
    buttonRow->addWidget(predictButton);
    buttonRow->addStretch();

    auto* form = new QFormLayout;
    form->setRowWrapPolicy(QFormLayout::WrapAllRows);
    addFieldRow(form, "lblTargetET", RaceLog::Field::TargetET, targetEtField);
    addFieldRow(form, "lblAA", RaceLog::Field::AA, aaField);
    addFieldRow(form, "lblVP", RaceLog::Field::VP, vpField);
    addRow(form, "lblRefRun", QStringLiteral("Reference Run"), referenceRunList);
    addFieldRow(form, "lblTrackOffset", RaceLog::Field::TrackOffset, offsetRow);
    form->addRow(pagerPredictionsBox);
    form->addRow(buttons);
    form->addRow(spreadLabel);
    form->addRow(trackLabel);
    form->addRow(outlookLabel);
    return scrolled("scrollPredict", "fraPredict", form);
}

// The rules of the text fields. The date puts itself right; the performance factor, the
// throttle stop ratio and the target ET complain about text that is no number, so that the
// prediction never runs on it unnoticed.
void LogSidePanel::addFieldRules() {
    auto* rules = new TextFieldRules(this);
    const QList<std::tuple<QLineEdit*, QChar (*)(QChar), std::function<void()>>> fields{
        {dateField, KeyFilters::date,
         [this] {
             dateField->setText(
                 SidePanelRules::settledLogDate(dateField->text(), QDate::currentDate()));
         }},
        {pfField, KeyFilters::signedNumber,
         [this] {
             if (!NumberText::isNumeric(pfField->text()))
                 complain(pfField, QStringLiteral("The performance factor is not a number!"),
                          QStringLiteral("Performance Factor"));
         }},
        {tsrField, KeyFilters::unsignedNumber,
         [this] {
             if (!NumberText::isNumeric(tsrField->text()))
                 complain(tsrField, QStringLiteral("The throttle stop ratio is not a number!"),
                          QStringLiteral("Throttle Stop Ratio"));
         }},
        {pageIdentifierField, KeyFilters::letters,
         [this] {
             pageIdentifierField->setText(
                 SidePanelRules::settledPageIdentifier(pageIdentifierField->text()));
             emit pageIdentifierLeft(pageIdentifierField->text());
         }},
        {carNumberField, KeyFilters::carNumber, [] {}},
        {targetEtField, KeyFilters::unsignedNumber,
         [this] {
             targetEtField->setText(SidePanelRules::settledTargetET(targetEtField->text()));
             if (!NumberText::isNumeric(targetEtField->text()))
                 complain(targetEtField, QStringLiteral("The target ET is not a number!"),
                          QStringLiteral("Target ET"));
         }},
        {aaField, KeyFilters::signedNumber,
         [this] { aaField->setText(SidePanelRules::settledPredictInput(aaField->text())); }},
        {vpField, KeyFilters::unsignedNumber,
         [this] { vpField->setText(SidePanelRules::settledPredictInput(vpField->text())); }},
        {trackOffsetField, KeyFilters::signedNumber,
         [this] {
             trackOffsetField->setText(
                 SidePanelRules::settledPredictInput(trackOffsetField->text()));
         }},
    };
    for (const auto& [field, keyFilter, onLeaving] : fields)
        rules->add(field, keyFilter, onLeaving);
}

void LogSidePanel::fillRaceTracks() {
    raceTrackList->clear();
    raceTrackList->addItems(RaceLogDefaults::raceTracks());
    raceTrackList->setEditText(QString());
}

void LogSidePanel::showLog(RaceLog& log) {
    for (const LogFieldTable::Row& row : LogFieldTable::Rows) {
        showField(log, row.field);
        FieldControl::onTyped(
            *fieldControl(row.field), log,
            [&log, field = row.field](const QString& text) { log.setField(field, text); });
    }
    connect(&log, &RaceLog::fieldChanged, this,
            [&log, this](RaceLog::Field field) { showField(log, field); });

    showReferenceRuns(log);
    connect(&log, &RaceLog::referenceRunChanged, this, [&log, this] { showReferenceRuns(log); });
    pagerPredictionsBox->setChecked(log.pagerPredictions());
    connect(pagerPredictionsBox, &QCheckBox::toggled, &log, &RaceLog::setPagerPredictions);
    showFile(log);
    connect(&log, &RaceLog::fileChanged, this, [&log, this] { showFile(log); });
    showTrust(log);
    connect(&log.trust(), &PredictionTrust::changed, this, [&log, this] { showTrust(log); });
    connect(useTrackButton, &QPushButton::clicked, &log, &RaceLog::useTrackDrift);
}

QWidget* LogSidePanel::fieldControl(RaceLog::Field field) const {
    return findChild<QWidget*>(QLatin1String(LogFieldTable::row(field).controlName));
}

void LogSidePanel::showField(const RaceLog& log, RaceLog::Field field) {
    FieldControl::show(*fieldControl(field), log.field(field));
}

// The list follows the log without telling anyone: its signal is the user's choice.
void LogSidePanel::showReferenceRuns(const RaceLog& log) {
    const RaceLogData& content = log.content();
    const QSignalBlocker quiet(referenceRunList);
    QStringList items;
    for (int i = 0; i < referenceRunList->count(); ++i)
        items << referenceRunList->itemText(i);
    if (items != content.refRunItems) {
        referenceRunList->clear();
        referenceRunList->addItems(content.refRunItems);
    }
    referenceRunList->setCurrentIndex(content.refRunIndex);
}

void LogSidePanel::showFile(const RaceLog& log) {
    fileNameField->setText(log.fileTitle());
    fileNameField->setToolTip(log.filePath());
}

void LogSidePanel::showTrust(const RaceLog& log) {
    const PredictionTrust& trust = log.trust();
    spreadLabel->setText(TrustTexts::likelyMiss(trust.likelyMiss()));
    trackLabel->setText(TrustTexts::drift(trust.drift()));
    outlookLabel->setText(trust.outlook());
    useTrackButton->setEnabled(trust.drift().has_value());
}

void LogSidePanel::complain(QLineEdit* field, const QString& text, const QString& title) {
    Dialogs::inform(text, title, Dialogs::Icon::Information);
    if (isVisible())
        field->setFocus();
}
