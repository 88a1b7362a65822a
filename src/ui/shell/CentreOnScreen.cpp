#include "ui/shell/CentreOnScreen.h"

#include <QScreen>
#include <QWidget>

void centreOnScreen(QWidget& window, const QScreen* screen) {
    if (!screen)
        screen = window.screen();
    if (!screen)
        return;
    const QRect area = screen->geometry();
    window.move(area.left() + (area.width() - window.width()) / 2,
                area.top() + (area.height() - window.height()) / 2);
}
