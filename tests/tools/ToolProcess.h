#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

// One of the companion programs, started from the program folder for a test and ended with
// it. Its standard output is read line by line, so the test can wait for what it says.
class ToolProcess {
public:
    explicit ToolProcess(const QString& name);
    ~ToolProcess();
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

    void start(const QStringList& arguments);

    // Waits for the next line of standard output, after the lines taken so far, that starts
    // with the prefix, and takes it with the lines before it. Empty when none came in time.
    QString waitForLine(const QString& prefix, int timeoutMs = 10000);

    // Every line of standard output so far, taken or not.
    const QStringList& outputLines() const { return lines; }

    QProcess process;

private:
    void readOutput();

    QString name;
    QByteArray unfinished;
    QStringList lines;
    qsizetype taken = 0;
};
