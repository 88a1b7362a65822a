#pragma once

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QWidgetAction>
#include <functional>

// Helpers for the tests of the main window and its dialogs.
namespace MainWindowTesting {

// Runs `handle` on the next modal window as soon as it is up; the test then starts whatever
// opens it. The handle must close the window.
inline void whenModal(std::function<void(QWidget*)> handle) {
    auto* poll = new QTimer;
    poll->setInterval(10);
    QObject::connect(poll, &QTimer::timeout, [poll, handle = std::move(handle)] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible())
            return;
        poll->stop();
        poll->deleteLater();
        handle(modal);
    });
    poll->start();
}

// The name a bar shows an item by: a tool's name, "-" for a separator, the field's name for a
// text field.
inline QString itemName(QAction* action) {
    if (action->isSeparator())
        return QStringLiteral("-");
    if (auto* holder = qobject_cast<QWidgetAction*>(action))
        return holder->defaultWidget()->objectName();
    return action->objectName();
}

} // namespace MainWindowTesting
