#pragma once

#include <QString>
#include <functional>

class QMdiArea;
class QWidget;

// The windows of the MDI area the program keeps one of each, known by their object name: the
// live views and the graphs.
namespace SingleWindows {

// Brings the area's window of that name to the front when one is open. Otherwise puts the
// window that make returns in the area, to be deleted when it closes, and shows it.
void show(QMdiArea& area, const QString& objectName, const std::function<QWidget*()>& make);

} // namespace SingleWindows
