#include "ui/racelog/TextFieldRules.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>

TextFieldRules::TextFieldRules(QObject* owner) : QObject(owner) {}

void TextFieldRules::add(QLineEdit* field, QChar (*keyFilter)(QChar),
                         std::function<void()> onLeaving) {
    add({field, field, keyFilter, true, std::move(onLeaving)});
}

void TextFieldRules::add(const Rule& rule) {
    rules.append(rule);
    rule.field->installEventFilter(this);
}

bool TextFieldRules::eventFilter(QObject* watched, QEvent* event) {
    const Rule* rule = ruleOf(watched);
    if (!rule)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
        return filterKey(*rule, event);
    case QEvent::FocusIn:
        // After the click that entered the field has placed its caret.
        if (rule->selectAllOnEntry)
            QTimer::singleShot(0, rule->text, &QLineEdit::selectAll);
        break;
    case QEvent::FocusOut: {
        // A list opening, a menu or another program taking the focus for a moment is no
        // leaving, nor is the closing of the dialog.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason &&
            rule->field->isVisible())
            rule->onLeaving();
        break;
    }
    default:
        break;
    }
    return false;
}

const TextFieldRules::Rule* TextFieldRules::ruleOf(QObject* watched) const {
    for (const Rule& rule : rules) {
        if (rule.field == watched)
            return &rule;
    }
    return nullptr;
}

// A typed character goes through the field's filter: swallowed, let pass, or changed. Keys
// that type no printable character, Backspace, Enter, Escape and Tab among them, keep their
// usual meaning.
bool TextFieldRules::filterKey(const Rule& rule, QEvent* event) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const QString typed = key->text();
    if (typed.size() != 1 || !typed[0].isPrint())
        return false;
    const QChar passed = rule.keyFilter(typed[0]);
    if (passed.isNull())
        return true;
    if (passed == typed[0])
        return false;
    rule.text->insert(passed);
    return true;
}
