// Defines the named filters, or the condition of a Conditional Expression.
#pragma once

#include "core/design/FilterDesign.h"

#include <QDialog>

#include <array>
#include <functional>
#include <memory>

class QComboBox;
class QLineEdit;

namespace Ui {
class dlgFilterDesg;
}

namespace tallybook::desktop {

class dlgFilterDesg : public QDialog {
    Q_OBJECT

public:
    // The named filters of a document. Opens on the one in force, or on the first slot; OK and Clear store in the
    // document, so that the caller runs filtersEdited however the dialog was closed.
    dlgFilterDesg(model::Document& doc, platform::Services& services, QWidget* parent);
    // A condition over the fields of `db`, which OK alone changes. Both must outlive the dialog.
    dlgFilterDesg(const model::DatabaseModel& db, platform::Services& services, model::CondExprDef& condition,
                  QWidget* parent);
    ~dlgFilterDesg() override;

private:
    struct ConditionBoxes {
        QComboBox* CmbFldListCmp;
        QComboBox* CmbOpr;
        QComboBox* CmbFldOpnd;
        QLineEdit* TxtConst;
    };
    // What differs between the two uses.
    struct Definition {
        std::function<design::FilterControls()> current;
        std::function<design::FilterResult(const design::FilterControls&)> ok;
        std::function<bool(design::FilterControls&)> clear;
    };

    dlgFilterDesg(const model::DatabaseModel& db, platform::Services& services, QWidget* parent);
    void connectControls();
    void connectCondition(int condition);
    design::FilterControls read() const;
    void showControls(const design::FilterControls& controls);
    void enable(const design::FilterControls& controls);
    void showCurrent();
    void changeCondition(int condition, const std::function<void(design::ConditionControls&)>& change);
    void focusOn(const design::FilterResult& refused);
    void chooseFilter(int slot);
    void clear();
    bool store();
    void ok();

    std::unique_ptr<Ui::dlgFilterDesg> m_ui;
    const model::DatabaseModel& m_db;
    platform::Services& m_services;
    model::Document* m_doc = nullptr; // of the named filters
    int m_slot = 0;                   // of the filter shown
    Definition m_definition;
    std::array<ConditionBoxes, design::kConditions> m_conditions;
    std::array<QComboBox*, design::kConditions - 1> m_links;
    design::FilterControls m_shown;
};

} // namespace tallybook::desktop
