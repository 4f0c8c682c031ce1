#include "core/forms/FormDesign.h"

#include "core/platform/OwnTexts.h"

#include <algorithm>
#include <utility>

namespace tallybook::forms {

namespace {

using model::FieldType;
using model::FormItem;
using platform::Answer;
using platform::Buttons;
using platform::Icon;

} // namespace

FormDesign::FormDesign(model::Document& doc, platform::Services& services)
    : m_doc(doc), m_services(services), m_stored(TransferPDBInfoToFormBuilder(doc.CurrDB20)), m_builder(m_stored),
      m_fields(SetUpFldList(doc.CurrDB20)), m_tab(m_builder.tabs > 0 ? 1 : 0) {}

bool FormDesign::hasItem() const {
    return m_selection && !isFree(item(m_selection->place));
}

void FormDesign::click(const RowPlace& place, Side side) {
    EditValue(place, side);
    if (isFree(item(place)))
        m_services.ui.message({.text = "Drag a field from the list and drop at the position required",
                               .icon = Icon::Information,
                               .title = "Attention"});
}

void FormDesign::EditValue(const RowPlace& place, Side side) {
    const bool isText = isStaticText(item(place));
    m_selection = Selection{place, isText ? Side::Label : side};
    m_limits = SetFormLimits(m_doc.CurrDB20, item(place), m_selection->side, m_limits);
}

std::vector<RowPlace> FormDesign::shownRows() const {
    std::vector<RowPlace> rows;
    for (int row = 0; row < geometry().baseRows(); ++row)
        rows.push_back({false, row});
    for (int row = 0; m_tab > 0 && row < kRows; ++row)
        rows.push_back({true, row});
    return rows;
}

void FormDesign::walk(int step) {
    const std::vector<RowPlace> rows = shownRows();
    if (!m_selection)
        return EditValue(rows.front(), Side::Label);
    const auto at = std::find(rows.begin(), rows.end(), m_selection->place);
    const auto place = std::clamp<std::ptrdiff_t>(at - rows.begin() + step, 0, std::ssize(rows) - 1);
    EditValue(rows[static_cast<std::size_t>(place)], m_selection->side);
}

void FormDesign::selectSide(Side side) {
    if (m_selection)
        EditValue(m_selection->place, side);
}

bool FormDesign::selectPosition() {
    std::vector<RowPlace> rows = shownRows();
    if (m_selection) {
        const auto at = std::find(rows.begin(), rows.end(), m_selection->place);
        if (at != rows.end())
            std::rotate(rows.begin(), at, rows.end());
    }
    const auto free = std::find_if(rows.begin(), rows.end(), [&](const RowPlace& p) { return isFree(item(p)); });
    if (free == rows.end())
        return false;
    EditValue(*free, Side::Label);
    return true;
}

void FormDesign::AddValue(const RowPlace& place, std::uint8_t field) {
    itemAt(place) = newRow(m_doc.CurrDB20, field);
    EditValue(place, Side::Label);
}

bool FormDesign::addToSelected(std::uint8_t field) {
    if (!m_selection && !selectPosition())
        return false;
    AddValue(m_selection->place, field);
    walk(1);
    return true;
}

void FormDesign::moveRow(const RowPlace& from, const RowPlace& to) {
    if (from == to || isFree(item(from)))
        return;
    if (from.onTab != to.onTab) {
        std::swap(itemAt(from), itemAt(to));
    } else {
        const auto rows = m_builder.part(partOf(from)).rows.begin();
        if (from.row < to.row)
            std::rotate(rows + from.row, rows + from.row + 1, rows + to.row + 1);
        else
            std::rotate(rows + to.row, rows + from.row, rows + from.row + 1);
    }
    EditValue(to, m_selection ? m_selection->side : Side::Label);
}

bool FormDesign::exchange(int step) {
    if (!hasItem())
        return false;
    RowPlace other = m_selection->place;
    other.row += step;
    if (other.row < 0 || other.row >= kRows || !isShown(other))
        return false;
    std::swap(itemAt(m_selection->place), itemAt(other));
    EditValue(other, m_selection->side);
    return true;
}

ItemSettings FormDesign::settings() const {
    return m_selection ? settingsOf(item(m_selection->place), m_selection->side) : ItemSettings{};
}

// A text of a form ends with a NUL in the file.
bool FormDesign::fits(const std::string& text, std::string_view what) {
    if (text.find('\0') == std::string::npos)
        return true;
    m_services.ui.message({.text = platform::texts::holdsNul(what), .icon = Icon::Critical, .title = {}});
    return false;
}

bool FormDesign::setValue(const ItemSettings& settings) {
    if (!hasItem() || !fits(settings.text, "The label"))
        return false;
    forms::setValue(itemAt(m_selection->place), m_selection->side, settings);
    return true;
}

std::string FormDesign::help() const {
    return hasItem() ? item(m_selection->place).ItemText : std::string();
}

bool FormDesign::setHelp(const std::string& text) {
    if (!hasItem() || !fits(text, "The help"))
        return false;
    itemAt(m_selection->place).ItemText = text;
    return true;
}

bool FormDesign::ClearFld() {
    if (!hasItem()) {
        m_services.ui.message({.text = "You must click on a field in the Palm screen to remove it.",
                               .icon = Icon::Information,
                               .title = "Tallybook Pocket"});
        return false;
    }
    itemAt(m_selection->place) = freeRow();
    EditValue(m_selection->place, m_selection->side);
    return true;
}

bool FormDesign::clearForm() {
    const Answer answer =
        m_services.ui.message({.text = "Clearing the form will remove all the Fields from the form.\nDo you want to "
                                       "clear the form?",
                               .icon = Icon::Question,
                               .buttons = Buttons::YesNo,
                               .title = "Are you sure",
                               .preferred = Answer::No});
    if (answer != Answer::Yes)
        return false;
    for (FormPart& part : m_builder.parts)
        part.rows.fill(freeRow());
    m_selection.reset();
    m_limits = {};
    return true;
}

void FormDesign::setTabs(int count) {
    m_builder.tabs = std::clamp(count, 0, kMostTabs);
    const bool first = m_tab == 0;
    m_tab = std::min(first ? 1 : m_tab, m_builder.tabs);
    keepSelectionShown();
}

void FormDesign::selectTab(int tab) {
    if (tab < 1 || tab > m_builder.tabs || tab == m_tab)
        return;
    m_tab = tab;
    if (m_selection && m_selection->place.onTab)
        EditValue(m_selection->place, m_selection->side);
}

void FormDesign::keepSelectionShown() {
    if (m_selection && isShown(m_selection->place))
        return EditValue(m_selection->place, m_selection->side);
    m_selection.reset();
    m_limits = {};
}

bool FormDesign::setTabName(const std::string& name) {
    if (m_tab == 0 || !fits(name, "The name"))
        return false;
    m_builder.part(m_tab).Name = name;
    return true;
}

int FormDesign::setSlider(int value) {
    m_builder.startRow = std::clamp(value, 1, kSliderEnd - 1) - 1;
    keepSelectionShown();
    return slider();
}

std::uint8_t FormDesign::formByte(bool onTab) const {
    return m_builder.part(onTab ? m_tab : 0).FormByte;
}

void FormDesign::setSplitter(bool onTab, int position, int width) {
    m_builder.part(onTab ? m_tab : 0).FormByte = formByteAt(position, width);
}

void FormDesign::moveSplitter(int pixels) {
    const bool onTab = m_selection ? m_selection->place.onTab : m_tab > 0;
    setSplitter(onTab, formByte(onTab) + pixels, kScreenWidth);
}

void FormDesign::showValues(bool on) {
    if (on && !model::hasNoRecords(m_doc))
        m_record = std::clamp(m_doc.grd.row() - model::kFirstDataRow, 0, m_doc.NumDataRecs - 1);
    else
        m_record.reset();
}

void FormDesign::stepRecord(int step) {
    if (m_record)
        m_record = std::clamp(*m_record + step, 0, m_doc.NumDataRecs - 1);
}

ShownValue FormDesign::shownValue(const RowPlace& place) const {
    const FormItem& row = item(place);
    return isFree(row) || isStaticText(row) ? ShownValue{} : valueOf(row);
}

ShownValue FormDesign::valueOf(const FormItem& row) const {
    const FieldType type = typeOf(m_doc.CurrDB20, row);
    if (row.Field >= model::MaxFieldSlots || type == FieldType::NotUsed)
        return {};
    ShownValue shown;
    const int gridRow = record() + model::kFirstDataRow;
    const int column = model::columnOfSlot(row.Field);
    const bool isCheck = type == FieldType::Checkbox;
    if (isCheck) {
        const bool on = m_record && m_doc.grd.picture(gridRow, column) == model::Picture::CheckOn;
        shown.mark = on ? ShownValue::Mark::CheckOn : ShownValue::Mark::CheckOff;
        return shown;
    }
    if (type == FieldType::Image)
        shown.mark = ShownValue::Mark::Picture;
    else if ((row.ItemByte2 & kAsCombo) != 0)
        shown.mark = ShownValue::Mark::Combo;
    shown.text = m_record ? m_doc.grd.text(gridRow, column) : std::string(model::fieldTypeName(type));
    return shown;
}

void FormDesign::save() {
    m_doc.DocModified = true;
    PutBackFormBuilderInfoToPDB(m_builder, m_doc.CurrDB20);
    const int tab = m_tab;
    m_builder = TransferPDBInfoToFormBuilder(m_doc.CurrDB20); // packed, as it will be read again
    m_stored = m_builder;
    m_tab = std::min(tab, m_builder.tabs);
    keepSelectionShown();
}

bool FormDesign::mayLeave() {
    if (!changed())
        return true;
    const Answer answer = m_services.ui.message({.text = "Do you want to save the changes you made to the form?",
                                                 .icon = Icon::Question,
                                                 .buttons = Buttons::YesNoCancel,
                                                 .title = {}});
    if (answer == Answer::Yes)
        save();
    return answer != Answer::Cancel;
}

} // namespace tallybook::forms
