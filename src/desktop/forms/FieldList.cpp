#include "desktop/forms/FieldList.h"

#include "desktop/forms/FormScreen.h"
#include "desktop/platform/Resources.h"
#include "desktop/platform/Text.h"

#include <QHeaderView>
#include <QMimeData>

#include <array>

namespace tallybook::desktop {

namespace {

// By type code, from 1.
constexpr std::array kIcons = {"i_text", "i_num",  "i_num",  "i_num",  "i_list", "i_cbx",    "i_date", "i_time",
                               "i_expr", "i_memo", "i_key",  "i_dbj",  "i_dbl",  "i_12m",    "i_adj",  "i_adl",
                               "i_rdb",  "i_pic",  "i_cexp", "i_ainc", "i_pin",  "i_advexpr"};

QIcon iconOf(const forms::FieldLine& line) {
    const auto type = static_cast<std::size_t>(line.fieldType);
    if (line.isStatic() || type == 0 || type > kIcons.size())
        return icon(QStringLiteral("i_text"));
    return icon(QString::fromLatin1(kIcons[type - 1]));
}

} // namespace

FieldList::FieldList(QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QStringLiteral("LVFieldList"));
    setAccessibleName(tr("Fields"));
    setHeaderLabels({tr("No."), tr("Name"), tr("Type")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    setSelectionMode(QAbstractItemView::SingleSelection);
    header()->setStretchLastSection(true);
}

void FieldList::fill(const std::vector<forms::FieldLine>& lines) {
    clear();
    for (const forms::FieldLine& line : lines) {
        auto* item = new QTreeWidgetItem(this, {toQt(line.text), toQt(line.name), toQt(line.type)});
        item->setData(0, Qt::UserRole, int{line.slot});
        item->setIcon(0, iconOf(line));
        if (line.isStatic())
            item->setForeground(0, palette().brush(QPalette::Disabled, QPalette::Text));
    }
    for (int column = 0; column < columnCount(); ++column)
        resizeColumnToContents(column);
    header()->resizeSection(1, std::min(header()->sectionSize(1), 150));
    setCurrentItem(topLevelItem(0));
}

int FieldList::currentSlot() const {
    const QTreeWidgetItem* item = currentItem();
    return item == nullptr ? 0 : item->data(0, Qt::UserRole).toInt();
}

QStringList FieldList::mimeTypes() const {
    return {QString::fromLatin1(kFieldMime)};
}

QMimeData* FieldList::mimeData(const QList<QTreeWidgetItem*>& items) const {
    auto* dragged = new QMimeData;
    if (!items.isEmpty())
        dragged->setData(QString::fromLatin1(kFieldMime),
                         QByteArray::number(items.first()->data(0, Qt::UserRole).toInt()));
    return dragged;
}

} // namespace tallybook::desktop
