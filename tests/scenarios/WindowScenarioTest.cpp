#include "tests/scenarios/Scenario.h"
#include "workbench/model/Ids.h"

#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"

#include <QApplication>
#include <QDockWidget>
#include <QDropEvent>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QUrl>

namespace workbench
{
namespace
{

/** The panels of the effects on the clip, brightness first. */
class EffectStackScenario : public Scenario
{
protected:
    EffectStackScenario()
    {
        openClip();
        segment = workspace_->targetSegment()->id();
        brightness = workspace_->editor().addEffect(segment, "brightness").object;
        boxblur = workspace_->editor().addEffect(segment, "boxblur").object;
        EXPECT_TRUE(brightness != kNoObject && boxblur != kNoObject);
        settle();
    }

    std::vector<ObjectId> order() const
    {
        std::vector<ObjectId> ids;
        for (const auto& effect : workspace_->edit().timeline().findSegment(segment)->effects)
            ids.push_back(objectOf(effect->id()));
        return ids;
    }

    /** The buttons of that kind in the panels, from the top down. */
    std::vector<oribund::Button*> buttons(const wchar_t* verb)
    {
        std::vector<oribund::Button*> found;
        for (const ObjectId id : order()) {
            const oribund::WString name = workspace_->edit().timeline().findEffect(id)->getName();
            found.push_back(findInPanel<oribund::Button>(oribund::WString(verb) + L" " + name));
        }
        return found;
    }

    void click(const oribund::Glob* glob)
    {
        ASSERT_NE(glob, nullptr);
        hand_.click(*glob);
        settle();
    }

    void pressSpaceOn(oribund::Glob* glob)
    {
        ASSERT_NE(glob, nullptr);
        EXPECT_TRUE(glob->takeFocus());
        Hand::key(Qt::Key_Space);
        settle();
    }

    /** That exactly one step was made since the last call, or the beginning. */
    void expectOneStep()
    {
        EXPECT_EQ(workspace_->edit().undoStack().position(), position_ + 1);
        position_ = workspace_->edit().undoStack().position();
    }

    void undo()
    {
        press(Command::Undo);
        position_ = workspace_->edit().undoStack().position();
    }

    ObjectId segment = kNoObject;
    ObjectId brightness = kNoObject;
    ObjectId boxblur = kNoObject;

private:
    std::size_t position_ = 3; // the clip and two effects
};

TEST_F(EffectStackScenario, ReorderingIsAStepAndThePanelsFollowIt)
{
    using oribund::MinimizableGroup;
    const auto panel = [&](int index) -> MinimizableGroup& {
        return dynamic_cast<MinimizableGroup&>(*buttons(L"Remove")[index]->parent());
    };
    const auto areInOrder = [&] { return panel(0).toCanvas({}).y < panel(1).toCanvas({}).y; };
    EXPECT_TRUE(areInOrder());
    EXPECT_FALSE(buttons(L"Apply earlier:")[0]->isEnabled());
    EXPECT_FALSE(buttons(L"Apply later:")[1]->isEnabled());

    click(buttons(L"Apply later:")[0]);
    EXPECT_EQ(order(), (std::vector<ObjectId>{boxblur, brightness}));
    expectOneStep();
    EXPECT_TRUE(areInOrder()) << "the panels stand in the new order";
    EXPECT_FALSE(buttons(L"Apply earlier:")[0]->isEnabled());

    EXPECT_TRUE(buttons(L"Apply earlier:")[1]->hasFocus()) << "which is what can still be pressed of this effect";
    pressSpaceOn(buttons(L"Apply earlier:")[1]);
    EXPECT_TRUE(buttons(L"Apply later:")[0]->hasFocus());
    EXPECT_EQ(order(), (std::vector<ObjectId>{brightness, boxblur}));
    expectOneStep();
    EXPECT_FALSE(workspace_->vob().isPlaying()) << "Space belongs to the button";
    undo();
    EXPECT_EQ(order(), (std::vector<ObjectId>{boxblur, brightness}));
    EXPECT_TRUE(areInOrder());

    // An effect stays folded wherever it goes, and when it was away.
    panel(0).userToggleSizeState();
    click(buttons(L"Apply later:")[0]);
    EXPECT_EQ(panel(1).getSizeState(), MinimizableGroup::eSizeMinimised);
    click(buttons(L"Remove")[1]);
    undo();
    EXPECT_EQ(panel(1).getSizeState(), MinimizableGroup::eSizeMinimised);
    EXPECT_NE(panel(0).getSizeState(), MinimizableGroup::eSizeMinimised);
}

TEST_F(EffectStackScenario, RemovingAndSwitchingAreStepsAndUndoBringsThePanelsBack)
{
    const auto isOn = [&] { return workspace_->edit().timeline().findEffect(brightness)->isEnabled(); };
    const auto led = [&] { return findInPanel<oribund::Checkbox>(); }; // of the first effect
    click(led());
    EXPECT_FALSE(isOn());
    expectOneStep();
    pressSpaceOn(led());
    EXPECT_TRUE(isOn());
    expectOneStep();
    undo();
    EXPECT_FALSE(led()->isChecked());

    click(buttons(L"Remove")[0]);
    EXPECT_EQ(order(), std::vector<ObjectId>{boxblur});
    expectOneStep();
    pressSpaceOn(buttons(L"Remove")[0]);
    EXPECT_TRUE(order().empty());
    expectOneStep();
    EXPECT_FALSE(window_->effectsPanel().surface().isVisible()) << "a hint takes the place";
    undo();
    undo();
    EXPECT_EQ(order(), (std::vector<ObjectId>{brightness, boxblur}));
    EXPECT_TRUE(window_->effectsPanel().surface().isVisible());
    EXPECT_FALSE(led()->isChecked()) << "as it was when it was removed";
}

/** What the window asks and remembers. */
class WindowScenario : public Scenario
{
protected:
    ~WindowScenario() override { asking_.stop(); }

    /** Presses that button in each question that comes from now on; counts them. */
    void answer(QMessageBox::StandardButton button)
    {
        asked = 0;
        asking_.disconnect();
        QObject::connect(&asking_, &QTimer::timeout, [this, button] {
            QWidget* const modal = QApplication::activeModalWidget();
            if (auto* const box = qobject_cast<QMessageBox*>(modal)) {
                ++asked;
                box->button(button)->click();
            } else if (auto* const files = qobject_cast<QFileDialog*>(modal)) {
                ++asked;
                if (typed.isEmpty())
                    return files->reject();
                files->findChild<QLineEdit*>()->setText(std::exchange(typed, QString()));
                // Not from here: the dialog may have a question of its own.
                QMetaObject::invokeMethod(files, "accept", Qt::QueuedConnection);
            }
        });
        asking_.start(20);
    }

    /** Closes the window and opens a new one in its place. */
    void reopenWindow()
    {
        ASSERT_TRUE(window_->close());
        window_ = std::make_unique<MainWindow>(*workspace_, *document_);
        window_->restorePlace();
        show();
    }

    QDockWidget& dock(const char* name) { return *window_->findChild<QDockWidget*>(QLatin1String(name)); }

    int asked = 0;
    QString typed; ///< into the next file dialog; empty cancels it

private:
    QTimer asking_;
};

TEST_F(WindowScenario, ANewWindowIsUsableWhateverIsRememberedOfTheLast)
{
    window_->resizeDocks({&dock("timeline")}, {190}, Qt::Vertical);
    QTest::qWait(50);
    const int height = dock("timeline").height();
    reopenWindow();
    EXPECT_NEAR(dock("timeline").height(), height, 2);
    window_->resizeDocks({&dock("effectPanels")}, {60}, Qt::Horizontal);
    QTest::qWait(50);
    EXPECT_GE(window_->effectsPanel().width(), 240) << "its rows can be used";

    // What was written by something else must not keep the window from coming up.
    for (auto& [key, value] : host_.memoryPreferences.values)
        if (key.find("window") != std::string::npos)
            value = oribund::String("????");
    window_.reset();
    window_ = std::make_unique<MainWindow>(*workspace_, *document_);
    window_->restorePlace();
    show();
    const QSize screen = window_->screen()->availableSize();
    EXPECT_LE(window_->height(), std::max(screen.height(), window_->minimumSizeHint().height()));
    EXPECT_EQ(window_->dockWidgetArea(&dock("timeline")), Qt::BottomDockWidgetArea);
}

TEST_F(WindowScenario, TheLastProjectIsRememberedAsSoonAsItIsOneAndForgottenWithANewOne)
{
    const auto remembered = [&] {
        return std::string(oribund::prefs().getPreference("Workbench : last project", "").c_str());
    };
    openClip();
    EXPECT_EQ(remembered(), "");
    answer(QMessageBox::Discard);
    typed = QString::fromStdString((folder_ / "film").string());
    EXPECT_TRUE(window_->files().save());
    EXPECT_EQ(remembered(), (folder_ / "film.mlt").string());
    ASSERT_TRUE(document_->save((folder_ / "other.mlt").string()));
    window_->files().open({(folder_ / "film.mlt").string()});
    EXPECT_EQ(remembered(), "") << "it may bring the program down before it is seen, at every start";
    EXPECT_TRUE(QTest::qWaitFor([&] { return remembered() == (folder_ / "film.mlt").string(); }, 20000));
    window_->files().startNew();
    reopenWindow();
    EXPECT_EQ(remembered(), "");
}

TEST_F(WindowScenario, ANameWithoutExtensionNeverWritesOverAFileUnasked)
{
    openClip();
    ASSERT_TRUE(document_->save((folder_ / "film.mlt").string()));
    document_->startNew();
    typed = QString::fromStdString((folder_ / "film").string());
    answer(QMessageBox::No);
    EXPECT_FALSE(window_->files().saveAs());
    EXPECT_GE(asked, 2);
    EXPECT_EQ(segmentsIn(folder_ / "film.mlt"), 1u) << "what was there still is";
}

TEST_F(WindowScenario, ClosingAsksOnlyForChangesAndDoesWhatIsAnswered)
{
    const fs::path file = folder_ / "film.mlt";
    answer(QMessageBox::Cancel);
    ASSERT_TRUE(window_->close());
    EXPECT_EQ(asked, 0) << "there is nothing to lose";
    show();
    openClip();
    EXPECT_FALSE(window_->close());
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(document_->isModified());

    // Save, for a project that has no file: asks for one, and stays when none is given.
    answer(QMessageBox::Save);
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(window_->isVisible());
    ASSERT_TRUE(document_->save(file.string()));
    EXPECT_FALSE(window_->isWindowModified());
    ASSERT_TRUE(split(30));
    EXPECT_TRUE(window_->isWindowModified());
    ASSERT_TRUE(window_->close());
    EXPECT_EQ(segmentsIn(file), 2u);

    // A save that fails keeps the window, and the changes.
    show();
    ASSERT_TRUE(split(10));
    const fs::path away = folder_ / "away";
    fs::rename(file, away);
    fs::create_directories(file / "in the way");
    EXPECT_FALSE(window_->close());
    EXPECT_TRUE(window_->isVisible());
    EXPECT_TRUE(document_->isModified());
    EXPECT_FALSE(host_.shown.empty()) << "and it is said why";
    fs::remove_all(file);
    fs::rename(away, file);

    answer(QMessageBox::Discard);
    EXPECT_TRUE(window_->close());
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(segmentsIn(file), 2u);
}

TEST_F(WindowScenario, WhatIsStillBeingTypedIsSavedAndAskedAbout)
{
    openClip();
    ASSERT_NE(addEffect("brightness"), nullptr);
    auto* const slider = findInPanel<oribund::Slider>();
    auto* const entry = findInPanel<oribund::NumericEntry>();
    ASSERT_TRUE(document_->save((folder_ / "film.mlt").string()));
    const double before = slider->getValue();
    entry->takeFocus();
    Hand::type("30");
    Hand::key(Qt::Key_S, Qt::ControlModifier);
    const double saved = slider->getValue();
    EXPECT_NE(saved, before);
    EXPECT_FALSE(document_->isModified());
    EXPECT_TRUE(entry->hasFocus()) << "to go on from there";

    answer(QMessageBox::Cancel);
    Hand::type("40");
    Hand::key(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(window_->isVisible());
    EXPECT_NE(slider->getValue(), saved);
    ASSERT_TRUE(document_->save((folder_ / "film.mlt").string()));
    show();
    entry->takeFocus();
    Hand::type("1/0");
    EXPECT_TRUE(window_->close()) << "what cannot be the value is nothing to lose";
    EXPECT_EQ(asked, 1);
}

TEST_F(WindowScenario, KeysCutSelectAndRemoveInTheTimeline)
{
    openClip();
    const auto key = [&](int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&window_->timeline().strip(), static_cast<Qt::Key>(code), modifiers);
    };
    const ObjectId first = workspace_->selection().get();
    for (int i = 0; i < 2; ++i)
        key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(frame(), 50);
    key(Qt::Key_B);
    EXPECT_EQ(segments(), 2u);
    EXPECT_NE(workspace_->selection().get(), first) << "what is behind the cut is selected";
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(workspace_->selection().get(), first);
    EXPECT_EQ(frame(), 0);
    key(Qt::Key_Down);
    EXPECT_EQ(frame(), 50);
    key(Qt::Key_Delete);
    EXPECT_EQ(segments(), 1u);
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(segments(), 1u);
    EXPECT_EQ(workspace_->edit().timeline().endFrame(), kSampleFrames);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(segments(), 2u);
}

TEST_F(WindowScenario, FilesDroppedOnItAreOpened)
{
    const auto drop = [&](const QMimeData& data) {
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(window_.get(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(window_.get(), &event);
        EXPECT_TRUE(event.isAccepted()) << "whoever dragged it hears that it was taken";
        QTest::qWait(20);
        settle();
        return true;
    };
    QMimeData remote;
    remote.setUrls({QUrl(QStringLiteral("https://nowhere.invalid/film.mp4"))});
    EXPECT_FALSE(drop(remote));
    QMimeData files;
    const QUrl clip = QUrl::fromLocalFile(QString::fromStdString(SampleMedia::clip()));
    files.setUrls({clip, clip});
    EXPECT_TRUE(drop(files));
    EXPECT_EQ(workspace_->edit().timeline().endFrame(), 2 * kSampleFrames);

    const fs::path project = folder_ / "film.mlt";
    ASSERT_TRUE(document_->save(project.string()));
    document_->startNew();
    QMimeData film;
    film.setUrls({QUrl::fromLocalFile(QString::fromStdString(project.string()))});
    EXPECT_TRUE(drop(film));
    EXPECT_EQ(document_->path(), project);
}

} // namespace
} // namespace workbench
