// Joins over pairs of databases made from a number, against a plain scan of the other one for each record.
#include "core/calc/values/Numbers.h"
#include "core/document/joins/Joins.h"
#include "document/Book.h"

#include <random>

namespace tallybook::document {
namespace {

using model::FieldType;
using test::Book;

constexpr int kPairs = 60;
constexpr FieldType kKeyTypes[] = {FieldType::Text, FieldType::Integer, FieldType::Long, FieldType::Key,
                                   FieldType::AutoIncremental};

struct Pair {
    explicit Pair(unsigned seed) : random(seed), others(below(60)), ours(below(80)) {
        fill(others, {FieldType::Text, FieldType::Integer, FieldType::Long, FieldType::Key,
                      FieldType::AutoIncremental, FieldType::Checkbox});
        for (int record = 0; record < others.doc.NumDataRecs; ++record)
            others.doc.RecKeys.set(record, below(20));
        makeJoins();
    }

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

    // Texts that are often the same, in several forms.
    std::string someText(FieldType type) {
        static const char* texts[] = {"", "a", "A", "b", " 7", "7.0", "07", "-0", "seven"};
        if (type == FieldType::Text && below(2) == 0)
            return texts[below(9)];
        return below(6) == 0 ? "" : std::to_string(below(20));
    }

    void fill(Book& book, std::initializer_list<FieldType> types) {
        for (int slot = 1; const FieldType type : types) {
            book.field(slot, type, "Field " + std::to_string(slot));
            for (int record = 0; record < book.doc.NumDataRecs; ++record) {
                if (type == FieldType::Checkbox && below(2) == 0)
                    book.check(record, slot);
                else if (type != FieldType::Checkbox && type != FieldType::Key)
                    book.set(record, slot, someText(type));
            }
            ++slot;
        }
    }

    // Three joins, each with two lookups behind it.
    void makeJoins() {
        for (int join = 1; join <= 7; join += 3) {
            const FieldType keyType = kKeyTypes[below(5)];
            ours.join(join, "Join", "Others", 1 + below(7), 1 + below(7), keyType);
            ours.lookup(join + 1, "First", "Others", join, 1 + below(7));
            ours.lookup(join + 2, "Second", "Others", join, 1 + below(7));
            for (int record = 0; record < ours.doc.NumDataRecs; ++record)
                ours.key(record, join, someText(keyType == FieldType::Text ? FieldType::Text : FieldType::Long));
        }
    }

    std::mt19937 random;
    Book others;
    Book ours;
};

struct AnyJoins : testing::Test {
    std::string cellOf(const model::Document& doc, int record, int slot) {
        if (slot < 1 || slot > model::MaxUserFields)
            return {};
        const int row = record + model::kFirstDataRow;
        const int column = model::columnOfSlot(slot);
        if (doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type == FieldType::Checkbox)
            return doc.grd.picture(row, column) == model::Picture::CheckOn ? "y" : "n";
        return doc.grd.text(row, column);
    }

    bool matches(const std::string& other, const std::string& stored, FieldType keyType) {
        if (keyType == FieldType::Text)
            return other == stored;
        if (keyType == FieldType::Key)
            return !other.empty() && other == stored;
        const auto left = calc::parseNumber(other, t.regional);
        const auto right = calc::parseNumber(stored, t.regional);
        return left && right && *left == *right;
    }

    // The record that a scan finds, or -1.
    int scan(const model::Document& other, const model::ExternalDef& join, const std::string& stored) {
        for (int record = 0; record < other.NumDataRecs; ++record)
            if (matches(cellOf(other, record, join.SourceField), stored, static_cast<FieldType>(join.KeyType)))
                return record;
        return -1;
    }

    void compare(const model::Document& joined, const model::Document& stored, const model::Document& other) {
        for (int join = 1; join <= 7; join += 3)
            for (int record = 0; record < joined.NumDataRecs; ++record) {
                const std::string key = stored.grd.text(record + model::kFirstDataRow, model::columnOfSlot(join));
                const int found = scan(other, joined.CurrDB20.Externals.at(join), key);
                for (int slot = join; slot < join + 3; ++slot) {
                    const int display = joined.CurrDB20.Externals.at(slot).MatchField;
                    const std::string without = slot == join ? key : "";
                    EXPECT_EQ(cellOf(joined, record, slot), found < 0 ? without : cellOf(other, found, display))
                        << "record " << record << " slot " << slot << " key " << key;
                }
            }
    }

    test::TestServices t;
};

TEST_F(AnyJoins, showWhatAScanOfTheOtherDatabaseFinds) {
    for (const char* folder : {"/app/Backup", "/app/Temp", "/home"})
        t.files.addFolder(folder);
    for (unsigned seed = 0; seed < kPairs; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Pair pair(seed);
        pair.ours.write(t, "/home/MS2_Ours.pdb");
        pair.others.write(t, "/home/MS2_Others.pdb");
        model::Document joined;
        model::Document stored;
        model::Document other;
        ASSERT_EQ(readPDBFile20(joined, t, "/home/MS2_Ours.pdb", ReadMode::Quiet), Outcome::Done);
        ASSERT_EQ(readPDBFile20(other, t, "/home/MS2_Others.pdb", ReadMode::Quiet), Outcome::Done);
        ASSERT_TRUE(t.files.remove("/home/MS2_Others.pdb"));
        ASSERT_EQ(readPDBFile20(stored, t, "/home/MS2_Ours.pdb", ReadMode::Quiet), Outcome::Done); // keys on show
        compare(joined, stored, other);
    }
}

} // namespace
} // namespace tallybook::document
