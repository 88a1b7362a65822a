#pragma once

#include "core/Dialogs.h"

#include <QObject>

class QByteArray;
class MainWindow;

// The pager of the main window: the periodic page when the weather station says it is due,
// and the three tools the user sends with by hand, the forced page (btnSendPage), the custom
// message (btnSend) and the test message (btnTest). Everything goes out on the instrument's serial
// port only, which relays "f" lines to the team's pager; a page is composed at the moment it
// is sent, from what the logs and the weather hold then.
class PagerDispatch : public QObject {
    Q_OBJECT
public:
    explicit PagerDispatch(MainWindow& main);

private:
    void sendPage();
    void forcePage();
    void sendCustomMessage();
    void sendTestMessage();
    void sendByHand(const QByteArray& command, const Dialogs::Message& portClosed);

    MainWindow& main;
};
