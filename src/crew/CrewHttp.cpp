#include "crew/CrewHttp.h"

#include "crew/CrewAccess.h"

#include <QFile>
#include <QHttpServer>
#include <QNetworkRequest>
#include <QUrlQuery>
#include <QWebSocket>
#include <memory>

namespace {

using Status = QHttpServerResponder::StatusCode;

QByteArray notePage(const char* title, const char* text) {
    return QByteArrayLiteral("<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\">"
                             "<title>") +
           title + QByteArrayLiteral("</title></head><body><h1>") + title +
           QByteArrayLiteral("</h1><p>") + text + QByteArrayLiteral("</p></body></html>");
}

const QByteArray ForbiddenPage =
    notePage("Code needed", "This crew view needs the six-digit code shown in Tarnwick.");
const QByteArray TooManyPage =
    notePage("Too many wrong codes", "Wait a minute, then try again with the right code.");

QString queryCode(const QUrl& url) {
    return QUrlQuery(url).queryItemValue(QStringLiteral("code"));
}

// The short page that tells a phone why it may not look.
struct Refusal {
    const QByteArray& page;
    Status status;
};

Refusal refusalFor(CrewAccess::Verdict verdict) {
    if (verdict == CrewAccess::Verdict::TooMany)
        return {TooManyPage, Status::TooManyRequests};
    return {ForbiddenPage, Status::Forbidden};
}

QByteArray resourceBytes(const char* resource) {
    QFile file(QString::fromLatin1(resource));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

CrewHttp::CrewHttp(CrewAccess& access, QObject* parent)
    : QObject(parent), access(access), http(new QHttpServer(this)) {
    // The page's files live in the core library, which is static: they join the program's
    // resources only when asked for by name.
    Q_INIT_RESOURCE(crew);
    addFileRoute("/", ":/crew/index.html", "text/html; charset=utf-8");
    addFileRoute("/crew.js", ":/crew/crew.js", "text/javascript; charset=utf-8");
    addFileRoute("/crew.css", ":/crew/crew.css", "text/css; charset=utf-8");
    addLiveRoute();
    connect(http, &QHttpServer::newWebSocketConnection, this, &CrewHttp::takeLiveSockets);
}

void CrewHttp::bind(QTcpServer* listener) {
    http->bind(listener);
}

CrewAccess::Verdict CrewHttp::verdictOn(const QHttpServerRequest& request) {
    return access.check(request.remoteAddress(), queryCode(request.url()), request.value("Cookie"));
}

// A good code in the address sets the cookie, so the page's own requests need no code.
void CrewHttp::addFileRoute(const char* path, const char* resource, const char* mimeType) {
    const auto serve = [this, resource, mimeType](const QHttpServerRequest& request) {
        const CrewAccess::Verdict verdict = verdictOn(request);
        if (verdict != CrewAccess::Verdict::Allowed) {
            const Refusal refusal = refusalFor(verdict);
            return QHttpServerResponse("text/html", refusal.page, refusal.status);
        }
        QHttpServerResponse response(QByteArray(mimeType), resourceBytes(resource));
        if (!queryCode(request.url()).isEmpty())
            response.addHeader(QByteArrayLiteral("Set-Cookie"), access.cookie());
        return response;
    };
    http->route(QString::fromLatin1(path), QHttpServerRequest::Method::Get, serve);
}

// Writing nothing is what lets Qt turn the request into a live socket.
void CrewHttp::addLiveRoute() {
    const auto open = [this](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
        const CrewAccess::Verdict verdict = verdictOn(request);
        if (verdict == CrewAccess::Verdict::Allowed)
            return;
        const Refusal refusal = refusalFor(verdict);
        responder.write(refusal.page, "text/html", refusal.status);
    };
    http->route(QStringLiteral("/live"), QHttpServerRequest::Method::Get, open);
}

void CrewHttp::takeLiveSockets() {
    while (http->hasPendingWebSocketConnections()) {
        std::unique_ptr<QWebSocket> socket = http->nextPendingWebSocketConnection();
        const QByteArray cookies = socket->request().rawHeader("Cookie");
        if (!access.accepts(queryCode(socket->requestUrl()), cookies)) {
            QWebSocket* refused = socket.release();
            connect(refused, &QWebSocket::disconnected, refused, &QObject::deleteLater);
            refused->close(QWebSocketProtocol::CloseCodePolicyViolated);
            continue;
        }
        emit liveSocketOpened(socket.release());
    }
}
