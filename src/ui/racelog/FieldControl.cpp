#include "ui/racelog/FieldControl.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace FieldControl {

void show(QWidget& control, const QString& text) {
    if (auto* line = qobject_cast<QLineEdit*>(&control)) {
        if (line->text() != text)
            line->setText(text);
    } else if (auto* list = qobject_cast<QComboBox*>(&control)) {
        if (list->currentText() != text)
            list->setEditText(text);
    } else if (auto* notes = qobject_cast<QPlainTextEdit*>(&control)) {
        if (notes->toPlainText() != text)
            notes->setPlainText(text);
    }
}

void onTyped(QWidget& control, QObject& context, std::function<void(const QString&)> typed) {
    if (auto* line = qobject_cast<QLineEdit*>(&control)) {
        QObject::connect(line, &QLineEdit::textChanged, &context, std::move(typed));
    } else if (auto* list = qobject_cast<QComboBox*>(&control)) {
        QObject::connect(list, &QComboBox::currentTextChanged, &context, std::move(typed));
    } else if (auto* notes = qobject_cast<QPlainTextEdit*>(&control)) {
        QObject::connect(notes, &QPlainTextEdit::textChanged, &context,
                         [notes, typed = std::move(typed)] { typed(notes->toPlainText()); });
    }
}

} // namespace FieldControl
