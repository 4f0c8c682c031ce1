// Promises that hold for every database, tried on generated ones.
#include "support/AnyDatabase.h"

#include "core/pdb/Database.h"
#include "support/TestServices.h"

#include <array>
#include <gtest/gtest.h>
#include <random>

namespace tallybook::pdb {
namespace {

using model::Document;
using platform::Bytes;
using test::AnyDatabase;
using test::difference;
using test::TestServices;

constexpr std::uint32_t kSeeds = 100;
const std::filesystem::path kCopy = "/app/Temp/Copy.pdb";

// One database after the other; a failure names its seed.
class AnyDatabases : public ::testing::Test {
protected:
    template <class Try> void forEachSeed(Try tryOne) {
        for (std::uint32_t seed = 0; seed < kSeeds && !HasFailure(); ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            tryOne(AnyDatabase(seed));
        }
    }

    // Opens a file; it is the temporary copy too.
    void open(Document& doc, const Bytes& file) {
        ASSERT_EQ(verifyRecords(file).value(), Verdict::Good);
        const auto status = readDatabase(doc, file, "x", m_test.regional);
        ASSERT_TRUE(status.ok()) << status.error().tag << ": " << status.error().description();
        m_test.files.put(kCopy, file);
        doc.TempCopyPath = kCopy;
    }

    Bytes save(Document& doc) {
        auto built = buildDatabase(doc, m_test);
        EXPECT_TRUE(built.ok()) << built.error().description();
        return built.ok() ? built.value().bytes : Bytes{};
    }

    Bytes openAndSave(const Bytes& file) {
        Document doc;
        open(doc, file);
        return save(doc);
    }

    TestServices m_test;
};

TEST_F(AnyDatabases, openAndSaveChangesOnlyWhatIsRecomputed) {
    forEachSeed([&](const AnyDatabase& made) {
        EXPECT_EQ(difference(openAndSave(made.foreign.bytes()), made.saved.bytes()), "");
    });
}

TEST_F(AnyDatabases, aSavedFileComesBackByteForByteButForLinks) {
    forEachSeed([&](const AnyDatabase& made) {
        const Bytes once = made.saved.bytes();
        Bytes expected = once;
        for (const int slot : made.conditionalSlots) {
            const std::size_t links = made.saved.offset(static_cast<std::size_t>(slot) + 2) + test::kConditionalLinks;
            expected[links + 1] = once[links];
            expected[links] = 0;
        }
        const Bytes twice = openAndSave(once);
        EXPECT_EQ(difference(twice, expected), "");
        EXPECT_EQ(difference(openAndSave(twice), twice), ""); // by now the links have gone
    });
}

TEST_F(AnyDatabases, fieldsReadAloneAreTheSame) {
    forEachSeed([&](const AnyDatabase& made) {
        const Bytes file = made.foreign.bytes();
        Document all;
        open(all, file);
        for (std::size_t slot = 0; slot <= model::MaxUserFields; ++slot) {
            Document alone;
            ReadSteps steps;
            steps.onlyFields = [slot](const model::DatabaseModel&) { return FieldSet().set(slot); };
            ASSERT_TRUE(readDatabase(alone, file, "x", m_test.regional, steps).ok());
            const int column = model::columnOfSlot(static_cast<int>(slot));
            for (int row = model::kFirstDataRow; row < all.grd.rows(); ++row) {
                EXPECT_EQ(alone.grd.text(row, column), all.grd.text(row, column)) << row << ' ' << column;
                EXPECT_EQ(alone.grd.picture(row, column), all.grd.picture(row, column)) << row << ' ' << column;
            }
        }
    });
}

// Everything that a document holds of its records.
std::string contentOf(const Document& doc) {
    std::string content;
    std::string scratch;
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        content += "\nrecord " + std::to_string(record) + " key " + std::to_string(doc.RecKeys[record]);
        for (int slot = 0; slot <= 80; ++slot) {
            const int row = record + 2;
            const int column = slot + 1;
            content += "\n" + std::to_string(slot) + ": " + std::string(doc.grd.text(row, column, scratch));
            content += " / " + std::string(doc.CellVals.get(record, slot, scratch));
            content += " / " + std::to_string(static_cast<int>(doc.grd.picture(row, column)));
            content += " / " + std::to_string(doc.grd.colour(row, column));
            content += " / " + std::to_string(doc.CellLongs.get(record, slot));
        }
    }
    return content;
}

TEST_F(AnyDatabases, saveAndOpenGivesTheSameDocument) {
    forEachSeed([&](const AnyDatabase& made) {
        Document first;
        open(first, made.saved.bytes());
        Document second;
        open(second, save(first));
        for (const int slot : made.conditionalSlots) {
            auto& links = first.CurrDB20.CondExprs[slot].CondLinks;
            links = {0, links[0], links[1]};
        }
        EXPECT_TRUE(first.CurrDB20 == second.CurrDB20);
        EXPECT_EQ(contentOf(first), contentOf(second));
    });
}

TEST_F(AnyDatabases, structureIsThatOfTheWholeFile) {
    forEachSeed([&](const AnyDatabase& made) {
        const Bytes file = made.saved.bytes();
        Document doc;
        open(doc, file);
        model::DatabaseModel db;
        ASSERT_TRUE(readStructure(db, file, "x").ok());
        for (int slot = 0; slot <= 80; ++slot) { // next values have the older layout on this path
            db.AutoIncNext.erase(slot);
            doc.CurrDB20.AutoIncNext.erase(slot);
        }
        EXPECT_TRUE(db == doc.CurrDB20);
    });
}

// A user may type any of the texts that a column shows, so what is kept as words must save like its texts.
TEST_F(AnyDatabases, wordsAndTextsSaveAlike) {
    forEachSeed([&](const AnyDatabase& made) {
        Document doc;
        open(doc, made.foreign.bytes());
        const Bytes fromWords = save(doc);
        for (int slot = 0; slot <= 80; ++slot)
            doc.grd.column(slot + 1).setCoder(nullptr);
        EXPECT_EQ(difference(save(doc), fromWords), "");
    });
}

// Damaged files are opened or refused with a reason; what opens can be saved, and opened again.
TEST_F(AnyDatabases, damageIsReadOrRefused) {
    constexpr int kTries = 10;
    std::mt19937 dice(1); // for places and values
    forEachSeed([&](const AnyDatabase& made) {
        const Bytes whole = made.foreign.bytes();
        for (int i = 0; i < kTries; ++i) {
            Bytes file = whole;
            const std::size_t listEnd = 80 + 8 * made.foreign.records.size();
            for (int changes = 0; changes < 1 + i % 4; ++changes) {
                const std::size_t place = dice() % (i % 2 == 0 ? file.size() : listEnd);
                file[place] =
                    static_cast<std::uint8_t>(i % 3 == 0 ? dice() : std::array{0x00, 0x7F, 0x80, 0xFF}[dice() % 4]);
            }
            if (i % 5 == 0)
                file.resize(dice() % file.size());
            static_cast<void>(verifyRecords(file));
            model::DatabaseModel structure;
            static_cast<void>(readStructure(structure, file, "x"));
            Document some;
            ReadSteps steps;
            steps.onlyFields = [&](const model::DatabaseModel&) { return FieldSet(dice()); };
            static_cast<void>(readDatabase(some, file, "x", m_test.regional, steps));
            Document doc;
            const auto status = readDatabase(doc, file, "x", m_test.regional);
            if (!status.ok()) {
                EXPECT_EQ(status.error().kind, platform::ErrorKind::Format);
                EXPECT_NE(status.error().text, "");
                continue;
            }
            m_test.files.put(kCopy, file);
            doc.TempCopyPath = kCopy;
            const auto built = buildDatabase(doc, m_test);
            if (!built.ok()) { // a text where a picture should be asks for the picture's file
                EXPECT_EQ(built.error().kind, platform::ErrorKind::File);
                continue;
            }
            Document again;
            open(again, built.value().bytes);
        }
    });
}

} // namespace
} // namespace tallybook::pdb
