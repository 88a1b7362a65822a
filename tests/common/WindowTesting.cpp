#include "common/WindowTesting.h"

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QWidgetAction>

namespace WindowTesting {

void whenModal(std::function<void(QWidget*)> handle) {
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

QString itemName(QAction* action) {
    if (action->isSeparator())
        return QStringLiteral("-");
    if (auto* holder = qobject_cast<QWidgetAction*>(action))
        return holder->defaultWidget()->objectName();
    return action->objectName();
}

} // namespace WindowTesting
