#pragma once

#include <QString>
#include <initializer_list>

class QHBoxLayout;
class QPushButton;
class QWidget;

// Pieces every dialog of the program is built from. Controls carry the names the program and
// its tests find them by.
namespace DialogParts {

QPushButton* namedButton(const QString& name, const QString& caption, QWidget* parent = nullptr);

// The closing buttons of a dialog in a row at its right; the first one answers Enter.
QHBoxLayout* closingButtons(std::initializer_list<QPushButton*> buttons);

} // namespace DialogParts
