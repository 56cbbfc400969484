#include "tests/skin/SkinSupport.h"

#include "oribund/host/notify/MethodCallback.h"
#include "oribund/host/toolkit/layout/WidgetGroup.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Slider.h"

#include <gtest/gtest.h>

#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

namespace workbench::test
{
namespace
{

using namespace oribund;

std::unique_ptr<StandardPanel> makePanel(Canvas& canvas, unsigned short height)
{
    return std::make_unique<StandardPanel>(GlobCreationInfo(200, height, &canvas));
}

TEST(PanelView, GivesThePanelItsWidthAndScrollsItsHeight)
{
    Stage stage(300, 200);
    stage.view->setPanel(makePanel(stage.view->canvas(), 900));
    QCoreApplication::processEvents();
    const int width = stage.view->viewport()->width();
    EXPECT_LT(width, 300) << "no room for the scroll bar";
    EXPECT_EQ(stage.panel().getWidth(), width);
    EXPECT_EQ(stage.view->verticalScrollBar()->maximum(), 900 - 200);
    EXPECT_EQ(stage.view->horizontalScrollBar()->maximum(), 0);
    stage.view->resize(500, 200);
    EXPECT_EQ(stage.panel().getWidth(), stage.view->viewport()->width());
    stage.panel().resize(stage.panel().getWidth(), 100);
    QCoreApplication::processEvents();
    EXPECT_EQ(stage.view->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(stage.panel().getWidth(), 500);
}

TEST(PanelView, TheWheelScrollsAndTheKeyboardBringsControlsIntoSight)
{
    Stage stage(300, 200);
    stage.view->setPanel(makePanel(stage.view->canvas(), 900));
    Slider* top = stage.add<Slider>(0, 0);
    Slider* bottom = stage.add<Slider>(0, 850);
    QWidget* widget = Stage::nativeOf(*top);
    QWheelEvent wheel(QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &wheel);
    EXPECT_GT(stage.view->verticalScrollBar()->value(), 0);
    EXPECT_EQ(top->getValue(), 0.0);
    top->takeFocus();
    EXPECT_EQ(stage.view->verticalScrollBar()->value(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(stage.focused(), bottom);
    EXPECT_GE(stage.view->verticalScrollBar()->value(), 870 - 200);
}

TEST(PanelView, APanelMayBeReplacedFromWithin)
{
    Stage stage;
    Button* button = stage.add<Button>(10, 10);
    QPointer<QWidget> widget = Stage::nativeOf(*button);

    struct Clicked {
        int replace(const ButtonEvent&)
        {
            view.setPanel(makePanel(view.canvas(), 50));
            return 0;
        }

        PanelView& view;
    } clicked{*stage.view};

    MethodCallback<Clicked, ButtonEvent> callback(&clicked, &Clicked::replace);
    callback.attach(button->clicks());
    QTest::mouseClick(widget, Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(stage.panel().getHeight(), 50);
    settle();
    EXPECT_TRUE(widget.isNull());
    EXPECT_TRUE(Stage::nativeOf(stage.panel())->isVisible());
}

TEST(PanelView, TakesOnlyWhatWasMadeForItAndGivesItBack)
{
    Stage stage;
    Canvas elsewhere({100, 100});
    EXPECT_FALSE(stage.view->setPanel(makePanel(elsewhere, 50)));
    EXPECT_EQ(stage.view->panel(), nullptr);
    EXPECT_TRUE(stage.view->setPanel(makePanel(stage.view->canvas(), 50)));
    const std::unique_ptr<Glob> taken = stage.view->takePanel();
    ASSERT_TRUE(taken);
    EXPECT_FALSE(taken->isOpen());
    EXPECT_EQ(taken->peer(), nullptr);
    settle();
    EXPECT_TRUE(stage.view->widget()->findChildren<QWidget*>().isEmpty());
}

/** Counts how often a glob is painted. */
class Painted : public Glob
{
public:
    using Glob::Glob;

    void draw(CanvasRenderer&) override { ++times; }

    int times = 0;
};

TEST(PanelView, PaintsWhatHasChangedAndNothingElse)
{
    Stage stage;
    Painted* changed =
        stage.panel().addWidget(std::make_unique<Painted>(GlobCreationInfo(50, 50)), Glob::UserTopLeft(0, 0));
    Painted* other =
        stage.panel().addWidget(std::make_unique<Painted>(GlobCreationInfo(50, 50)), Glob::UserTopLeft(60, 0));
    QCoreApplication::processEvents();
    changed->times = other->times = 0;
    for (int i = 0; i < 5; ++i)
        changed->redraw();
    QCoreApplication::processEvents();
    EXPECT_EQ(changed->times, 1);
    EXPECT_EQ(other->times, 0);
}

} // namespace
} // namespace workbench::test
