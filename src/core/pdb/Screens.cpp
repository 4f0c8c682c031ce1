#include "core/pdb/Screens.h"

#include "core/pdb/Conditions.h"
#include "core/pdb/Layout.h"

#include <algorithm>

namespace tallybook::pdb {

namespace {

using model::Colour;
using model::DatabaseModel;
using model::FilterDef;
using model::FormDef;
using model::FormItem;
using model::ViewColumn;
using model::ViewDef;

// True when a count fits; otherwise the reader fails with "200 views, at most 13".
bool fits(ByteReader& in, std::size_t count, std::size_t most, const std::string& things) {
    if (count > most)
        in.fail(platform::texts::moreThan(static_cast<std::int64_t>(count), things, static_cast<std::int64_t>(most)));
    return count <= most;
}

// Which one of many is meant, counted from 1: "items in form 3".
std::string thingsIn(const char* things, const char* owner, std::size_t index) {
    return std::string(things) + " in " + owner + ' ' + std::to_string(index + 1);
}

Colour readColour(ByteReader& in) {
    in.skipBytes(1);
    Colour colour;
    colour.red = in.getByte();
    colour.green = in.getByte();
    colour.blue = in.getByte();
    return colour;
}

// | 1 | Field | 1 | Row | 1 | ItemKind | 4 | LabelFore | 4 | LabelBack | 1 | ItemByte1 | 4 | DataFore |
// | 4 | DataBack | 1 | ItemByte2 | 2 | ItemPos | n+1 | Caption | n+1 | ItemText |
void readItem(ByteReader& in, FormItem& item) {
    item.Field = in.getByte();
    item.Row = in.getByte();
    item.ItemKind = in.getByte();
    item.LabelFore = readColour(in);
    item.LabelBack = readColour(in);
    item.ItemByte1 = in.getByte();
    item.DataFore = readColour(in);
    item.DataBack = readColour(in);
    item.ItemByte2 = in.getByte();
    in.getBytes(item.ItemPos);
    item.Caption = in.getText();
    item.ItemText = in.getText();
}

void buildItem(const FormItem& item, ByteWriter& out) {
    out.outByte(item.Field);
    out.outByte(item.Row);
    out.outByte(item.ItemKind);
    out.outColour(item.LabelFore);
    out.outColour(item.LabelBack);
    out.outByte(item.ItemByte1);
    out.outColour(item.DataFore);
    out.outColour(item.DataBack);
    out.outByte(item.ItemByte2);
    out.outBytes(item.ItemPos);
    out.outZeroText(item.Caption);
    out.outZeroText(item.ItemText);
}

// | n+1 | Name | 1 | FormByte | 2 | FormFlags | 1 | NumItems | ... | items |
void readForm(ByteReader& in, FormDef& form, std::size_t index) {
    form.Name = in.getText();
    form.FormByte = in.getByte();
    in.getBytes(form.FormFlags);
    const std::uint8_t items = in.getByte();
    if (!fits(in, items, form.Items.size(), thingsIn("items", "form", index)))
        return;
    form.NumItems = items;
    for (std::size_t i = 0; i < items; ++i)
        readItem(in, form.Items[i]);
}

void buildForm(const FormDef& form, ByteWriter& out) {
    const std::size_t items = std::min<std::size_t>(form.NumItems, form.Items.size());
    out.outZeroText(form.Name);
    out.outByte(form.FormByte);
    out.outBytes(form.FormFlags);
    out.outByte(static_cast<std::uint8_t>(items));
    for (std::size_t i = 0; i < items; ++i)
        buildItem(form.Items[i], out);
}

// | 21 | Name | 3 | SortFields | 3 | SortDirs | 2 | FilterMask | 1 | FrozenCols | 1 | ViewByte | 6 | ViewTail |
// | 1 | NumCols | 5 NumCols | columns: Field, Width, three spare bytes |
void readView(ByteReader& in, ViewDef& view, std::size_t index) {
    view.Name = in.getPaddedText(layout::kViewNameWidth);
    in.getBytes(view.SortFields);
    in.getBytes(view.SortDirs);
    view.FilterMask = in.getWord();
    view.FrozenCols = in.getByte();
    view.ViewByte = in.getByte();
    in.getBytes(view.ViewTail);
    const std::uint8_t columns = in.getByte();
    if (!fits(in, columns, view.Columns.size(), thingsIn("columns", "view", index)))
        return;
    view.NumCols = columns;
    for (std::size_t i = 0; i < columns; ++i) {
        ViewColumn& column = view.Columns[i];
        column.Field = in.getByte();
        column.Width = in.getByte();
        in.getBytes(column.Spare);
    }
}

void buildView(const ViewDef& view, ByteWriter& out) {
    const std::size_t columns = std::min<std::size_t>(view.NumCols, view.Columns.size());
    out.outArea(view.Name, layout::kViewNameWidth);
    out.outBytes(view.SortFields);
    out.outBytes(view.SortDirs);
    out.outWord(view.FilterMask);
    out.outByte(view.FrozenCols);
    out.outByte(view.ViewByte);
    out.outBytes(view.ViewTail);
    out.outByte(static_cast<std::uint8_t>(columns));
    for (std::size_t i = 0; i < columns; ++i) {
        out.outByte(view.Columns[i].Field);
        out.outByte(view.Columns[i].Width);
        out.outBytes(view.Columns[i].Spare);
    }
}

// The conditions of Conditions.h, then | 2 | CondLinks | 4 | CondTail |: 96 bytes
void readFilter(ByteReader& in, FilterDef& filter) {
    readConditions(in, filter);
    in.getBytes(filter.CondLinks);
    in.getBytes(filter.CondTail);
}

void buildFilter(const FilterDef& filter, ByteWriter& out) {
    buildConditions(filter, out);
    out.outBytes(filter.CondLinks);
    out.outBytes(filter.CondTail);
}

} // namespace

// | 1 | StartForm | 1 | NumForms | ... | forms |
platform::Status LoadFormProp20(ByteReader& in, DatabaseModel& db) {
    db.StartForm = in.getByte();
    const std::uint8_t forms = in.getByte();
    if (fits(in, forms, db.Forms.size(), "forms")) {
        db.NumForms = forms;
        for (std::size_t i = 0; i < forms && in.ok(); ++i)
            readForm(in, db.Forms[i], i);
    }
    return in.status("Load_DBProps : LoadFormProp20");
}

void buildForms(const DatabaseModel& db, ByteWriter& out) {
    const std::size_t forms = std::min<std::size_t>(db.NumForms, db.Forms.size());
    out.outByte(db.StartForm);
    out.outByte(static_cast<std::uint8_t>(forms));
    for (std::size_t i = 0; i < forms; ++i)
        buildForm(db.Forms[i], out);
}

// | 1 | NumViews | ... | views |
platform::Status LoadViewProp20(ByteReader& in, DatabaseModel& db) {
    const std::uint8_t views = in.getByte();
    if (fits(in, views, db.Views.size(), "views")) {
        db.NumViews = views;
        for (std::size_t i = 0; i < views && in.ok(); ++i)
            readView(in, db.Views[i], i);
    }
    return in.status("Load_DBProps : LoadViewProp20");
}

void buildViews(const DatabaseModel& db, ByteWriter& out) {
    const std::size_t views = std::min<std::size_t>(db.NumViews, db.Views.size());
    out.outByte(static_cast<std::uint8_t>(views));
    for (std::size_t i = 0; i < views; ++i)
        buildView(db.Views[i], out);
}

// | 1 | NumFilters | 96 NumFilters | filters | 192 | SpareFilters |
platform::Status LoadFilterProp20(ByteReader& in, DatabaseModel& db, std::uint32_t end) {
    const std::uint8_t filters = in.getByte();
    if (fits(in, filters, db.Filters.size(), "filters")) {
        db.NumFilters = filters;
        for (std::size_t i = 0; i < filters && in.ok(); ++i)
            readFilter(in, db.Filters[i]);
        if (in.position() + db.SpareFilters.size() * layout::kFilterSize <= end)
            for (FilterDef& filter : db.SpareFilters)
                readFilter(in, filter);
    }
    return in.status("Load_DBProps : LoadFilterProp20");
}

void buildFilters(const DatabaseModel& db, ByteWriter& out) {
    const std::size_t filters = std::min<std::size_t>(db.NumFilters, db.Filters.size());
    out.outByte(static_cast<std::uint8_t>(filters));
    for (std::size_t i = 0; i < filters; ++i)
        buildFilter(db.Filters[i], out);
    for (const FilterDef& filter : db.SpareFilters)
        buildFilter(filter, out);
}

} // namespace tallybook::pdb
