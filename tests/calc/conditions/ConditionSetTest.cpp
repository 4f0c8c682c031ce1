// Conditions asked block by block beside the same ones asked record by record, over tables of every kind of field.
#include "core/calc/cells/CellCoders.h"
#include "core/calc/conditions/EvalCond.h"
#include "core/model/Document.h"
#include "support/Regions.h"
#include "support/TestServices.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace tallybook::test {

namespace {

using model::FieldType;
using model::RowBits;

constexpr int kRecords = 700; // two blocks of 256 and a part of one
constexpr int kSlots = 40;    // of which some are free

// A table and conditions, all from one number.
class AnyTable {
public:
    explicit AnyTable(unsigned seed) : m_random(seed) {
        const platform::Regional regions[] = {us(), uk(), german(), swedish()};
        t.regional = regions[below(4)];
        model::clearDocument(doc);
        model::resetRows(doc, kRecords);
        for (int slot = 0; slot < kSlots; ++slot)
            makeField(slot);
        for (int gone = 0; gone < 60; ++gone)
            model::removeRecord(doc, model::kFirstDataRow + below(doc.NumDataRecs));
    }

    model::FilterDef filter() {
        model::FilterDef made;
        for (std::size_t i = 0; i < 3; ++i) {
            made.CondFields[i] = slot(i % 2 != 0);
            made.CondFields2[i] = slot(i % 2 == 0);
            made.CondValues[i] = text();
            made.CondOps[i] = static_cast<std::uint8_t>("=!<L>JhHsSq"[below(11)]);
        }
        for (std::uint8_t& link : made.CondLinks)
            link = static_cast<std::uint8_t>("AOAOAOx\0"[below(8)]);
        return made;
    }

    RowBits rows() {
        RowBits bits{};
        for (std::uint64_t& group : bits)
            group = below(3) == 0 ? ~std::uint64_t{0} : std::uint64_t{m_random()} << 32 | m_random();
        return bits;
    }

    TestServices t;
    model::Document doc;

private:
    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    // A field to compare; for the right side mostly none, and rarely one that there is not.
    std::uint8_t slot(bool right) {
        if (right && below(4) != 0)
            return 0;
        return static_cast<std::uint8_t>(below(200) == 0 ? 81 + below(175) : below(kSlots + 3));
    }

    void makeField(int slot) {
        model::FieldDef& field = doc.CurrDB20.Fields[static_cast<std::size_t>(slot)];
        field.Type = static_cast<FieldType>(below(model::kFieldTypes));
        field.Decimals = static_cast<std::uint8_t>(below(5));
        if (field.Type == FieldType::Expression || field.Type == FieldType::AdvExpression)
            doc.CurrDB20.Expressions[slot].ResultType = static_cast<std::uint8_t>(below(15));
        const int column = model::columnOfSlot(slot);
        if (below(8) != 0)
            doc.grd.column(column).setCoder(calc::coderForField(doc.CurrDB20, slot, t.regional));
        const int share = below(4);
        for (int record = 0; record < kRecords && share > 0; ++record)
            if (below(10) < share * share + 1)
                fill(record + model::kFirstDataRow, column, field.Type);
    }

    void fill(int row, int column, FieldType type) {
        if (type == FieldType::Checkbox)
            doc.grd.setPicture(row, column, below(2) == 0 ? model::Picture::CheckOn : model::Picture::CheckOff);
        if (below(3) == 0)
            doc.grd.setText(row, column, text());
        else if (const auto word = anyWord(column))
            doc.grd.column(column).setWord(doc.grd.rowId(row), *word);
        else
            doc.grd.setText(row, column, std::to_string(below(40) - 20));
    }

    // A word of the column's coder that stands for a text.
    std::optional<std::uint32_t> anyWord(int column) {
        const model::CellCoder* coder = doc.grd.column(column).coder();
        if (coder == nullptr)
            return std::nullopt;
        switch (coder->form().words) {
        case model::WordForm::Whole:
            return below(2) == 0 ? static_cast<std::uint32_t>(below(30) - 15) : m_random();
        case model::WordForm::Decimal:
            return anySingle();
        case model::WordForm::Date:
            return calc::packDate(below(4) == 0 ? 100 + below(9900) : 2003, 1 + below(12), 1 + below(28));
        case model::WordForm::Time:
            return calc::packTime(below(24), below(60), below(60));
        default:
            return std::nullopt;
        }
    }

    std::optional<std::uint32_t> anySingle() {
        const auto word = static_cast<std::uint32_t>(m_random());
        if (below(3) == 0)
            return std::isfinite(std::bit_cast<float>(word)) ? word : 0x80000000; // the lesser of the two zeros
        return std::bit_cast<std::uint32_t>(static_cast<float>(below(4000) - 2000) / 100);
    }

    // Texts that many fields have in common, in the region's form or another one.
    std::string text() {
        static const char* const kTexts[] = {"",
                                             " ",
                                             "T",
                                             "0",
                                             "1",
                                             "-0",
                                             "12",
                                             "12.0",
                                             "12,0",
                                             "012",
                                             "1e3",
                                             "0.005",
                                             "2147483647",
                                             "-2147483648",
                                             "2147483648",
                                             "1e300",
                                             "abc",
                                             "ABC",
                                             "b",
                                             "\xE9t\xE9",
                                             "\xC9T\xC9",
                                             "1/2/2003",
                                             "02.01.2003",
                                             "2003-03-05",
                                             "3/5/2003",
                                             "12/31/9999",
                                             "1/1/100",
                                             "6:30:00 AM",
                                             "18:00:00",
                                             "6 PM",
                                             "12:00:00 AM",
                                             "7:05:09",
                                             "1/2/2003 6 PM",
                                             "first",
                                             "second"};
        std::string made = kTexts[below(static_cast<int>(std::size(kTexts)))];
        return below(6) == 0 ? made + std::to_string(below(20)) : made;
    }

    std::mt19937 m_random;
};

std::string describe(const model::FilterDef& filter) {
    std::string all = "slots";
    for (const auto& half : {filter.CondFields, filter.CondFields2})
        for (const int slot : half)
            all += ' ' + std::to_string(slot);
    for (std::size_t i = 0; i < 3; ++i)
        all += std::string(" ") + static_cast<char>(filter.CondOps[i]) + '"' + filter.CondValues[i] + '"';
    return all + ' ' + static_cast<char>(filter.CondLinks[0]) + static_cast<char>(filter.CondLinks[1]);
}

} // namespace

TEST(ConditionSet, holdsForTheSameRecordsOneByOneAndBlockByBlock) {
    for (unsigned seed = 0; seed < 12; ++seed) {
        AnyTable table(seed);
        for (int round = 0; round < 120; ++round) {
            const model::FilterDef filter = table.filter();
            const calc::ConditionSet conditions(table.doc, table.t.services, filter);
            for (std::uint32_t block = 0; block < 4; ++block) {
                const RowBits rows = table.rows();
                RowBits expected{};
                model::eachBit(rows, [&](std::uint32_t place) {
                    if (conditions.holds(block * model::kBlockRows + place))
                        model::setBit(expected, place);
                });
                ASSERT_EQ(conditions.holding(block, rows), expected)
                    << "seed " << seed << ", block " << block << ", " << describe(filter);
            }
        }
    }
}

// Each field beside each operator and many constants, alone.
TEST(ConditionSet, judgesEveryKindOfFieldByBlocksAsByRecords) {
    for (unsigned seed = 100; seed < 104; ++seed) {
        AnyTable table(seed);
        const RowBits all = table.rows();
        for (std::uint8_t slot = 0; slot < kSlots; ++slot)
            for (const char code : std::string("=!<L>JhHsS")) {
                model::FilterDef filter = table.filter();
                filter.CondFields[0] = slot;
                filter.CondFields[1] = 0;
                filter.CondOps[0] = static_cast<std::uint8_t>(code);
                filter.CondLinks[0] = 0;
                const calc::ConditionSet conditions(table.doc, table.t.services, filter);
                RowBits expected{};
                model::eachBit(all, [&](std::uint32_t place) {
                    if (conditions.holds(place))
                        model::setBit(expected, place);
                });
                ASSERT_EQ(conditions.holding(0, all), expected) << "seed " << seed << ", " << describe(filter);
            }
    }
}

} // namespace tallybook::test
