// The records that the picker of a join lists, as its list asks for them.
#pragma once

#include "core/document/joins/ExternalPicker.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <vector>

namespace tallybook::desktop {

// Texts are made when they are painted, so that the longest list is there at once.
class ExtViewModel : public QAbstractTableModel {
    Q_OBJECT

public:
    // The view outlives the model. Nothing is listed before showRecords. Rows are so many pixels high.
    ExtViewModel(const document::ExtView& view, int rowHeight, QObject* parent);

    // Lists these records alone; their numbers ascend.
    void showRecords(std::vector<std::uint32_t> records);
    std::uint32_t record(int row) const { return m_records[static_cast<std::size_t>(row)]; }
    // The row of a record, -1 when it is not listed.
    int rowOf(std::uint32_t record) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString text(const QModelIndex& index) const;

    const document::ExtView& m_view;
    int m_rowHeight;
    std::vector<std::uint32_t> m_records;
};

} // namespace tallybook::desktop
