#pragma once

#include "oribund/host/notify/MethodCallback.h"
#include "workbench/app/session/Workspace.h"

#include <QWidget>

class QLabel;
class QLineEdit;

namespace workbench
{

class ActionTable;

/** Below the picture: the current time, which can be typed, its cue, the buttons that move it, and the length of the
 * edit. */
class TransportBar final : public QWidget
{
public:
    /** The workspace and the actions outlive the bar. */
    TransportBar(Workspace& workspace, const ActionTable& actions, QWidget* parent = nullptr);

private:
    int handleReplaced(const EditReplaced&);
    int handleTime(const oribund::ValServerEvent<double>& event);
    int handlePlaying(const oribund::ValServerEvent<bool>& event);
    int handleModification(const oribund::EditModification&);
    void addButtons();
    void goToTyped();
    void showTime();
    void showCue();
    void showLength();

    Workspace& workspace_;
    const ActionTable& actions_;
    QLineEdit* time_;
    QLabel* cue_;
    QLabel* length_;
    oribund::MethodCallback<TransportBar, EditReplaced> replacedCallback_;
    oribund::MethodCallback<TransportBar, oribund::ValServerEvent<double>> timeCallback_;
    oribund::MethodCallback<TransportBar, oribund::ValServerEvent<bool>> playCallback_;
    oribund::MethodCallback<TransportBar, oribund::EditModification> editCallback_;
};

} // namespace workbench
