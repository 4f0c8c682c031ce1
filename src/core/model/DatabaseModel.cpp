#include "core/model/DatabaseModel.h"

namespace tallybook::model {

void Clearg_CurrDB20(DatabaseModel& db) {
    db = DatabaseModel{};
}

int highestField(const DatabaseModel& db) {
    for (int slot = MaxUserFields; slot >= 0; --slot)
        if (db.Fields[static_cast<std::size_t>(slot)].Type != FieldType::NotUsed)
            return slot + 1;
    return 0;
}

int highestFilter(const DatabaseModel& db) {
    for (int slot = MaxFilters - 1; slot >= 0; --slot)
        if (db.Filters[static_cast<std::size_t>(slot)].CondFields[0] != 0)
            return slot + 1;
    return 0;
}

int highestColumn(const ViewDef& view) {
    for (int column = MaxViewColumns - 1; column >= 0; --column)
        if (view.Columns[static_cast<std::size_t>(column)].Field != 0)
            return column + 1;
    return 0;
}

} // namespace tallybook::model
