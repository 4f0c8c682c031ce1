// The values of one column of a text, put into the cells of a field.
#pragma once

#include "core/convert/BridgeCodes.h"
#include "core/convert/BridgeLog.h"
#include "core/convert/BridgeValues.h"
#include "core/model/Tallybook.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace tallybook::convert {

// True for the types whose values a text can bring: calculated fields, joins, pictures and such are passed over.
bool travelsIn(model::FieldType type);

class CellImporter {
public:
    // Slot 0 is that of the categories. `column` is the name that the log calls it by.
    CellImporter(model::Tallybook& book, int slot, std::string name, const BridgeValues& values, bool listsAsIndex,
                 BridgeLog& log);

    // Puts a value that is not empty into a row, by its id. A value that does not fit is left out and logged; what
    // ends the whole conversion comes back. `record` is the number that the log tells, from 1.
    BridgeCode store(std::string_view value, std::uint32_t row, std::uint64_t record);

private:
    using Store = BridgeCode (CellImporter::*)(std::string_view);
    static Store storeOf(model::FieldType type);

    BridgeCode storeText(std::string_view value);
    BridgeCode storeMemo(std::string_view value);
    BridgeCode storeInteger(std::string_view value);
    BridgeCode storeLong(std::string_view value);
    BridgeCode storeFloat(std::string_view value);
    BridgeCode storeItem(std::string_view value);
    BridgeCode storeItemIndex(std::string_view value);
    BridgeCode storeCheck(std::string_view value);
    BridgeCode storeDate(std::string_view value);
    BridgeCode storeTime(std::string_view value);
    BridgeCode storeKey(std::string_view value);
    BridgeCode storeAuto(std::string_view value);
    BridgeCode passOver(std::string_view value);

    // The whole number of a text, rounded with a line in the log; nothing when it is none or beyond 64 bits.
    std::optional<std::int64_t> wholeOf(std::string_view value);
    std::optional<std::int32_t> longOf(std::string_view value);
    BridgeCode leaveOut(std::string_view value, BridgeCode why);
    void tell(std::string_view value, ValueFate fate, std::string_view reason);
    void learnItems();
    std::uint8_t freeItemId() const;

    model::Tallybook& m_book;
    int m_slot;
    std::string m_name;
    const BridgeValues& m_values;
    BridgeLog& m_log;
    model::TextColumn& m_texts;
    model::WordColumn& m_longs;
    int m_decimals = 0;
    bool m_hasDecimalWords = false;
    Store m_store = nullptr;
    std::map<std::string, std::uint8_t, std::less<>> m_items; // ids by text
    std::string m_lastItem;                                   // lists repeat: the one found last
    std::uint8_t m_lastId = 0;
    std::size_t m_mostItems = 255;
    std::uint32_t m_row = 0;
    std::uint64_t m_record = 0;
};

} // namespace tallybook::convert
