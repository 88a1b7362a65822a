#include "ui/shell/AboutDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QLabel* label(const QString& name, const QString& text, QWidget* parent) {
    auto* item = new QLabel(text, parent);
    item->setObjectName(name);
    item->setAlignment(Qt::AlignCenter);
    return item;
}

} // namespace

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Tarnwick"));
    setModal(true);

    auto* product = label(QStringLiteral("lblProduct"), QStringLiteral("Tarnwick"), this);
    QFont big = product->font();
    big.setPointSizeF(big.pointSizeF() * 2);
    big.setBold(true);
    product->setFont(big);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(product);
    layout->addWidget(label(QStringLiteral("lblVersion"),
                            QStringLiteral("Version %1").arg(QStringLiteral(TARNWICK_VERSION)),
                            this));
    layout->addWidget(label(QStringLiteral("lblDescription"),
                            QStringLiteral("Weather, race logs and predictions for drag racing"),
                            this));
    layout->addWidget(label(QStringLiteral("lblCompany"), QStringLiteral("Zorvane"), this));
    layout->addWidget(buttons);
}
