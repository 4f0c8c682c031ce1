#include "core/design/ListEditor.h"

#include "core/calc/values/Text.h"
#include "core/design/Dialog.h"
#include "core/design/ListItems.h"
#include "core/pdb/Names.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tallybook::design {

namespace {

using model::FieldType;

constexpr std::string_view kTitle = "List Editor";

bool isList(const model::Document& doc, int slot) {
    return slot == 0 || doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type == FieldType::List;
}

} // namespace

ListEditor::ListEditor(model::Document& doc, platform::Services& services, int slot, std::string name)
    : m_doc(doc), m_services(services), m_slot(slot), m_named(slot), m_name(std::move(name)) {
    for (int other = 0; other <= model::MaxUserFields; ++other)
        if (isList(doc, other) || other == slot)
            m_slots.push_back(other);
}

std::vector<std::string> ListEditor::cmbList() const {
    std::vector<std::string> names;
    for (const int slot : m_slots) {
        const std::string& stored = m_doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Name;
        const std::string& name = slot == m_named && !m_name.empty() ? m_name : stored;
        names.push_back(name.empty() ? pdb::freeFieldName(slot) : name);
    }
    return names;
}

int ListEditor::listPosition() const {
    return static_cast<int>(std::find(m_slots.begin(), m_slots.end(), m_slot) - m_slots.begin());
}

void ListEditor::chooseList(int position) {
    m_slot = m_slots.at(static_cast<std::size_t>(position));
}

const std::vector<std::string>& ListEditor::lst() const {
    return std::as_const(m_doc.CurrDB20).Lists.at(m_slot).Items;
}

model::ListDef& ListEditor::list() {
    return m_doc.CurrDB20.Lists[m_slot];
}

bool ListEditor::refusesNoSelection(int selected) {
    if (selected >= 0 && selected < list().Count())
        return false;
    say(m_services, "Select an item first");
    return true;
}

int ListEditor::CmdAdd() {
    if (refusesFullList(list(), m_services))
        return -1;
    const auto text = m_services.ui.askText(std::string(kTitle), "Enter new item", {});
    if (!text || !addItem(list(), *text, m_services))
        return -1;
    m_changed.insert(m_slot);
    return list().Count() - 1;
}

int ListEditor::cmdEdit(int selected) {
    if (refusesNoSelection(selected))
        return -1;
    std::string& item = list().Items[static_cast<std::size_t>(selected)];
    const auto text = m_services.ui.askText(std::string(kTitle), "Edit Item", item);
    if (!text || trimmed(*text).empty() || *text == item ||
        refusesText(m_services, "An item", *text, model::kTextLength))
        return selected;
    item = *text;
    m_changed.insert(m_slot);
    return selected;
}

int ListEditor::cmdDelete(int selected) {
    if (refusesNoSelection(selected))
        return -1;
    const std::string& item = list().Items[static_cast<std::size_t>(selected)];
    if (!asksToDestroy(m_services, "Are you sure you want to delete the item " + item + " ?"))
        return selected;
    removeItem(list(), selected);
    m_changed.insert(m_slot);
    return std::min(selected, list().Count() - 1);
}

void ListEditor::cmdSort() {
    const model::ListDef before = list();
    std::vector<std::size_t> order(before.Items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return calc::compareText(before.Items[a], before.Items[b], calc::TextCase::Folded) < 0;
    });
    for (std::size_t place = 0; place < order.size(); ++place) {
        list().Items[place] = before.Items[order[place]];
        list().ItemIds[place] = before.ItemIds[order[place]];
    }
    if (list() != before)
        m_changed.insert(m_slot);
}

int ListEditor::moveTo(int selected, int place) {
    if (refusesNoSelection(selected))
        return -1;
    if (place < 0 || place >= list().Count())
        return selected;
    const auto a = static_cast<std::size_t>(selected);
    const auto b = static_cast<std::size_t>(place);
    std::swap(list().Items[a], list().Items[b]);
    std::swap(list().ItemIds[a], list().ItemIds[b]);
    m_changed.insert(m_slot);
    return place;
}

int ListEditor::cmdUp(int selected) {
    return moveTo(selected, selected - 1);
}

int ListEditor::cmdDown(int selected) {
    return moveTo(selected, selected + 1);
}

bool ListEditor::OKButton() {
    const bool changed = !m_changed.empty();
    for (const int slot : m_changed)
        if (isList(m_doc, slot))
            refreshItemTexts(m_doc, slot);
    m_changed.clear();
    m_doc.DocModified = m_doc.DocModified || changed;
    return changed;
}

} // namespace tallybook::design
