#include "ui/racelog/RunMenus.h"

#include <QMenu>

namespace {

// One line of a menu: an item with its name and caption, or a separator (no name).
struct Item {
    const char* name;
    const char* caption;
    QAction* RunMenus::*action;
};

constexpr Item Separator{nullptr, nullptr, nullptr};

// clang-format off
constexpr Item ColumnItems[] = {
    {"miNewRunNum", "New Run", &RunMenus::miNewRunNum},
    Separator,
};

constexpr Item RowItems[] = {
    {"miReferenceRun", "Reference Run", &RunMenus::miReferenceRun},
    {"miRunComplete", "Run Complete...", &RunMenus::miRunComplete},
    Separator,
    {"miGetLoggedWeather", "Get Logged Weather...", &RunMenus::miGetLoggedWeather},
    {"miGetWeather", "Get Current Weather...", &RunMenus::miGetWeather},
    {"miiCardWeather", "Get iCard && Weather...", &RunMenus::miiCardWeather},
    Separator,
    {"miCut", "Cut", &RunMenus::miCut},
    {"miCopy", "Copy", &RunMenus::miCopy},
    {"miPaste", "Paste", &RunMenus::miPaste},
    Separator,
    {"miPredict", "Predict...", &RunMenus::miPredict},
    {"miPredictionCheck", "Prediction Check...", &RunMenus::miPredictionCheck},
    {"miNotes", "Notes...", &RunMenus::miNotes},
    {"miSettings", "Settings...", &RunMenus::miSettings},
    Separator,
    {"miIncrementalTimes", "Incremental Times...", &RunMenus::miIncrementalTimes},
    {"miRaceLog", "Race Log...", &RunMenus::miRaceLog},
    {"miAnnotations", "Annotations...", &RunMenus::miAnnotations},
    {"miRacepak", "Racepak", &RunMenus::miRacepak},
    Separator,
    {"miNewRun", "New Run", &RunMenus::miNewRun},
    {"miDelete", "Delete Run#", &RunMenus::miDelete},
};
// clang-format on

template <std::size_t N>
QMenu* makeMenu(RunMenus& menus, QWidget* parent, const char* name, const char* caption,
                const Item (&items)[N]) {
    auto* menu = new QMenu(QLatin1String(caption), parent);
    menu->setObjectName(QLatin1String(name));
    for (const Item& item : items) {
        if (!item.name) {
            menu->addSeparator();
            continue;
        }
        QAction* action = menu->addAction(QLatin1String(item.caption));
        action->setObjectName(QLatin1String(item.name));
        menus.*item.action = action;
    }
    return menu;
}

} // namespace

RunMenus::RunMenus(QWidget* parent) {
    miColumn = makeMenu(*this, parent, "miColumn", "Column", ColumnItems);
    miRow = makeMenu(*this, parent, "miRow", "Row", RowItems);
    // The item shows whether the run under the mouse is the reference run.
    miReferenceRun->setCheckable(true);
}

void RunMenus::setShowColumnMenu(QMenu* menu) {
    if (showColumn)
        miColumn->removeAction(showColumn);
    showColumn = menu ? miColumn->addMenu(menu) : nullptr;
}
