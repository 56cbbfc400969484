#include "tests/scenarios/Scenario.h"
#include "workbench/model/Ids.h"

#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/menus/SettingsButton.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/panels/EffectComponentPanel.h"

#include <QApplication>
#include <QDockWidget>
#include <QDropEvent>
#include <QFileDialog>
#include <QMenu>
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

using oribund::EffectComponentPanel;

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

    EffectComponentPanel* panel(ObjectId effect)
    {
        const auto shown = workspace_->edit().timeline().findEffect(effect);
        return shown ? findInPanel<EffectComponentPanel>(shown->getName()) : nullptr;
    }

    bool areInOrder(ObjectId upper, ObjectId lower)
    {
        return panel(upper)->toCanvas({}).y < panel(lower)->toCanvas({}).y;
    }

    /** Takes the panel by its title and pulls it up or down to the other one's far end. */
    void dragTitle(ObjectId effect, ObjectId to, bool escape = false)
    {
        const EffectComponentPanel& moved = *panel(effect);
        const oribund::XY<int> title = moved.getTitleArea().centre();
        const int way = panel(to)->toCanvas({}).y - moved.toCanvas({}).y;
        const int end = title.y + way + (way > 0 ? panel(to)->getHeight() : -title.y);
        hand_.press(moved, {title.x, title.y});
        for (int i = 1; i <= 5; ++i)
            hand_.moveTo({title.x, title.y + (end - title.y) * i / 5});
        if (escape)
            Hand::key(Qt::Key_Escape);
        hand_.release({title.x, end});
        settle();
    }

    /** Opens the panel's menu by its button, and takes an item of it. */
    void choose(ObjectId effect, const char* item)
    {
        std::vector<oribund::Glob*> children;
        panel(effect)->getChildren(children);
        for (const oribund::Glob* const child : children)
            if (dynamic_cast<const oribund::SettingsButton*>(child))
                hand_.click(*child);
        QWidget* const menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        const QList<QAction*> actions = menu->actions();
        menu->close();
        for (QAction* const action : actions)
            if (action->text() == QLatin1String(item))
                action->trigger();
        settle();
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
    const std::vector<ObjectId> before{brightness, boxblur};
    const std::vector<ObjectId> after{boxblur, brightness};
    EXPECT_TRUE(areInOrder(brightness, boxblur));
    const oribund::GlobRef panelBefore(panel(brightness));
    dragTitle(brightness, boxblur, true);
    EXPECT_EQ(order(), before) << "Escape lets it stay";
    dragTitle(brightness, boxblur);
    EXPECT_EQ(order(), after);
    expectOneStep();
    EXPECT_TRUE(areInOrder(boxblur, brightness)) << "the panels stand in the new order";
    EXPECT_EQ(panelBefore.get(), panel(brightness)) << "and are the same";
    EXPECT_NE(panel(brightness)->getSizeState(), MinimizableGroup::eSizeMinimised) << "a drag is no click";
    dragTitle(brightness, boxblur);
    EXPECT_EQ(order(), before);
    expectOneStep();
    choose(brightness, "Move down");
    EXPECT_EQ(order(), after);
    expectOneStep();
    undo();
    EXPECT_EQ(order(), before);
    EXPECT_TRUE(areInOrder(brightness, boxblur));

    // An effect stays folded wherever it goes, and when it was away.
    hand_.click(*panel(brightness), {40, 10});
    EXPECT_EQ(panel(brightness)->getSizeState(), MinimizableGroup::eSizeMinimised);
    choose(brightness, "Move down");
    EXPECT_EQ(panel(brightness)->getSizeState(), MinimizableGroup::eSizeMinimised);
    choose(brightness, "Remove");
    EXPECT_EQ(panel(brightness), nullptr);
    undo();
    EXPECT_EQ(panel(brightness)->getSizeState(), MinimizableGroup::eSizeMinimised);
    EXPECT_NE(panel(boxblur)->getSizeState(), MinimizableGroup::eSizeMinimised);
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

    EXPECT_TRUE(panel(brightness)->takeFocus());
    press(Command::Delete);
    EXPECT_EQ(order(), std::vector<ObjectId>{boxblur});
    expectOneStep();
    press(Command::Delete);
    EXPECT_TRUE(order().empty()) << "the keyboard had gone on to the next one";
    expectOneStep();
    EXPECT_FALSE(window_->effectsPanel().surface().isVisible()) << "a hint takes the place";
    undo();
    undo();
    EXPECT_EQ(order(), (std::vector<ObjectId>{brightness, boxblur}));
    EXPECT_TRUE(window_->effectsPanel().surface().isVisible());
    EXPECT_FALSE(led()->isChecked()) << "as it was when it was removed";
}

TEST_F(EffectStackScenario, WhatIsDoneToOneEffectLeavesTheOthersAlone)
{
    // A number half typed stays when another effect goes.
    std::vector<oribund::Glob*> found;
    const auto collect = [&found](const auto& self, oribund::Glob& glob) -> void {
        if (dynamic_cast<oribund::NumericEntry*>(&glob))
            found.push_back(&glob);
        std::vector<oribund::Glob*> children;
        glob.getChildren(children);
        for (oribund::Glob* const child : children)
            self(self, *child);
    };
    collect(collect, *panel(boxblur));
    ASSERT_FALSE(found.empty());
    auto& entry = dynamic_cast<oribund::NumericEntry&>(*found.front());
    EXPECT_TRUE(entry.takeFocus());
    Hand::type("7");
    EXPECT_TRUE(entry.isModified());
    EXPECT_TRUE(workspace_->editor().removeEffect(brightness));
    settle();
    EXPECT_TRUE(entry.hasFocus() && entry.isModified());

    // And when its own effect goes, or what a menu is of, nothing is left of either.
    EXPECT_TRUE(workspace_->editor().removeEffect(boxblur));
    settle();
    press(Command::Undo);
    const oribund::GlobRef shown(panel(boxblur));
    hand_.click(*shown, {60, 10}, Qt::RightButton);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(workspace_->editor().removeEffect(boxblur));
    settle();
    EXPECT_FALSE(shown);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(EffectStackScenario, AMaskIsAPanelWithinThatOfItsEffect)
{
    choose(boxblur, "Mask");
    expectOneStep();
    const auto* const mask = findInPanel<EffectComponentPanel>(L"Mask");
    ASSERT_NE(mask, nullptr);
    EXPECT_EQ(mask->parent(), panel(boxblur));
    undo();
    EXPECT_EQ(findInPanel<EffectComponentPanel>(L"Mask"), nullptr);
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
