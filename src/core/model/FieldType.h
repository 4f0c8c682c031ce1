// Type codes of a field, as they stand in files.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tallybook::model {

enum class FieldType : std::uint8_t {
    NotUsed = 0,
    Text = 1,
    Integer = 2,
    Long = 3,
    Float = 4,
    List = 5,
    Checkbox = 6,
    Date = 7,
    Time = 8,
    Expression = 9,
    Memo = 10,
    Key = 11,
    DBJoin = 12,
    DBLookup = 13,
    OneToMany = 14,
    AddressBookJoin = 15,
    AddressBookLookup = 16,
    RadioButton = 17,
    Image = 18,
    ConditionalExpression = 19,
    AutoIncremental = 20,
    Plugin = 21,
    AdvExpression = 22,
};

inline constexpr int kFieldTypes = 23;

// Display names of the types, by code.
inline constexpr std::array<std::string_view, kFieldTypes> FieldTypeNames = {
    "Not Used",
    "Text",
    "Integer",
    "Long",
    "Float",
    "List",
    "Checkbox",
    "Date",
    "Time",
    "Expression",
    "Memo",
    "Key",
    "DB Join",
    "DB Lookup",
    "One to Many",
    "Address Book Join",
    "Address Book Lookup",
    "Radio Button",
    "Image",
    "Conditional Expression",
    "Auto Incremental",
    "Plugin",
    "Adv Expression",
};

// Names of the handheld address book's fields, by the number that joins store.
inline constexpr std::array<std::string_view, 28> AddressBookFieldNames = {
    " ",       "Sort Field",  "First Last", "Last, First", "Company, Last", "Last",     "First",
    "Company", "First Phone", "Work Phone", "Home Phone",  "Fax",           "Other",    "E-mail",
    "Main",    "Pager",       "Mobile",     "Address",     "City",          "State",    "Zip code",
    "Country", "Title",       "Custom 1",   "Custom 2",    "Custom 3",      "Custom 4", "Note"};

// The display name of a type; empty for a code above 22, which a damaged file can hold.
constexpr std::string_view fieldTypeName(FieldType type) {
    const auto code = static_cast<std::size_t>(type);
    return code < FieldTypeNames.size() ? FieldTypeNames[code] : std::string_view{};
}

} // namespace tallybook::model
