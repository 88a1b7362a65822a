#include "common/Console.h"

#include <QCoreApplication>
#include <cstdio>

namespace Console {

void say(const QByteArray& line) {
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

void complain(const QString& text) {
    const QByteArray message =
        (QCoreApplication::applicationName() + QStringLiteral(": ") + text + u'\n').toLocal8Bit();
    std::fwrite(message.constData(), 1, size_t(message.size()), stderr);
    std::fflush(stderr);
}

} // namespace Console
