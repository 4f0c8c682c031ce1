// Data records to rows of the grid and entries of the tables.
#pragma once

#include "core/model/Tallybook.h"
#include "core/pdb/ByteReader.h"
#include "core/pdb/CellForms.h"
#include "core/pdb/Database.h"
#include "core/pdb/QuickCells.h"
#include "core/platform/Regional.h"

#include <array>
#include <string>
#include <vector>

namespace tallybook::pdb {

// Loads the records of one file into a document that has its fields, their attributes and an empty row for each
// record, the ids of the rows being their numbers. Gives the columns their coders.
class RecordLoader {
public:
    // With `onlyFields` the cells of other fields are passed over, and the categories too.
    RecordLoader(model::Tallybook& doc, const platform::Regional& regional,
                 const std::optional<FieldSet>& onlyFields = {});

    // Fills one row. The reader stands at the record's first byte and ends where the record's bytes end. Cells end
    // at their end mark or where the bytes end; one that the end cuts is left out, as a record of ours can be such
    // that its last cells are misread. Fails when not even key and category are there.
    platform::Status loadRecord20(ByteReader& in, int record);

    // The same for a record of format 1.x. The layout of these records is not known for certain, so nothing is
    // forgiven: a record that does not end with its end mark, or holds a cell that the format does not have, fails.
    platform::Status loadRecord(ByteReader& in, int record);

    // What the records do not say themselves, once they are all loaded: the keys in the Key fields, and the check
    // boxes that have no cell, which are not ticked.
    void finish();

private:
    // What a cell of a slot needs to know, settled once.
    struct Slot {
        int number = 0;
        model::FieldType type = model::FieldType::NotUsed;
        bool wanted = true;
        std::uint8_t decimals = 0;
        ResultKind result = ResultKind::Number;
        CellForm form;
        model::TextColumn* texts = nullptr;
        model::WordColumn* longs = nullptr;
        model::TextColumn* keys = nullptr;
        std::vector<std::int64_t> items; // the column's word of each item's id, or the mark below; of items alone
    };
    static constexpr std::int64_t kNoWord = -1; // the item's text, which may be empty, is set each time

    void prepare(Slot& slot);
    void prepareItems(Slot& slot);
    // Key and category, which every record has. False when it is too short for them.
    bool loadHead(ByteReader& in, int record);
    void loadOtherCell(std::uint8_t type, std::uint8_t slot, ByteReader& in);
    void fillKeys(Slot& slot);
    void fillChecks(const Slot& slot);
    void emptyCell(Slot& slot);

    // One cell, from the first byte of its body. A reader that failed on the way leaves the cell as it was.
    void loadCell(model::FieldType type, Slot& slot, ByteReader& in);
    void readCell(model::FieldType type, Slot& slot, ByteReader& in);
    void loadText(Slot& slot, ByteReader& in);
    void loadMemo(Slot& slot, ByteReader& in);
    void loadInteger(Slot& slot, ByteReader& in);
    void loadLong(model::FieldType type, Slot& slot, ByteReader& in);
    void loadNumber(Slot& slot, int decimals, ByteReader& in);
    void loadItem(Slot& slot, ByteReader& in);
    void loadCheck(Slot& slot, ByteReader& in);
    void loadDate(Slot& slot, ByteReader& in);
    void loadTime(Slot& slot, ByteReader& in);
    void loadDuration(Slot& slot, ByteReader& in);
    void loadJoin(Slot& slot, ByteReader& in);
    void loadAddress(Slot& slot, ByteReader& in);
    void loadPicture(Slot& slot, ByteReader& in);
    void loadConditional(Slot& slot, ByteReader& in);
    void loadResult(Slot& slot, ByteReader& in);
    void loadAdvResult(Slot& slot, ByteReader& in);

    // Goes on to the end of a cell that is not wanted.
    static void skipCell(model::FieldType type, const Slot& slot, ByteReader& in);

    // What has been read, put in its place in the row.
    void showItem(Slot& slot, std::uint8_t item);
    void showWhole(Slot& slot, std::int32_t value);
    void showKey(Slot& slot, std::int32_t key);
    void showKey(Slot& slot, std::string_view key);
    void showText(Slot& slot, std::string_view text) { slot.texts->setText(m_row, text); }
    void setLong(Slot& slot, std::int32_t value) { m_doc.CellLongs.setById(m_row, slot.number, value); }
    void setColour(Slot& slot, std::uint8_t index);
    std::int64_t wordOfItem(Slot& slot, std::uint8_t item) const;
    std::string_view decimalText(std::int32_t value);

    model::Tallybook& m_doc;
    const platform::Regional& m_regional;
    std::array<Slot, model::MaxFieldSlots> m_slots;
    QuickCells m_quick;
    int m_endSlot = model::MaxFieldSlots; // a cell of it or of one behind it ends the record
    std::uint32_t m_row = 0;              // id of the row being filled
    std::array<char, 12> m_digits{};      // of the whole number shown last
    std::string m_scratch;
};

} // namespace tallybook::pdb
