#pragma once

#include <QScrollArea>

class QDoubleSpinBox;
class QSlider;

namespace bench
{

/** The form that one would write by hand for so many numbers: name, slider, spin box and button in a row. */
class NativeForm : public QScrollArea
{
public:
    explicit NativeForm(int rows);

    /** Changes the number of the first row, as the program does. */
    void edit(double value);

private:
    QSlider* slider_ = nullptr;
    QDoubleSpinBox* entry_ = nullptr;
};

} // namespace bench
