// pellamor-sim: the weather instrument in software. It sends the instrument's lines over a
// pseudo-terminal, which Tarnwick opens as its serial port, or through the relay, and shows
// the polls and pages Tarnwick sends back.

#include "pellamor-sim/InstrumentSession.h"
#include "pellamor-sim/PtyLink.h"
#include "pellamor-sim/RelayLink.h"

#include "common/Console.h"
#include "common/QuitOnSignal.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRandomGenerator>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

namespace {

const QString helpText = QStringLiteral(
    "Simulates the weather instrument: every interval it sends a line\n"
    "  \" MM/DD/YYYY hh:mm:ss ABP Temp RH AA AH GR VP DP ADR DA PA WD WS WG AL\" and a CR,\n"
    "and one more at once for each poll \"l\" and a CR, printing \"POLL\" for it.\n"
    "Each page, \"f\", a text and a CR, is printed as \"PAGE: \" followed by exactly the bytes\n"
    "after the \"f\": the custom message \"f hello\" prints as \"PAGE:  hello\".\n"
    "Prints \"READY <path>\" (or \"READY <host:port>\") once the link is up. Ends cleanly on\n"
    "SIGINT or SIGTERM and then removes the --pty link.");

// The link the user asked for, and how to open it once the event loop runs.
struct ChosenLink {
    std::unique_ptr<InstrumentLink> link;
    std::function<void()> open;
    QByteArray name;
};

std::optional<ChosenLink> chooseLink(const QCommandLineParser& options) {
    const bool pty = options.isSet(QStringLiteral("pty"));
    const bool tcp = options.isSet(QStringLiteral("tcp"));
    if (pty == tcp) {
        Console::complain(QStringLiteral("give either --pty PATH or --tcp HOST:PORT"));
        return std::nullopt;
    }
    if (pty) {
        const QString path = options.value(QStringLiteral("pty"));
        auto* link = new PtyLink(path);
        return ChosenLink{std::unique_ptr<InstrumentLink>(link), [link] { link->open(); },
                          path.toLocal8Bit()};
    }
    const QString target = options.value(QStringLiteral("tcp"));
    const qsizetype colon = target.lastIndexOf(u':');
    bool isNumber = false;
    const uint port = colon > 0 ? target.mid(colon + 1).toUInt(&isNumber) : 0;
    if (!isNumber || port == 0 || port > 65535) {
        Console::complain(QStringLiteral("not HOST:PORT: ") + target);
        return std::nullopt;
    }
    auto* link = new RelayLink(target.left(colon), quint16(port));
    return ChosenLink{std::unique_ptr<InstrumentLink>(link), [link] { link->open(); },
                      target.toLocal8Bit()};
}

std::optional<InstrumentSession::Settings> readSettings(const QCommandLineParser& options) {
    InstrumentSession::Settings settings;
    bool isNumber = false;
    const double seconds = options.value(QStringLiteral("interval")).toDouble(&isNumber);
    if (!isNumber || seconds < 0.001 || seconds > 86400) {
        Console::complain(QStringLiteral("the interval is a number of seconds, like 2 or 0.2"));
        return std::nullopt;
    }
    settings.intervalMs = qRound(seconds * 1000);
    if (options.isSet(QStringLiteral("seed"))) {
        settings.weather.seed = options.value(QStringLiteral("seed")).toUInt(&isNumber);
        if (!isNumber) {
            Console::complain(QStringLiteral("the seed is a whole number from 0 to 4294967295"));
            return std::nullopt;
        }
    } else {
        settings.weather.seed = QRandomGenerator::global()->generate();
    }
    settings.weather.faults = options.isSet(QStringLiteral("faults"));
    if (options.isSet(QStringLiteral("start"))) {
        settings.start = QDateTime::fromString(options.value(QStringLiteral("start")), Qt::ISODate);
        if (!settings.start.isValid()) {
            Console::complain(
                QStringLiteral("the start is a date and time like 2026-06-01T14:00:00"));
            return std::nullopt;
        }
    }
    return settings;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("pellamor-sim"));

    QCommandLineParser options;
    options.setApplicationDescription(helpText);
    options.addHelpOption();
    options.addOptions({
        {QStringLiteral("pty"),
         QStringLiteral("Open a pseudo-terminal and make PATH a link to its terminal end, for "
                        "Tarnwick to open as a serial port."),
         QStringLiteral("PATH")},
        {QStringLiteral("tcp"), QStringLiteral("Connect to the relay (oskerby) at HOST:PORT."),
         QStringLiteral("HOST:PORT")},
        {QStringLiteral("interval"),
         QStringLiteral("Seconds between lines; fractions like 0.2 are fine (default 2)."),
         QStringLiteral("SECONDS"), QStringLiteral("2")},
        {QStringLiteral("seed"),
         QStringLiteral("Start of the weather's random course; the same seed gives the same "
                        "weather (default: a new one each run)."),
         QStringLiteral("N")},
        {QStringLiteral("start"),
         QStringLiteral("Stamp lines from this moment on (like 2026-06-01T14:00:00), one "
                        "interval further for each timed line, instead of with the clock's "
                        "time; with --seed a run then repeats exactly."),
         QStringLiteral("DATETIME")},
        {QStringLiteral("faults"),
         QStringLiteral("Now and then spoil a line: noise before it, a line cut short, or a "
                        "garbled value.")},
    });
    options.process(app);

    std::optional<ChosenLink> chosen = chooseLink(options);
    const std::optional<InstrumentSession::Settings> settings = readSettings(options);
    if (!chosen || !settings)
        return 1;

    QuitOnSignal quitOnSignal;
    InstrumentLink& link = *chosen->link;
    InstrumentSession session(link, *settings);
    QObject::connect(&link, &InstrumentLink::opened, &session, [&] {
        session.startTimedLines();
        Console::say("READY " + chosen->name);
    });
    // Without its link the instrument has nobody to talk to.
    QObject::connect(&link, &InstrumentLink::errorOccurred, &session, [](int, const QString& text) {
        Console::complain(text);
        QCoreApplication::exit(1);
    });
    QTimer::singleShot(0, &session, chosen->open);
    return app.exec();
}
