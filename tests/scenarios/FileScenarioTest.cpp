#include "tests/scenarios/Scenario.h"
#include "workbench/app/files/ExportBar.h"
#include "workbench/app/files/MediaFinder.h"
#include "workbench/store/ProjectFile.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <gmock/gmock.h>

#include <fstream>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

namespace workbench
{
namespace
{

using testing::HasSubstr;

/** A project, its file and what else happens to it. */
class FileScenario : public Scenario
{
protected:
    FileScenario() { openClip(); }

    /** Presses the button that begins so in the next question. */
    static void pressButton(const char* words)
    {
        QTimer::singleShot(20, [words] {
            for (QAbstractButton* button : QApplication::activeModalWidget()->findChildren<QAbstractButton*>())
                if (button->text().startsWith(QLatin1String(words)))
                    return button->click();
            ADD_FAILURE() << "there is no button " << words;
            QApplication::activeModalWidget()->close();
        });
    }

    std::size_t copies() const
    {
        std::size_t count = 0;
        for (const auto& one : fs::directory_iterator(recovery()))
            count += one.path().extension() == ".mlt";
        return count;
    }

    fs::path recovery() const { return folder_ / "recovery"; }

    /** What a crash leaves of the edit as it is now; the next run begins with a new one. */
    void crash(const fs::path& project)
    {
        const std::string copy = projectXml(workspace_->edit(), {}, {});
        document_->startNew();
        const pid_t crashing = fork();
        if (crashing == 0) {
            Autosave session(recovery());
            session.setProject(project);
            session.store(copy);
            session.flush();
            _exit(0); // without the orderly end
        }
        waitpid(crashing, nullptr, 0);
    }

    bool recover()
    {
        pressButton("Recover");
        const bool done = window_->files().offerRecovery(recovery());
        settle();
        return done;
    }

    const fs::path film_ = folder_ / "film.mlt";
};

TEST_F(FileScenario, WhatACrashHasLeftIsSafeUntilItIsSavedOrGivenUpForGood)
{
    const EditData before = workspace_->edit().snapshot();
    crash({});
    ASSERT_TRUE(recover());
    EXPECT_EQ(workspace_->edit().snapshot().tracks, before.tracks);
    EXPECT_TRUE(document_->isModified());
    EXPECT_TRUE(document_->path().empty());

    // To be given up for a project that then cannot be opened is not to be lost.
    std::ofstream(folder_ / "broken.mlt") << "<mlt";
    pressButton("Discard");
    window_->files().open({(folder_ / "broken.mlt").string()});
    EXPECT_EQ(copies(), 1u);
    EXPECT_TRUE(document_->isModified());
    pressButton("Cancel");
    EXPECT_FALSE(window_->close()) << "it asks again";

    ASSERT_TRUE(document_->save(film_.string()));
    EXPECT_FALSE(document_->isModified());
    EXPECT_EQ(copies(), 0u);
    ASSERT_TRUE(split(30));
    crash(film_);
    ASSERT_TRUE(recover());
    EXPECT_EQ(document_->path(), film_);
    pressButton("Discard");
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(copies(), 0u) << "the program ends without it";
}

TEST_F(FileScenario, WhatCannotBeReadIsNotRecoveredAndStays)
{
    crash({});
    for (const auto& one : fs::directory_iterator(recovery()))
        if (one.path().extension() == ".mlt")
            std::ofstream(one.path()) << "<mlt";
    EXPECT_FALSE(recover());
    document_->startNew();
    EXPECT_EQ(copies(), 1u);
}

TEST_F(FileScenario, AProjectThatIsOpenElsewhereIsOpenedAsACopy)
{
    ASSERT_TRUE(document_->save(film_.string()));
    Workspace otherSpace(workspace_->engine());
    Document other(otherSpace, recovery());
    EXPECT_TRUE(other.open(film_.string()));
    EXPECT_THAT(host_.shown.back(), HasSubstr("open in another window"));
    EXPECT_EQ(other.path(), "");
    EXPECT_EQ(other.name(), "film (copy)");
    EXPECT_FALSE(other.save(film_.string()));
    EXPECT_TRUE(other.save((folder_ / "copy.mlt").string()));
    EXPECT_TRUE(document_->save(film_.string())) << "who had it still has it";
    document_->startNew();
    EXPECT_TRUE(other.save(film_.string()));
    EXPECT_FALSE(document_->save(film_.string()));
}

TEST_F(FileScenario, SavingOverAFileThatChangedAsks)
{
    ASSERT_TRUE(document_->save(film_.string()));
    ASSERT_TRUE(split(30));
    ASSERT_TRUE(window_->files().save()) << "nothing else has touched it";
    std::ofstream(film_, std::ios::app) << "<!-- by hand -->";
    ASSERT_TRUE(split(10));
    pressButton("Cancel");
    EXPECT_FALSE(window_->files().save());
    EXPECT_EQ(segmentsIn(film_), 2u);
    pressButton("Replace");
    EXPECT_TRUE(window_->files().save());
    EXPECT_EQ(segmentsIn(film_), 3u);
    EXPECT_TRUE(window_->files().save()) << "and then it is ours again";

    // The same after a crash, when somebody has gone on with the file.
    crash(film_);
    std::ofstream(film_, std::ios::app) << "<!-- by hand -->";
    ASSERT_TRUE(recover());
    pressButton("Cancel");
    EXPECT_FALSE(window_->files().save());

    // A project is never saved over what it is made of.
    fs::copy_file(SampleMedia::clip(), folder_ / "clip.mp4");
    window_->files().open({(folder_ / "clip.mp4").string()});
    settle();
    fs::create_symlink("clip.mp4", folder_ / "clip.mlt");
    EXPECT_FALSE(document_->save((folder_ / "clip.mlt").string()));
    EXPECT_EQ(fs::file_size(folder_ / "clip.mp4"), fs::file_size(SampleMedia::clip()));
}

TEST_F(FileScenario, MediaThatMovedAreFoundAgainTogetherAsOneStep)
{
    const fs::path old = folder_ / "old";
    const fs::path now = folder_ / "now/deeper";
    // One name is no UTF-8.
    const std::string names[] = {"one.mp4", "two \xff.mp4", "short.mp4"};
    fs::create_directories(old);
    fs::create_directories(now.parent_path());
    for (const std::string& name : names)
        fs::copy_file(SampleMedia::clip(), old / name);
    window_->files().open({old / names[0], old / names[1], old / names[2]});
    settle();
    ASSERT_EQ(segments(), 4u);
    ASSERT_TRUE(document_->save(film_.string()));
    fs::rename(old, now);
    fs::copy_file(SampleMedia::make("moment.mp4", "-f lavfi -i testsrc=d=0.2 -t 0.2"), now / names[2],
                  fs::copy_options::overwrite_existing);
    ASSERT_TRUE(document_->open(film_.string()));
    EXPECT_THAT(host_.shown.back(), HasSubstr("one.mp4 is not there, and 2 more are not"));
    const EditData lost = workspace_->edit().snapshot();

    MediaFinder finder(*workspace_);
    ASSERT_EQ(finder.missing().size(), 3u);
    EXPECT_EQ(finder.missing()[1].info.path, old / names[1]);
    bool done = false;
    finder.relink(finder.missing().front(), now / names[0], [&] { done = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return done; }, 20000));
    ASSERT_EQ(finder.missing().size(), 1u) << "what is too short is not taken for it";
    EXPECT_EQ(finder.missing().front().info.path, old / names[2]);
    const EditData found = workspace_->edit().snapshot();
    EXPECT_EQ(found.media[1].info.path, now / names[0]);
    EXPECT_EQ(found.media[2].info.path, now / names[1]);
    EXPECT_EQ(found.tracks, lost.tracks);
    press(Command::Undo);
    EXPECT_EQ(workspace_->edit().snapshot(), lost);
    press(Command::Redo);
    EXPECT_EQ(workspace_->edit().snapshot(), found);
    ASSERT_TRUE(document_->save(film_.string()));
    ASSERT_TRUE(document_->open(film_.string()));
    EXPECT_EQ(workspace_->edit().snapshot(), found);
}

TEST_F(FileScenario, ClosingDuringAnExportWaitsCancelsOrStays)
{
    ASSERT_TRUE(document_->save(film_.string()));
    const auto exportTo = [&](const char* name) {
        ExportRequest request;
        request.path = (folder_ / name).string();
        return window_->exportBar().start(workspace_->edit(), document_->path(), request);
    };
    ASSERT_TRUE(exportTo("one.mp4"));
    EXPECT_FALSE(exportTo("two.mp4")) << "one at a time";
    pressButton("Stay");
    EXPECT_FALSE(window_->close());
    pressButton("Wait");
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window_->isVisible(); }, 60000));
    EXPECT_GT(fs::file_size(folder_ / "one.mp4"), 0u);

    show();
    ASSERT_TRUE(exportTo("three.mp4"));
    pressButton("Cancel");
    EXPECT_TRUE(window_->close());
    window_.reset();
    std::set<std::string> left;
    for (const auto& file : fs::directory_iterator(folder_))
        left.insert(file.path().filename().string());
    EXPECT_EQ(left, (std::set<std::string>{"film.mlt", "one.mp4", "recovery"})) << "nothing is left of it";
}

} // namespace
} // namespace workbench
