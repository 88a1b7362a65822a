#include "common/WindowTesting.h"

#include "racelog/OpenRaceLogs.h"
#include "ui/racelog/RaceLogWindow.h"

#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QMdiArea>
#include <QMdiSubWindow>
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

QImage drawn(const QIcon& icon, int size) {
    return icon.pixmap(size, size).toImage().convertToFormat(QImage::Format_ARGB32);
}

bool hasInk(const QImage& image, double share) {
    qsizetype inked = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            inked += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
    return !image.isNull() && inked >= share * image.width() * image.height();
}

} // namespace WindowTesting

RaceLogWindow* WindowTesting::windowOfSlot(const QMdiArea& area, const OpenRaceLogs& logs,
                                           int slot) {
    const RaceLog* log = logs.at(slot);
    for (QMdiSubWindow* child : area.subWindowList()) {
        auto* window = qobject_cast<RaceLogWindow*>(child->widget());
        if (log && window && &window->document() == log)
            return window;
    }
    return nullptr;
}
