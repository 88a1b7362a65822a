#include "ui/shell/DialogParts.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace DialogParts {

QPushButton* namedButton(const QString& name, const QString& caption, QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

QHBoxLayout* closingButtons(std::initializer_list<QPushButton*> buttons) {
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (QPushButton* button : buttons)
        row->addWidget(button);
    if (buttons.size() > 0)
        (*buttons.begin())->setDefault(true);
    return row;
}

} // namespace DialogParts
