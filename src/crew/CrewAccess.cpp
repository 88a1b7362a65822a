#include "crew/CrewAccess.h"

namespace {

const QByteArray CookieName = QByteArrayLiteral("crew");

// The value of our cookie in a Cookie header ("a=1; crew=123456"); empty when it is not there.
QString cookieCode(const QByteArray& cookies) {
    for (const QByteArray& pair : cookies.split(';')) {
        const QByteArray trimmed = pair.trimmed();
        const qsizetype equals = trimmed.indexOf('=');
        if (equals > 0 && trimmed.left(equals) == CookieName)
            return QString::fromLatin1(trimmed.mid(equals + 1));
    }
    return {};
}

} // namespace

CrewAccess::CrewAccess(const QString& code) : expected(code) {
    clock.start();
}

CrewAccess::Verdict CrewAccess::check(const QHostAddress& peer, const QString& queryCode,
                                      const QByteArray& cookies) {
    const QString address = peer.toString();
    const qint64 now = clock.elapsed();
    if (isBlocked(address, now))
        return Verdict::TooMany;
    const QString offered = offeredCode(queryCode, cookies);
    if (offered == expected)
        return Verdict::Allowed;
    if (!offered.isEmpty())
        countWrong(address, now);
    return Verdict::Forbidden;
}

bool CrewAccess::accepts(const QString& queryCode, const QByteArray& cookies) const {
    return offeredCode(queryCode, cookies) == expected;
}

QByteArray CrewAccess::cookie() const {
    return CookieName + '=' + expected.toLatin1() + "; HttpOnly; SameSite=Strict; Path=/";
}

// The code in the address wins over the cookie: a phone given a new code types it in.
QString CrewAccess::offeredCode(const QString& queryCode, const QByteArray& cookies) const {
    return queryCode.isEmpty() ? cookieCode(cookies) : queryCode;
}

bool CrewAccess::isBlocked(const QString& peer, qint64 now) {
    const auto until = blockedUntil.constFind(peer);
    if (until == blockedUntil.cend())
        return false;
    if (now < *until)
        return true;
    blockedUntil.erase(until);
    return false;
}

void CrewAccess::countWrong(const QString& peer, qint64 now) {
    QList<qint64>& times = wrongTimes[peer];
    times.removeIf([now](qint64 time) { return now - time >= WindowMs; });
    times.append(now);
    if (times.size() >= WrongCodesAllowed) {
        blockedUntil.insert(peer, now + WindowMs);
        wrongTimes.remove(peer);
    }
}
