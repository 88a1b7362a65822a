#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

#include <memory>

class QLocalSocket;
class QLockFile;

// How the processes of the program on one machine find each other. Every process holds a
// lock of its own for as long as it lives, so a later start can tell that another process
// runs, whatever its role. Only the main instance listens, and a later start hands it the
// path of a race log to open. Both are kept apart per user and per settings folder.
class InstanceChannel : public QObject {
    Q_OBJECT
public:
    explicit InstanceChannel(QObject* parent = nullptr);
    ~InstanceChannel() override;

    // True while another process of the program runs; locks left by processes that died
    // don't count.
    bool anotherProcessRunning() const;

    // The main instance takes paths from later starts from now on, until stopListening.
    bool listen();
    void stopListening();

    // Hands a path to the main instance and returns once it is delivered, with true. When no
    // main instance listens, the path is lost. Handing over takes no place among the running
    // processes.
    static bool handOver(const QString& path);

    // True while a main instance listens: one that is running and has not begun to close.
    static bool mainInstanceListening();

signals:
    void pathReceived(const QString& path);

private:
    void accept();
    void readPath(QLocalSocket* socket, QByteArray& received);

    QString lockFolder;
    QString serverName;
    std::unique_ptr<QLockFile> ownLock;
    QLocalServer server;
};
