#include "WidgetsSupport.h"

#include "oribund/host/toolkit/widgets/ValSlider.h"

#include <gmock/gmock.h>

namespace oribund::test
{
namespace
{

using testing::ElementsAre;

/** A widget without a glob, which writes down what it is told. */
class Watcher : public ValWidget<double>
{
public:
    Watcher(std::string name, std::vector<std::string>& journal)
        : name_(std::move(name))
        , journal_(journal)
    {
    }

    void setWidgetValue(const double& newValue, eRedrawFlag) override
    {
        value = newValue;
        journal_.push_back(name_ + "=" + std::to_string(static_cast<int>(newValue)));
        // A copy: it may destroy the widget.
        if (const auto hook = onValue)
            hook();
    }

    double getWidgetValue() const override { return value; }

    void setWidgetEnabled(bool on) override
    {
        enabled = on;
        journal_.push_back(name_ + (on ? " on" : " off"));
    }

    bool isWidgetEnabled() const override { return enabled; }

    using ValWidget<double>::requestDataChange;

    double value = 0.0;
    bool enabled = true;
    std::function<void()> onValue;

private:
    std::string name_;
    std::vector<std::string>& journal_;
};

class Adaptors : public testing::Test
{
protected:
    std::vector<std::string> journal;
    Kt::Ptr<StoreAdaptor<double>> adaptor = Kt::makePtr<StoreAdaptor<double>>(1.0);
};

TEST_F(Adaptors, WidgetsAreToldInTheOrderInWhichTheyWereAttached)
{
    EXPECT_FALSE(adaptor->getWidgetEnabledState());
    Watcher b("b", journal);
    Watcher a("a", journal);
    a.setDataAdaptor(adaptor);
    b.setDataAdaptor(adaptor);
    adaptor->attachWidget(a); // once is enough
    journal.clear();

    bool held = false;
    adaptor->onRequest = [&] { held = !Drawable::redrawsEnabled(); };
    EXPECT_TRUE(b.requestDataChange(7.0, ChangeKind::Single));
    EXPECT_TRUE(held);
    EXPECT_TRUE(Drawable::redrawsEnabled());
    adaptor->setWidgetEnabledState(false);
    EXPECT_THAT(journal, ElementsAre("a=7", "b=7", "a off", "b off"));
    a.enabled = true;
    EXPECT_TRUE(adaptor->getWidgetEnabledState()) << "that of the first";
    a.setDataAdaptor(nullptr);
    EXPECT_FALSE(adaptor->getWidgetEnabledState());
    a.setDataAdaptor(adaptor);
    EXPECT_FALSE(a.enabled) << "who joins is as the first one is";
}

TEST_F(Adaptors, WidgetsMayGoOrComeWhileTheValueIsOnItsWay)
{
    auto first = std::make_unique<Watcher>("1", journal);
    auto second = std::make_unique<Watcher>("2", journal);
    auto third = std::make_unique<Watcher>("3", journal);
    Watcher late("late", journal);
    for (Watcher* widget : {first.get(), second.get(), third.get()})
        widget->setDataAdaptor(adaptor);
    journal.clear();
    second->onValue = [&] {
        first.reset();
        third.reset();
        late.setAdaptor(adaptor);
        second.reset();
    };
    adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_THAT(journal, ElementsAre("1=1", "2=1"));
    EXPECT_EQ(adaptor->getNumWidgets(), 1u);
    adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_EQ(journal.back(), "late=1");
}

TEST_F(Adaptors, TheLastWidgetMayGoDuringAPushAndTakeTheAdaptorWithIt)
{
    class Mortal : public StoreAdaptor<double>
    {
    public:
        explicit Mortal(bool& gone)
            : gone_(gone)
        {
        }

        ~Mortal() override { gone_ = true; }

    private:
        bool& gone_;
    };

    bool gone = false;
    auto only = std::make_unique<Watcher>("only", journal);
    only->setDataAdaptor(Kt::makePtr<Mortal>(gone));
    Mortal* mortal = static_cast<Mortal*>(only->getAdaptor().get());
    only->onValue = [&] {
        only.reset();
        EXPECT_FALSE(gone) << "it is still at work";
    };
    mortal->forceWidgetUpdate(eRedrawFlag::Yes);
    EXPECT_TRUE(gone);
}

TEST_F(Adaptors, AnEditRepaintsEachWidgetThatShowsTheValueOnce)
{
    Desk desk;
    ValSlider* const sliders[] = {desk.add<ValSlider>(), desk.add<ValSlider>(0, 40)};
    for (ValSlider* slider : sliders) {
        slider->setRange(0.0, 10.0);
        slider->setDataAdaptor(adaptor);
    }
    // The adaptor tells of the edit several times over, as a parameter and its effect do.
    adaptor->onRequest = [&] {
        for (const double step : {3.0, 2.0, 5.0}) {
            adaptor->value = step;
            adaptor->forceWidgetUpdate(eRedrawFlag::Yes);
        }
    };
    const unsigned before = sliders[0]->repaintCount() + sliders[1]->repaintCount();
    sliders[0]->userSet(6.0);
    EXPECT_EQ(sliders[1]->getValue(), 6.0);
    EXPECT_EQ(sliders[0]->repaintCount() + sliders[1]->repaintCount(), before + 2);
}

} // namespace
} // namespace oribund::test
