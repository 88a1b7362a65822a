#include "core/Settings.h"

#include "core/NumberText.h"
#include "core/Registry.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Settings {

namespace {

struct FieldName {
    PlacementField field;
    const char* name;
};
constexpr std::array<FieldName, 4> placementFields{{{PlacementField::Width, "Width"},
                                                    {PlacementField::Height, "Height"},
                                                    {PlacementField::Top, "Top"},
                                                    {PlacementField::Left, "Left"}}};

} // namespace

void saveScale(double scale) {
    Registry::set(SettingKeys::Scale, NumberText::generalDouble(scale));
}

double loadScale() {
    const double scale = NumberText::toDouble(Registry::get(SettingKeys::Scale))
                             .value_or(SettingKeys::Scale.fallback.toDouble());
    return std::clamp(scale, 0.25, 4.0);
}

void saveWindowPlacement(const QString& keyPath, const PlacedWindow& window) {
    const int state = window.windowState();
    Registry::set(keyPath, QStringLiteral("WindowState"), QString::number(state));
    if (state != 0)
        return;
    for (const auto& [field, name] : placementFields)
        Registry::set(keyPath, QLatin1String(name), QString::number(window.placement(field)));
}

void loadWindowPlacement(const QString& keyPath, PlacedWindow& window) {
    const QString state = Registry::get(keyPath, QStringLiteral("WindowState"));
    if (!NumberText::isNumeric(state)) {
        Registry::set(keyPath, QStringLiteral("WindowState"), QStringLiteral("0"));
    } else if (state == u"0" || state == u"1" || state == u"2") {
        window.setWindowState(state.toInt());
    }
    for (const auto& [field, name] : placementFields) {
        const QString stored = Registry::get(keyPath, QLatin1String(name));
        if (auto value = NumberText::toDouble(stored); value && std::fabs(*value) < 1e9)
            window.setPlacement(field, int(std::lround(*value)));
        else
            Registry::set(keyPath, QLatin1String(name), QString::number(window.placement(field)));
    }
}

} // namespace Settings
