#include "core/Calculator.h"

#include <QProcess>
#include <QStandardPaths>

namespace Calculator {

QStringList candidates() {
#ifdef Q_OS_WIN
    return {QStringLiteral("calc")};
#else
    return {QStringLiteral("gnome-calculator"), QStringLiteral("kcalc"),
            QStringLiteral("galculator"),       QStringLiteral("mate-calc"),
            QStringLiteral("qalculate-gtk"),    QStringLiteral("xcalc")};
#endif
}

QString findProgram() {
    for (const QString& candidate : candidates()) {
        const QString path = QStandardPaths::findExecutable(candidate);
        if (!path.isEmpty())
            return path;
    }
    return {};
}

void launch() {
    const QString program = findProgram();
    if (!program.isEmpty())
        QProcess::startDetached(program, {});
}

} // namespace Calculator
