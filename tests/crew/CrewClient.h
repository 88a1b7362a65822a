#pragma once

#include <QByteArray>
#include <QString>

// A phone's browser as the tests play it: one GET on 127.0.0.1 and what came back.
struct CrewReply {
    int status = 0;
    QByteArray body;
    QByteArray setCookie;
};

CrewReply crewGet(quint16 port, const QString& pathAndQuery, const QByteArray& cookie = {});
