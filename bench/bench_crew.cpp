// What the crew view costs the feed: one weather line, with one open log that publishes on it,
// handled and sent to 50 phones until the last of them has it, against the same line with the
// server listening and no phone. The phones are WebSocket clients in a thread of their own,
// each reading as its messages come, as the crew's phones on the trailer's network would.
// The phones stand for devices of their own: on a machine with two cores or more their thread
// runs on the last core and the server on the first, so the time is the program's own core
// and the trip to the last phone, not the phones' reading.
// Runs in a scratch home, so the weather log and the settings are fresh.
#include "crew/CrewServer.h"
#include "crew/CrewSnapshot.h"
#include "feed/WeatherFeed.h"
#include "feed/WeatherStation.h"
#include "racelog/RaceLog.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QThread>
#include <QWebSocket>
#include <atomic>
#include <benchmark/benchmark.h>
#include <ctime>
#include <memory>
#include <pthread.h>
#include <sched.h>
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

// The phones. Each counts what it received, and all of them together.
class Phones {
public:
    Phones(const QUrl& url, int count) : received(count) {
        thread.start();
        context->moveToThread(&thread);
        QMetaObject::invokeMethod(
            context.get(),
            [this, url, count] {
                if (coreCount() > 1)
                    runOnCore(coreCount() - 1);
                for (int i = 0; i < count; ++i) {
                    auto* socket =
                        new QWebSocket(QString(), QWebSocketProtocol::VersionLatest, context.get());
                    QObject::connect(socket, &QWebSocket::textMessageReceived, context.get(),
                                     [this, i] { countOne(i); });
                    socket->open(url);
                }
            },
            Qt::QueuedConnection);
    }

    // The phones close in their own thread, which then ends.
    ~Phones() {
        QMetaObject::invokeMethod(
            context.get(),
            [this] {
                qDeleteAll(context->children());
                context->moveToThread(QCoreApplication::instance()->thread());
            },
            Qt::BlockingQueuedConnection);
        thread.quit();
        thread.wait();
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
    void countOne(int phone) {
        received[size_t(phone)].fetch_add(1);
        all.fetch_add(1);
    }

    std::vector<std::atomic<int>> received;
    std::atomic<long> all{0};
    QThread thread;
    std::unique_ptr<QObject> context = std::make_unique<QObject>();
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

    Phones phones(
        QUrl(QStringLiteral("ws://127.0.0.1:%1/live?code=%2").arg(server.port()).arg(Code)),
        phoneCount);
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
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", (home.path() + QStringLiteral("/config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", (home.path() + QStringLiteral("/data")).toLocal8Bit());
    QCoreApplication application(argc, argv);
    coreCount();
    runOnCore(0);

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
