#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

class CrewServer;
class WeatherStation;

// The crew view as the program runs it: its settings and the server they ask for. It starts
// with the program when the settings say so, and the Crew View dialog turns it on and off,
// moves it and gives it a new code, each at once and kept for the next race day.
class CrewView : public QObject {
    Q_OBJECT
public:
    enum class State {
        Off,
        Serving,
        Failed,            // on, but the address or the port cannot be had
        LeftToMainInstance // a display instance beside a running main instance
    };

    // `mainInstanceElsewhere` is asked each time the server would start; while it says yes,
    // this process leaves the crew view to the main instance and says nothing of the port.
    explicit CrewView(WeatherStation& station, std::function<bool()> mainInstanceElsewhere = {},
                      QObject* parent = nullptr);
    ~CrewView() override;

    // Serves when the settings say on.
    void start();
    void setOn(bool on);
    void moveTo(const QString& address, quint16 port);
    // A new code; phones that came with the old one are let go.
    void makeNewCode();

    State state() const { return currentState; }
    // What the dialog says of the state: the problem while one stops the server.
    QString stateText() const;
    QString address() const;
    quint16 port() const;
    QString code() const;
    // What a phone opens: the page with the code, on the host a phone can reach.
    QString pageAddress() const;
    // The listening server while serving, else none.
    const CrewServer* server() const { return listening.get(); }

signals:
    void changed();
    // A line for the status bar: "Crew view: port 8080 is in use".
    void problem(const QString& text);

private:
    void restart();

    WeatherStation& station;
    std::function<bool()> mainInstanceElsewhere;
    std::unique_ptr<CrewServer> listening;
    State currentState = State::Off;
    QString failure;
};
