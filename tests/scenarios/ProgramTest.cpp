#include "tests/scenarios/ProgramTest.h"

#include "tests/engine/SampleMedia.h"
#include "tests/support/TestHost.h"
#include "workbench/app/files/Document.h"
#include "workbench/app/files/MediaImporter.h"
#include "workbench/app/start/Application.h"
#include "workbench/app/timeline/TimelinePane.h"
#include "workbench/app/timeline/TimelineStrip.h"
#include "workbench/app/window/MainWindow.h"
#include "workbench/app/window/MessageBar.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDockWidget>
#include <QMessageBox>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace workbench
{

namespace
{

namespace fs = std::filesystem;

const QRect kPlace(40, 50, 770, 640);

// What the user does in the program that was started.
constexpr const char* kArrange = "arrange";
constexpr const char* kLook = "look";

void printWhatIsSeen(MainWindow& window)
{
    const QRect place = window.geometry();
    auto* const effects = window.findChild<QDockWidget*>(QStringLiteral("effectList"));
    std::printf("place %d %d %d %d\n", place.x(), place.y(), place.width(), place.height());
    std::printf("effects %s\n", window.dockWidgetArea(effects) == Qt::RightDockWidgetArea ? "right" : "elsewhere");
    std::printf("title %s\n", window.windowTitle().toUtf8().constData());
    std::printf("modified %d\n", window.isWindowModified());
    std::printf("description %s\n", window.timeline().strip().accessibleDescription().toUtf8().constData());
    std::printf("%s\n", window.action(Command::Undo).text().toUtf8().constData());
    std::printf("message %s\n", window.messages().text().toUtf8().constData());
    std::fflush(stdout);
}

/** Waits for the window to be at rest, arranges it if that is the role, looks at it, and closes it. */
void actAs(const std::string& role)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, [role, calm = 0]() mutable {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            for (QAbstractButton* const button : box->buttons())
                if (button->text() == QStringLiteral("Recover") || button == box->button(QMessageBox::Discard))
                    return button->click();
        MainWindow* window = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            window = window ? window : dynamic_cast<MainWindow*>(widget);
        calm = window && window->isVisible() && window->isSettled() ? calm + 1 : 0;
        if (calm != 10)
            return;
        if (role == kArrange) {
            window->addDockWidget(Qt::RightDockWidgetArea,
                                  window->findChild<QDockWidget*>(QStringLiteral("effectList")));
            window->setGeometry(kPlace);
        }
        QTimer::singleShot(100, window, [window] {
            printWhatIsSeen(*window);
            window->close();
        });
    });
    timer->start(20);
}

std::string theRole;

} // namespace

int runAsProgram(int argc, char** argv)
{
    theRole = argv[2];
    qAddPreRoutine([] {
        QMetaObject::invokeMethod(
            qApp, [] { actAs(theRole); }, Qt::QueuedConnection);
    });
    CommandLine commandLine;
    commandLine.files.assign(argv + 3, argv + argc);
    return runApplication(commandLine, argc, argv);
}

namespace
{

/** The program, several times, as a user of its own runs it. */
class Program : public testing::Test
{
protected:
    /** Runs it until it ends, and yields what its user has seen. */
    QString run(const char* role, const QStringList& files = {})
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* folder : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            environment.insert(QLatin1String(folder), home.path() + QLatin1Char('/') + QLatin1String(folder));
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(),
                      QStringList{QLatin1String(kAsProgram), QLatin1String(role)} + files);
        EXPECT_TRUE(process.waitForFinished(20000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        // What a system or a build cannot fence off is told in the first run alone.
        static const QRegularExpression gaps(QStringLiteral("Effects and media are not fully fenced off[^\n]*"));
        return QString::fromUtf8(process.readAllStandardOutput()).remove(gaps);
    }

    /** A project with the sample clip, in a file. */
    QString project()
    {
        const oribund::test::TestHost host;
        Workspace workspace(testEngine());
        Document document(workspace, fs::path(home.path().toStdString()) / "elsewhere");
        EXPECT_TRUE(MediaImporter::importNow(workspace, {SampleMedia::clip()}));
        const QString file = home.path() + QStringLiteral("/My film.mlt");
        EXPECT_TRUE(document.save(file.toStdString()));
        return file;
    }

    QTemporaryDir home;
};

TEST_F(Program, RemembersItsWindowAndProjectFromOneRunToTheNext)
{
    const QString file = project();
    const QString first = run(kArrange, {file});
    EXPECT_TRUE(first.contains(QStringLiteral("title My film"))) << first.toStdString();
    EXPECT_TRUE(first.contains(QStringLiteral("modified 0")));
    const QString second = run(kLook);
    EXPECT_EQ(second.toStdString(), first.toStdString());
    EXPECT_TRUE(second.contains(QStringLiteral("place 40 50 770 640\neffects right\n"))) << second.toStdString();

    // The project is gone: that is said, once, and the place of the window is still known.
    fs::remove(file.toStdString());
    const QString third = run(kLook);
    EXPECT_TRUE(third.contains(QStringLiteral("title Untitled"))) << third.toStdString();
    EXPECT_TRUE(third.contains(QStringLiteral("place 40 50 770 640\neffects right\n")));
    EXPECT_TRUE(third.contains(QStringLiteral("\u201cMy film.mlt\u201d"))) << third.toStdString();
    EXPECT_TRUE(run(kLook).endsWith(QStringLiteral("message \n")));
}

TEST_F(Program, WhatIsRecoveredIsNotOpenedTwice)
{
    const QString file = project();
    const std::string folder = (home.path() + QStringLiteral("/XDG_STATE_HOME/oribund/recovery")).toStdString();
    // As if the program had been killed while it worked on that.
    const std::string session = folder + "/1-0.session";
    fs::create_directories(folder);
    fs::copy_file(file.toStdString(), folder + "/1-0.mlt");
    std::ofstream(session) << "{}";
    const QString seen = run(kLook, {QString::fromStdString(SampleMedia::clip()), file});
    EXPECT_TRUE(seen.contains(QStringLiteral("title Untitled"))) << seen.toStdString();
    EXPECT_TRUE(seen.contains(QStringLiteral("modified 1")));
    EXPECT_TRUE(seen.contains(QStringLiteral("&Undo\n"))) << "nothing was added: " << seen.toStdString();
    EXPECT_TRUE(seen.contains(QStringLiteral("was not opened, because"))) << seen.toStdString();
}

} // namespace
} // namespace workbench
