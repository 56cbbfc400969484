#include "tests/skin/SkinSupport.h"

#include "skin/Glyphs.h"

#include "oribund/host/canvas/UifStd.h"
#include "oribund/host/toolkit/entries/TextBox.h"
#include "oribund/host/toolkit/layout/MinimizableGroup.h"
#include "oribund/host/toolkit/menus/DropDownMenuButton.h"
#include "oribund/host/toolkit/widgets/AngleIndicatorWidget.h"
#include "oribund/host/toolkit/widgets/Button.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/ColourSwatch.h"
#include "oribund/host/toolkit/widgets/Label.h"
#include "oribund/host/toolkit/widgets/Slider.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QSpinBox>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace workbench::test
{
namespace
{

using namespace oribund;

constexpr int kLabelWidth = 110;
constexpr int kSliderLeft = 120;
constexpr int kEntryLeft = 290;
constexpr int kButtonLeft = 362;

template <class Args>
Args sized(int width, int height)
{
    Args args;
    args.width = static_cast<unsigned short>(width);
    args.height = static_cast<unsigned short>(height);
    return args;
}

/** A group like the panel of an effect, with every standard control in it. */
class Gallery
{
public:
    explicit Gallery(StandardPanel& panel)
    {
        MinimizableGroup::InitArgs args(420, 0);
        args.title = L"Colour correction";
        group_ = panel.addWidget(std::make_unique<MinimizableGroup>(args), Glob::UserTopLeft(0, 0));
        addNumber(L"Saturation", 0.0, 2.0, 1.35, L"135 %", Button::eOn);
        addNumber(L"Hue", -180.0, 180.0, -42.0, L"-42°", Button::eMixed);
        addNumber(L"A parameter with a long name", 0.0, 1.0, 0.0, L"0", Button::eOff);
        addNumber(L"Disabled", 0.0, 1.0, 0.6, L"0.6", Button::eOff, false);
        addCheckboxes();
        addMenu();
        addColour();
        addDial();
        addButtons();
        MinimizableGroup::InitArgs folded(420, 0);
        folded.title = L"Advanced";
        folded.sizeState = Glob::eSizeMinimised;
        panel.addWidget(std::make_unique<MinimizableGroup>(folded), WidgetPosition::below(*group_));
    }

private:
    int rowHeight() const { return UifStd::getRowHeight(); }

    template <class W>
    W* put(std::unique_ptr<W> widget, int x)
    {
        return group_->addWidget(std::move(widget), Glob::UserTopLeft(x, y_));
    }

    void nextRow() { y_ += rowHeight() + UifStd::getRowGap(); }

    void addLabel(const wchar_t* text)
    {
        auto args = sized<Label::InitArgs>(kLabelWidth, rowHeight());
        args.text = text;
        put(std::make_unique<Label>(args), 0);
    }

    void addNumber(const wchar_t* name, double min, double max, double value, const wchar_t* text, int state,
                   bool enabled = true)
    {
        addLabel(name);
        auto slider = sized<Slider::InitArgs>(160, rowHeight());
        slider.min = min;
        slider.max = max;
        slider.value = value;
        auto entry = sized<TextBox::InitArgs>(64, rowHeight());
        entry.text = text;
        entry.align = TextAlign::Right;
        auto key = sized<Button::InitArgs>(22, rowHeight());
        key.style = Button::Style::Flat;
        key.icon = Image::icon(state == Button::eOn    ? "keyframe-here"
                               : state == Button::eOff ? "keyframe-off"
                                                       : "keyframe-away");
        put(std::make_unique<Slider>(slider), kSliderLeft)->setEnabled(enabled);
        put(std::make_unique<TextBox>(entry), kEntryLeft)->setEnabled(enabled);
        Button* button = put(std::make_unique<Button>(key), kButtonLeft);
        button->setState(state);
        button->setEnabled(enabled);
        nextRow();
    }

    void addCheckboxes()
    {
        addLabel(L"Options");
        Checkbox::InitArgs on;
        on.text = L"Preserve luma";
        on.checked = true;
        Checkbox::InitArgs off;
        off.text = L"Clip";
        put(std::make_unique<Checkbox>(on), kSliderLeft)->takeFocus();
        put(std::make_unique<Checkbox>(off), kSliderLeft + 130);
        Checkbox::InitArgs disabled;
        disabled.text = L"Not now";
        disabled.checked = true;
        put(std::make_unique<Checkbox>(disabled), kSliderLeft + 190)->setEnabled(false);
        nextRow();
    }

    void addMenu()
    {
        addLabel(L"Blend");
        auto args = sized<DropDownMenuButton::InitArgs>(160, rowHeight());
        args.items = {L"Normal", L"Multiply", L"Screen"};
        args.selected = 1;
        put(std::make_unique<DropDownMenuButton>(args), kSliderLeft);
        nextRow();
    }

    void addColour()
    {
        addLabel(L"Tint");
        auto args = sized<ColourSwatch::InitArgs>(60, rowHeight());
        args.colour = Colour::fromRGB(0xd98032, 0.6);
        args.hasAlpha = true;
        put(std::make_unique<ColourSwatch>(args), kSliderLeft);
        auto entry = sized<TextBox::InitArgs>(94, rowHeight());
        entry.placeholder = L"no name";
        put(std::make_unique<TextBox>(entry), kSliderLeft + 66);
        nextRow();
    }

    void addDial()
    {
        addLabel(L"Rotation");
        put(std::make_unique<AngleIndicatorWidget>(sized<AngleIndicatorWidget::InitArgs>(48, 48)), kSliderLeft)
            ->setAngle(40.0);
        y_ += 48 + UifStd::getRowGap();
    }

    void addButtons()
    {
        Button::InitArgs reset;
        reset.text = L"Reset";
        reset.icon = Image::icon("reset");
        Button* first = put(std::make_unique<Button>(reset), kSliderLeft);
        Button::InitArgs trash;
        trash.text = L"Remove";
        put(std::make_unique<Button>(trash), kSliderLeft + first->getWidth() + 6)->setEnabled(false);
        nextRow();
    }

    MinimizableGroup* group_;
    int y_ = 0;
};

/** Native controls in the same look. */
std::unique_ptr<QWidget> makeNativeControls()
{
    auto widget = std::make_unique<QWidget>();
    auto* column = new QVBoxLayout(widget.get());
    const auto row = [&](std::initializer_list<QWidget*> widgets) {
        auto* layout = new QHBoxLayout;
        for (QWidget* w : widgets)
            layout->addWidget(w);
        column->addLayout(layout);
    };
    auto* disabled = new QPushButton("Disabled");
    disabled->setEnabled(false);
    auto* progress = new QProgressBar;
    progress->setValue(40);
    auto* combo = new QComboBox;
    combo->addItems({"H.264, 8 Mbit/s", "ProRes"});
    auto* check = new QRadioButton("To the end");
    check->setChecked(true);
    auto* entry = new QLineEdit;
    entry->setPlaceholderText("Search effects");
    auto* tree = new QTreeWidget;
    tree->setHeaderLabels({"Effect", "Category"});
    for (const char* name : {"Blur", "Sharpen", "Vignette"})
        new QTreeWidgetItem(tree, {name, "Picture"});
    tree->topLevelItem(1)->setSelected(true);
    auto* tabs = new QTabWidget;
    tabs->addTab(tree, "Effects");
    tabs->addTab(new QWidget, "Media");
    row({new QPushButton("Export"), disabled, combo});
    row({check, new QSpinBox, entry});
    row({progress});
    row({tabs});
    QHBoxLayout* strip = nullptr;
    for (int i = 0; i < static_cast<int>(Glyph::Count); ++i) {
        if (i % 19 == 0) {
            strip = new QHBoxLayout;
            strip->setSpacing(0);
            column->addLayout(strip);
        }
        auto* button = new QToolButton;
        button->setIcon(glyphIcon(static_cast<Glyph>(i)));
        strip->addWidget(button);
    }
    widget->resize(520, 360);
    return widget;
}

QImage render(QWidget& widget, double scale)
{
    QImage picture(widget.size() * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::magenta);
    widget.render(&picture);
    keepPicture(picture, QString("%1-%2x").arg(widget.objectName()).arg(scale));
    return picture;
}

std::size_t coloursIn(const QImage& picture, const QRect& area)
{
    QSet<QRgb> colours;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            colours.insert(picture.pixel(x, y));
    }
    return static_cast<std::size_t>(colours.size());
}

/** Every control is painted, at both scales, and nothing is left unpainted between them. */
TEST(Gallery, IsPaintedAtBothScales)
{
    Stage stage(440, 420);
    stage.surface->setObjectName("panel");
    const Gallery gallery(stage.panel());
    for (const int scale : {1, 2}) {
        const QImage picture = render(*stage.surface, scale);
        ASSERT_EQ(picture.width(), 440 * scale);
        for (int y = 0; y < picture.height(); y += 3) {
            for (int x = 0; x < picture.width(); x += 3)
                ASSERT_NE(picture.pixel(x, y), QColor(Qt::magenta).rgb()) << x << "," << y;
        }
        std::vector<Glob*> groups;
        stage.panel().getChildren(groups);
        std::vector<Glob*> controls;
        groups[0]->getChildren(controls);
        ASSERT_GT(controls.size(), 20u);
        for (const Glob* control : controls) {
            const XY<int> at = control->toCanvas({});
            const QRect area(at.x * scale, at.y * scale, control->getWidth() * scale, control->getHeight() * scale);
            EXPECT_GT(coloursIn(picture, area), 1u) << "nothing at " << at.x << "," << at.y << ", scale " << scale;
        }
    }
}

TEST(Gallery, NativeControlsFollowTheTheme)
{
    const auto native = makeNativeControls();
    native->setObjectName("native");
    native->show();
    for (const int scale : {1, 2}) {
        const QImage picture = render(*native, scale);
        const double luma = qGray(picture.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixel(0, 0));
        EXPECT_GT(luma, 20);
        EXPECT_LT(luma, 80) << "some part is not dark";
    }
}

} // namespace
} // namespace workbench::test
