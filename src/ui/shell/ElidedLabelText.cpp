#include "ui/shell/ElidedLabelText.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QStyle>

ElidedLabelText::ElidedLabelText(QLabel& label) : QObject(&label), label(label) {
    label.setSizePolicy(QSizePolicy::Ignored, label.sizePolicy().verticalPolicy());
    label.installEventFilter(this);
}

bool ElidedLabelText::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &label || event->type() != QEvent::Paint)
        return false;
    QPainter painter(&label);
    const QRect area = label.contentsRect();
    const QString shown =
        label.fontMetrics().elidedText(label.text(), Qt::ElideRight, area.width());
    label.style()->drawItemText(&painter, area, int(label.alignment()), label.palette(),
                                label.isEnabled(), shown, label.foregroundRole());
    return true;
}
