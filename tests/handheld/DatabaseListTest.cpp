#include "core/handheld/DatabaseList.h"

#include "support/MemoryFiles.h"
#include "support/RawFile.h"
#include "support/Regions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::handheld {
namespace {

using test::RawFile;
using testing::ElementsAre;
using testing::IsEmpty;

class DatabaseList : public testing::Test {
protected:
    DatabaseList() { files.addFolder("/u"); }

    // A database of so many data records under a name on the disk.
    void put(const std::string& file, const std::string& name, int records = 0, const std::string& creator = "MOSS",
             int fixed = 87) {
        RawFile raw;
        raw.name = name;
        raw.creator = creator;
        raw.records.resize(static_cast<std::size_t>(fixed));
        for (int record = 0; record < records; ++record)
            raw.add("57 00 00000001 FF");
        files.put("/u/" + file, raw.bytes());
    }
    std::vector<std::string> names20(NewEntry withNew = NewEntry::Without) {
        std::vector<std::string> names;
        const auto entries = getDBList20(files, "/u", withNew);
        for (const DatabaseEntry& entry : entries.value())
            names.push_back(entry.name + '|' + entry.file.string());
        return names;
    }
    // A row as text, without its time.
    std::vector<std::string> rows() {
        std::vector<std::string> texts;
        const auto found = getDBList(files, "/u");
        for (const DatabaseRow& row : found.value())
            texts.push_back(row.name + '|' + std::string(row.format) + '|' + std::to_string(row.records) + '|' +
                            row.file.string());
        return texts;
    }

    test::MemoryFiles files;
};

TEST_F(DatabaseList, isEmptyForAFolderWithoutDatabases) {
    EXPECT_THAT(names20(), IsEmpty());
    EXPECT_THAT(names20(NewEntry::With), ElementsAre("** New database **|"));
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(DatabaseList, takesFilesByTheirNames) {
    const struct {
        const char* file;
        bool listed;
    } cases[] = {
        {"MS2_Books.pdb", true},
        {"ms2_books2.PDB", true},
        {"Ms2_x.Pdb", true}, // nine characters are enough
        {"MS2_.pdb", false}, // eight are not
        {"MS2_Books.pdb~", false},
        {"MS2_Books.pdb.tallybook-tmp-1", false},
        {"MS2Books.pdb", false},
        {"MSA_Old.pdb", false},
        {"xMS2_Books.pdb", false},
        {"MS2_MossbankSysCategories.pdb", false},
        {"MS2_MOSSBANKSYSCATEGORIES.PDB", false},
        {"MS2_MossbankSysCategories2.pdb", true},
        {"MSA_SysDBCategories.pdb", false},
    };
    for (const auto& [file, listed] : cases) {
        test::MemoryFiles one;
        one.put(std::string("/u/") + file, {});
        EXPECT_EQ(getDBList20(one, "/u", NewEntry::Without).value().size(), listed ? 1U : 0U) << file;
    }
}

TEST_F(DatabaseList, showsNamesWithBlanksSortedWithoutRegardToCase) {
    for (const char* file : {"MS2_books.pdb", "MS2_Zoo.pdb", "ms2_An_Old_List.PDB", "MS2_apples.pdb", "MS2_10.pdb"})
        files.put(std::string("/u/") + file, {});
    EXPECT_THAT(names20(NewEntry::With),
                ElementsAre("** New database **|", "10|MS2_10.pdb", "An Old List|ms2_An_Old_List.PDB",
                            "apples|MS2_apples.pdb", "books|MS2_books.pdb", "Zoo|MS2_Zoo.pdb"));
}

// An exclamation mark sorts ahead of the stars.
TEST_F(DatabaseList, keepsTheNewEntryFirst) {
    files.put("/u/MS2_!first.pdb", {});
    EXPECT_THAT(names20(NewEntry::With), ElementsAre("** New database **|", "!first|MS2_!first.pdb"));
}

TEST_F(DatabaseList, passesOverFoldersOfTheName) {
    files.addFolder("/u/MS2_Folder.pdb");
    EXPECT_THAT(names20(), IsEmpty());
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(DatabaseList, saysWhyAFolderCannotBeRead) {
    EXPECT_FALSE(getDBList20(files, "/gone", NewEntry::With));
    EXPECT_FALSE(getDBList(files, "/gone"));
}

TEST_F(DatabaseList, showsBothFormatsByTheNameInTheHeader) {
    put("MS2_books.pdb", "MS2_My Books", 3);
    put("MSA_old.pdb", "MSA_Old List", 2, "MOSA", 40);
    put("MS2_plain.pdb", "Plain");
    put("msa_lower.PDB", "msa_lower", 0, "MOSA", 40);
    EXPECT_THAT(rows(), ElementsAre("lower|1.x|0|msa_lower.PDB", "My Books|2.0|3|MS2_books.pdb",
                                    "Old List|1.x|2|MSA_old.pdb", "Plain|2.0|0|MS2_plain.pdb"));
}

TEST_F(DatabaseList, leavesOutWhatIsNoDatabase) {
    put("MS2_few.pdb", "MS2_few", 0, "MOSS", 86);
    put("MS2_other.pdb", "MS2_other", 0, "DATE");
    put("MS2_old.pdb", "MS2_old", 0, "MOSA");
    put("MSA_few.pdb", "MSA_few", 0, "MOSA", 39);
    put("MSX_what.pdb", "MSX_what");
    put("MSA_SysDBCategories.pdb", "MSA_SysDBCategories", 0, "MOSA", 40);
    put("MSA_MossbankSysCategories.pdb", "MSA_MossbankSysCategories", 0, "MOSA", 40);
    put("MS2_MossbankSysCategories.pdb", "MS2_MossbankSysCategories");
    files.put("/u/MS2_empty.pdb", {});
    files.put("/u/MS2_cut.pdb", platform::Bytes(77));
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(DatabaseList, leavesDeletedRecordsOut) {
    RawFile raw;
    raw.name = "MS2_A";
    raw.add("57 00 00000001 FF");
    raw.add("57 00 00000002 FF");
    raw.records.back().attributes = 0xC0;
    files.put("/u/MS2_A.pdb", raw.bytes());
    EXPECT_THAT(rows(), ElementsAre("A|2.0|1|MS2_A.pdb"));
}

TEST_F(DatabaseList, tellsTheTimeOfTheLastChange) {
    put("MS2_A.pdb", "MS2_A");
    EXPECT_EQ(getDBList(files, "/u").value().front().modified, files.state("/u/MS2_A.pdb").value().modified);
    EXPECT_EQ(lastModifiedText({2003, 3, 5, 13, 5, 9}, {}), "3/5/2003 1:05:09 PM");
}

} // namespace
} // namespace tallybook::handheld
