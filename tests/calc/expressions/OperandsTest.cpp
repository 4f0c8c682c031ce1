#include "core/calc/expressions/Operands.h"

#include "core/calc/values/Dates.h"
#include "support/CalculatedFields.h"

#include <gtest/gtest.h>

namespace tallybook::calc {
namespace {

using model::FieldType;
using test::CalculatedFields;

constexpr int kThisYear = 2003;
constexpr int kOwn = 9; // the field that is calculated: slot 8 decides how calculated operands are read

struct Operand {
    OperandKind kind;
    double value;
    bool operator==(const Operand&) const = default;
};

void PrintTo(const Operand& operand, std::ostream* out) {
    *out << "kind " << static_cast<int>(operand.kind) << " value " << operand.value;
}

// The entry that the only record's cell fills.
Operand read(const CalculatedFields& table, int slot, int ownField) {
    const CellReader cells(table.doc.grd, model::columnOfSlot(slot), table.t.regional, kThisYear);
    Operands operands;
    operands.set(2, OperandKind::Number, 77); // of the record before
    RetFldVal20(readingOf(table.doc.CurrDB20, slot, ownField), cells, 0, 4, operands);
    const OperandKind kind = operands.Kinds[2];
    if (kind == OperandKind::Date)
        return {kind, operands.DateVals[2]};
    return {kind, kind == OperandKind::Time ? operands.TimeVals[2] : operands.NumVals[2]};
}

Operand number(double value) {
    return {OperandKind::Number, value};
}
Operand date(double value) {
    return {OperandKind::Date, value};
}
Operand time(int hour, int minute, int second) {
    return {OperandKind::Time, serialOf(Date{}, TimeOfDay{hour, minute, second})};
}

TEST(RetFldVal20, readsEachTypeOfField) {
    struct Case {
        FieldType type;
        const char* text;
        Operand expected;
    };
    const Operand kNone{OperandKind::None, 0};
    const Operand kNoTime{OperandKind::NoTime, 0};
    const Case cases[] = {
        {FieldType::Integer, "-12", number(-12)},
        {FieldType::Integer, "", number(0)},
        {FieldType::Long, "1,234", number(1234)},
        {FieldType::Float, "2.50", number(2.5)},
        {FieldType::Float, "much", number(0)},
        {FieldType::DBLookup, "7", number(7)},
        {FieldType::DBLookup, "seven", number(0)},
        {FieldType::AutoIncremental, "41", number(41)},
        {FieldType::List, "3", number(3)},
        {FieldType::List, "three", number(0)},
        {FieldType::RadioButton, "$4", number(4)},
        {FieldType::RadioButton, "", number(0)},
        {FieldType::Date, "1/2/2003", date(37623)},
        {FieldType::Date, "1/2/2003 12:00:00 PM", date(37623)}, // the form of a date has no time
        {FieldType::Date, "36526", date(36526)},                // the serial itself
        {FieldType::Date, "", date(0)},
        {FieldType::Date, "soon", date(0)},
        {FieldType::Time, "1:05:09 PM", time(13, 5, 9)},
        {FieldType::Time, "1/2/2003 6:00", time(6, 0, 0)},
        {FieldType::Time, "12:00:00 AM", time(0, 0, 0)},
        {FieldType::Time, "", kNoTime},
        {FieldType::Time, "0.5.", kNoTime},
        {FieldType::ConditionalExpression, "12", number(12)},
        {FieldType::ConditionalExpression, "1/2/2003 6:00", date(37623)},
        {FieldType::ConditionalExpression, "high", number(0)},
        {FieldType::ConditionalExpression, "", number(0)},
        {FieldType::Text, "12", kNone},
        {FieldType::Memo, "12", kNone},
        {FieldType::Key, "12", kNone},
        {FieldType::DBJoin, "12", kNone},
        {FieldType::AddressBookLookup, "12", kNone},
        {FieldType::Image, "12", kNone},
        {FieldType::Plugin, "12", kNone},
        {FieldType::NotUsed, "12", kNone},
    };
    for (const Case& c : cases) {
        CalculatedFields table;
        table.field(1, c.type, c.type == FieldType::Float ? 2 : 0);
        table.set(0, 1, c.text);
        EXPECT_EQ(read(table, 1, kOwn), c.expected) << fieldTypeName(c.type) << " " << c.text;
    }
}

TEST(RetFldVal20, countsACheckBoxByItsPicture) {
    CalculatedFields table;
    table.field(1, FieldType::Checkbox);
    EXPECT_EQ(read(table, 1, kOwn), number(0));
    table.check(0, 1, model::Picture::CheckOff);
    EXPECT_EQ(read(table, 1, kOwn), number(0));
    table.check(0, 1, model::Picture::CheckOn);
    EXPECT_EQ(read(table, 1, kOwn), number(1));
}

TEST(RetFldVal20, readsACalculatedOperandByTheFormatOfTheSlotAheadOfTheField) {
    struct Case {
        int resultType; // of slot 8
        const char* text;
        Operand expected;
    };
    const Case cases[] = {
        {0, "12.5", number(12.5)},
        {0, "1/2/2003", number(0)},
        {1, "1/2/2003", date(37623)},
        {1, "1/2/2003 12:00:00 PM", date(37623.5)},
        {1, "0", date(0)},
        {1, "", date(0)},
        {2, "1/2/2003", date(37623)},
        {3, "1/2/2003", date(37623)},
        {4, "12", number(12)},
        {5, "12", number(12)},
        {6, "12", number(12)},
        {7, "1:05:09 PM", time(13, 5, 9)},
        {7, "0", time(0, 0, 0)},
        {7, "", time(0, 0, 0)},
        {8, "12", number(12)},
        {9, "12", number(12)},
        {10, "-12", number(-12)},
        {11, "1:2:3", number(3723)},
        {11, "1:2", number(3720)},
        {11, "25:0:0", number(0)}, // no time of day
        {11, "90", number(0)},
        {11, "", number(0)},
        {12, "1:2", number(3720)},
        {12, "1:2:3", number(3720)},
        {12, "abc", number(0)},
        {13, "12", number(0)},
        {14, "12", number(12)},
    };
    for (const FieldType type : {FieldType::Expression, FieldType::AdvExpression}) {
        for (const Case& c : cases) {
            CalculatedFields table;
            table.expression(1, type, 13, {}); // its own format has no part in it
            table.expression(8, FieldType::Expression, c.resultType, {});
            table.expression(kOwn, FieldType::Expression, 13, {});
            table.set(0, 1, c.text);
            EXPECT_EQ(read(table, 1, kOwn), c.expected)
                << fieldTypeName(type) << " " << c.resultType << " " << c.text;
        }
    }
}

TEST(RetFldVal20, readsCalculatedOperandsOfTheFirstFieldAsNumbers) {
    CalculatedFields table;
    table.expression(3, FieldType::Expression, 1, {});
    table.set(0, 3, "12");
    EXPECT_EQ(read(table, 3, 1), number(12)); // slot 0 has no format
}

} // namespace
} // namespace tallybook::calc
