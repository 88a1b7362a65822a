#include "feed/StatusLine.h"

#include "feed/WeatherQuantities.h"
#include "shell/Registry.h"

QString BuildStatusLine(const WeatherRecord& record) {
    static const QString columnsKey = QStringLiteral("SOFTWARE\\Zorvane\\LogColumns\\");
    QString text;
    for (const WeatherQuantity& quantity : WeatherQuantities) {
        if (Registry::Get(columnsKey, QLatin1String(quantity.name)) == u"0")
            continue;
        text += QLatin1String(quantity.label) + QuantityText(quantity, record) + u' ';
    }
    return text.trimmed();
}
