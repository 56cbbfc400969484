#pragma once

#include "workbench/model/EffectCatalogue.h"

#include <QWidget>

#include <functional>
#include <string>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace workbench
{

/** The installed effects by category, with a field that searches them. */
class EffectListPane final : public QWidget
{
public:
    /** The catalogue outlives the pane. */
    explicit EffectListPane(const EffectCatalogue& catalogue, QWidget* parent = nullptr);

    /** Called with the effect that was chosen, by a double click or Enter. */
    std::function<void(const std::string& service)> chosen;

    /** Gives the search field the keyboard. */
    void search();

    QLineEdit& searchField() { return *search_; }

    QTreeWidget& tree() { return *tree_; }

    QSize sizeHint() const override { return {230, 400}; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fill();
    QTreeWidgetItem* addCategory(QTreeWidgetItem* above, const QString& title);
    void addEffect(QTreeWidgetItem& category, const EffectDescription& effect);
    void expandAtRest();
    bool filterBelow(QTreeWidgetItem& item, const QString& text);
    void filter(const QString& text);
    void choose(const QTreeWidgetItem* item);

    const EffectCatalogue& catalogue_;
    QLineEdit* search_;
    QTreeWidget* tree_;
};

/** Whether every word of the search is in the effect's title, category or service, whatever the case. */
bool matchesSearch(const EffectDescription& effect, const QString& search);

} // namespace workbench
