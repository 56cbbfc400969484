#pragma once

#include "workbench/model/EffectCatalogue.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace workbench
{

/** The installed effects by category or, while something is searched for, those found, the best first. */
class EffectListPane final : public QWidget
{
public:
    /** The catalogue outlives the pane. */
    explicit EffectListPane(const EffectCatalogue& catalogue, QWidget* parent = nullptr);

    /** Called with the effect that was chosen, by a double click or Enter. */
    std::function<void(const std::string& service)> chosen;

    /** Called when the user is done with the search field, by Enter or Escape. */
    std::function<void()> done;

    /** The catalogue has changed. */
    void refresh() { fill(); }

    /** Gives the search field the keyboard. */
    void search();

    QLineEdit& searchField() { return *search_; }

    QTreeWidget& tree() { return *tree_; }

    QSize sizeHint() const override { return {230, 400}; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fill();
    void fillFound(const QString& search);
    QTreeWidgetItem* addCategory(QTreeWidgetItem* above, const QString& title);
    void addEffect(QTreeWidgetItem& category, const EffectDescription& effect);
    void choose(const QTreeWidgetItem* item);
    void walk(int by);
    void handBack();

    const EffectCatalogue& catalogue_;
    QLineEdit* search_;
    QTreeWidget* tree_;
};

/** How well an effect fits the search: 0 for its title, more for less, nothing when a word of the search is neither in
   its title, its category nor its service. Case does not matter. */
std::optional<int> searchRank(const EffectDescription& effect, const QString& search);

} // namespace workbench
