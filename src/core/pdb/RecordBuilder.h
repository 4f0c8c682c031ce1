// Rows of the grid and entries of the tables to data records.
#pragma once

#include "core/model/Document.h"
#include "core/pdb/CellForms.h"
#include "core/pdb/Container.h"
#include "core/pdb/Database.h"
#include "core/pdb/Pictures.h"
#include "core/platform/Services.h"

#include <optional>
#include <string>
#include <vector>

namespace tallybook::pdb {

using model::StoredCell;

// Builds the records of one document. Nothing in the document is changed.
class RecordBuilder {
public:
    RecordBuilder(const model::Document& doc, platform::Services& services, OutRecords& out);

    // Appends the record. Cells that have nothing to say are left out; texts that do not convert count as 0 or as
    // nothing. Fails when a picture cannot be taken over, with the path of its file.
    platform::Status buildRecord20(int record);

    // Where pictures stand in the file, and the files of the new ones, so far.
    std::vector<ImagePlace> takeImages() { return std::move(m_images); }
    std::vector<std::filesystem::path> takeUsedPictures() { return std::move(m_usedPictures); }

private:
    // What the cells of a slot are made from, settled once.
    struct Slot {
        int number = 0;
        model::FieldType type = model::FieldType::NotUsed;
        std::uint8_t keyType = 0;
        ResultKind result = ResultKind::Number;
        CellForm form;
        const model::TextColumn* texts = nullptr;
        const model::WordColumn* longs = nullptr;
        const model::WordColumn* pictures = nullptr;
        const model::WordColumn* colours = nullptr;
        const model::TextColumn* keys = nullptr;
        // The current block of the column whose cells decide whether there is anything to write.
        model::StoredBlock block;
        std::uint32_t next = 0; // among the block's words, of the current row or the next one that has any
        bool noNul = false;     // no text of the block has a NUL: none has to be looked for
    };

    void enterRow(int record);
    void enterBlock(Slot& slot, std::uint32_t block) const;
    StoredCell cellOf(Slot& slot) const;
    std::uint8_t category();

    Slot slotOf(int number) const;
    platform::Status buildCell(const Slot& slot, const StoredCell& cell);
    void buildText(const Slot& slot, const StoredCell& cell);
    void buildMemo(const Slot& slot, const StoredCell& cell);
    void buildInteger(const Slot& slot, const StoredCell& cell);
    void buildLong(const Slot& slot, const StoredCell& cell);
    void buildFloat(const Slot& slot, const StoredCell& cell);
    void buildItem(const Slot& slot, const StoredCell& cell);
    void buildCheck(const Slot& slot, const StoredCell& cell);
    void buildDate(const Slot& slot, const StoredCell& cell);
    void buildTime(const Slot& slot, const StoredCell& cell);
    void buildJoin(const Slot& slot, const StoredCell& cell);
    void buildAddress(const Slot& slot, const StoredCell& cell);
    void buildConditional(const Slot& slot, const StoredCell& cell);
    void buildResult(const Slot& slot, const StoredCell& cell);
    void buildAdvResult(const Slot& slot, const StoredCell& cell);
    platform::Status buildPicture(const Slot& slot, const StoredCell& cell);
    platform::Status buildNewPicture(const Slot& slot, std::int32_t number);

    void outCell(const Slot& slot) { m_bytes->outBytes(cellHeader(slot)); }
    void outCell(const Slot& slot, std::uint32_t value); // with a body of 4 bytes
    static std::array<std::uint8_t, 2> cellHeader(const Slot& slot);

    // A cell of the slot's texts as a value of the file; nothing for an empty text or one that does not convert.
    std::string_view textOf(const Slot& slot, const StoredCell& cell);
    std::string_view textFor(const Slot& slot, const StoredCell& cell, std::size_t length);
    bool isZeroText(const Slot& slot, const StoredCell& cell);
    std::optional<std::int32_t> wholeOf(const Slot& slot, const StoredCell& cell);
    float singleOf(const Slot& slot, const StoredCell& cell);                       // 0 for nothing
    std::optional<std::uint32_t> dateOf(const Slot& slot, const StoredCell& cell);  // the 4 bytes of a date
    std::optional<std::uint32_t> timeOf(const Slot& slot, const StoredCell& cell);  // and of a time
    float secondsOf(const Slot& slot, const StoredCell& cell);                      // 0 for nothing
    std::optional<std::uint32_t> valueOf(const Slot& slot, const StoredCell& cell); // of a result, by its kind

    const model::Document& m_doc;
    platform::Services& m_services;
    OutRecords& m_out;
    int m_thisYear;
    Slot m_categories;
    std::vector<Slot> m_slots; // those that have cells, in order
    PictureCopy m_copy;
    std::vector<ImagePlace> m_images;
    std::vector<std::filesystem::path> m_usedPictures;

    int m_record = 0; // being built
    std::uint32_t m_row = 0;
    std::optional<std::uint32_t> m_block; // of rows, to which m_row belongs
    std::uint32_t m_place = 0;            // of m_row in it
    ByteWriter* m_bytes = nullptr;
    std::string m_scratch;
};

// A guess of the bytes that the records of a document take, without its pictures; rather too large than too small.
std::size_t expectedSize(const model::Document& doc);

} // namespace tallybook::pdb
