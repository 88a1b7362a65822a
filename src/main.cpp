#include "core/ScriptedDialogs.h"
#include "ui/app/Startup.h"
#include "ui/shell/DemoRecorder.h"
#include "ui/shell/WidgetDialogs.h"

#include <QApplication>
#include <QTextStream>

#include <memory>

namespace {

// A person answers the boxes, unless the process is run by a test: then the answers come
// from TARNWICK_SCRIPTED_DIALOGS and every box is printed.
std::unique_ptr<Dialogs::Presenter> dialogPresenter(QTextStream& out) {
    if (!qEnvironmentVariableIsSet("TARNWICK_SCRIPTED_DIALOGS"))
        return std::make_unique<WidgetDialogs>();
    auto scripted = std::make_unique<ScriptedDialogs>();
    scripted->queueAnswers(qEnvironmentVariable("TARNWICK_SCRIPTED_DIALOGS"));
    scripted->echoTo(&out);
    return scripted;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QTextStream out(stdout);
    const auto dialogs = dialogPresenter(out);
    Startup startup(QCoreApplication::arguments(), QCoreApplication::applicationDirPath());
    if (const auto exitCode = startup.run())
        return *exitCode;
    DemoRecorder::install(*startup.mainWindow());
    return app.exec();
}
