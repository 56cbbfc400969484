#pragma once

#include <QTableView>

namespace oribund
{
class Event;
class Palette;
class TableWidget;
} // namespace oribund

namespace workbench
{

class TableModel;

/**
 * The native widget of a table. What mouse and keys do is the table's to say; the view scrolls, lets the header be
 * dragged, paints the cells in view and tells assistive tools. Its peer detaches it when the table goes; it is then
 * empty until Qt deletes it.
 */
class TableView final : public QTableView
{
public:
    TableView(oribund::TableWidget& table, QWidget& parent);
    ~TableView() override;

    /** The table must not be called any more. */
    void detach();

    void showPalette(const oribund::Palette& palette);

    /** Brings contents, columns, scroll offset and current cell in step with the table. */
    void refresh();

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void passMouse(const QMouseEvent& event);
    bool claims(const oribund::Event& key) const;
    bool beginTyping();
    void passToEntry(QEvent& event) const;
    bool passEntryKey(const QKeyEvent& event);
    QWidget* entry() const;
    void refreshColumns();
    void refreshCurrent();

    oribund::TableWidget* table_;
    TableModel* model_;
    bool refreshing_ = false;
};

} // namespace workbench
