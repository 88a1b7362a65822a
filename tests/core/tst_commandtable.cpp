#include "core/CommandTable.h"
#include "core/Palette.h"

#include <QTest>

using namespace CommandTable;

namespace {

// The commands as the users know them, in the order of the dispatch.
struct Expected {
    const char* name;
    const char* caption;
    const char* toolTip;
};
const Expected commands[] = {
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
    {"miAutomaticUpdates", "Automatic Updates", "Automatic Weather Updates / Calculations"},
    {"miDeltaVP", "VP Variance", "Show VP variance from reference run"},
    {"miCalculator", "Calculator...", "Launch Calculator"},
    {"miProperties", "Properties...", "(Serial) / (TCP/IP) Port Properties"},
    {"miSetDateTime", "&Set Date / Time...", "Set Pellamor Date and Time"},
    {"miRefresh", "Refresh", "Refresh Screen"},
    {"miMoreColors", "More Colors...", "Additional Colors..."},
    {"miIncrementalTimes", "iCard Incremental Times...", ""},
    {"miTileHorizontally", "&Tile &Horizontally", "Tile Windows Horizontally"},
    {"miTileVertically", "Tile &Vertically", "Tile Windows Vertically"},
    {"miCascade", "&Cascade", "Cascade Windows"},
    {"miCloseAll", "Close All", "Close All Open Windows"},
    {"miWindowList", "Window List", "Open Window Listing"},
    {"miHelpContents", "Help Contents...", "Online Help"},
    {"miAbout", "&About Zorvane...", "About Zorvane"},
    {"btnPredict", "Predict", "Force Prediction for All Race Logs"},
    {"btnSendPage", "Page", "Force Page"},
    {"btnSend", "Send", "Send Custom Page"},
};

QStringList paletteNames() {
    QStringList names;
    for (const Palette::Entry& entry : Palette::entries())
        names.append(entry.name);
    return names;
}

// The bands that hold a tool.
QStringList bandsHolding(const QString& tool) {
    QStringList bands;
    for (const Band& band : CommandTable::bands()) {
        if (band.kind != BandKind::StatusBar && band.items.contains(tool))
            bands.append(band.name);
    }
    return bands;
}

} // namespace

class TestCommandTable : public QObject {
    Q_OBJECT
private slots:
    void commandsAsTheUsersKnowThem_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("toolTip");
        for (const Expected& command : commands)
            QTest::newRow(command.name) << command.name << command.caption << command.toolTip;
    }
    void commandsAsTheUsersKnowThem() {
        QFETCH(QString, name);
        QFETCH(QString, caption);
        QFETCH(QString, toolTip);
        const Tool* tool = findTool(name);
        QVERIFY(tool);
        QCOMPARE(tool->caption, caption);
        QCOMPARE(tool->toolTip, toolTip);
    }

    void commandsComeInDispatchOrder() {
        const QList<Tool>& tools = CommandTable::tools();
        QVERIFY(tools.size() > qsizetype(std::size(commands)));
        for (qsizetype i = 0; i < qsizetype(std::size(commands)); ++i)
            QCOMPARE(tools[i].name, QString::fromLatin1(commands[i].name));
    }

    void paletteToolsCarryTheirCaptions() {
        for (const Palette::Entry& entry : Palette::entries()) {
            const Tool* tool = findTool(entry.name);
            QVERIFY(tool);
            QCOMPARE(tool->caption, entry.caption);
            QCOMPARE(tool->kind, ToolKind::Command);
        }
        QCOMPARE(findTool("miVioliet")->caption, QStringLiteral("Violiet"));
    }

    void toolNamesAreUnique() {
        QSet<QString> names;
        for (const Tool& tool : tools())
            names.insert(tool.name);
        QCOMPARE(names.size(), tools().size());
    }

    void kindsOfTools() {
        QCOMPARE(findTool("miAutomaticUpdates")->kind, ToolKind::Toggle);
        QCOMPARE(findTool("miDeltaVP")->kind, ToolKind::Toggle);
        QCOMPARE(findTool("miSetDateTime")->kind, ToolKind::Inert);
        QCOMPARE(findTool("miWindowList")->kind, ToolKind::WindowList);
        QCOMPARE(findTool("miExit")->kind, ToolKind::Command);
        QCOMPARE(findTool("txtPageMessage")->kind, ToolKind::TextBox);
        QCOMPARE(findTool("txtPageMessage")->band, QStringLiteral("btnSend"));
        QVERIFY(findTool("btnTest"));
        QVERIFY(!findTool("miNoSuchTool"));
    }

    void theCrewViewIsATool() {
        const Tool* tool = findTool("miCrewView");
        QVERIFY(tool);
        QCOMPARE(tool->caption, QStringLiteral("Crew View..."));
        QCOMPARE(tool->kind, ToolKind::Command);
        QCOMPARE(bandsHolding("miCrewView"), QStringList{"miTools"});
    }

    void menusInBarOrder() {
        QStringList names, captions;
        for (const Band& band : CommandTable::bands()) {
            if (band.kind == BandKind::Menu) {
                names.append(band.name);
                captions.append(band.caption);
            }
        }
        QCOMPARE(names, QStringList({"miFile", "miView", "miTools", "miPellamor", "miReports",
                                     "miWindow", "miHelp"}));
        QCOMPARE(captions, QStringList({"&File", "&View", "&Tools", "&Pellamor", "Reports",
                                        "&Window", "&Help"}));
    }

    void submenusHangUnderTools() {
        const Tool* raceLog = findTool("miRaceLogOptions");
        QCOMPARE(raceLog->kind, ToolKind::Submenu);
        QCOMPARE(raceLog->band, QStringLiteral("miRaceLog"));
        QCOMPARE(findBand("miRaceLog")->caption, QStringLiteral("Race Log Options"));
        QCOMPARE(findBand("miRaceLog")->kind, BandKind::Submenu);
        QCOMPARE(findBand("miRaceLog")->items, QStringList({"miAutomaticUpdates", "miDeltaVP"}));

        const Tool* color = findTool("miBackgroundColor");
        QCOMPARE(color->kind, ToolKind::Submenu);
        QCOMPARE(color->band, QStringLiteral("tbColor"));
        QCOMPARE(findBand("tbColor")->caption, QStringLiteral("Color"));
        QCOMPARE(findBand("tbColor")->items, paletteNames() << Separator << "miMoreColors");

        QCOMPARE(bandsHolding("miRaceLogOptions"), QStringList{"miTools"});
        QCOMPARE(bandsHolding("miBackgroundColor"), QStringList{"miTools"});
    }

    void commandsSitInTheirMenus_data() {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QString>("menu");
        QTest::newRow("exit") << "miExit"
                              << "miFile";
        QTest::newRow("open") << "miOpenRaceLog"
                              << "miFile";
        QTest::newRow("load weather") << "miLoadLoggedWeather"
                                      << "miFile";
        QTest::newRow("clear views") << "miClearViews"
                                     << "miView";
        QTest::newRow("configuration") << "miConfiguration"
                                       << "miTools";
        QTest::newRow("columns") << "miSelectColumns"
                                 << "miTools";
        QTest::newRow("calculator") << "miCalculator"
                                    << "miTools";
        QTest::newRow("refresh") << "miRefresh"
                                 << "miTools";
        QTest::newRow("updates") << "miAutomaticUpdates"
                                 << "miRaceLog";
        QTest::newRow("delta vp") << "miDeltaVP"
                                  << "miRaceLog";
        QTest::newRow("properties") << "miProperties"
                                    << "miPellamor";
        QTest::newRow("date and time") << "miSetDateTime"
                                       << "miPellamor";
        QTest::newRow("trend finder") << "miGraph"
                                      << "miReports";
        QTest::newRow("incremental") << "miIncrementalTimes"
                                     << "miReports";
        QTest::newRow("cascade") << "miCascade"
                                 << "miWindow";
        QTest::newRow("close all") << "miCloseAll"
                                   << "miWindow";
        QTest::newRow("window list") << "miWindowList"
                                     << "miWindow";
        QTest::newRow("help") << "miHelpContents"
                              << "miHelp";
        QTest::newRow("about") << "miAbout"
                               << "miHelp";
        QTest::newRow("more colors") << "miMoreColors"
                                     << "tbColor";
    }
    void commandsSitInTheirMenus() {
        QFETCH(QString, tool);
        QFETCH(QString, menu);
        QVERIFY2(bandsHolding(tool).contains(menu), qPrintable(bandsHolding(tool).join(',')));
    }

    void toolBarInOrder() {
        const Band* bar = findBand("tbMain");
        QCOMPARE(bar->caption, QStringLiteral("Tool Bar"));
        QCOMPARE(bar->kind, BandKind::ToolBar);
        QCOMPARE(bar->items, QStringList({"miNewRaceLog",
                                          "miOpenRaceLog",
                                          "miSave",
                                          "miSaveAll",
                                          "-",
                                          "btnPredict",
                                          "btnSendPage",
                                          "-",
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
                                          "-",
                                          "txtPageMessage",
                                          "btnSend"}));
    }

    void statusBarInOrder() {
        const Band* bar = findBand("sbMain");
        QCOMPARE(bar->caption, QStringLiteral("Status Bar"));
        QCOMPARE(bar->kind, BandKind::StatusBar);
        QCOMPARE(bar->items, QStringList({"lblStatus", "lblPellamor", "lblSpace", "lblINS",
                                          "lblCAPS", "lblNUM", "lblSpace", "lblTIME", "lblDATE"}));
        for (const QString& name : bar->items)
            QVERIFY2(findStatusPanel(name), qPrintable(name));

        const StatusPanel* status = findStatusPanel("lblStatus");
        QCOMPARE(status->caption, QStringLiteral("Waiting for Weather Update..."));
        QCOMPARE(status->toolTip, QStringLiteral("Current Weather"));
        QVERIFY(status->enabled);
        const StatusPanel* online = findStatusPanel("lblPellamor");
        QCOMPARE(online->caption, QStringLiteral("Pellamor"));
        QCOMPARE(online->toolTip, QStringLiteral("Pellamor Online Status"));
        QVERIFY(!online->enabled);
    }

    void everyBandItemIsATool() {
        for (const Band& band : CommandTable::bands()) {
            if (band.kind == BandKind::StatusBar)
                continue;
            for (const QString& item : band.items)
                QVERIFY2(item == Separator || findTool(item), qPrintable(band.name + ':' + item));
        }
    }

    void everyToolHasAPlaceButTheTestButton() {
        for (const Tool& tool : tools()) {
            if (tool.name == u"btnTest")
                QVERIFY(bandsHolding(tool.name).isEmpty());
            else
                QVERIFY2(!bandsHolding(tool.name).isEmpty(), qPrintable(tool.name));
        }
    }

    void fileCommandsAlsoOnTheToolBar() {
        QCOMPARE(bandsHolding("miNewRaceLog"), QStringList({"miFile", "tbMain"}));
        QCOMPARE(bandsHolding("miWindPlot"), QStringList({"miView", "tbMain"}));
        QCOMPARE(bandsHolding("btnPredict"), QStringList({"tbMain"}));
    }
};

QTEST_GUILESS_MAIN(TestCommandTable)
#include "tst_commandtable.moc"
