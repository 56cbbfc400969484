// A window with a panel, for the client of the accessibility bus in walk.py. Ends with its standard input.

#include "skin/PanelSurface.h"
#include "skin/SkinApplication.h"
#include "tests/toolkit/TableSupport.h"

#include "oribund/host/toolkit/entries/NumericEntry.h"
#include "oribund/host/toolkit/layout/StandardPanel.h"
#include "oribund/host/toolkit/widgets/Checkbox.h"
#include "oribund/host/toolkit/widgets/Slider.h"

#include <QSocketNotifier>

using namespace oribund;

namespace
{

template <class Widget>
Widget& add(StandardPanel& panel, const typename Widget::InitArgs& args, const wchar_t* name, int y)
{
    auto* const widget = panel.addWidget(std::make_unique<Widget>(args), Glob::UserTopLeft(10, y));
    widget->setAccessibleName(UIString(name));
    return *widget;
}

} // namespace

int main(int argc, char** argv)
{
    const qt::SkinApplication application(argc, argv);
    test::TableList list{{L"Door", L"opens too late"}, {L"Window", L"shut"}};
    qt::PanelSurface surface;
    surface.setWindowTitle(QStringLiteral("Panel"));
    surface.resize(400, 300);
    auto panel = std::make_unique<StandardPanel>(GlobCreationInfo(400, 300, &surface.canvas()));
    Slider::InitArgs slider;
    slider.width = 200;
    slider.max = 10.0;
    slider.value = 4.0;
    add<Slider>(*panel, slider, L"Saturation", 10);
    add<Checkbox>(*panel, {}, L"Preserve luma", 40);
    NumericEntry::InitArgs number(90, 22);
    number.text = L"12";
    add<NumericEntry>(*panel, number, L"Radius", 70);
    add<TableWidget>(*panel, TableWidget::InitArgs(300, 120), L"Notes", 110).setAdaptor(&list);
    surface.setPanel(std::move(panel), qt::PanelSurface::Fits::Both);
    surface.show();
    surface.activateWindow();
    const QSocketNotifier end(0, QSocketNotifier::Read);
    QObject::connect(&end, &QSocketNotifier::activated, [] { QApplication::quit(); });
    const int status = QApplication::exec();
    surface.setPanel(nullptr); // before the list that its table shows
    return status;
}
