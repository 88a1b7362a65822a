#include "crew/CrewView.h"

#include "crew/CrewAddresses.h"
#include "crew/CrewServer.h"
#include "crew/CrewSettings.h"

CrewView::CrewView(WeatherStation& station, std::function<bool()> mainInstanceElsewhere,
                   QObject* parent)
    : QObject(parent), station(station), mainInstanceElsewhere(std::move(mainInstanceElsewhere)) {}

CrewView::~CrewView() = default;

void CrewView::start() {
    restart();
}

void CrewView::setOn(bool on) {
    CrewSettings::setEnabled(on);
    restart();
}

void CrewView::moveTo(const QString& address, quint16 port) {
    CrewSettings::setAddress(address);
    CrewSettings::setPort(port);
    restart();
}

void CrewView::makeNewCode() {
    CrewSettings::newCode();
    restart();
}

// A change starts a new server rather than changing the running one, so the phones of the
// old address or code are let go with it.
void CrewView::restart() {
    listening.reset();
    failure.clear();
    if (!CrewSettings::enabled()) {
        currentState = State::Off;
    } else if (mainInstanceElsewhere && mainInstanceElsewhere()) {
        currentState = State::LeftToMainInstance;
    } else {
        auto server = std::make_unique<CrewServer>(station, CrewSettings::code());
        connect(server.get(), &CrewServer::problem, this,
                [this](const QString& text) { failure = text; });
        if (server->listen(QHostAddress(CrewSettings::address()), CrewSettings::port())) {
            listening = std::move(server);
            currentState = State::Serving;
        } else {
            currentState = State::Failed;
            emit problem(failure);
        }
    }
    emit changed();
}

QString CrewView::stateText() const {
    switch (currentState) {
    case State::Off:
        return QStringLiteral("The crew view is off.");
    case State::Serving:
        return QStringLiteral("The crew view is on: phones on this network open the address "
                              "below or scan its code.");
    case State::Failed:
        return failure;
    case State::LeftToMainInstance:
        return QStringLiteral("The main instance of Tarnwick serves the crew view.");
    }
    return {};
}

QString CrewView::address() const {
    return CrewSettings::address();
}

quint16 CrewView::port() const {
    return CrewSettings::port();
}

QString CrewView::code() const {
    return CrewSettings::code();
}

QString CrewView::pageAddress() const {
    return QStringLiteral("http://%1:%2/?code=%3")
        .arg(CrewAddresses::pageHost(address()))
        .arg(port())
        .arg(code());
}
