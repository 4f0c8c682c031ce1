#include "core/forms/FormBuilder.h"

#include <algorithm>

namespace tallybook::forms {

namespace {

using model::DatabaseModel;
using model::FormDef;
using model::FormItem;

constexpr model::Colour kWhite{255, 255, 255};

FormPart partOf(const FormDef& form) {
    FormPart part;
    part.Name = form.Name;
    part.FormByte = form.FormByte;
    part.FormFlags = form.FormFlags;
    const int items = std::min<int>(form.NumItems, kRows);
    std::copy_n(form.Items.begin(), items, part.rows.begin());
    return part;
}

// Rows are packed already when no free one stands ahead of one with a field.
bool isPacked(const FormPart& part) {
    const auto firstFree = std::find_if(part.rows.begin(), part.rows.end(), isFree);
    return std::all_of(firstFree, part.rows.end(), isFree);
}

FormDef formOf(const FormPart& part) {
    FormDef form;
    form.Name = part.Name;
    form.FormByte = part.FormByte;
    form.FormFlags = part.FormFlags;
    for (const FormItem& row : part.rows) {
        if (isFree(row))
            continue;
        FormItem& item = form.Items[form.NumItems];
        item = row;
        item.Row = form.NumItems++;
    }
    return form;
}

int tabsOf(const DatabaseModel& db) {
    return std::clamp(db.NumForms - 1, 0, kMostTabs);
}

int startRowOf(const DatabaseModel& db) {
    return std::clamp(db.StartForm - 1, 0, kLastStartRow);
}

} // namespace

FormPart::FormPart() {
    rows.fill(freeRow());
}

FormItem freeRow() {
    FormItem item;
    item.LabelBack = kWhite;
    item.DataBack = kWhite;
    return item;
}

FormBuilder TransferPDBInfoToFormBuilder(const DatabaseModel& db) {
    FormBuilder builder;
    builder.tabs = tabsOf(db);
    builder.startRow = startRowOf(db);
    for (int part = 0; part <= builder.tabs; ++part)
        builder.part(part) = partOf(db.Forms[static_cast<std::size_t>(part)]);
    return builder;
}

void PutBackFormBuilderInfoToPDB(const FormBuilder& builder, DatabaseModel& db) {
    const bool sameTabs = builder.tabs == tabsOf(db) && (db.NumForms > 0 || builder.part(0) == FormPart());
    for (int number = 0; number < kParts; ++number) {
        FormDef& form = db.Forms[static_cast<std::size_t>(number)];
        const FormPart& part = builder.part(number);
        if (number > builder.tabs)
            form = {};
        else if (number >= db.NumForms || partOf(form) != part || !isPacked(part))
            form = formOf(part);
    }
    if (!sameTabs) {
        db.NumForms = static_cast<std::uint8_t>(builder.tabs + 1);
        db.Forms.back() = {};
    }
    if (builder.startRow != startRowOf(db))
        db.StartForm = static_cast<std::uint8_t>(builder.startRow + 1);
}

bool differs(const FormBuilder& a, const FormBuilder& b) {
    if (a.tabs != b.tabs || a.startRow != b.startRow)
        return true;
    return !std::equal(a.parts.begin(), a.parts.begin() + a.tabs + 1, b.parts.begin());
}

std::string tabCaption(const FormBuilder& builder, int tab) {
    const std::string& name = builder.part(tab).Name;
    return name.empty() ? "tab" + std::to_string(tab) : name;
}

std::vector<FieldLine> SetUpFldList(const DatabaseModel& db) {
    std::vector<FieldLine> lines;
    for (int slot = 1; slot < model::MaxFieldSlots; ++slot) {
        const model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
        if (field.Type == model::FieldType::NotUsed)
            continue;
        const std::string number = std::to_string(slot);
        lines.push_back({.key = "K_" + number,
                         .text = number,
                         .name = field.Name,
                         .type = std::string(model::fieldTypeName(field.Type)),
                         .slot = static_cast<std::uint8_t>(slot),
                         .fieldType = field.Type});
    }
    lines.push_back({.key = "K_255", .text = "_", .name = "Label", .type = "(Static Text)", .slot = kStaticText});
    return lines;
}

} // namespace tallybook::forms
