#include "core/CommandTable.h"

#include "core/Palette.h"

#include <algorithm>

namespace CommandTable {

namespace {

using K = ToolKind;

// The commands, in the order in which the dispatch compares their names. Captions and
// tooltips are what the users know, quirks included.
const QList<Tool> commands = {
    {"miNewRaceLog", "&New Race Log", "Create New Race Log"},
    {"miOpenRaceLog", "&Open Race Log...", "Open Existing Race Log"},
    {"miClose", "&Close", "Close Active Window"},
    {"miSave", "Sa&ve", "Save Active Race Log"},
    {"miSaveAs", "Sav&e As...", "Save Race Log As..."},
    {"miSaveAll", "Save All", "Save All Open Race Log Files..."},
    {"miPrint", "Print...", "Print Active Window"},
    {"miPDFExport", "PDF Export...", "Export Active Window to Adobe Acrobat PDF file"},
    {"miExcelExport", "Excel Export...", "Export Active Race Log to Microsoft's Excel"},
    {"miExit", "E&xit", "Exit Software"},
    {"miLoadLoggedWeather", "Load Logged Weather...", "Load Logged Weather to Graphs"},
    {"miClearViews", "Clear Views", "Clear all Graph Data"},
    {"miWindPlot", "Wind Plot", "Wind Rose Plot"},
    {"miWindDirection", "Wind Direction...", "Wind Direction"},
    {"miWindSpeed", "Wind Speed...", "Wind Speed"},
    {"miVaporPressure", "Vapor Pressure...", "Vapor Pressure vs. Temperature"},
    {"miAADA", "Adjusted Altitude...", "Adjusted Altitude / Density Altitude"},
    {"miWeather", "Weather...", "Large Weather Variable Display"},
    {"miRH", "Relative Humidity...", "Relative Humidity"},
    {"miABP", "Absolute Barometric Pressure...", "Absolute Barometric Pressure"},
    {"miGR", "Grains per lb...", "Grains per lb."},
    {"miADR", "Air Density Ratio...", "Air Density Ratio"},
    {"miCF", "Correction Factor...", "Correction Factor"},
    {"miGraph", "Graph...", "Trend Finder"},
    {"miGraphTS", "TS Graph...", "Predict Throttle Stop Ratio [TSR] using graph"},
    {"miGraphET", "ET Graph...", "Predict Performance Factor"},
    {"miConfiguration", "Configuration...", "Set Program Configuration Defaults"},
    {"miSelectColumns", "Select Log Columns...", "Select default viewable log columns"},
    {"miAutomaticUpdates", "Automatic Updates", "Automatic Weather Updates / Calculations",
     K::Toggle},
    {"miDeltaVP", "VP Variance", "Show VP variance from reference run", K::Toggle},
    {"miCalculator", "Calculator...", "Launch Calculator"},
    {"miProperties", "Properties...", "(Serial) / (TCP/IP) Port Properties"},
    // The instrument's clock is set with its own tools; the entry is there and stays off.
    {"miSetDateTime", "&Set Date / Time...", "Set Pellamor Date and Time", K::Inert},
    {"miRefresh", "Refresh", "Refresh Screen"},
    {"miMoreColors", "More Colors...", "Additional Colors..."},
    {"miIncrementalTimes", "iCard Incremental Times...", ""},
    {"miTileHorizontally", "&Tile &Horizontally", "Tile Windows Horizontally"},
    {"miTileVertically", "Tile &Vertically", "Tile Windows Vertically"},
    {"miCascade", "&Cascade", "Cascade Windows"},
    {"miCloseAll", "Close All", "Close All Open Windows"},
    {"miWindowList", "Window List", "Open Window Listing", K::WindowList},
    {"miHelpContents", "Help Contents...", "Online Help"},
    {"miAbout", "&About Zorvane...", "About Zorvane"},
    {"btnPredict", "Predict", "Force Prediction for All Race Logs"},
    {"btnSendPage", "Page", "Force Page", K::Command, {}, "Send default page", "Pager"},
    {"btnSend", "Send", "Send Custom Page", K::Command, {}, "Send custom message to pager"},
    {"btnTest", "Test", ""},
    // The crew's phones come after every command the users knew before them.
    {"miCrewView", "Crew View...", "Live weather and predictions on the crew's phones"},
    // Tools that only open a band or hold text.
    {"miRaceLogOptions", "Race Log Options", "", K::Submenu, "miRaceLog"},
    {"miBackgroundColor", "Background Color", "", K::Submenu, "tbColor"},
    {"txtPageMessage", "Pager Message", "", K::TextBox, "btnSend", "Custom message to pager",
     "Custom Page Message"},
};

QList<Tool> allTools() {
    QList<Tool> tools = commands;
    for (const Palette::Entry& entry : Palette::entries())
        tools.append({entry.name, entry.caption, ""});
    return tools;
}

QStringList colorMenu() {
    QStringList items;
    for (const Palette::Entry& entry : Palette::entries())
        items.append(entry.name);
    items << Separator << "miMoreColors";
    return items;
}

QList<Band> allBands() {
    const QString& S = Separator;
    return {
        {"miFile",
         "&File",
         BandKind::Menu,
         {"miNewRaceLog", "miOpenRaceLog", "miClose", S, "miSave", "miSaveAs", "miSaveAll", S,
          "miPrint", "miPDFExport", "miExcelExport", S, "miLoadLoggedWeather", S, "miExit"}},
        {"miView",
         "&View",
         BandKind::Menu,
         {"miWindPlot", "miWindDirection", "miWindSpeed", "miVaporPressure", "miAADA", "miWeather",
          "miRH", "miABP", "miGR", "miADR", "miCF", S, "miClearViews"}},
        {"miTools",
         "&Tools",
         BandKind::Menu,
         {"miConfiguration", "miSelectColumns", "miRaceLogOptions", S, "miCrewView", S,
          "miCalculator", "miRefresh", "miBackgroundColor"}},
        {"miPellamor", "&Pellamor", BandKind::Menu, {"miProperties", "miSetDateTime"}},
        {"miReports",
         "Reports",
         BandKind::Menu,
         {"miGraph", "miGraphTS", "miGraphET", S, "miIncrementalTimes"}},
        {"miWindow",
         "&Window",
         BandKind::Menu,
         {"miTileHorizontally", "miTileVertically", "miCascade", S, "miCloseAll", S,
          "miWindowList"}},
        {"miHelp", "&Help", BandKind::Menu, {"miHelpContents", S, "miAbout"}},
        {"miRaceLog", "Race Log Options", BandKind::Submenu, {"miAutomaticUpdates", "miDeltaVP"}},
        {"tbColor", "Color", BandKind::Submenu, colorMenu()},
        {"tbMain",
         "Tool Bar",
         BandKind::ToolBar,
         {"miNewRaceLog",
          "miOpenRaceLog",
          "miSave",
          "miSaveAll",
          S,
          "btnPredict",
          "btnSendPage",
          S,
          "miWindPlot",
          "miWindDirection",
          "miWindSpeed",
          "miVaporPressure",
          "miAADA",
          "miWeather",
          "miRH",
          "miABP",
          "miGR",
          "miADR",
          "miCF",
          S,
          "txtPageMessage",
          "btnSend"}},
        {"sbMain",
         "Status Bar",
         BandKind::StatusBar,
         {"lblStatus", "lblPellamor", "lblSpace", "lblINS", "lblCAPS", "lblNUM", "lblSpace",
          "lblTIME", "lblDATE"}},
    };
}

template <typename T> const T* findByName(const QList<T>& list, const QString& name) {
    const auto it = std::find_if(list.begin(), list.end(),
                                 [&name](const T& item) { return item.name == name; });
    return it == list.end() ? nullptr : &*it;
}

} // namespace

const QList<Tool>& tools() {
    static const QList<Tool> tools = allTools();
    return tools;
}

const QList<Band>& bands() {
    static const QList<Band> bands = allBands();
    return bands;
}

const QList<StatusPanel>& statusPanels() {
    // The clock panels get their text from the clock; the key panels name their key.
    static const QList<StatusPanel> panels = {
        {"lblStatus", "Waiting for Weather Update...", "Current Weather"},
        {"lblPellamor", "Pellamor", "Pellamor Online Status", false},
        {"lblSpace", "", ""},
        {"lblINS", "INS", ""},
        {"lblCAPS", "CAPS", ""},
        {"lblNUM", "NUM", ""},
        {"lblTIME", "", ""},
        {"lblDATE", "", ""},
    };
    return panels;
}

const Tool* findTool(const QString& name) {
    return findByName(tools(), name);
}

const Band* findBand(const QString& name) {
    return findByName(bands(), name);
}

const StatusPanel* findStatusPanel(const QString& name) {
    return findByName(statusPanels(), name);
}

} // namespace CommandTable
