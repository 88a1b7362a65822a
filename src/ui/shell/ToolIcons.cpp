#include "ui/shell/ToolIcons.h"

#include <algorithm>

namespace ToolIcons {

namespace {

struct Picture {
    const char* tool;
    const char* themeName; // empty: the freedesktop naming has no icon for this command
};

// The file tools and the custom page have standard icons; predicting, paging and the weather
// views are this program's own and have its own pictures only: the rose, the gauge, the large
// display and the strip charts, each marked with its quantity.
constexpr Picture pictures[] = {
    {"miNewRaceLog", "document-new"},
    {"miOpenRaceLog", "document-open"},
    {"miSave", "document-save"},
    {"miSaveAll", ""},
    {"btnPredict", ""},
    {"btnSendPage", ""},
    {"miWindPlot", ""},
    {"miWindDirection", ""},
    {"miWindSpeed", ""},
    {"miVaporPressure", ""},
    {"miAADA", ""},
    {"miWeather", ""},
    {"miRH", ""},
    {"miABP", ""},
    {"miGR", ""},
    {"miADR", ""},
    {"miCF", ""},
    {"btnSend", "mail-send"},
};

const Picture* find(const QString& tool) {
    const auto it =
        std::find_if(std::begin(pictures), std::end(pictures),
                     [&tool](const Picture& p) { return tool == QLatin1String(p.tool); });
    return it == std::end(pictures) ? nullptr : it;
}

} // namespace

QStringList tools() {
    QStringList names;
    for (const Picture& picture : pictures)
        names.append(QLatin1String(picture.tool));
    return names;
}

QString themeName(const QString& tool) {
    const Picture* picture = find(tool);
    return picture ? QLatin1String(picture->themeName) : QString();
}

QString ownPicture(const QString& tool) {
    return QStringLiteral(":/icons/") + tool + QStringLiteral(".svg");
}

QIcon icon(const QString& tool) {
    const Picture* picture = find(tool);
    if (!picture)
        return {};
    const QIcon own(ownPicture(tool));
    const QString name = QLatin1String(picture->themeName);
    return name.isEmpty() ? own : QIcon::fromTheme(name, own);
}

QIcon programIcon() {
    return QIcon(QStringLiteral(":/icons/org.tarnwick.Tarnwick.svg"));
}

} // namespace ToolIcons
