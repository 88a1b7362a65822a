#include "core/ReadingText.h"

#include "core/NumberText.h"

QString valueText(float value) {
    return NumberText::general(value);
}

QString valueText(qint32 value) {
    return QString::number(value);
}
