#include "core/pdb/OldDB.h"

#include "core/pdb/Names.h"

#include <algorithm>

namespace tallybook::pdb {

namespace {

constexpr std::uint8_t kNewVersion = 2;
constexpr std::uint8_t kAnyFields = 255; // no field table has said how many there are
constexpr std::int32_t kFirstNextValue = 1;

void convertFields(const OldDB& old, model::DatabaseModel& db) {
    std::copy(old.Fields.begin(), old.Fields.end(), db.Fields.begin());
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
        if (field.Name.empty())
            field.Name = freeFieldName(slot);
        db.AutoIncNext[slot] = kFirstNextValue;
    }
    db.NumFields = static_cast<std::uint8_t>(std::max(1, model::highestField(db)));
}

void convertView(const OldView& old, model::ViewDef& view) {
    view.Name = old.Name;
    std::copy(old.Columns.begin(), old.Columns.end(), view.Columns.begin());
    view.ViewByte = old.ViewByte;
    view.NumCols = static_cast<std::uint8_t>(model::highestColumn(view));
}

void convertViews(const OldDB& old, model::DatabaseModel& db) {
    for (std::size_t slot = 0; slot < old.Views.size(); ++slot)
        convertView(old.Views[slot], db.Views[slot]);
    if (db.Views[0].Name.empty())
        db.Views[0].Name = "View01";
    db.NumViews = old.NumViews;
}

void convertFilters(const OldDB& old, model::DatabaseModel& db) {
    std::copy(old.Filters.begin(), old.Filters.end(), db.Filters.begin());
    db.NumFilters = static_cast<std::uint8_t>(model::highestFilter(db));
}

OldDB emptyOldDB() {
    OldDB old;
    old.Version = kNewVersion;
    old.NumViews = 1;
    old.NumFields = kAnyFields;
    old.Fields[0].Type = model::FieldType::List;
    old.Fields[0].Name = "Categories";
    for (std::size_t slot = 1; slot < old.Fields.size(); ++slot)
        old.Fields[slot].Name = freeFieldName(static_cast<int>(slot));
    return old;
}

} // namespace

void ConvertTo20(const OldDB& old, model::DatabaseModel& db) {
    convertFields(old, db);
    convertViews(old, db);
    convertFilters(old, db);
    db.Lists = old.Lists;
    db.Expressions = old.Expressions;
    db.Externals = old.Externals;
    db.Passwords[static_cast<std::size_t>(model::PasswordKind::Login)] = old.Password;
    db.LastKey = old.LastKey;
}

void initDB(model::DatabaseModel& db) {
    ConvertTo20(emptyOldDB(), db);
}

} // namespace tallybook::pdb
