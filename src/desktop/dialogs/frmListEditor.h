// Edits the items of the lists and the categories. Each button changes the list at once, so that there is no Cancel.
#pragma once

#include "core/design/ListEditor.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace Ui {
class frmListEditor;
}

namespace tallybook::desktop {

class frmListEditor : public QDialog {
    Q_OBJECT

public:
    // Opens on a slot's list. `name` is shown for its field when it is being renamed.
    frmListEditor(model::Document& doc, platform::Services& services, int slot, QWidget* parent,
                  const std::string& name = {});
    ~frmListEditor() override;

    // However the window is closed, the columns show the changed items.
    void done(int result) override;

private:
    void buildCombo();
    void buildList(int selected);
    // A button: the operation takes the selected position and gives the one that is selected afterwards.
    void press(std::string_view tag, const std::function<int(int)>& operation);
    void connectButtons();
    void connectKeys();

    std::unique_ptr<Ui::frmListEditor> m_ui;
    platform::Services& m_services;
    design::ListEditor m_editor;
};

} // namespace tallybook::desktop
