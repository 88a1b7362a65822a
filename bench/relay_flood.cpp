// The relay under a flood: one sender pushes numbered lines through oskerby as fast as TCP
// lets it, one client reads them, one client never reads. Prints what the reading client
// received and in what order, whether the stalled client was dropped, and the relay's peak
// memory.
//   relay_flood [--megabytes N] [--oskerby PATH]
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTcpSocket>
#include <QTimer>
#include <arpa/inet.h>
#include <cstdio>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int LineLength = 100;

QByteArray numberedLine(qint64 number) {
    return QByteArray::number(number).rightJustified(12, '0') + ' ' +
           QByteArray(LineLength - 14, 'x') + '\r';
}

// A value of /proc/<pid>/status in kB, such as VmHWM, the peak resident size.
qint64 statusKb(qint64 pid, const QByteArray& field) {
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(field + ':'))
            return line.mid(field.size() + 1).trimmed().split(' ').first().toLongLong();
    }
    return -1;
}

// A client that connects and never reads, with a tiny receive window.
int stalledClient(quint16 port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int tiny = 4096;
    ::setsockopt(fd, SOL_SOCKET, SO_RCVBUF, &tiny, sizeof tiny);
    sockaddr_in relay = {};
    relay.sin_family = AF_INET;
    relay.sin_port = htons(port);
    relay.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::connect(fd, reinterpret_cast<sockaddr*>(&relay), sizeof relay);
    return fd;
}

// Reads the reading client's bytes and checks, line by line, that every number follows the
// one before.
struct OrderedReader {
    qint64 bytes = 0;
    qint64 nextNumber = 0;
    bool inOrder = true;
    QByteArray partial;

    void take(const QByteArray& chunk) {
        bytes += chunk.size();
        partial += chunk;
        qsizetype start = 0;
        for (qsizetype end; (end = partial.indexOf('\r', start)) >= 0; start = end + 1) {
            const QByteArray line = partial.mid(start, end + 1 - start);
            if (line != numberedLine(nextNumber))
                inOrder = false;
            ++nextNumber;
        }
        partial.remove(0, start);
    }
};

} // namespace

int main(int argc, char* argv[]) {
    QCoreApplication app(argc, argv);
    QCommandLineParser options;
    options.addHelpOption();
    options.addOption({QStringLiteral("megabytes"), QStringLiteral("How much to send (40)."),
                       QStringLiteral("N"), QStringLiteral("40")});
    options.addOption({QStringLiteral("oskerby"), QStringLiteral("The relay program."),
                       QStringLiteral("PATH"),
                       QCoreApplication::applicationDirPath() + QStringLiteral("/oskerby")});
    options.process(app);
    const qint64 lines =
        options.value(QStringLiteral("megabytes")).toLongLong() * 1000 * 1000 / LineLength;
    const qint64 total = lines * LineLength;

    QProcess relay;
    relay.start(options.value(QStringLiteral("oskerby")), {QStringLiteral("--port"), "0"});
    QByteArray said;
    while (!said.contains('\n') && relay.waitForReadyRead(10000))
        said += relay.readLine();
    if (!said.startsWith("LISTENING ")) {
        std::fprintf(stderr, "relay_flood: the relay did not start\n");
        return 1;
    }
    const quint16 port = quint16(said.mid(10).trimmed().toUInt());
    int joined = 0;
    QObject::connect(&relay, &QProcess::readyReadStandardOutput, [&] {
        while (relay.canReadLine()) {
            const QByteArray line = relay.readLine();
            joined += line.startsWith("JOINED ");
            if (line.startsWith("DROPPED "))
                std::printf("relay: %s", line.constData());
        }
    });

    QTcpSocket reader;
    OrderedReader received;
    QObject::connect(&reader, &QTcpSocket::readyRead, [&] { received.take(reader.readAll()); });
    reader.connectToHost(QStringLiteral("127.0.0.1"), port);
    const int stalled = stalledClient(port);
    QTcpSocket sender;
    sender.connectToHost(QStringLiteral("127.0.0.1"), port);
    QElapsedTimer wait;
    wait.start();
    while (joined < 3 && wait.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);

    // The sender keeps a few megabytes queued, so it sends as fast as TCP takes them.
    qint64 sentLines = 0;
    const auto sendMore = [&] {
        while (sentLines < lines && sender.bytesToWrite() < 4 * 1024 * 1024) {
            QByteArray chunk;
            for (int i = 0; i < 10000 && sentLines < lines; ++i)
                chunk += numberedLine(sentLines++);
            sender.write(chunk);
        }
    };
    QObject::connect(&sender, &QTcpSocket::bytesWritten, sendMore);

    qint64 peakRssKb = 0;
    QTimer sample;
    QObject::connect(&sample, &QTimer::timeout, [&] {
        peakRssKb = std::max(peakRssKb, statusKb(relay.processId(), "VmRSS"));
    });
    sample.start(50);

    QElapsedTimer clock;
    clock.start();
    sendMore();
    while (received.bytes < total && clock.elapsed() < 300000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    const double seconds = double(clock.elapsed()) / 1000;
    peakRssKb = std::max(peakRssKb, statusKb(relay.processId(), "VmHWM"));

    std::printf("sent            %lld bytes in %lld lines\n", total, lines);
    std::printf("reader received %lld bytes (%.2f%%), in order: %s\n", received.bytes,
                100.0 * double(received.bytes) / double(total), received.inOrder ? "yes" : "no");
    std::printf("time            %.1f s (%.1f MB/s)\n", seconds,
                double(received.bytes) / 1e6 / seconds);
    std::printf("relay peak RSS  %.1f MB\n", double(peakRssKb) / 1024);
    ::close(stalled);
    relay.terminate();
    relay.waitForFinished(5000);
    return received.bytes == total && received.inOrder ? 0 : 1;
}
