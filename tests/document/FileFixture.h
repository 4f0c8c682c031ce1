// Databases in files that live in memory, opened and saved by the real operations.
#pragma once

#include "core/document/edit/Records.h"
#include "core/document/file/OpenSave.h"
#include "document/DocumentFixture.h"

#include <memory>

namespace tallybook::test {

using document::Outcome;
using platform::Bytes;

class FileFixture : public DocumentFixture {
protected:
    FileFixture() {
        for (const char* folder : {"/app/Backup", "/app/Temp", "/home"})
            t.files.addFolder(folder);
    }

    // Writes the fixture's own document as a file and forgets the copies that this made.
    void makeFile(const std::filesystem::path& path) {
        ASSERT_EQ(document::savePDBFile20(doc, t, path), Outcome::Done);
        ASSERT_TRUE(t.files.remove("/app/Temp/Copy_" + document::savedPath(path).filename().string()));
        t.user.progresses.clear();
    }

    // A file "/home/MS2_Books.pdb" with a text in slot 1 and `count` records "r0", "r1" ...
    void makeBooks(int count = 2, const std::filesystem::path& path = "/home/MS2_Books.pdb") {
        field(1, FieldType::Text, "Title");
        field(9, FieldType::Image, "Cover"); // for which there is a temporary copy
        records(count);
        for (int record = 0; record < count; ++record) {
            setCell(record, 1, "r" + std::to_string(record));
            doc.RecKeys.set(record, 100 + record);
        }
        doc.CurrDB20.DBName = "MS2_Books";
        makeFile(path);
    }

    // Opens into a fresh document, as the window does.
    Outcome open(const std::filesystem::path& path) {
        opened = std::make_unique<model::Document>();
        return document::OpenDatabase(*opened, t, path);
    }
    std::string openedCell(int record, int slot) const {
        return opened->grd.text(record + model::kFirstDataRow, model::columnOfSlot(slot));
    }

    void setByte(const std::filesystem::path& path, std::size_t offset, std::uint8_t value) {
        Bytes bytes = t.files.bytes(path);
        bytes.at(offset) = value;
        t.files.put(path, bytes);
    }
    // Where a record of a file starts.
    std::size_t offsetOf(const std::filesystem::path& path, std::size_t record) const {
        const Bytes& bytes = t.files.bytes(path);
        std::size_t offset = 0;
        for (std::size_t i = 0; i < 4; ++i)
            offset = offset * 256 + bytes.at(78 + 8 * record + i);
        return offset;
    }

    std::unique_ptr<model::Document> opened;
};

} // namespace tallybook::test
