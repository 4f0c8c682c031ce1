// Composes the value of a cell from the auto-writer list of its field.
#pragma once

#include "core/design/AutoWriter.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class dlgAutoWriter;
}

namespace tallybook::desktop {

class dlgAutoWriter : public QDialog {
    Q_OBJECT

public:
    // Several items make a text; a number is one of them.
    enum class Choice { Several, One };

    dlgAutoWriter(const std::vector<std::string>& items, Choice choice, QWidget* parent);
    ~dlgAutoWriter() override;

    std::vector<int> selected() const; // positions in List1, in its order
    design::OptAction action() const;

private:
    std::unique_ptr<Ui::dlgAutoWriter> m_ui;
};

} // namespace tallybook::desktop
