#include "workbench/app/effects/EffectListPane.h"

#include "skin/Glyphs.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMap>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace workbench
{

namespace
{
constexpr int kService = Qt::UserRole;

/** The first effect in view below an item; null for none. */
QTreeWidgetItem* firstEffect(QTreeWidgetItem& item)
{
    if (!item.data(0, kService).toString().isEmpty())
        return &item;
    for (int i = 0; i < item.childCount(); ++i)
        if (!item.child(i)->isHidden())
            if (QTreeWidgetItem* const found = firstEffect(*item.child(i)))
                return found;
    return nullptr;
}
} // namespace

bool matchesSearch(const EffectDescription& effect, const QString& search)
{
    const QString text = QString::fromStdString(effect.title + ' ' + effect.category + ' ' + effect.service);
    for (const QString& word : search.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        if (!text.contains(word, Qt::CaseInsensitive))
            return false;
    return true;
}

EffectListPane::EffectListPane(const EffectCatalogue& catalogue, QWidget* parent)
    : QWidget(parent)
    , catalogue_(catalogue)
    , search_(new QLineEdit)
    , tree_(new QTreeWidget)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->setSpacing(4);
    column->addWidget(search_);
    column->addWidget(tree_);
    search_->setPlaceholderText(QStringLiteral("Search effects"));
    search_->setAccessibleName(QStringLiteral("Search effects"));
    search_->setClearButtonEnabled(true);
    search_->addAction(glyphIcon(Glyph::Search), QLineEdit::LeadingPosition);
    search_->installEventFilter(this);
    tree_->setAccessibleName(QStringLiteral("Effects"));
    tree_->setHeaderHidden(true);
    tree_->setRootIsDecorated(true);
    tree_->setIndentation(14);
    tree_->setUniformRowHeights(true);
    tree_->setStyleSheet(QStringLiteral("QTreeView::item { height: 20px; }"));
    QObject::connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) { filter(text); });
    QObject::connect(tree_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { choose(item); });
    fill();
}

QTreeWidgetItem* EffectListPane::addCategory(QTreeWidgetItem* above, const QString& title)
{
    auto* category = above ? new QTreeWidgetItem(above, {title}) : new QTreeWidgetItem(tree_, {title});
    QFont font = tree_->font();
    font.setBold(true);
    category->setFont(0, font);
    return category;
}

void EffectListPane::addEffect(QTreeWidgetItem& category, const EffectDescription& effect)
{
    auto* item = new QTreeWidgetItem(&category, {QString::fromStdString(effect.title)});
    item->setData(0, kService, QString::fromStdString(effect.service));
    const std::string& tip = effect.blockedBecause.empty() ? effect.help : effect.blockedBecause;
    // With markup the tip wraps.
    item->setToolTip(0, QStringLiteral("<p><b>%1</b></p><p>%2</p>")
                            .arg(item->text(0).toHtmlEscaped(), QString::fromStdString(tip).toHtmlEscaped()));
    if (!effect.blockedBecause.empty())
        item->setForeground(0, palette().color(QPalette::Disabled, QPalette::Text));
}

void EffectListPane::fill()
{
    // Those that are described by hand come first; the long rest stands folded below them.
    QMap<QString, QTreeWidgetItem*> curated;
    QMap<QString, QTreeWidgetItem*> others;
    for (const EffectCatalogue::Entry& effect : catalogue_.all()) {
        if (!effect->curated || !effect->blockedBecause.empty())
            continue;
        QTreeWidgetItem*& category = curated[QString::fromStdString(effect->category)];
        category = category ? category : addCategory(nullptr, QString::fromStdString(effect->category));
        addEffect(*category, *effect);
    }
    QTreeWidgetItem* const more = addCategory(nullptr, QStringLiteral("All others"));
    for (const EffectCatalogue::Entry& effect : catalogue_.all()) {
        if (effect->curated && effect->blockedBecause.empty())
            continue;
        QTreeWidgetItem*& category = others[QString::fromStdString(effect->category)];
        category = category ? category : addCategory(more, QString::fromStdString(effect->category));
        addEffect(*category, *effect);
    }
    expandAtRest();
}

void EffectListPane::expandAtRest()
{
    tree_->collapseAll();
    for (int i = 0; i + 1 < tree_->topLevelItemCount(); ++i)
        tree_->topLevelItem(i)->setExpanded(true);
}

bool EffectListPane::filterBelow(QTreeWidgetItem& item, const QString& text)
{
    bool any = false;
    if (const QString service = item.data(0, kService).toString(); !service.isEmpty())
        any = matchesSearch(*catalogue_.find(service.toStdString()), text);
    for (int i = 0; i < item.childCount(); ++i)
        any = filterBelow(*item.child(i), text) || any;
    item.setHidden(!any);
    return any;
}

void EffectListPane::filter(const QString& text)
{
    filterBelow(*tree_->invisibleRootItem(), text);
    if (text.isEmpty())
        expandAtRest();
    else
        tree_->expandAll();
    tree_->setCurrentItem(text.isEmpty() ? nullptr : firstEffect(*tree_->invisibleRootItem()));
}

void EffectListPane::choose(const QTreeWidgetItem* item)
{
    const QString service = item ? item->data(0, kService).toString() : QString();
    if (!service.isEmpty() && chosen)
        chosen(service.toStdString());
}

void EffectListPane::search()
{
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
}

bool EffectListPane::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != search_ || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose(tree_->currentItem());
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        QCoreApplication::sendEvent(tree_, event);
        return true;
    case Qt::Key_Escape:
        search_->clear();
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

} // namespace workbench
