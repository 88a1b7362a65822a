#include "feed/StatusLine.h"

#include "core/Registry.h"
#include "feed/WeatherQuantities.h"

QString buildStatusLine(const ReadingTexts& texts) {
    static const QString columnsKey = SettingKeys::LogColumns.keyPath();
    static const QStringList names = [] {
        QStringList list;
        for (const WeatherQuantity& quantity : WeatherQuantities)
            list.append(QLatin1String(quantity.name));
        return list;
    }();
    // The choice of quantities is read again only when the settings changed, not with every
    // line.
    static quint64 readAt = 0;
    static QStringList selected;
    if (const quint64 revision = Registry::revision(); selected.isEmpty() || revision != readAt) {
        selected = Registry::keyValues(Registry::HKEY_CURRENT_USER, columnsKey, names);
        readAt = revision;
    }
    // Piece by piece into one reserved text: the line is made for every feed line.
    QString text;
    text.reserve(192);
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (selected[i] == u"0")
            continue;
        if (!text.isEmpty())
            text.append(u' ');
        text.append(QLatin1String(WeatherQuantities[i].label)).append(texts[i]);
    }
    return text;
}
