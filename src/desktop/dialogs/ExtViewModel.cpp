#include "desktop/dialogs/ExtViewModel.h"

#include "desktop/grid/GridFont.h"
#include "desktop/platform/Text.h"

#include <QSize>

#include <algorithm>
#include <utility>

namespace tallybook::desktop {

ExtViewModel::ExtViewModel(const document::ExtView& view, int rowHeight, QObject* parent)
    : QAbstractTableModel(parent), m_view(view), m_rowHeight(rowHeight) {}

void ExtViewModel::showRecords(std::vector<std::uint32_t> records) {
    beginResetModel();
    m_records = std::move(records);
    endResetModel();
}

int ExtViewModel::rowOf(std::uint32_t record) const {
    const auto found = std::lower_bound(m_records.begin(), m_records.end(), record);
    return found == m_records.end() || *found != record ? -1 : static_cast<int>(found - m_records.begin());
}

int ExtViewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_records.size());
}

int ExtViewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_view.columns().size());
}

QVariant ExtViewModel::data(const QModelIndex& index, int role) const {
    switch (index.isValid() ? role : Qt::UserRole) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: // a long text is cut in its column
        return plainTip(text(index));
    case Qt::SizeHintRole:
        return QSize(0, m_rowHeight);
    default:
        return {};
    }
}

QVariant ExtViewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return toQt(m_view.columns()[static_cast<std::size_t>(section)].header);
}

// In one line, as in the grid.
QString ExtViewModel::text(const QModelIndex& index) const {
    std::string scratch;
    QString shown;
    for (const char byte : m_view.text(record(index.row()), static_cast<std::size_t>(index.column()), scratch))
        shown += QChar(static_cast<char16_t>(paintedCharacter(static_cast<unsigned char>(byte))));
    return shown;
}

} // namespace tallybook::desktop
