#include "desktop/dialogs/dlgFilterDesg.h"

#include "core/design/Tags.h"
#include "core/platform/Operation.h"
#include "desktop/platform/Combos.h"
#include "desktop/platform/TypedText.h"
#include "ui_dlgFilterDesg.h"

#include <QStandardItemModel>

namespace tallybook::desktop {

namespace {

using design::ConditionControls;
using design::FilterControls;
using design::FilterFocus;
using design::FilterResult;
namespace tags = design::tags;

// The slot of the filter in force; the first one for none or several.
int shownFirst(const model::Document& doc) {
    return doc.CurrentFilter >= 1 && doc.CurrentFilter <= model::MaxFilters ? doc.CurrentFilter - 1 : 0;
}

void enableLast(QComboBox& combo, bool enabled) {
    const auto* items = qobject_cast<QStandardItemModel*>(combo.model());
    items->item(combo.count() - 1)->setEnabled(enabled);
}

} // namespace

dlgFilterDesg::dlgFilterDesg(model::Document& doc, platform::Services& services, QWidget* parent)
    : dlgFilterDesg(doc.CurrDB20, services, parent) {
    m_doc = &doc;
    m_slot = shownFirst(doc);
    m_definition = {
        [this] { return design::CurrentDefinition(m_db, m_db.Filters[static_cast<std::size_t>(m_slot)]); },
        [this](const FilterControls& controls) { return design::filterOk(*m_doc, m_services, m_slot, controls); },
        [this](FilterControls& controls) { return design::clearFilter(*m_doc, m_services, m_slot, controls); }};
    platform::runOperation(services.ui, tags::kFilterLoading, [this] { showCurrent(); });
    m_ui->LblFilterName->setFocus();
}

dlgFilterDesg::dlgFilterDesg(const model::DatabaseModel& db, platform::Services& services,
                             model::CondExprDef& condition, QWidget* parent)
    : dlgFilterDesg(db, services, parent) {
    m_definition = {[this, &condition] { return design::CurrentDefinition(m_db, condition); },
                    [this, &condition](const FilterControls& controls) {
                        return design::conditionOk(m_db, m_services, controls, condition);
                    },
                    [this](FilterControls& controls) { return design::clearCondition(m_services, controls); }};
    setWindowTitle(tr("Condition"));
    for (QWidget* widget : {static_cast<QWidget*>(m_ui->lblFilterList), static_cast<QWidget*>(m_ui->CmbFilterList),
                            static_cast<QWidget*>(m_ui->lblName), static_cast<QWidget*>(m_ui->LblFilterName)})
        widget->hide();
    platform::runOperation(services.ui, tags::kFilterLoading, [this] { showCurrent(); });
    m_ui->CmbFldListCmp1->setFocus();
    resize(width(), minimumSizeHint().height());
}

dlgFilterDesg::dlgFilterDesg(const model::DatabaseModel& db, platform::Services& services, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::dlgFilterDesg>()), m_db(db), m_services(services) {
    m_ui->setupUi(this);
    m_conditions = {{{m_ui->CmbFldListCmp1, m_ui->CmbOpr1, m_ui->CmbFldOpnd1, m_ui->TxtConst1},
                     {m_ui->CmbFldListCmp2, m_ui->CmbOpr2, m_ui->CmbFldOpnd2, m_ui->TxtConst2},
                     {m_ui->CmbFldListCmp3, m_ui->CmbOpr3, m_ui->CmbFldOpnd3, m_ui->TxtConst3}}};
    m_links = {m_ui->CmbRelOpr1, m_ui->CmbRelOpr2};
    connectControls();
}

dlgFilterDesg::~dlgFilterDesg() = default;

void dlgFilterDesg::connectControls() {
    connect(m_ui->CmbFilterList, &QComboBox::activated, this, [this](int slot) {
        platform::runOperation(m_services.ui, tags::kFilterDefinition, [this, slot] { chooseFilter(slot); });
    });
    for (int condition = 0; condition < design::kConditions; ++condition)
        connectCondition(condition);
    for (QComboBox* link : m_links)
        connect(link, &QComboBox::currentIndexChanged, this, [this] { enable(read()); });
    connect(m_ui->ClearButton, &QPushButton::clicked, this,
            [this] { platform::runOperation(m_services.ui, tags::kFilterDefinition, [this] { clear(); }); });
    connect(m_ui->OKButton, &QPushButton::clicked, this,
            [this] { platform::runOperation(m_services.ui, tags::kFilterOk, [this] { ok(); }); });
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &QDialog::reject);
}

void dlgFilterDesg::connectCondition(int condition) {
    const ConditionBoxes& boxes = m_conditions[static_cast<std::size_t>(condition)];
    connect(boxes.CmbFldListCmp, &QComboBox::currentIndexChanged, this, [this, condition](int position) {
        changeCondition(condition,
                        [&](ConditionControls& controls) { design::selectLeft(m_db, controls, position); });
    });
    connect(boxes.CmbFldOpnd, &QComboBox::currentIndexChanged, this, [this, condition](int position) {
        changeCondition(condition, [&](ConditionControls& controls) { design::selectOperand(controls, position); });
    });
}

void dlgFilterDesg::changeCondition(int condition, const std::function<void(ConditionControls&)>& change) {
    FilterControls controls = read();
    change(controls.conditions[static_cast<std::size_t>(condition)]);
    showControls(controls);
}

FilterControls dlgFilterDesg::read() const {
    FilterControls controls = m_shown; // for the texts that nobody touched
    takeTyped(*m_ui->LblFilterName, controls.LblFilterName);
    for (std::size_t n = 0; n < m_conditions.size(); ++n) {
        const ConditionBoxes& boxes = m_conditions[n];
        ConditionControls& condition = controls.conditions[n];
        condition.CmbFldListCmp = boxes.CmbFldListCmp->currentIndex();
        condition.CmbOpr = boxes.CmbOpr->currentIndex();
        condition.CmbFldOpnd = boxes.CmbFldOpnd->currentIndex();
        takeTyped(*boxes.TxtConst, condition.TxtConst);
    }
    for (std::size_t i = 0; i < m_links.size(); ++i)
        controls.CmbRelOpr[i] = m_links[i]->currentIndex();
    return controls;
}

void dlgFilterDesg::showControls(const FilterControls& controls) {
    const auto showText = [](QLineEdit& box, const std::string& text) {
        if (box.text() == toQt(text))
            return;
        box.setText(toQt(text));
        box.home(false); // the beginning of a long text is in sight
    };
    m_shown = controls;
    showText(*m_ui->LblFilterName, controls.LblFilterName);
    for (std::size_t n = 0; n < m_conditions.size(); ++n) {
        const ConditionControls& condition = controls.conditions[n];
        const ConditionBoxes& boxes = m_conditions[n];
        fillCombo(*boxes.CmbFldListCmp, design::leftEntries(m_db), condition.CmbFldListCmp);
        fillCombo(*boxes.CmbOpr, design::comparisonEntries(), condition.CmbOpr);
        fillCombo(*boxes.CmbFldOpnd, design::operandListEntries(m_db), condition.CmbFldOpnd);
        showText(*boxes.TxtConst, condition.TxtConst);
    }
    for (std::size_t i = 0; i < m_links.size(); ++i)
        fillCombo(*m_links[i], design::linkEntries(), controls.CmbRelOpr[i]);
    enable(controls);
}

void dlgFilterDesg::enable(const FilterControls& controls) {
    for (std::size_t n = 0; n < m_conditions.size(); ++n) {
        const bool offered = design::isConditionOffered(controls, static_cast<int>(n));
        const ConditionBoxes& boxes = m_conditions[n];
        for (QComboBox* box : {boxes.CmbFldListCmp, boxes.CmbOpr, boxes.CmbFldOpnd})
            box->setEnabled(offered);
        boxes.TxtConst->setEnabled(offered && design::takesConstant(controls.conditions[n]));
        enableLast(*boxes.CmbFldOpnd, design::offersToday(m_db, controls.conditions[n]));
    }
    m_ui->CmbRelOpr2->setEnabled(design::isConditionOffered(controls, 1));
}

void dlgFilterDesg::showCurrent() {
    if (m_doc != nullptr)
        fillCombo(*m_ui->CmbFilterList, design::filterListEntries(m_db), m_slot);
    platform::runOperation(m_services.ui, tags::kFilterDefinition, [this] { showControls(m_definition.current()); });
}

void dlgFilterDesg::focusOn(const FilterResult& refused) {
    const ConditionBoxes& boxes = m_conditions[static_cast<std::size_t>(refused.condition)];
    QLineEdit* text = refused.focus == FilterFocus::LblFilterName ? m_ui->LblFilterName : boxes.TxtConst;
    if (refused.focus == FilterFocus::CmbFldListCmp)
        boxes.CmbFldListCmp->setFocus();
    else if (refused.focus != FilterFocus::None) {
        text->setFocus();
        text->selectAll();
    }
}

// The list goes back to the filter shown before a question stands above it.
void dlgFilterDesg::chooseFilter(int slot) {
    fillCombo(*m_ui->CmbFilterList, design::filterListEntries(m_db), m_slot);
    if (slot == m_slot)
        return;
    const design::Leaving leaving = design::leaveFilter(m_db, m_services, m_slot, read());
    if (leaving == design::Leaving::Stay || (leaving == design::Leaving::SaveFirst && !store()))
        return;
    m_slot = slot;
    showCurrent();
}

void dlgFilterDesg::clear() {
    FilterControls controls = read();
    if (!m_definition.clear(controls))
        return;
    showControls(controls);
    if (m_doc != nullptr)
        fillCombo(*m_ui->CmbFilterList, design::filterListEntries(m_db), m_slot);
}

bool dlgFilterDesg::store() {
    if (refusesForeignIn(m_services, *this))
        return false;
    const FilterResult result = m_definition.ok(read());
    if (!result.accepted)
        focusOn(result);
    return result.accepted;
}

void dlgFilterDesg::ok() {
    if (store())
        accept();
}

} // namespace tallybook::desktop
