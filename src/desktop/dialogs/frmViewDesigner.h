// Edits the views: their columns, sort keys, frozen columns and filters. Each view is saved on its own, and the
// dialog stays open for the next.
#pragma once

#include "core/design/ViewDesign.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <string_view>

namespace Ui {
class frmViewDesigner;
}

namespace tallybook::desktop {

class ListInCell;

class frmViewDesigner : public QDialog {
    Q_OBJECT

public:
    // The caller runs AddViewFilterInfo when it has closed.
    frmViewDesigner(model::Document& doc, platform::Services& services, QWidget* parent);
    ~frmViewDesigner() override;

    // The only way out, cmdCancel and Escape alike: asks about a view that was changed and not saved.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum Column : int { kFields, kSort };

    void makeLists();
    void connectControls();
    void connectButtons();
    void connectKeys();
    // A handler as an operation of its own, the controls shown anew behind it.
    void perform(std::string_view tag, const std::function<void()>& operation);
    void showDesign();
    void showGrid();
    void clickGrid(int row, int column);
    void chooseView(int position);
    void add();
    bool save();
    bool mayLeave();

    std::unique_ptr<Ui::frmViewDesigner> m_ui;
    platform::Services& m_services;
    design::ViewDesign m_design;
    ListInCell* m_fields = nullptr; // CmbFields
    ListInCell* m_sort = nullptr;   // CmbSort
};

} // namespace tallybook::desktop
