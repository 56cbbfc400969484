#include "tests/scenarios/Scenario.h"
#include "workbench/app/cues/CueNameField.h"
#include "workbench/app/cues/CuePane.h"
#include "workbench/app/cues/LastCueColour.h"
#include "workbench/app/timeline/TimeBar.h"
#include "workbench/app/timeline/TimeBarPane.h"

#include "oribund/cues/CueColours.h"
#include "oribund/cues/CueDescriptionPanel.h"

#include <QApplication>
#include <QLabel>
#include <QMenu>

#include <algorithm>

namespace workbench
{
namespace
{

/** Cues through the keys, the menus and the pointer. */
class CueScenario : public Scenario
{
protected:
    CueScenario() { openClip(); }

    const oribund::CueList& cues() { return workspace_->edit().getCues(); }

    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&window_->timeline().strip(), code, modifiers);
    }

    void addAt(std::initializer_list<int> frames)
    {
        for (const int one : frames) {
            goTo(one);
            key(Qt::Key_M);
        }
        position_ = workspace_->edit().undoStack().position();
    }

    /** That what was done since the last call is one step, which undo and redo take back and do again. */
    void expectOneStep(const char* what)
    {
        UndoStack& undo = workspace_->edit().undoStack();
        EXPECT_EQ(undo.position(), ++position_) << what;
        const oribund::CueList after = cues();
        window_->action(Command::Undo).trigger();
        EXPECT_NE(cues(), after) << what;
        window_->action(Command::Redo).trigger();
        EXPECT_EQ(cues(), after) << what;
    }

    /** Chooses from the popup menu that is open. */
    static bool choose(const char* text)
    {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu && chooseIn(*menu, QLatin1String(text));
    }

    static bool chooseIn(QMenu& menu, const QString& text)
    {
        for (QAction* action : menu.actions()) {
            if (action->menu() && chooseIn(*action->menu(), text))
                return true;
            if (action->text() != text || !action->isEnabled() || action->menu())
                continue;
            action->trigger();
            if (QWidget* const popup = QApplication::activePopupWidget())
                popup->close();
            QTest::qWait(1);
            return true;
        }
        return false;
    }

    void clickBar(double time, int off, Qt::MouseButton button = Qt::LeftButton)
    {
        TimeBar& bar = window_->timeBar().bar();
        hand_.click(bar, {bar.geometry().f2xi(time) + off, 9}, button);
    }

private:
    std::size_t position_ = 1; // the clip
};

TEST_F(CueScenario, KeysPlaceNameWalkAndRemoveThemAStepEach)
{
    goTo(20);
    key(Qt::Key_M);
    expectOneStep("add");
    ASSERT_EQ(cues().size(), 1u);
    EXPECT_EQ(cues()[0].name, L"Cue 1");
    EXPECT_EQ(cues()[0].colour, lastCueColour());
    key(Qt::Key_M);
    EXPECT_EQ(host_.shown, std::vector<std::string>{"There is a cue at that time already."});

    addAt({40, 10});
    EXPECT_EQ(cues()[0].name, L"Cue 3");
    for (const int there : {20, 40, 40}) {
        key(Qt::Key_Right, Qt::AltModifier);
        EXPECT_EQ(frame(), there);
    }
    EXPECT_EQ(workspace_->cue().get(), cues()[2].id) << "the last one walked to";
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(frame(), 20);

    key(Qt::Key_M, Qt::ShiftModifier);
    CueNameField* field = window_->timeBar().nameField();
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "Mind the  B");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(cues()[1].name, L"Mind the  B") << "its letters are no commands";
    expectOneStep("rename");
    EXPECT_TRUE(window_->timeline().strip().hasFocus());
    key(Qt::Key_M, Qt::ShiftModifier);
    QTest::keyClicks(window_->timeBar().nameField(), "no");
    QTest::keyClick(window_->timeBar().nameField(), Qt::Key_Escape);
    EXPECT_EQ(cues()[1].name, L"Mind the  B");

    key(Qt::Key_Delete, Qt::AltModifier);
    EXPECT_EQ(cues().size(), 2u);
    expectOneStep("remove");
    key(Qt::Key_Delete, Qt::AltModifier);
    EXPECT_EQ(host_.shown.back(), "There is no cue at the current time.");
    addAt({30});
    EXPECT_EQ(cues()[1].name, L"Cue 1") << "the first name that is free";
}

TEST_F(CueScenario, AClickNearOneGoesToItAndTheTransportTellsOfIt)
{
    addAt({30});
    const double there = cues()[0].time;
    const auto isNamed = [&] {
        const auto labels = window_->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [](QLabel* one) { return one->text() == "Cue 1"; });
    };
    goTo(50);
    EXPECT_FALSE(isNamed());
    workspace_->cue().set({});
    clickBar(there, 5);
    EXPECT_EQ(workspace_->vob().getCurrentTime(), there);
    EXPECT_EQ(workspace_->cue().get(), cues()[0].id);
    EXPECT_TRUE(isNamed());

    TimelineStrip& strip = window_->timeline().strip();
    const auto clickRuler = [&](int off) {
        const QPoint place(static_cast<int>(strip.geometryOfEdit().xOf(30)) + off, 5);
        QTest::mouseClick(&strip, Qt::LeftButton, Qt::NoModifier, place);
    };
    goTo(50);
    clickRuler(20);
    EXPECT_NE(frame(), 30);
    clickRuler(-5);
    EXPECT_EQ(frame(), 30);
}

TEST_F(CueScenario, TheMenuIsThatOfTheCueUnderThePointerOrOfThePlace)
{
    addAt({30});
    goTo(5);
    const double there = cues()[0].time;
    clickBar(there, -3, Qt::RightButton);
    EXPECT_EQ(frame(), 5) << "the menu is for another place than that of the time";
    ASSERT_TRUE(choose("Blue"));
    EXPECT_EQ(cues()[0].colour, oribund::cueColours()[5].colour);
    expectOneStep("colour");
    clickBar(there, 80, Qt::RightButton);
    EXPECT_FALSE(choose("Delete cue"));
    ASSERT_TRUE(choose("Add cue here"));
    ASSERT_EQ(cues().size(), 2u);
    EXPECT_EQ(cues()[1].colour, oribund::cueColours()[5].colour) << "the colour used last";
    press(Command::Undo);

    TimelineStrip& strip = window_->timeline().strip();
    const int x = static_cast<int>(strip.geometryOfEdit().xOf(workspace_->vob().frameOf(cues()[0].time)));
    QContextMenuEvent asked(QContextMenuEvent::Mouse, {x, 5}, strip.mapToGlobal(QPoint(x, 5)));
    QCoreApplication::sendEvent(&strip, &asked);
    ASSERT_TRUE(choose("Go to this cue"));
    EXPECT_EQ(workspace_->vob().getCurrentTime(), cues()[0].time);
    QMenu& colours = *window_->action(Command::CueColour).menu();
    ASSERT_TRUE(chooseIn(colours, QStringLiteral("Red")));
    EXPECT_EQ(cues()[0].colour, oribund::cueColours()[0].colour);
    expectOneStep("colour of the current one");
}

TEST_F(CueScenario, DescribingOneOpensItsFieldsWhichFollowTheWalk)
{
    addAt({20, 40});
    EXPECT_FALSE(window_->cuePane().isVisible());
    key(Qt::Key_M, Qt::ControlModifier);
    EXPECT_TRUE(window_->cuePane().isVisible());
    EXPECT_EQ(window_->cuePane().panel().getCueID(), cues()[1].id);
    EXPECT_TRUE(window_->cuePane().panel().isEditingEnabled());
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(window_->cuePane().panel().getCue(), cues()[0]);
    document_->startNew();
    EXPECT_FALSE(window_->cuePane().panel().getCue().valid());
}

TEST_F(CueScenario, AnEditThatIsReadOnlyKeepsThemAndSaysWhy)
{
    addAt({30});
    const oribund::CueList before = cues();
    workspace_->edit().setReadOnly(true);
    for (const Command command : {Command::RenameCue, Command::RemoveCue})
        window_->action(command).trigger();
    EXPECT_EQ(window_->timeBar().nameField(), nullptr);
    ASSERT_TRUE(chooseIn(*window_->action(Command::CueColour).menu(), QStringLiteral("Red")));
    goTo(40);
    key(Qt::Key_M);
    EXPECT_EQ(host_.shown, std::vector<std::string>(4, "The edit is read-only."));
    EXPECT_EQ(cues(), before);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(frame(), 30) << "going to one changes nothing";
}

} // namespace
} // namespace workbench
