#include "core/Calculator.h"

#include <QProcess>
#include <QStandardPaths>

namespace Calculator {

QStringList Candidates() {
#ifdef Q_OS_WIN
    return {QStringLiteral("calc")};
#else
    return {QStringLiteral("gnome-calculator"), QStringLiteral("kcalc"),
            QStringLiteral("galculator"),       QStringLiteral("mate-calc"),
            QStringLiteral("qalculate-gtk"),    QStringLiteral("xcalc")};
#endif
}

QString FindProgram() {
    for (const QString& candidate : Candidates()) {
        const QString path = QStandardPaths::findExecutable(candidate);
        if (!path.isEmpty())
            return path;
    }
    return {};
}

void Launch() {
    const QString program = FindProgram();
    if (!program.isEmpty())
        QProcess::startDetached(program, {});
}

} // namespace Calculator
