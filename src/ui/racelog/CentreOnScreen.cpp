#include "ui/racelog/CentreOnScreen.h"

#include <QScreen>
#include <QWidget>

void CentreOnScreen(QWidget& window) {
    window.adjustSize();
    const QRect area = window.screen()->geometry();
    window.move(area.left() + (area.width() - window.width()) / 2,
                area.top() + (area.height() - window.height()) / 2);
}
