#include "core/calc/expressions/OperandList.h"

#include "core/calc/expressions/SimpleConstant.h"
#include "core/calc/values/Conversion.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tallybook::calc {

namespace {

// A constant goes through the form of a Float, whose digits are those of a single.
double constantOf(std::string_view text, const platform::Regional& regional, int thisYear) {
    const platform::Regional region = regionOfConstant(text, regional);
    const std::string checked = checkFormat(model::FieldType::Float, text, region, thisYear);
    return parseNumber(checked, region).value_or(0);
}

// The older evaluation puts the parts of h:m:s together to a time, not to a number of seconds.
OperandReading olderReading(OperandReading reading) {
    return reading == OperandReading::HoursMinutesSeconds ? OperandReading::TimeResult : reading;
}

} // namespace

OperandList::OperandList(const model::Tallybook& doc, int field, ExpressionAge age,
                         const platform::Regional& regional, const platform::LocalTime& now)
    : m_doc(doc), m_age(age), m_regional(regional), m_now(now) {
    const auto& tokens = doc.CurrDB20.Expressions.at(field).Tokens;
    for (std::size_t position = 0; position < 2 * kSimpleOperands && tokens[position] != token::kEnd; position += 2)
        addOperand(field, position);
}

void OperandList::addField(std::size_t position, int slot, int ownField, Record record) {
    OperandReading reading = readingOf(m_doc.CurrDB20, slot, ownField);
    const model::WordColumn* stored = nullptr;
    if (m_age == ExpressionAge::Old) {
        stored = reading == OperandReading::Checked ? &m_doc.CellLongs.slotColumn(slot) : nullptr;
        reading = olderReading(reading);
    }
    m_fields.push_back({position, reading, record,
                        CellReader(m_doc.grd, model::columnOfSlot(slot), m_regional, m_now.year), stored});
}

// Tokens of no meaning leave their operand without a value and without a kind.
void OperandList::addOperand(int field, std::size_t position) {
    const model::ExprDef& expression = m_doc.CurrDB20.Expressions.at(field);
    const Token operand = expression.Tokens[position];
    const std::size_t number = position / 2;
    const Token now = m_age == ExpressionAge::Old ? token::kOldNow : token::kNow;
    if (operand == now) {
        m_operands.set(number, OperandKind::Time, serialOf(m_now));
    } else if (token::isField(operand)) {
        addField(position, static_cast<int>(operand), field, Record::Current);
    } else if (operand > token::kPreviousRecord) {
        m_operands.set(number, OperandKind::Number, 0); // stays for a slot that is beyond the last one
        const auto slot = static_cast<int>(operand - token::kPreviousRecord);
        if (token::isPreviousField(operand))
            addField(position, slot, slot, Record::Previous);
    } else if (operand == token::kNumber) {
        m_operands.set(number, OperandKind::Number,
                       constantOf(expression.TokenTexts[position], m_regional, m_now.year));
    } else if (operand == token::kToday) {
        m_operands.set(number, OperandKind::Date, serialOf(m_now));
    }
}

void OperandList::readField(const FieldOperand& operand, std::uint32_t row) {
    if (operand.stored != nullptr)
        m_operands.set(operand.position / 2, OperandKind::Number,
                       static_cast<std::int32_t>(operand.stored->get(row).value_or(0)));
    else
        RetFldVal20(operand.reading, operand.cells, row, operand.position, m_operands);
}

bool OperandList::isOfNumbers() const {
    return std::all_of(m_fields.begin(), m_fields.end(), [](const FieldOperand& operand) {
        return operand.record == Record::Current && operand.reading == OperandReading::Number &&
               operand.stored == nullptr;
    });
}

void OperandList::numbers(std::size_t number, std::uint32_t block, NumberLanes& lanes) const {
    const auto field = std::find_if(m_fields.begin(), m_fields.end(),
                                    [&](const FieldOperand& operand) { return operand.position / 2 == number; });
    if (field == m_fields.end())
        lanes.fill(m_operands.NumVals[number]);
    else
        field->cells.numbers(block, lanes);
}

// What stands above the first record is the number 0, and so is a field above that gives no value.
const Operands& OperandList::read(const RecordRows& record) {
    for (const FieldOperand& operand : m_fields) {
        if (operand.record == Record::Current)
            readField(operand, record.row);
        else if (record.above && operand.reading != OperandReading::Nothing)
            readField(operand, *record.above);
        else
            m_operands.set(operand.position / 2, OperandKind::Number, 0);
    }
    return m_operands;
}

} // namespace tallybook::calc
