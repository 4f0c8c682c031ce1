// The designer's list of fields, from which they are dragged.
#pragma once

#include "core/forms/FormBuilder.h"

#include <QTreeWidget>

namespace tallybook::desktop {

class FieldList : public QTreeWidget {
    Q_OBJECT

public:
    // Its name is LVFieldList. Columns: slot with the type's icon, name, type.
    explicit FieldList(QWidget* parent);

    void fill(const std::vector<forms::FieldLine>& lines);
    int currentSlot() const; // 0 without a line

protected:
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
};

} // namespace tallybook::desktop
