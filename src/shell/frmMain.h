#pragma once

#include <QMainWindow>

struct AppState;
class QMdiArea;

// The main window: the multiple-document frame with the one command bar, the status bar, the
// link to the instrument and the two timers.
class frmMain : public QMainWindow {
    Q_OBJECT
public:
    explicit frmMain(AppState& state, QWidget* parent = nullptr);
    ~frmMain() override;

    // The form load, step by step in order. Called once by the start-up after construction.
    void Load();
    // Loads a race log into a new child window; on failure says so.
    void OpenFile(const QString& path);
    // Runs the command of a tool, found by the tool's name.
    void dispatch(const QString& toolName);

    QMdiArea* mdiArea() const;

protected:
    // The shutdown, step by step in order; may refuse the close.
    void closeEvent(QCloseEvent* event) override;

private:
    AppState& state;
    QMdiArea* mdi = nullptr;
};
