#pragma once

#include "core/LiveView.h"
#include "core/ViewTable.h"

#include <QWidget>

class OpenViews;

// The window of one live view of the weather. It takes readings from the time it joins the
// open views until it closes; it opens where it stood when it last closed, and closing
// forgets everything it showed.
class LiveViewWindow : public QWidget, public LiveView {
    Q_OBJECT
public:
    LiveViewWindow(ViewTable::View view, OpenViews& views, QWidget* parent = nullptr);
    ~LiveViewWindow() override;

    ViewTable::View view() const { return kind; }

    // Joins the open views: from now on the feed, a replay and "Clear Views" reach it.
    void joinViews();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void leaveViews();

    ViewTable::View kind;
    OpenViews& views;
};
