// The picker: chooses the record of another database that a join's cell refers to.
#pragma once

#include "core/document/joins/ExternalPicker.h"

#include <QDialog>

#include <cstdint>
#include <memory>
#include <optional>

namespace Ui {
class frmExtView;
}

namespace tallybook::desktop {

class ExtViewModel;

class frmExtView : public QDialog {
    Q_OBJECT

public:
    struct Contents {
        QString fieldName;
        QString find;                        // to begin with
        std::optional<std::uint32_t> record; // that the cell refers to
        bool mayBeEmptied = false;           // the cell refers to something
    };

    // The view outlives the dialog.
    frmExtView(const document::ExtView& view, const Contents& contents, QWidget* parent);
    ~frmExtView() override;

    // The record that is selected in the list.
    std::optional<std::uint32_t> SelectedExtRow() const;
    // Accepted by cmdNone: the cell is to refer to no record.
    bool wantsNone() const { return m_wantsNone; }

    void setVisible(bool visible) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeColumns();
    void find();
    void select(int row);
    void showSelected();
    QString countText() const;

    std::unique_ptr<Ui::frmExtView> m_ui;
    const document::ExtView& m_view;
    ExtViewModel* m_model;
    bool m_wantsNone = false;
};

} // namespace tallybook::desktop
