#include "workbench/app/EffectListPane.h"

#include "workbench/skin/Glyphs.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace workbench
{

namespace
{
constexpr int kService = Qt::UserRole;

QTreeWidgetItem* firstVisible(const QTreeWidget& tree)
{
    for (int i = 0; i < tree.topLevelItemCount(); ++i) {
        QTreeWidgetItem* const category = tree.topLevelItem(i);
        for (int j = 0; !category->isHidden() && j < category->childCount(); ++j)
            if (!category->child(j)->isHidden())
                return category->child(j);
    }
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
    QObject::connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) { filter(text); });
    QObject::connect(tree_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) { choose(item); });
    fill();
}

void EffectListPane::fill()
{
    QMap<QString, QTreeWidgetItem*> categories;
    for (const EffectCatalogue::Entry& effect : catalogue_.all()) {
        const QString category = QString::fromStdString(effect->category);
        QTreeWidgetItem*& parent = categories[category];
        if (!parent) {
            parent = new QTreeWidgetItem(tree_, {category});
            parent->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            QFont font = tree_->font();
            font.setBold(true);
            parent->setFont(0, font);
        }
        auto* item = new QTreeWidgetItem(parent, {QString::fromStdString(effect->title)});
        item->setData(0, kService, QString::fromStdString(effect->service));
        const std::string& tip = effect->blockedBecause.empty() ? effect->help : effect->blockedBecause;
        // In rich text the tip wraps.
        item->setToolTip(0, QStringLiteral("<p><b>%1</b></p><p>%2</p>")
                                .arg(item->text(0).toHtmlEscaped(), QString::fromStdString(tip).toHtmlEscaped()));
        if (!effect->blockedBecause.empty())
            item->setForeground(0, palette().color(QPalette::Disabled, QPalette::Text));
    }
    // The well-described ones are open at first, the long rest is folded.
    for (const EffectCatalogue::Entry& effect : catalogue_.all())
        if (effect->curated)
            categories[QString::fromStdString(effect->category)]->setExpanded(true);
}

void EffectListPane::filter(const QString& text)
{
    for (int i = 0; i < tree_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* const category = tree_->topLevelItem(i);
        bool any = false;
        for (int j = 0; j < category->childCount(); ++j) {
            QTreeWidgetItem* const item = category->child(j);
            const auto effect = catalogue_.find(item->data(0, kService).toString().toStdString());
            item->setHidden(!matchesSearch(*effect, text));
            any = any || !item->isHidden();
        }
        category->setHidden(!any);
        if (!text.isEmpty())
            category->setExpanded(true);
    }
    tree_->setCurrentItem(text.isEmpty() ? nullptr : firstVisible(*tree_));
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
