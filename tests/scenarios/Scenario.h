#pragma once

#include "skin/PanelSurface.h"
#include "tests/engine/SampleMedia.h"
#include "tests/skin/Hand.h"
#include "tests/support/TestHost.h"
#include "workbench/app/effects/EffectListPane.h"
#include "workbench/app/effects/EffectsPanelPane.h"
#include "workbench/app/effects/GenericEffectPanel.h"
#include "workbench/app/timeline/TimelinePane.h"
#include "workbench/app/timeline/TimelineStrip.h"
#include "workbench/app/window/MainWindow.h"
#include "workbench/app/window/ViewerWidget.h"
#include "workbench/store/ProjectFile.h"

#include "oribund/host/toolkit/widgets/Slider.h"

#include <QAction>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>

namespace workbench
{

namespace fs = std::filesystem;

using oribund::qt::PanelSurface;
using oribund::qt::test::Hand;

/** The program's window on the sample clip. */
class Scenario : public testing::Test
{
protected:
    Scenario()
        : folder_(SampleMedia::folder() / testing::UnitTest::GetInstance()->current_test_info()->name())
    {
        fs::create_directories(folder_);
        registerGenericPanels();
        workspace_ = std::make_unique<Workspace>(testEngine());
        document_ = std::make_unique<Document>(*workspace_, folder_ / "recovery");
        window_ = std::make_unique<MainWindow>(*workspace_, *document_);
        window_->resize(1200, 800);
        show();
    }

    ~Scenario() override
    {
        window_.reset();
        document_.reset();
        workspace_.reset();
    }

    void show()
    {
        window_->show();
        window_->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }

    void settle()
    {
        int calm = 0;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                calm = window_->isSettled() ? calm + 1 : 0;
                return calm > 2;
            },
            20000));
    }

    void openClip()
    {
        window_->files().open({SampleMedia::clip()});
        settle();
    }

    /** Searches for the effect, and takes the first that is found. */
    oribund::Kt::Ptr<ModelEffect> addEffect(const char* search)
    {
        window_->effectList().search();
        QTest::keyClicks(&window_->effectList().searchField(), search);
        QTest::keyClick(&window_->effectList().searchField(), Qt::Key_Return);
        settle();
        window_->effectsPanel().refresh();
        const Segment* const segment = workspace_->targetSegment();
        return segment && !segment->effects.empty() ? segment->effects.back() : nullptr;
    }

    /** The first widget of that kind in the panels, or the one with that accessible name. */
    template <class Widget>
    Widget* findInPanel(const oribund::WString& name = {})
    {
        return find<Widget>(window_->effectsPanel().surface().panel(), name);
    }

    /** Drags the slider from its middle to a part of its width, in several moves. */
    void drag(oribund::Slider& slider, double to, bool escape = false)
    {
        const QPoint start = Hand::middleOf(slider);
        const QPoint end(static_cast<int>(slider.getWidth() * to), start.y());
        hand_.press(slider, start);
        for (int i = 1; i <= 5; ++i)
            hand_.moveTo(start + (end - start) * i / 5);
        if (escape)
            Hand::key(Qt::Key_Escape);
        hand_.release(end);
    }

    void press(Command command)
    {
        window_->action(command).trigger();
        settle();
    }

    int frame() { return workspace_->vob().currentFrame(); }

    void goTo(int frame) { workspace_->vob().setCurrentTime(workspace_->vob().timeOf(frame)); }

    bool split(int frame) { return bool(workspace_->editor().splitSegment(workspace_->targetSegment()->id(), frame)); }

    /** On the first track. */
    std::size_t segments() const { return workspace_->edit().timeline().tracks().front()->segments.size(); }

    std::size_t segmentsIn(const fs::path& file)
    {
        const ProjectReading reading = readProject(file, workspace_->catalogue());
        return reading ? reading.edit->tracks.front().segments.size() : 0;
    }

    double brightness() const
    {
        const FrameImagePtr& picture = window_->viewer().picture();
        double sum = 0.0;
        for (std::size_t i = 0; picture && i < picture->rgba.size(); i += 4)
            sum += picture->rgba[i] + picture->rgba[i + 1] + picture->rgba[i + 2];
        return picture ? sum / static_cast<double>(picture->rgba.size()) : -1.0;
    }

    PixelBytes pixels() const { return window_->viewer().picture()->rgba; }

    fs::path folder_;
    oribund::test::TestHost host_;
    Hand hand_;
    std::unique_ptr<Workspace> workspace_;
    std::unique_ptr<Document> document_;
    std::unique_ptr<MainWindow> window_;

private:
    template <class Widget>
    static Widget* find(oribund::Glob* glob, const oribund::WString& name)
    {
        if (!glob)
            return nullptr;
        if (auto* found = dynamic_cast<Widget*>(glob);
            found && (name.empty() || oribund::displayText(found->accessibleName()) == name))
            return found;
        std::vector<oribund::Glob*> children;
        glob->getChildren(children);
        for (oribund::Glob* child : children)
            if (Widget* const found = find<Widget>(child, name))
                return found;
        return nullptr;
    }
};

} // namespace workbench
