#include "workbench/app/Application.h"

#include "workbench/app/Background.h"
#include "workbench/app/MainWindow.h"
#include "workbench/app/PictureMaker.h"
#include "workbench/app/WorkbenchHost.h"
#include "workbench/app/Workspace.h"
#include "workbench/app/panel/SimplePanelBuilder.h"
#include "workbench/skin/QtConversions.h"
#include "workbench/skin/SkinApplication.h"

#include "oribund/host/services/EditorPreferences.h"

#include <cstdio>
#include <map>

namespace workbench
{

namespace
{

/** Choices that last as long as the program. */
class SessionPreferences final : public oribund::EditorPreferences
{
    std::optional<oribund::PreferenceValue> read(const oribund::String& key) const override
    {
        const auto found = values_.find(key.c_str());
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    bool write(const oribund::String& key, const oribund::PreferenceValue& value) override
    {
        values_.insert_or_assign(key.c_str(), value);
        return true;
    }

    std::map<std::string, oribund::PreferenceValue> values_;
};

} // namespace

int runApplication(const CommandLine& commandLine, int& argc, char** argv)
{
    const bool pictures = commandLine.task == CommandLine::Task::Pictures;
    if (pictures)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else if (commandLine.scale > 0.0)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(commandLine.scale));
    const SkinApplication application(argc, argv);
    SessionPreferences preferences;
    WorkbenchHost host(preferences);
    std::string problem;
    const std::shared_ptr<MltSession> session = MltSession::open(&problem);
    if (!session) {
        std::fprintf(stderr, "%s\n", problem.c_str());
        return 1;
    }
    registerSimplePanels();
    Workspace workspace(session);
    host.setPlayMachine(&workspace.vob());
    MainWindow window(workspace);
    host.setMessageDisplay([&window](const oribund::WString& text, oribund::MessageSink::Severity severity) {
        window.showMessage(toQt(text), severity);
    });
    if (!commandLine.files.empty())
        window.openFiles(commandLine.files);
    int status = 0;
    if (pictures) {
        PictureMaker maker(workspace, window, commandLine.scale > 0.0 ? commandLine.scale : 1.0);
        maker.settle();
        const std::string fault = maker.write(commandLine.picturesFolder);
        if (!fault.empty())
            std::fprintf(stderr, "%s\n", fault.c_str());
        status = fault.empty() ? 0 : 1;
    } else {
        window.show();
        status = QApplication::exec();
    }
    host.setMessageDisplay({});
    host.setPlayMachine(nullptr);
    return status;
}

} // namespace workbench
