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
        bool noNul = false;       // no text has a NUL: none has to be looked for
        std::uint64_t filled = 0; // rows of the current group that may have a cell, a bit each
    };

    void enterRow(int record);
    static std::uint64_t filledRows(const Slot& slot, std::uint32_t group);

    Slot slotOf(int number) const;
    platform::Status buildCell(const Slot& slot);
    void buildText(const Slot& slot);
    void buildMemo(const Slot& slot);
    void buildInteger(const Slot& slot);
    void buildLong(const Slot& slot);
    void buildFloat(const Slot& slot);
    void buildItem(const Slot& slot);
    void buildCheck(const Slot& slot);
    void buildDate(const Slot& slot);
    void buildTime(const Slot& slot);
    void buildJoin(const Slot& slot);
    void buildAddress(const Slot& slot);
    void buildConditional(const Slot& slot);
    void buildResult(const Slot& slot);
    void buildAdvResult(const Slot& slot);
    platform::Status buildPicture(const Slot& slot);
    platform::Status buildNewPicture(const Slot& slot, std::int32_t number);

    void outCell(const Slot& slot) { m_bytes->outBytes(cellHeader(slot)); }
    void outCell(const Slot& slot, std::uint32_t value); // with a body of 4 bytes
    static std::array<std::uint8_t, 2> cellHeader(const Slot& slot);

    // The cell of the current row as a value of the file; nothing for an empty text or one that does not convert.
    std::string_view textOf(const Slot& slot) { return slot.texts->text(m_row, m_scratch); }
    bool isZeroText(const Slot& slot);
    std::optional<std::int32_t> wholeOf(const Slot& slot);
    float singleOf(const Slot& slot);                       // 0 for nothing
    std::optional<std::uint32_t> dateOf(const Slot& slot);  // the 4 bytes of a date
    std::optional<std::uint32_t> timeOf(const Slot& slot);  // and of a time
    float secondsOf(const Slot& slot);                      // 0 for nothing
    std::optional<std::uint32_t> valueOf(const Slot& slot); // of a result, by its kind

    const model::Document& m_doc;
    platform::Services& m_services;
    OutRecords& m_out;
    int m_thisYear;
    std::vector<Slot> m_slots; // those that have cells, in order
    PictureCopy m_copy;
    std::vector<ImagePlace> m_images;
    std::vector<std::filesystem::path> m_usedPictures;

    int m_record = 0; // being built
    std::uint32_t m_row = 0;
    std::optional<std::uint32_t> m_group; // of 64 rows, to which m_row belongs
    ByteWriter* m_bytes = nullptr;
    std::string m_scratch;
};

// A guess of the bytes that the records of a document take, without its pictures; rather too large than too small.
std::size_t expectedSize(const model::Document& doc);

} // namespace tallybook::pdb
