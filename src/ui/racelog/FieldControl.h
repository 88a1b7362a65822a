#pragma once

#include <QString>
#include <functional>

class QObject;
class QWidget;

// A control of the side panel that shows one text field of a race log: a line, an editable
// list or a box of notes. The panel treats them all alike through these.
namespace FieldControl {

// Shows the text. A control that shows it already is left alone, so the cursor stays where
// the user types.
void show(QWidget& control, const QString& text);

// Calls typed with the control's whole text each time it changes, while context lives.
void onTyped(QWidget& control, QObject& context, std::function<void(const QString&)> typed);

} // namespace FieldControl
