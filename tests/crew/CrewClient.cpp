#include "CrewClient.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

CrewReply crewGet(quint16 port, const QString& pathAndQuery, const QByteArray& cookie) {
    QNetworkAccessManager manager;
    QNetworkRequest request(
        QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(port).arg(pathAndQuery)));
    if (!cookie.isEmpty())
        request.setRawHeader("Cookie", cookie);
    std::unique_ptr<QNetworkReply> reply(manager.get(request));
    QEventLoop wait;
    QObject::connect(reply.get(), &QNetworkReply::finished, &wait, &QEventLoop::quit);
    wait.exec();
    return {reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), reply->readAll(),
            reply->rawHeader("Set-Cookie")};
}
