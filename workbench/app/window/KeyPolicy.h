#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace workbench
{

/**
 * Lets the control that has the keyboard have the keys that it lives on (Space on a button, the arrows on a slider or a
 * list) before the window's commands take them, and the window the keys that it alone has a use for. Panels know their
 * own keys. Installed on the application.
 */
class KeyPolicy final : public QObject
{
public:
    explicit KeyPolicy(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static bool belongsToControl(const QWidget& control, const QKeyEvent& key);
};

} // namespace workbench
