#include "TypeChange.h"

#include "Queries.h"
#include "core/design/FieldProperties.h"
#include "core/document/grid/GridDisplay.h"

#include <stdexcept>

namespace tallybook::bench {

namespace {

using model::FieldType;

constexpr int kListItems = 59;

int slotFor(const model::Document& doc) {
    if (const auto unused = slotsOf(doc.CurrDB20, FieldType::NotUsed); !unused.empty())
        return unused.front();
    if (const auto texts = slotsOf(doc.CurrDB20, FieldType::Text); !texts.empty())
        return texts.back();
    throw std::runtime_error("the file has no slot for a column");
}

FieldType oldType(Retyping kind) {
    return kind == Retyping::LongToKey ? FieldType::Long : FieldType::Text;
}

FieldType newType(Retyping kind) {
    switch (kind) {
    case Retyping::TextToLong:
        return FieldType::Long;
    case Retyping::TextToList:
        return FieldType::List;
    case Retyping::LongToKey:
        break;
    }
    return FieldType::Key;
}

// Numbers of one to seven digits, in no order.
std::string textOf(Retyping kind, int record) {
    const auto number = static_cast<std::uint32_t>(record) * 2654435761U % 9999991;
    return kind == Retyping::TextToList ? "Item " + std::to_string(number % kListItems) : std::to_string(number);
}

} // namespace

platform::Answer AgreeingUser::message(const platform::Message& message) {
    return message.buttons == platform::Buttons::YesNo ? platform::Answer::Yes : QuietUser::message(message);
}

TypeChange::TypeChange(Workbench& bench, model::Document& doc, Retyping kind)
    : m_doc(doc), m_services{m_user,
                             bench.services().screen,
                             bench.services().files,
                             bench.services().clock,
                             bench.services().regional,
                             bench.services().applicationFolder},
      m_kind(kind), m_slot(slotFor(doc)) {
    for (int record = 0; record < doc.NumDataRecs; ++record)
        m_texts.push_back(textOf(kind, record));
}

void TypeChange::restore() {
    model::FieldDef& field = m_doc.CurrDB20.Fields[static_cast<std::size_t>(m_slot)];
    field = {};
    field.Type = oldType(m_kind);
    field.Name = "Measured";
    m_doc.CurrDB20.Lists.erase(m_slot);
    m_doc.CellLongs.slotColumn(m_slot).clear();
    model::TextColumn& column = m_doc.grd.column(model::columnOfSlot(m_slot));
    column.clear();
    document::gridLoadField(m_doc, m_services.regional, m_slot);
    for (int record = 0; record < m_doc.NumDataRecs; ++record)
        column.setText(m_doc.grd.order().id(record), m_texts[static_cast<std::size_t>(record)]);
}

Nanoseconds TypeChange::run() {
    restore();
    design::FieldPropDraft draft = design::fillAttributeValues(m_doc.CurrDB20, m_slot, m_services);
    design::selectFieldType(draft, newType(m_kind), m_doc.CurrDB20, m_slot, m_services);
    bool accepted = false;
    const Nanoseconds time = timed([&] {
        accepted =
            design::fieldPropertiesOK(m_doc, m_services, m_slot, draft, design::FieldPropMode::Document).accepted;
    });
    if (!accepted)
        throw std::runtime_error("the change of the type was refused");
    return time;
}

} // namespace tallybook::bench
