#include "tests/controls/RowSupport.h"

#include "oribund/colour/ColourOffsetPanel.h"
#include "oribund/colour/ColourRangePanel.h"
#include "oribund/colour/ColourWheel.h"
#include "oribund/colour/TitledTonalRangeEditor.h"
#include "oribund/colour/TolerantRangeEditor.h"
#include "oribund/host/canvas/RecordingRenderer.h"
#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/entries/NumericEntry.h"

namespace oribund
{
namespace
{

/** An effect with a colour range: three parameters in a row. */
class RangePanel : public test::RowTest
{
protected:
    using Range = Kt::Ptr<EffectValParam<ColourData>>;

    Range addRange(const ColourData& value, double low, double high, unsigned flags = ParamDisplay::kColourRange)
    {
        return addLimited(value, ColourData{{low, low, low, low}}, ColourData{{high, high, high, high}}, flags);
    }

    std::unique_ptr<ColourRangePanel> makePanel(unsigned index = 0)
    {
        auto panel = std::make_unique<ColourRangePanel>(handle, index, kWidth, Palette(), &canvas);
        show(*panel);
        return panel;
    }

    Range hue = addRange({{350.0, 355.0, 5.0, 10.0}}, -3600.0, 3600.0);
    Range saturation = addRange({{0.1, 0.2, 0.6, 0.8}}, 0.0, 1.0);
    Range luminance = addRange({{0.0, 0.0, 1.0, 1.0}}, 0.0, 1.0);
};

TEST_F(RangePanel, HasARowForEachParameterOfTheRangeThatIsThere)
{
    EXPECT_EQ(ColourRangePanel::calcHeight(),
              3 * (UifStd::getRowHeight() + UifStd::getWidgetGap()) + 2 * UifStd::getWidgetGap());
    auto panel = makePanel();
    EXPECT_EQ(panel->getHeight(), ColourRangePanel::calcHeight());
    ASSERT_TRUE(panel->editorOf(2));
    EXPECT_EQ(panel->editorOf(0)->getRanges(), (ColourData{{350.0, 355.0, 365.0, 370.0}}));
    EXPECT_EQ(makePanel(1)->editorOf(2), nullptr) << "the third follower is missing";
    EXPECT_EQ(makePanel(2)->getHeight(), TolerantRangeEditor::calcHeight());
    EXPECT_EQ(makePanel(static_cast<unsigned>(-1))->editorOf(0), nullptr);
}

} // namespace
} // namespace oribund
