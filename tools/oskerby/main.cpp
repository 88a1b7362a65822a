// oskerby: the relay that shares the instrument's feed over TCP. The instance of Tarnwick
// that owns the instrument sends it every line; display instances on other screens, or on
// other PCs, connect and receive them.

#include "oskerby/Relay.h"

#include "common/Console.h"
#include "common/QuitOnSignal.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <optional>

namespace {

struct Where {
    QHostAddress address;
    quint16 port = 0;
};

// Reads --bind and --port; on a bad value says why and returns nothing.
std::optional<Where> whereToListen(const QCommandLineParser& options) {
    Where where{QHostAddress(options.value(QStringLiteral("bind")))};
    if (where.address.isNull()) {
        Console::complain(QStringLiteral("not an IP address: ") + options.value("bind"));
        return std::nullopt;
    }
    bool isNumber = false;
    const uint port = options.value(QStringLiteral("port")).toUInt(&isNumber);
    if (!isNumber || port > 65535) {
        Console::complain(QStringLiteral("not a port number: ") + options.value("port"));
        return std::nullopt;
    }
    where.port = quint16(port);
    return where;
}

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("oskerby"));

    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral(
        "Relays text lines between TCP clients: every line a client sends, up to and "
        "including its CR, goes to every other connected client.\n"
        "A client that is stuck is disconnected (more than 8 MiB waiting for it, or more than "
        "1 MiB it took nothing of for 10 s), so it never holds up the others; a client that "
        "reads but falls behind holds the senders back until it catches up.\n"
        "Prints \"LISTENING <port>\" when ready, then \"JOINED\", \"LEFT\" and \"DROPPED\" "
        "lines for the clients. Ends cleanly on SIGINT or SIGTERM. Exits with status 1 when "
        "the port is taken, as when another relay already runs."));
    options.addHelpOption();
    options.addOption({QStringLiteral("port"),
                       QStringLiteral("TCP port to listen on; 0 picks a free one (default 5555)."),
                       QStringLiteral("PORT"), QStringLiteral("5555")});
    options.addOption({QStringLiteral("bind"),
                       QStringLiteral("Address to listen on (default 127.0.0.1, this PC only); "
                                      "0.0.0.0 shares the feed on every network."),
                       QStringLiteral("ADDRESS"), QStringLiteral("127.0.0.1")});
    options.process(app);

    const std::optional<Where> where = whereToListen(options);
    if (!where)
        return 1;

    QuitOnSignal quitOnSignal;
    Relay relay;
    if (!relay.listen(where->address, where->port)) {
        Console::complain(QStringLiteral("cannot listen on %1:%2: %3")
                              .arg(where->address.toString())
                              .arg(where->port)
                              .arg(relay.errorString()));
        return 1;
    }
    Console::say("LISTENING " + QByteArray::number(relay.port()));
    return app.exec();
}
