// Chooses the filters that apply together.
#pragma once

#include "core/document/views/MultipleFilter.h"

#include <QDialog>

#include <bitset>
#include <memory>
#include <vector>

namespace Ui {
class dlgMulFilter;
}

namespace tallybook::desktop {

class dlgMulFilter : public QDialog {
    Q_OBJECT

public:
    dlgMulFilter(const std::vector<document::FilterLine>& lines, QWidget* parent);
    ~dlgMulFilter() override;

    // The filter slots whose lines are checked.
    std::bitset<model::MaxFilters> slotsChecked() const;

private:
    std::unique_ptr<Ui::dlgMulFilter> m_ui;
};

} // namespace tallybook::desktop
