#pragma once

#include <QLineEdit>
#include <QPointer>

#include <functional>

namespace workbench
{

/**
 * Lets the user write a name in place, over what is in the window. Enter and leaving it take the name, Escape does not;
 * the keyboard then goes back to where it was. It deletes itself.
 */
class CueNameField final : public QLineEdit
{
public:
    using Taken = std::function<void(const QString& name)>;

    /** Opens a field above a point of the window, or as near to that as the window allows. */
    static CueNameField* open(QWidget& window, const QPoint& above, const QString& name, Taken taken);

    /** Closes it without taking the name. */
    void abort() { finish(false); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    CueNameField(QWidget& window, const QString& name, Taken taken);

    void finish(bool take);

    Taken taken_;
    QPointer<QWidget> before_; ///< who had the keyboard
    bool finished_ = false;
};

} // namespace workbench
