#include "bench/surface/NativeForm.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QSlider>
#include <QToolButton>

namespace bench
{

namespace
{
constexpr int kSteps = 1000;
}

NativeForm::NativeForm(int rows)
{
    auto* const contents = new QWidget;
    auto* const grid = new QGridLayout(contents);
    for (int row = 0; row < rows; ++row) {
        auto* const slider = new QSlider(Qt::Horizontal);
        auto* const entry = new QDoubleSpinBox;
        slider->setRange(0, kSteps);
        entry->setRange(0.0, 100.0);
        QObject::connect(slider, &QSlider::valueChanged, entry,
                         [entry](int value) { entry->setValue(100.0 * value / kSteps); });
        grid->addWidget(new QLabel(QStringLiteral("Number %1").arg(row)), row, 0);
        grid->addWidget(slider, row, 1);
        grid->addWidget(entry, row, 2);
        grid->addWidget(new QToolButton, row, 3);
        if (row == 0) {
            slider_ = slider;
            entry_ = entry;
        }
    }
    setWidgetResizable(true);
    setWidget(contents);
}

void NativeForm::edit(double value)
{
    slider_->setValue(static_cast<int>(value * kSteps / 100.0));
}

} // namespace bench
