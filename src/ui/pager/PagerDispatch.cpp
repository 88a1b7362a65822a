#include "ui/pager/PagerDispatch.h"

#include "core/Dialogs.h"
#include "feed/InstrumentConnection.h"
#include "feed/WeatherStation.h"
#include "pager/PagerComposer.h"
#include "pager/PagerLogs.h"
#include "ui/shell/MainWindow.h"

#include <QLineEdit>
#include <QTime>

PagerDispatch::PagerDispatch(MainWindow& main) : QObject(&main), main(main) {
    connect(&main.weatherStation(), &WeatherStation::pageDue, this, &PagerDispatch::sendPage);
    main.setCommand(QStringLiteral("btnSendPage"), [this] { forcePage(); });
    main.setCommand(QStringLiteral("btnSend"), [this] { sendCustomMessage(); });
    main.setCommand(QStringLiteral("btnTest"), [this] { sendTestMessage(); });
}

// A closed port drops the page without a word; the next comes a period later. A stale feed
// still pages, its weather marked as old.
void PagerDispatch::sendPage() {
    const QString page = PagerLogs::pageText(main.weatherStation(), QTime::currentTime());
    PortLink& port = main.instrument().serialPort();
    if (port.isOpen())
        port.write(PagerComposer::pageCommand(page));
}

// Sends nothing itself: the next tick, a few seconds away at most, is due at once.
void PagerDispatch::forcePage() {
    main.weatherStation().forcePage();
}

void PagerDispatch::sendCustomMessage() {
    const auto* field = main.findChild<QLineEdit*>(QStringLiteral("txtPageMessage"));
    sendByHand(PagerComposer::customCommand(field ? field->text() : QString()),
               PagerComposer::customPortClosedMessage());
}

void PagerDispatch::sendTestMessage() {
    sendByHand(PagerComposer::testCommand(), PagerComposer::testPortClosedMessage());
}

// Only what the user sends by hand tells that the port is closed; the answer changes nothing.
void PagerDispatch::sendByHand(const QByteArray& command, const Dialogs::Message& portClosed) {
    PortLink& port = main.instrument().serialPort();
    if (port.isOpen())
        port.write(command);
    else
        Dialogs::show(portClosed);
}
