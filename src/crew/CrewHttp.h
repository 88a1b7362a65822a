#pragma once

#include "crew/CrewAccess.h"

#include <QObject>

class QHttpServer;
class QHttpServerRequest;
class QTcpServer;
class QWebSocket;

// The crew view's HTTP: the page and its files, each behind the code, and the door to the live
// socket. Qt's HTTP server is a preview in Qt 6.4, so this is the one place that uses it; it
// answers on a listening socket of ours, which keeps the limits and the errors of listening.
//
// Qt 6.4 turns a request into a live socket only on a route that writes no answer: /live
// writes nothing when the code is good, and 403 otherwise. A socket Qt hands over all the same
// is checked again and closed when its code is wrong.
class CrewHttp : public QObject {
    Q_OBJECT
public:
    explicit CrewHttp(CrewAccess& access, QObject* parent = nullptr);

    // Answers on a socket that listens already; Qt's server takes it as its child.
    void bind(QTcpServer* listener);

signals:
    // A phone with the right code opened the live socket; the receiver owns it from now on.
    void liveSocketOpened(QWebSocket* socket);

private:
    // Checks the request's code and counts a wrong one.
    CrewAccess::Verdict verdictOn(const QHttpServerRequest& request);
    void addFileRoute(const char* path, const char* resource, const char* mimeType);
    void addLiveRoute();
    void takeLiveSockets();

    CrewAccess& access;
    // A child of this; the listening socket and its connections are in turn children of it.
    QHttpServer* http;
};
