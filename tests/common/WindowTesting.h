#pragma once

#include <QImage>
#include <QString>
#include <functional>

class OpenRaceLogs;
class QAction;
class QIcon;
class QMdiArea;
class QWidget;
class RaceLogWindow;

// Helpers for the tests of windows and their dialogs.
namespace WindowTesting {

// Runs `handle` on the next modal window as soon as it is up; the test then starts whatever
// opens it. The handle must close the window.
void whenModal(std::function<void(QWidget*)> handle);

// The name a bar shows an item by: a tool's name, "-" for a separator, the field's name for a
// text field.
QString itemName(QAction* action);

// An icon drawn at a size, as plain 32-bit pixels to compare.
QImage drawn(const QIcon& icon, int size);

// The window in the area that shows the log in a slot; nullptr for an empty slot.
RaceLogWindow* windowOfSlot(const QMdiArea& area, const OpenRaceLogs& logs, int slot);

// A picture shows something: at least this share of its pixels are not see-through.
bool hasInk(const QImage& image, double share);

} // namespace WindowTesting
