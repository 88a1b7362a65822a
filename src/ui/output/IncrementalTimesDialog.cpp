#include "ui/output/IncrementalTimesDialog.h"

#include "core/Dialogs.h"
#include "exchange/TimeSlip.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

IncrementalTimesDialog::IncrementalTimesDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmIncrementalTimes"));
    setWindowTitle(QStringLiteral("iCard Incremental Times"));

    categorySession = new QComboBox(this);
    categorySession->setObjectName(QStringLiteral("cboCategorySession"));
    car1 = new QLineEdit(this);
    car1->setObjectName(QStringLiteral("txtCar1"));
    car2 = new QLineEdit(this);
    car2->setObjectName(QStringLiteral("txtCar2"));
    onlyTagged = new QCheckBox(QStringLiteral("Only Show Tagged Cars"), this);
    onlyTagged->setObjectName(QStringLiteral("chkTaggedCars"));
    ok = new QPushButton(QStringLiteral("&OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("cmdCancel"));

    auto* fields = new QFormLayout;
    fields->addRow(QStringLiteral("Category && Session"), categorySession);
    fields->addRow(QStringLiteral("Tag) Car Number 1"), car1);
    fields->addRow(QStringLiteral("Tag) Car Number 2"), car2);
    fields->addRow(onlyTagged);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addLayout(buttons);

    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    adjustSize();
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
}

bool IncrementalTimesDialog::load() {
    TimeSlipLog log;
    const TimeSlipLoad loaded = loadTimeSlipLog(log);
    if (loaded != TimeSlipLoad::Read) {
        if (loaded == TimeSlipLoad::Unreadable) {
            const TimeSlipMessage message = timeSlipLogUnreadable();
            Dialogs::inform(message.text, message.title);
        }
        Dialogs::inform(QStringLiteral("Unable to load iCard Times!"),
                        QStringLiteral("Tarnwick - iCard Incremental Times"));
        ok->setEnabled(false);
        return false;
    }
    categorySession->addItems(IncrementalTimes::categorySessions(log));
    categorySession->setCurrentIndex(categorySession->count() > 0 ? 0 : -1);
    return true;
}

IncrementalTimes::Request IncrementalTimesDialog::request() const {
    return {categorySession->currentText(), car1->text(), car2->text(), onlyTagged->isChecked()};
}
