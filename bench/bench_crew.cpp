// What the crew view costs the feed: one weather line, with one open log that publishes on it,
// handled and sent to 50 phones until the last of them has it, against the same line with the
// server listening and no phone. The phones open the live socket over real TCP and read each
// message as it comes, as the crew's phones on the trailer's network would.
// The phones stand for devices of their own: on a machine with two cores or more their thread
// runs on the last core and the server on the first, so the time is the program's own core
// and the trip to the last phone, not the phones' reading.
// Runs in a scratch home, so the weather log and the settings are fresh.
#include "ScratchHome.h"
#include "crew/CrewServer.h"
#include "crew/CrewSnapshot.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QScopeGuard>
#include <QThread>
#include <QtEndian>
#include <arpa/inet.h>
#include <array>
#include <atomic>
#include <benchmark/benchmark.h>
#include <ctime>
#include <fcntl.h>
#include <netinet/in.h>
#include <pthread.h>
#include <sched.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

const QString Code = QStringLiteral("482913");
constexpr int PhoneCount = 50;
// Longer than any line may take to reach every phone; a phone still waiting then has lost it.
constexpr int GiveUpMilliseconds = 5000;

// An hour of lines, one a second, so each line the station takes is a new reading.
std::vector<QByteArray> hourOfLines() {
    std::vector<QByteArray> lines;
    for (int second = 0; second < 3600; ++second)
        lines.push_back(QStringLiteral(" 11/22/26 10:%1:%2 29.92 71.5 43.2 2100 5.1 45 0.487 49 "
                                       "98.6 1410 120 275 7 11 340\r")
                            .arg(second / 60, 2, 10, QChar(u'0'))
                            .arg(second % 60, 2, 10, QChar(u'0'))
                            .toLatin1());
    return lines;
}

// The processor time of the server and the phones together. On a core of their own it is the
// line's time; on a machine that is busy with other work it is the figure to trust.
double processCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

// A log with a reference run, so the feed makes it publish an ET on every line.
void fillReferenceRun(RaceLog& log) {
    log.change(QStringLiteral("Fill"), [](RaceLogData& data) {
        data.grid.setCell(1, 12, QStringLiteral("9.5"));
        data.grid.setCell(1, 19, QStringLiteral("2000"));
    });
    log.setField(RaceLog::Field::PageIdentifier, QStringLiteral("Red"));
    log.setField(RaceLog::Field::PF, QStringLiteral("5"));
}

// Keeps the calling thread on one core.
void runOnCore(int core) {
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(core, &cores);
    pthread_setaffinity_np(pthread_self(), sizeof(cores), &cores);
}

// The cores the benchmark may use, counted before the server's thread is kept to the first.
int coreCount() {
    static const int count = [] {
        cpu_set_t cores;
        CPU_ZERO(&cores);
        sched_getaffinity(0, sizeof(cores), &cores);
        return CPU_COUNT(&cores);
    }();
    return count;
}

// The phones: connections that open the live socket as a browser does and count each message
// once its last byte is in. They stand for devices of their own, so they take as little of
// the machine as a phone's reading can: one thread on the last core, one epoll over them all.
// Qt's own client, fifty of them on that core, spends more on a line than the program does,
// and the time until the last phone has it would then be the phones' time, not the program's.
class Phones {
public:
    Phones(quint16 port, int count) : received(count) {
        reader = std::thread([this, port, count] { run(port, count); });
    }

    ~Phones() {
        stopping = true;
        reader.join();
    }

    int count() const { return int(received.size()); }
    long total() const { return all.load(); }
    int receivedBy(int phone) const { return received[size_t(phone)].load(); }

    // Handles the main thread's events until every phone together has received `mark`
    // messages; false when they have not by the deadline. The thread never sleeps in between:
    // a wake-up of the waiting benchmark is no cost of the program's, and on a shared core the
    // yield lets the phones read.
    bool waitFor(long mark, const QDeadlineTimer& deadline) {
        while (all.load() < mark) {
            if (deadline.hasExpired())
                return false;
            QCoreApplication::processEvents();
            QThread::yieldCurrentThread();
        }
        return true;
    }

private:
    struct Phone {
        int socket = -1;
        // Bytes of a message not yet complete.
        QByteArray pending;
    };

    void run(quint16 port, int count) {
        if (coreCount() > 1)
            runOnCore(coreCount() - 1);
        const int events = epoll_create1(0);
        std::vector<Phone> phones(static_cast<size_t>(count));
        for (int i = 0; i < count; ++i) {
            Phone& phone = phones[size_t(i)];
            phone.socket = openLiveSocket(port, phone.pending);
            if (phone.socket < 0)
                break;
            epoll_event interest{};
            interest.events = EPOLLIN;
            interest.data.u32 = quint32(i);
            epoll_ctl(events, EPOLL_CTL_ADD, phone.socket, &interest);
            countMessages(i, phone.pending);
        }
        while (!stopping) {
            std::array<epoll_event, 64> ready{};
            const int readyCount = epoll_wait(events, ready.data(), int(ready.size()), 20);
            for (int r = 0; r < readyCount; ++r)
                readFrom(int(ready[size_t(r)].data.u32), phones[ready[size_t(r)].data.u32]);
        }
        for (const Phone& phone : phones)
            if (phone.socket >= 0)
                close(phone.socket);
        close(events);
    }

    // The browser's handshake, on a blocking socket: the program answers from its event loop,
    // which the main thread keeps turning. What came after the answer is kept in `pending`.
    // A program that does not answer in time fails the phone rather than hanging the bench.
    static int openLiveSocket(quint16 port, QByteArray& pending) {
        const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
        const timeval answerTime{GiveUpMilliseconds / 1000, 0};
        setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &answerTime, sizeof(answerTime));
        sockaddr_in server{};
        server.sin_family = AF_INET;
        server.sin_port = htons(port);
        server.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(socket, reinterpret_cast<sockaddr*>(&server), sizeof(server)) != 0) {
            close(socket);
            return -1;
        }
        const QByteArray request = QStringLiteral("GET /live?code=%1 HTTP/1.1\r\n"
                                                  "Host: 127.0.0.1:%2\r\n"
                                                  "Upgrade: websocket\r\n"
                                                  "Connection: Upgrade\r\n"
                                                  "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n"
                                                  "Sec-WebSocket-Version: 13\r\n\r\n")
                                       .arg(Code)
                                       .arg(port)
                                       .toLatin1();
        ::write(socket, request.constData(), size_t(request.size()));
        QByteArray answer;
        qsizetype end = -1;
        while ((end = answer.indexOf("\r\n\r\n")) < 0) {
            char buffer[4096];
            const ssize_t got = ::read(socket, buffer, sizeof(buffer));
            if (got <= 0)
                break;
            answer.append(buffer, got);
        }
        if (end < 0 || !answer.startsWith("HTTP/1.1 101")) {
            close(socket);
            return -1;
        }
        pending = answer.mid(end + 4);
        fcntl(socket, F_SETFL, fcntl(socket, F_GETFL) | O_NONBLOCK);
        return socket;
    }

    void readFrom(int index, Phone& phone) {
        char buffer[65536];
        const ssize_t got = ::read(phone.socket, buffer, sizeof(buffer));
        if (got <= 0)
            return;
        phone.pending.append(buffer, got);
        countMessages(index, phone.pending);
    }

    // Counts the whole messages at the front of `pending` and takes them off. The program
    // sends each message as one final text frame, never masked.
    void countMessages(int phone, QByteArray& pending) {
        qsizetype at = 0;
        for (;;) {
            const auto* bytes = reinterpret_cast<const uchar*>(pending.constData()) + at;
            const qsizetype left = pending.size() - at;
            if (left < 2)
                break;
            const uchar shortLength = bytes[1] & 0x7F;
            const qsizetype header = shortLength == 126 ? 4 : shortLength == 127 ? 10 : 2;
            if (left < header)
                break;
            const quint64 length = shortLength == 126   ? qFromBigEndian<quint16>(bytes + 2)
                                   : shortLength == 127 ? qFromBigEndian<quint64>(bytes + 2)
                                                        : shortLength;
            if (quint64(left - header) < length)
                break;
            if (bytes[0] == 0x81) {
                received[size_t(phone)].fetch_add(1);
                all.fetch_add(1);
            }
            at += header + qsizetype(length);
        }
        pending.remove(0, at);
    }

    std::vector<std::atomic<int>> received;
    std::atomic<long> all{0};
    std::atomic<bool> stopping{false};
    std::thread reader;
};

void feedLines(benchmark::State& state, int phoneCount) {
    WeatherStation station;
    RaceLog log;
    fillReferenceRun(log);
    station.raceLogs().open(&log);
    const auto closeLog = qScopeGuard([&] { station.raceLogs().close(&log); });
    CrewServer server(station, Code);
    if (!server.listen(QHostAddress::LocalHost, 0)) {
        state.SkipWithError("the server could not listen");
        return;
    }

    Phones phones(server.port(), phoneCount);
    // Each phone's first message is the snapshot it gets when it opens.
    if (!phones.waitFor(phoneCount, QDeadlineTimer(GiveUpMilliseconds)) ||
        server.liveSocketCount() != phoneCount) {
        state.SkipWithError("the phones did not all connect");
        return;
    }

    const std::vector<QByteArray> lines = hourOfLines();
    WeatherFeed& feed = station.feed();
    int fed = 0;
    const double cpuBefore = processCpuSeconds();
    QElapsedTimer sending;
    qint64 sendingNs = 0;
    for (auto _ : state) {
        const long mark = phones.total() + phoneCount;
        sending.start();
        feed.serialBytes(lines[size_t(fed++) % lines.size()]);
        // The message of the line goes out from the event loop.
        QCoreApplication::processEvents();
        sendingNs += sending.nsecsElapsed();
        if (!phones.waitFor(mark, QDeadlineTimer(GiveUpMilliseconds))) {
            state.SkipWithError("a line did not reach every phone");
            return;
        }
    }

    // Every phone had every line, once: the snapshot and one message a line.
    QCoreApplication::processEvents();
    for (int phone = 0; phone < phoneCount; ++phone) {
        if (phones.receivedBy(phone) != 1 + fed) {
            state.SkipWithError("a phone did not receive every line exactly once");
            return;
        }
    }
    if (log.prediction().line().pagerMessage.isEmpty())
        state.SkipWithError("the log published nothing");
    state.counters["phones"] = phoneCount;
    // The line and its message handed to every phone's socket, on the program's thread: what
    // the feed itself spends before the trip to the phones.
    state.counters["send_us"] =
        benchmark::Counter(double(sendingNs) / 1000.0, benchmark::Counter::kAvgIterations);
    state.counters["process_cpu"] =
        benchmark::Counter(processCpuSeconds() - cpuBefore, benchmark::Counter::kAvgIterations);
}

// The message alone, made once a line for all the phones: the weather and one log.
void BM_CrewSnapshot(benchmark::State& state) {
    WeatherStation station;
    RaceLog log;
    fillReferenceRun(log);
    station.raceLogs().open(&log);
    const auto closeLog = qScopeGuard([&] { station.raceLogs().close(&log); });
    station.feed().serialBytes(hourOfLines().front());
    const QDateTime now = QDateTime::currentDateTime();
    for (auto _ : state)
        benchmark::DoNotOptimize(CrewSnapshot::json(station, {}, now));
}
BENCHMARK(BM_CrewSnapshot)->Unit(benchmark::kMicrosecond);

void BM_CrewLineWithNoClients(benchmark::State& state) {
    feedLines(state, 0);
}
BENCHMARK(BM_CrewLineWithNoClients)->Unit(benchmark::kMicrosecond)->UseRealTime();

void BM_CrewLineTo50Clients(benchmark::State& state) {
    feedLines(state, PhoneCount);
}
BENCHMARK(BM_CrewLineTo50Clients)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    const ScratchHome home;
    QCoreApplication application(argc, argv);
    coreCount();
    runOnCore(0);

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
