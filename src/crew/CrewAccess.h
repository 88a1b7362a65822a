#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QHostAddress>
#include <QList>
#include <QString>

// Who may see the crew view: a request brings the code in its query (the first load, the live
// socket) or in the cookie the first load set. A phone that guesses, ten wrong codes within a
// minute, is turned away for a minute whatever it brings. A missing code is no guess: a phone
// that opens the bare address just learns it needs the code.
class CrewAccess {
public:
    enum class Verdict { Allowed, Forbidden, TooMany };

    static constexpr int WrongCodesAllowed = 10;
    static constexpr qint64 WindowMs = 60 * 1000;

    explicit CrewAccess(const QString& code);

    // Checks a request and counts a wrong code against its address.
    Verdict check(const QHostAddress& peer, const QString& queryCode, const QByteArray& cookies);
    // Checks again without counting: the same request seen a second time.
    bool accepts(const QString& queryCode, const QByteArray& cookies) const;

    // The cookie that lets later requests of a phone go without the code in their address.
    QByteArray cookie() const;

private:
    QString offeredCode(const QString& queryCode, const QByteArray& cookies) const;
    bool isBlocked(const QString& peer, qint64 now);
    void countWrong(const QString& peer, qint64 now);

    QString expected;
    QElapsedTimer clock;
    QHash<QString, QList<qint64>> wrongTimes;
    QHash<QString, qint64> blockedUntil;
};
