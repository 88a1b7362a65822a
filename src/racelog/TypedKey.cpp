#include "racelog/TypedKey.h"

#include <QKeyEvent>

namespace {

constexpr int DeleteCode = 127;

} // namespace

int typedKeyCode(const QKeyEvent& event) {
    // Not every platform puts the control code into the text of Ctrl with a letter.
    const int key = event.key();
    if (event.modifiers().testFlag(Qt::ControlModifier) && key >= Qt::Key_A && key <= Qt::Key_Z)
        return key - Qt::Key_A + 1;
    const QString text = event.text();
    if (text.size() != 1 || text[0].unicode() == DeleteCode)
        return 0;
    return text[0].unicode();
}
