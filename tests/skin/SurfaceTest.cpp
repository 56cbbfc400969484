#include "tests/skin/SkinSupport.h"

#include "tests/support/Listener.h"
#include "tests/toolkit/WidgetsSupport.h"

#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/menus/DropDownMenuButton.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QToolTip>

namespace oribund::qt::test
{
namespace
{

using namespace oribund;
using oribund::test::Listener;
using oribund::test::StoreAdaptor;

/** Counts how often a glob is drawn. */
class Painted : public Glob
{
public:
    using Glob::Glob;

    void draw(CanvasRenderer&) override { ++times; }

    int times = 0;
};

/** A slider on a number. */
class SliderOnSurface : public testing::Test
{
protected:
    SliderOnSurface()
    {
        Slider::InitArgs args;
        args.width = 210;
        args.max = 100.0;
        slider = stage.add<ValSlider>(args, 10, 10);
        slider->setDataAdaptor(number);
    }

    Kt::Ptr<StoreAdaptor<double>> number = Kt::makePtr<StoreAdaptor<double>>(50.0);
    Stage stage;
    ValSlider* slider;
};

TEST_F(SliderOnSurface, ADragWhoseReleaseNeverComesEndsWithTheButton)
{
    stage.press(*slider, {105, 10});
    stage.moveTo({130, 10});
    const double stands = number->value;
    stage.hover(*slider, {150, 10}); // a menu or a dialog had it
    stage.hover(*slider, {170, 10});
    EXPECT_EQ(number->seriesEnds + number->cancels, 1);
    EXPECT_LE(number->value, stands);
}

TEST_F(SliderOnSurface, TheWheelGoesOnToTheParentUnlessItIsUsed)
{
    const EventCount wheels(stage.window, QEvent::Wheel);
    stage.wheel(*slider, {5, 5}, 120);
    EXPECT_TRUE(number->requests.empty());
    EXPECT_EQ(wheels.seen, 1);
    slider->takeFocus();
    stage.wheel(*slider, {5, 5}, 120);
    EXPECT_GT(number->value, 50.0);
    EXPECT_EQ(wheels.seen, 1);
}

TEST_F(SliderOnSurface, AFingerIsAMouse)
{
    QPointingDevice* const screen = QTest::createTouchDevice();
    const auto at = [&](int x) { return slider->toCanvas({x, 10}); };
    QTest::touchEvent(&stage.window, screen).press(0, toQt(at(105)));
    QTest::touchEvent(&stage.window, screen).move(0, toQt(at(160)));
    QTest::touchEvent(&stage.window, screen).release(0, toQt(at(160)));
    EXPECT_EQ(number->seriesEnds, 1);
    EXPECT_GT(number->value, 60.0);
}

TEST_F(SliderOnSurface, PaintsWhatIsOutOfDateAndNothingElse)
{
    const auto add = [&](int x) {
        return stage.panel().addWidget(std::make_unique<Painted>(GlobCreationInfo(50, 50)), Glob::UserTopLeft(x, 100));
    };
    Painted* const changed = add(0);
    Painted* const other = add(60);
    settle();

    struct Region : QObject {
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                painted += static_cast<QPaintEvent*>(event)->region();
            return false;
        }

        QRegion painted;
    } region;

    stage.surface->installEventFilter(&region);
    changed->times = other->times = 0;
    for (int i = 0; i < 5; ++i)
        changed->redraw();
    settle();
    EXPECT_EQ(changed->times, 1);
    EXPECT_EQ(region.painted, QRegion(PanelSurface::placeOf(*changed)));
}

TEST_F(SliderOnSurface, TipsAndCursorsAreThoseOfTheGlobUnderThePointer)
{
    const auto ask = [&](const Glob& glob) {
        const QPoint at = PanelSurface::placeOf(glob).center();
        QHelpEvent event(QEvent::ToolTip, at, stage.surface->mapToGlobal(at));
        QApplication::sendEvent(stage.surface, &event);
        return QToolTip::text();
    };
    Button* const button = stage.add<Button>(10, 100);
    button->setCursor(MouseCursor::Hand);
    stage.panel().setTooltip(L"The panel");
    slider->setTooltip(L"<img src=\"/dev/zero\"> a < b");
    EXPECT_TRUE(ask(*slider).contains("&lt;img")) << "a text, whatever is in it";
    EXPECT_TRUE(ask(*button).contains("The panel")) << "what it stands in speaks for it";
    stage.hover(*button, {5, 5});
    EXPECT_EQ(stage.surface->cursor().shape(), Qt::PointingHandCursor);
    button->setCursor(MouseCursor::Cross);
    EXPECT_EQ(stage.surface->cursor().shape(), Qt::CrossCursor) << "at once";
    stage.hover(*slider, {5, 5});
    EXPECT_NE(stage.surface->cursor().shape(), Qt::CrossCursor);
}

/** A panel between two native entries. */
class KeyboardOnSurface : public testing::Test
{
protected:
    KeyboardOnSurface()
    {
        first = stage.add<Slider>(10, 10);
        second = stage.add<TextBox>(10, 50);
        third = stage.add<Checkbox>(10, 90);
        before = new QLineEdit(&stage.window);
        after = new QLineEdit(&stage.window);
        before->show();
        after->show();
        QWidget::setTabOrder(before, stage.surface);
        QWidget::setTabOrder(stage.surface, after);
        before->setFocus();
    }

    Stage stage;
    Slider* first;
    TextBox* second;
    Checkbox* third;
    QLineEdit* before;
    QLineEdit* after;
};

TEST_F(KeyboardOnSurface, TabGoesThroughThePanelAndOnAndBack)
{
    for (Glob* stop : std::initializer_list<Glob*>{first, second, third}) {
        const QImage without = stage.surface->grab().toImage();
        Stage::key(Qt::Key_Tab);
        EXPECT_EQ(stage.focused(), stop);
        EXPECT_NE(stage.surface->grab().toImage(), without) << "it is to be seen";
    }
    Stage::key(Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    EXPECT_EQ(stage.surface->canvas().focusOwner(), nullptr);
    for (Glob* stop : std::initializer_list<Glob*>{third, second, first}) {
        Stage::key(Qt::Key_Backtab);
        EXPECT_EQ(stage.focused(), stop);
    }
    Stage::key(Qt::Key_Backtab);
    EXPECT_TRUE(before->hasFocus());
}

TEST_F(KeyboardOnSurface, StaysInThePanelWhenItsControlCanHaveItNoMore)
{
    for (Glob* owner : std::initializer_list<Glob*>{second, third}) {
        owner->takeFocus();
        owner->setEnabled(false);
        EXPECT_EQ(stage.surface->canvas().focusOwner(), nullptr);
        EXPECT_TRUE(stage.surface->hasFocus());
    }
    Stage::key(Qt::Key_Tab);
    EXPECT_EQ(stage.focused(), first);
}

TEST_F(KeyboardOnSurface, ComesBackWithTheWindow)
{
    for (Glob* owner : std::initializer_list<Glob*>{first, second}) {
        owner->takeFocus();
        QWidget other;
        other.show();
        other.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
        EXPECT_EQ(stage.surface->canvas().focusOwner(), nullptr);
        stage.activate();
        EXPECT_EQ(stage.focused(), owner);
    }
}

/** A key is the window's command, unless the control that has the keyboard has a use for it. */
TEST_F(KeyboardOnSurface, ControlsKeepTheirKeysFromTheWindowsCommands)
{
    DropDownMenuButton::InitArgs items;
    items.items = {L"Apple", L"Banana"};
    DropDownMenuButton* const menu = stage.add<DropDownMenuButton>(items, 10, 130);
    int commands = 0;
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Left, Qt::Key_B, Qt::Key_Down}) {
        auto* const shortcut = new QShortcut(QKeySequence(key), &stage.window);
        QObject::connect(shortcut, &QShortcut::activated, [&] { ++commands; });
    }
    const auto runs = [&](Qt::Key key) {
        commands = 0;
        Stage::key(key);
        return commands;
    };
    third->takeFocus();
    EXPECT_EQ(runs(Qt::Key_Space), 0);
    EXPECT_TRUE(third->isChecked());
    EXPECT_EQ(runs(Qt::Key_Left), 1);
    first->takeFocus();
    EXPECT_EQ(runs(Qt::Key_Left), 0);
    EXPECT_EQ(runs(Qt::Key_Space), 1);
    menu->takeFocus();
    EXPECT_EQ(runs(Qt::Key_B), 0) << "it looks for what begins so";
    EXPECT_EQ(runs(Qt::Key_Down), 0);
    second->takeFocus();
    EXPECT_EQ(runs(Qt::Key_B), 0);
    EXPECT_EQ(second->getShownText(), L"b");
}

TEST_F(KeyboardOnSurface, AKeyThatNobodyUsesReachesTheWindowOnce)
{
    const EventCount keys(stage.window, QEvent::KeyPress);
    third->takeFocus();
    Stage::key(Qt::Key_L);
    EXPECT_EQ(keys.seen, 1);
    second->takeFocus();
    Stage::key(Qt::Key_PageDown);
    EXPECT_EQ(keys.seen, 2);
}

// Life

TEST(SurfaceLife, GivesThePanelItsWidthAndIsAsHighAsThat)
{
    Stage stage(300, 200);
    stage.surface->resize(500, 200);
    EXPECT_EQ(stage.panel().getWidth(), 500);
    stage.panel().resize(500, 640);
    EXPECT_EQ(stage.surface->sizeHint().height(), 640);
    stage.surface->setPanel(stage.surface->takePanel(), PanelSurface::Fits::Both);
    EXPECT_EQ(stage.panel().getHeight(), 200);
    Canvas elsewhere({100, 100});
    EXPECT_FALSE(stage.surface->setPanel(std::make_unique<StandardPanel>(GlobCreationInfo(20, 20, &elsewhere))));
    EXPECT_EQ(stage.surface->panel(), nullptr);
}

TEST(SurfaceLife, AControlAndItsPanelMayGoInItsOwnClick)
{
    Stage stage;

    for (const bool wholePanel : {false, true}) {
        Button* const button = stage.add<Button>(10, 10);
        const GlobRef<Button> alive(button);
        const Listener<ButtonEvent> clicks(button->clicks(), [&](const ButtonEvent& event) {
            if (wholePanel)
                stage.show(std::make_unique<StandardPanel>(GlobCreationInfo(200, 50, &stage.surface->canvas())));
            else
                stage.panel().destroyWidget(*event.button);
        });
        stage.click(*button);
        EXPECT_FALSE(alive);
        settle();
    }
    EXPECT_EQ(stage.panel().getHeight(), 50);
}

} // namespace
} // namespace oribund::qt::test
