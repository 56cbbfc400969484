#pragma once

#include <QObject>
#include <QString>

namespace workbench
{

/**
 * Shows every label as plain text, those inside message boxes and file dialogs included: by default a label takes
 * markup in a name for its own, and loads whatever it refers to. Installed on the application.
 */
class PlainTexts final : public QObject
{
public:
    explicit PlainTexts(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

/** A tooltip that shows the text as it is, lines included. */
QString plainTip(const QString& text);

} // namespace workbench
