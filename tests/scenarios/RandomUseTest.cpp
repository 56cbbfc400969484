#include "tests/scenarios/Scenario.h"
#include "workbench/model/EditModel.h"

#include "oribund/host/canvas/Canvas.h"

#include <QApplication>
#include <QMenu>
#include <array>
#include <random>

namespace workbench
{
namespace
{

/** Someone who presses, drags, types and turns whatever there is in the panels, and often changes his mind. */
class RandomUse : public Scenario
{
protected:
    int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

    void act()
    {
        switch (below(6)) {
        case 0:
            return dragSomething();
        case 1:
            return typeSomething();
        case 2:
            return pressKey();
        case 3:
            return runCommand();
        default:
            return clickSomething();
        }
    }

    void endAct()
    {
        // A menu or dialog that was opened is closed unused.
        for (int i = 0; i < 5 && (QApplication::activePopupWidget() || QApplication::activeModalWidget()); ++i) {
            if (QWidget* const popup = QApplication::activePopupWidget())
                popup->close();
            if (QWidget* const dialog = QApplication::activeModalWidget())
                dialog->close();
            QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    std::mt19937 random_;
    std::size_t start_ = 0; ///< steps before the effects were added

private:
    struct Place {
        PanelSurface* surface = nullptr;
        QPoint at;
    };

    static void collect(oribund::Glob& glob, std::vector<oribund::Glob*>& controls)
    {
        if (glob.isShown() && glob.wantsFocus())
            controls.push_back(&glob);
        std::vector<oribund::Glob*> children;
        glob.getChildren(children);
        for (oribund::Glob* child : children)
            collect(*child, controls);
    }

    /** A place in one of the controls: of the rows, or of the bar above them. */
    Place anywhere()
    {
        std::vector<oribund::Glob*> controls;
        for (QWidget* widget : window_->effectsPanel().findChildren<QWidget*>()) {
            auto* const surface = dynamic_cast<PanelSurface*>(widget);
            if (surface && surface->isVisible() && surface->panel())
                collect(*surface->panel(), controls);
        }
        if (controls.empty())
            return {};
        const oribund::Glob& chosen = *controls[static_cast<std::size_t>(below(static_cast<int>(controls.size())))];
        PanelSurface* const surface = PanelSurface::showing(chosen);
        const QRect box = PanelSurface::placeOf(chosen).intersected(surface->rect());
        if (box.isEmpty())
            return {};
        return {surface, box.topLeft() + QPoint(below(box.width()), below(box.height()))};
    }

    static QWidget& targetAt(const Place& place)
    {
        QWidget* const child = place.surface->childAt(place.at);
        return child ? *child : *place.surface;
    }

    Qt::MouseButton button() { return below(4) ? Qt::LeftButton : Qt::RightButton; }

    Qt::KeyboardModifiers modifiers()
    {
        constexpr std::array<Qt::KeyboardModifier, 3> kKeys = {Qt::ControlModifier, Qt::ShiftModifier, Qt::AltModifier};
        return below(4) ? Qt::NoModifier : kKeys[static_cast<std::size_t>(below(3))];
    }

    void clickSomething()
    {
        const Place place = anywhere();
        if (!place.surface)
            return;
        QPointer<QWidget> target = &targetAt(place);
        const QPoint local = target->mapFrom(place.surface, place.at);
        if (below(5) == 0)
            QTest::mouseDClick(target, Qt::LeftButton, modifiers(), local);
        else
            QTest::mouseClick(target, button(), modifiers(), local);
    }

    void dragSomething()
    {
        const Place place = anywhere();
        if (!place.surface)
            return;
        QPointer<QWidget> target = &targetAt(place);
        QPoint local = target->mapFrom(place.surface, place.at);
        const Qt::MouseButton held = button();
        QTest::mousePress(target, held, modifiers(), local);
        for (int moves = below(6); moves >= 0 && target; --moves) {
            local += QPoint(below(121) - 60, below(21) - 10);
            QMouseEvent move(QEvent::MouseMove, local, target->mapToGlobal(local), Qt::NoButton, held, {});
            QApplication::sendEvent(target, &move);
            if (below(8) == 0)
                interrupt();
        }
        if (target)
            QTest::mouseRelease(target, held, {}, local);
    }

    /** What comes in the midst of a drag. */
    void interrupt()
    {
        switch (below(4)) {
        case 0:
            return sendKey(Qt::Key_Escape);
        case 1:
            return undoSometimes();
        case 2:
            return workspace_->vob().setCurrentTime(workspace_->vob().timeOf(below(kSampleFrames)));
        default:
            return runCommand();
        }
    }

    void typeSomething()
    {
        constexpr std::array<const char*, 6> kTexts = {"12", "2*45+10", "nonsense", "-1e300", "", "0.5"};
        for (const char* text = kTexts[static_cast<std::size_t>(below(6))]; *text; ++text)
            if (QWidget* const focused = QApplication::focusWidget())
                QTest::keyClick(focused, *text);
        if (below(3))
            sendKey(below(2) ? Qt::Key_Return : Qt::Key_Tab);
    }

    void pressKey()
    {
        constexpr std::array<Qt::Key, 14> kKeys = {Qt::Key_Tab,      Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Left,
                                                   Qt::Key_Right,    Qt::Key_Escape, Qt::Key_Delete, Qt::Key_Space,
                                                   Qt::Key_Return,   Qt::Key_Comma,  Qt::Key_Period, Qt::Key_K,
                                                   Qt::Key_PageDown, Qt::Key_Home};
        sendKey(kKeys[static_cast<std::size_t>(below(14))], modifiers());
    }

    static void sendKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        if (QWidget* const focused = QApplication::focusWidget())
            QTest::keyClick(focused, key, modifiers);
    }

    void runCommand()
    {
        using enum Command;
        constexpr std::array kCommands = {
            AddKeyframes,     AddKeyframes,    Redo,          Split,          AddKeyframes,   AddKeyframes,
            RemoveKeyframes,  SelectKeyframes, CopyKeyframes, PasteKeyframes, KeyframesLater, NextKeyframe,
            KeyframesEarlier, SelectNext};
        if (below(3) == 0)
            workspace_->vob().setCurrentTime(workspace_->vob().timeOf(below(kSampleFrames)));
        window_->action(kCommands[static_cast<std::size_t>(below(14))]).trigger();
        if (below(4) == 0)
            undoSometimes();
    }

    /** Leaves the effects on the clip, or there would be nothing to use. */
    void undoSometimes()
    {
        if (workspace_->edit().undoStack().position() > start_ + 2)
            window_->action(Command::Undo).trigger();
    }
};

TEST_F(RandomUse, IsUndoneToTheStart)
{
    openClip();
    UndoStack& undo = workspace_->edit().undoStack();
    start_ = undo.position();
    const EditData opened = workspace_->edit().snapshot();
    const ObjectId clip = workspace_->targetSegment()->id();
    std::size_t steps = 0;
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        random_.seed(seed);
        workspace_->selection().set(clip);
        workspace_->vob().setCurrentTime(0.0);
        ASSERT_TRUE(addEffect("brightness"));
        ASSERT_TRUE(addEffect("blur"));
        for (int i = 0; i < 60; ++i) {
            act();
            endAct();
            ASSERT_EQ(findFault(workspace_->edit().snapshot()), "") << "after " << i;
        }
        undo.endGesture();
        const EditData end = workspace_->edit().snapshot();
        const std::size_t last = undo.position();
        steps += last - start_;
        while (undo.position() > start_ && undo.undo()) {
        }
        EXPECT_EQ(workspace_->edit().snapshot(), opened);
        while (undo.position() < last && undo.redo()) {
        }
        EXPECT_EQ(workspace_->edit().snapshot(), end);
        while (undo.position() > start_ && undo.undo()) {
        }
    }
    EXPECT_GT(steps, 80u) << "most of it did nothing";
}

} // namespace
} // namespace workbench
