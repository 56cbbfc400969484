#include "workbench/app/effects/EffectListPane.h"

#include "skin/theme/Glyphs.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMap>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>
#include <vector>

namespace workbench
{

using oribund::qt::Glyph;
using oribund::qt::glyphIcon;

namespace
{
constexpr int kService = Qt::UserRole;

QString titleOf(const EffectDescription& effect)
{
    return QString::fromStdString(effect.title);
}

/** Described by hand, and fit for use. */
bool isRecommended(const EffectDescription& effect)
{
    return effect.curated && effect.blockedBecause.empty();
}
} // namespace

std::optional<int> searchRank(const EffectDescription& effect, const QString& search)
{
    const QString title = titleOf(effect);
    const QString text = title + QString::fromStdString(' ' + effect.category + ' ' + effect.service);
    const QStringList words = search.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& word : words)
        if (!text.contains(word, Qt::CaseInsensitive))
            return std::nullopt;
    const QString wanted = words.join(QLatin1Char(' '));
    if (title.compare(wanted, Qt::CaseInsensitive) == 0)
        return 0;
    if (title.startsWith(wanted, Qt::CaseInsensitive))
        return 1;
    const auto inTitle = [&](const QString& word) { return title.contains(word, Qt::CaseInsensitive); };
    return std::all_of(words.begin(), words.end(), inTitle) ? 2 : 3;
}

namespace
{
/** Whether the search has a use for a key beyond typing. */
bool steersList(const QKeyEvent& press)
{
    if (press.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier))
        return false;
    switch (press.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Escape:
        return true;
    default:
        return false;
    }
}
} // namespace

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
    QObject::connect(search_, &QLineEdit::textChanged, this, [this] { fill(); });
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
    const auto escaped = [](const std::string& text) { return QString::fromStdString(text).toHtmlEscaped(); };
    // With markup the tip wraps.
    item->setToolTip(0, QStringLiteral("<p><b>%1</b> \u2013 %2</p><p>%3</p>")
                            .arg(escaped(effect.title), escaped(effect.category), escaped(tip)));
    if (!effect.blockedBecause.empty())
        item->setForeground(0, palette().color(QPalette::Disabled, QPalette::Text));
}

void EffectListPane::fill()
{
    tree_->clear();
    const QString search = search_->text().simplified();
    tree_->setRootIsDecorated(search.isEmpty());
    if (!search.isEmpty())
        return fillFound(search);
    // Those that are described by hand come first; the long rest stands folded below them.
    QMap<QString, QTreeWidgetItem*> curated;
    QMap<QString, QTreeWidgetItem*> others;
    for (const EffectCatalogue::Entry& effect : catalogue_.all()) {
        if (!isRecommended(*effect))
            continue;
        QTreeWidgetItem*& category = curated[QString::fromStdString(effect->category)];
        category = category ? category : addCategory(nullptr, QString::fromStdString(effect->category));
        addEffect(*category, *effect);
        category->setExpanded(true);
    }
    QTreeWidgetItem* const more = addCategory(nullptr, QStringLiteral("All others"));
    for (const EffectCatalogue::Entry& effect : catalogue_.all()) {
        if (isRecommended(*effect))
            continue;
        QTreeWidgetItem*& category = others[QString::fromStdString(effect->category)];
        category = category ? category : addCategory(more, QString::fromStdString(effect->category));
        addEffect(*category, *effect);
    }
}

void EffectListPane::fillFound(const QString& search)
{
    struct Found {
        int rank;
        const EffectDescription* effect;
    };

    std::vector<Found> found;
    for (const EffectCatalogue::Entry& effect : catalogue_.all())
        if (const std::optional<int> rank = searchRank(*effect, search))
            found.push_back({*rank, effect.get()});
    std::stable_sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
        // Of all but the very title those come first that are fit for use.
        const auto key = [](const Found& one) {
            return std::tuple(one.rank != 0, !isRecommended(*one.effect), one.rank);
        };
        return key(a) < key(b);
    });
    for (const Found& one : found)
        addEffect(*tree_->invisibleRootItem(), *one.effect);
    tree_->setCurrentItem(tree_->topLevelItem(0));
}

void EffectListPane::choose(const QTreeWidgetItem* item)
{
    const QString service = item ? item->data(0, kService).toString() : QString();
    if (!service.isEmpty() && chosen)
        chosen(service.toStdString());
}

void EffectListPane::walk(int by)
{
    // What is found is a plain list; among categories the keyboard goes on in the tree itself.
    if (search_->text().simplified().isEmpty()) {
        tree_->setFocus(Qt::OtherFocusReason);
        return;
    }
    const int row = tree_->indexOfTopLevelItem(tree_->currentItem()) + by;
    if (QTreeWidgetItem* const item = tree_->topLevelItem(row))
        tree_->setCurrentItem(item);
}

void EffectListPane::handBack()
{
    if (done)
        done();
}

void EffectListPane::search()
{
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
}

bool EffectListPane::eventFilter(QObject* watched, QEvent* event)
{
    // What comes first asks whether the key is for a shortcut of the window.
    const bool asks = event->type() == QEvent::ShortcutOverride;
    const bool presses = event->type() == QEvent::KeyPress;
    if (watched != search_ || !(asks || presses) || !steersList(static_cast<QKeyEvent&>(*event)))
        return QWidget::eventFilter(watched, event);
    if (asks) {
        event->accept();
        return true;
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!tree_->currentItem())
            return true;
        choose(tree_->currentItem());
        handBack();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        walk(static_cast<QKeyEvent*>(event)->key() == Qt::Key_Up ? -1 : 1);
        return true;
    default:
        search_->clear();
        handBack();
        return true;
    }
}

} // namespace workbench
