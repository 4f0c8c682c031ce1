// The panels of Field Properties. Each carries its part of the draft to its controls and back, and answers what is
// clicked in it.
#pragma once

#include "core/design/ExpressionBuilder.h"
#include "core/design/ExternalChoices.h"
#include "core/design/FieldProperties.h"
#include "core/model/Document.h"
#include "core/platform/Services.h"
#include "desktop/platform/Text.h"

#include <QObject>
#include <QStringList>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

class QButtonGroup;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QSpinBox;

namespace Ui {
class frmFieldProp;
}

namespace tallybook::desktop {

// What the panels share with the window, which outlives them.
struct FieldPropContext {
    QWidget& window;
    Ui::frmFieldProp& ui;
    design::FieldPropDraft& draft;
    model::Document& doc;
    platform::Services& services;
    design::OtherFolder& otherFolder;
    int slot;
};

class FieldPropPanel : public QObject {
    Q_OBJECT

public:
    explicit FieldPropPanel(const FieldPropContext& context) : m_context(context) {}

    virtual void show() = 0; // the draft in the controls
    virtual void take() = 0; // the controls in the draft

protected:
    Ui::frmFieldProp& ui() const { return m_context.ui; }
    design::FieldPropDraft& draft() const { return m_context.draft; }
    const model::DatabaseModel& db() const { return m_context.doc.CurrDB20; }
    platform::Services& services() const { return m_context.services; }
    const FieldPropContext& context() const { return m_context; }

    // A click: what was typed before it is taken, the draft is changed, and its outcome shown.
    void change(std::string_view tag, const std::function<void()>& operation);

private:
    const FieldPropContext& m_context;
};

// checkAutoWriter and FrmAWProp.
class AutoWriterPanel : public FieldPropPanel {
    Q_OBJECT

public:
    explicit AutoWriterPanel(const FieldPropContext& context);
    void show() override;
    void take() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addText();
    void removeText();
};

// frmExpr.
class SimpleExpressionPanel : public FieldPropPanel {
    Q_OBJECT

public:
    explicit SimpleExpressionPanel(const FieldPropContext& context);
    void show() override;
    void take() override;

private:
    void makeLists();
    void showOperators();

    std::array<QComboBox*, design::kOperands> m_operands{};
    std::array<QComboBox*, design::kOperators> m_operators{};
};

// frmExprAdv.
class AdvancedExpressionPanel : public FieldPropPanel {
    Q_OBJECT

public:
    explicit AdvancedExpressionPanel(const FieldPropContext& context);
    void show() override;
    void take() override;
    // Selects the word at a place of the text.
    void select(int place);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void insert(design::InsertionList list, QComboBox& box, int position);
};

// frmExternal: DB Join and DB Lookup.
class ExternalPanel : public FieldPropPanel {
    Q_OBJECT

public:
    explicit ExternalPanel(const FieldPropContext& context);
    void show() override;
    void take() override;

private:
    bool isLookup() const { return draft().type() == model::FieldType::DBLookup; }
    void chooseUser(int position);
    void chooseSource();
    void followJoin();
    void readOther();
    void forgetOther();
    void showHint();
    void takeKeyType();
    void forgetWhatIsNotThere();

    std::string m_read; // the source whose structure is known, or was looked for
    std::unique_ptr<model::DatabaseModel> m_other;
};

// FrmAddress: the two types of the address book.
class AddressPanel : public FieldPropPanel {
    Q_OBJECT

public:
    explicit AddressPanel(const FieldPropContext& context);
    void show() override;
    void take() override;
};

// frmMasterDetail.
class OneToManyPanel : public FieldPropPanel {
    Q_OBJECT

public:
    explicit OneToManyPanel(const FieldPropContext& context);
    void show() override;
    void take() override;

private:
    static constexpr int kRows = 3;

    void chooseUser(int position);

    std::array<QComboBox*, kRows> m_match{};
    std::array<QComboBox*, kRows> m_sort{};
    std::array<QSpinBox*, kRows> m_options{};
};

// FrmRadio.
class RadioPanel : public FieldPropPanel {
    Q_OBJECT

public:
    explicit RadioPanel(const FieldPropContext& context);
    void show() override;
    void take() override;

private:
    QButtonGroup* m_group;
    std::array<QRadioButton*, design::kRadioOptions> m_marks{};
    std::array<QLineEdit*, design::kRadioOptions> m_texts{};
};

// FrmCondExpression.
class ConditionPanel : public FieldPropPanel {
    Q_OBJECT

public:
    explicit ConditionPanel(const FieldPropContext& context);
    void show() override;
    void take() override;

private:
    struct Branch {
        design::BranchDraft& draft;
        QRadioButton& field;
        QRadioButton& constant;
        QComboBox& fields;
        QLineEdit& text;
        QComboBox& colours;
    };
    std::array<Branch, 2> branches();
    void connectBranch(const Branch& branch);
    void showBranch(const Branch& branch);
    void takeBranch(const Branch& branch);
    void editCondition();
};

// The entries of a core list as the windows have them.
template <class Entries> QStringList qtEntries(const Entries& entries) {
    QStringList list;
    for (const auto& entry : entries)
        list += toQt(entry);
    return list;
}
// Fills a list whose entries stand for numbers, and selects one.
void showNumbers(QComboBox& box, std::vector<design::NumberedEntry> entries, std::optional<std::uint8_t> number);
// The number of the selected entry.
std::optional<std::uint8_t> chosenNumber(const QComboBox& box);
// Takes the text of a list that can be typed into, unless it is the one that the list shows already.
void takeChosen(const QComboBox& box, std::string& text);

} // namespace tallybook::desktop
