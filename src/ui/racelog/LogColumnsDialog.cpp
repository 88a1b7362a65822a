#include "ui/racelog/LogColumnsDialog.h"

#include "ui/shell/DialogParts.h"

#include "core/Registry.h"
#include "racelog/ColumnTable.h"
#include "ui/shell/CentreOnScreen.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// The boxes stand in columns of this many, top to bottom, in the order of the menu.
constexpr int BoxesPerColumn = 11;

} // namespace

LogColumnsDialog::LogColumnsDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmSelectLogColumns"));
    setWindowTitle(QStringLiteral("Select Columns"));

    auto* group = new QGroupBox(QStringLiteral("Race Log Columns"), this);
    group->setObjectName(QStringLiteral("fraRaceLogColumns"));
    auto* grid = new QGridLayout(group);
    for (const int number : ColumnTable::ShowColumnMenuOrder) {
        const ColumnTable::Column& column = ColumnTable::Columns[number];
        auto* box = new QCheckBox(column.visibilityValue.toString(), group);
        box->setObjectName(column.checkBox.toString());
        box->setToolTip(column.checkBoxToolTip.toString());
        const int place = int(checkBoxes.size());
        grid->addWidget(box, place % BoxesPerColumn, place / BoxesPerColumn);
        checkBoxes.append(box);
    }

    okButton = DialogParts::namedButton(QStringLiteral("cmdOK"), QStringLiteral("OK"), this);
    cancelButton =
        DialogParts::namedButton(QStringLiteral("cmdCancel"), QStringLiteral("Cancel"), this);
    QHBoxLayout* buttons = DialogParts::closingButtons({okButton, cancelButton});

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addLayout(buttons);

    connect(okButton, &QPushButton::clicked, this, [this] {
        storeChoice();
        accept();
    });
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);

    // At the size its contents ask for.
    adjustSize();
    centreOnScreen(*this);
    showChoice();
}

// The value of each box is named by the box's caption.
void LogColumnsDialog::showChoice() {
    for (QCheckBox* box : checkBoxes)
        box->setChecked(Registry::get(SettingKeys::LogColumns, box->text()) == u"1");
}

void LogColumnsDialog::storeChoice() {
    for (QCheckBox* box : checkBoxes)
        Registry::set(SettingKeys::LogColumns, box->text(),
                      box->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
}
