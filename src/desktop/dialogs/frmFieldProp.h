// Field Properties: name, type, default and the attributes of one field slot.
#pragma once

#include "core/design/FieldProperties.h"
#include "desktop/dialogs/FieldPropPanels.h"

#include <QDialog>

#include <memory>
#include <optional>
#include <vector>

namespace tallybook::desktop {

class frmFieldProp : public QDialog {
    Q_OBJECT

public:
    // All outlive the dialog.
    frmFieldProp(model::Document& doc, platform::Services& services, design::OtherFolder& otherFolder, int slot,
                 design::FieldPropMode mode, QWidget* parent);
    ~frmFieldProp() override;

    // Unlike its base's, it goes on while the dialog hides itself for the change of a column.
    int exec() override;
    void accept() override; // OKButton
    void reject() override; // CancelButton

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makePanels();
    void connectControls();
    void fillAttributes();
    void keepLabelWidth();
    void showDraft();
    void showPanels();
    void showChoices();
    void take();
    void chooseType(int type);
    void editItems();
    bool isList() const; // as it is stored
    void leaveDefault();
    void setFocusTo(const design::FieldPropResult& result);
    QWidget* controlOf(const design::FieldPropResult& result);

    std::unique_ptr<Ui::frmFieldProp> m_ui;
    model::Document& m_doc;
    platform::Services& m_services;
    int m_slot;
    design::FieldPropMode m_mode;
    design::FieldPropDraft m_draft;
    std::optional<model::ListDef> m_listBefore; // of a field that is no list, and so must not lose it by Cancel
    FieldPropContext m_context;
    std::vector<std::unique_ptr<FieldPropPanel>> m_panels;
    AdvancedExpressionPanel* m_advanced = nullptr;
};

} // namespace tallybook::desktop
