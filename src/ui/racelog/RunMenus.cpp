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
    {"miNewRunNum", "New Run", &RunMenus::newRunAtRowAction},
    Separator,
};

constexpr Item RowItems[] = {
    {"miReferenceRun", "Reference Run", &RunMenus::referenceRunAction},
    {"miRunComplete", "Run Complete...", &RunMenus::runCompleteAction},
    Separator,
    {"miGetLoggedWeather", "Get Logged Weather...", &RunMenus::loggedWeatherAction},
    {"miGetWeather", "Get Current Weather...", &RunMenus::currentWeatherAction},
    {"miiCardWeather", "Get iCard && Weather...", &RunMenus::timeSlipAction},
    Separator,
    {"miCut", "Cut", &RunMenus::cutAction},
    {"miCopy", "Copy", &RunMenus::copyAction},
    {"miPaste", "Paste", &RunMenus::pasteAction},
    Separator,
    {"miPredict", "Predict...", &RunMenus::predictAction},
    {"miPredictionCheck", "Prediction Check...", &RunMenus::predictionCheckAction},
    {"miNotes", "Notes...", &RunMenus::notesAction},
    {"miSettings", "Settings...", &RunMenus::settingsAction},
    Separator,
    {"miIncrementalTimes", "Incremental Times...", &RunMenus::incrementalTimesAction},
    {"miRaceLog", "Race Log...", &RunMenus::raceLogAction},
    {"miAnnotations", "Annotations...", &RunMenus::annotationsAction},
    {"miRacepak", "Racepak", &RunMenus::racepakAction},
    Separator,
    {"miNewRun", "New Run", &RunMenus::newRunAction},
    {"miDelete", "Delete Run#", &RunMenus::deleteAction},
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
    columnMenu = makeMenu(*this, parent, "miColumn", "Column", ColumnItems);
    rowMenu = makeMenu(*this, parent, "miRow", "Row", RowItems);
    // The item shows whether the run under the mouse is the reference run.
    referenceRunAction->setCheckable(true);
}

void RunMenus::setShowColumnMenu(QMenu* menu) {
    if (showColumn)
        columnMenu->removeAction(showColumn);
    showColumn = menu ? columnMenu->addMenu(menu) : nullptr;
}
