#include "pager/PagerComposer.h"

#include "core/DateText.h"

#include <algorithm>

namespace PagerComposer {

namespace {

bool takesPart(const std::optional<PagerEntry>& slot) {
    return slot && slot->inPage;
}

// The instrument's relay takes plain single-byte text.
QByteArray wire(const QString& text) {
    return text.toLatin1() + '\r';
}

Dialogs::Message portClosedMessage(const QString& title) {
    return {QStringLiteral("The serial port is not open"), title, Dialogs::Icon::Information,
            Dialogs::Buttons::OkCancel, Dialogs::Answer::Ok};
}

} // namespace

QString pageText(const QTime& now, const PagerSlots& raceLogs, const QString& statusLine,
                 Weather weather) {
    QString text = weather == Weather::Old ? QStringLiteral("OLD WX ") : QString();
    text += DateText::timeText(now);
    for (const auto& slot : raceLogs)
        if (takesPart(slot))
            text += QLatin1Char(' ') + slot->pagerMessage;
    return text + QLatin1Char(' ') + statusLine;
}

QByteArray pageCommand(const QString& pageText) {
    return wire(QStringLiteral("f") + pageText);
}

QByteArray customCommand(const QString& message) {
    return wire(QStringLiteral("f ") + message);
}

QByteArray testCommand() {
    return customCommand(QStringLiteral("Drennick & Aldous Racing"));
}

QByteArray linkCommand() {
    return wire(QStringLiteral("l"));
}

Dialogs::Message customPortClosedMessage() {
    return portClosedMessage(QStringLiteral("Custom Message"));
}

Dialogs::Message testPortClosedMessage() {
    return portClosedMessage(QStringLiteral("Test Message"));
}

std::optional<Dialogs::Message> pagerPredictionsWarning(const PagerSlots& raceLogs) {
    if (std::count_if(raceLogs.begin(), raceLogs.end(), takesPart) < 3)
        return std::nullopt;
    const QString crlf = QStringLiteral("\r\n");
    return Dialogs::Message{
        QStringLiteral("WARNING:") + crlf +
            QStringLiteral("  Having pager predictions turned on for more than two") + crlf +
            QStringLiteral("  race logs can cause losses in transmitted messages sent") + crlf +
            QStringLiteral("  to pager!"),
        QStringLiteral("Pager Predictions"), Dialogs::Icon::Exclamation, Dialogs::Buttons::OkCancel,
        Dialogs::Answer::Ok};
}

} // namespace PagerComposer
