#include "core/pdb/CellForms.h"

#include "core/calc/CellCoders.h"
#include "core/calc/Dates.h"
#include "core/calc/SingleText.h"

#include <bit>
#include <string>

namespace tallybook::pdb {

namespace {

using model::FieldType;

bool shows(const model::CellCoder& coder, std::uint32_t word, const std::string& text) {
    std::string shown;
    coder.append(word, shown);
    return shown == text;
}

std::string decimalText(float value, int decimals, const platform::Regional& regional) {
    std::string text;
    calc::appendSingle(value, decimals, regional.decimal, text);
    return text;
}

// Samples whose texts differ from one form to the next.
constexpr std::int32_t kWholeSample = -12345;
constexpr float kDecimalSample = -12.5F;
constexpr calc::Date kDateSample{2003, 1, 2};
constexpr calc::TimeOfDay kTimeSample{13, 2, 3};

WordForm wordForm(const model::CellCoder& coder, int decimals, const platform::Regional& regional) {
    if (shows(coder, static_cast<std::uint32_t>(kWholeSample), std::to_string(kWholeSample)))
        return WordForm::Whole;
    if (decimals <= kMostDecimals &&
        shows(coder, std::bit_cast<std::uint32_t>(kDecimalSample), decimalText(kDecimalSample, decimals, regional)))
        return WordForm::Decimal;
    if (shows(coder, calc::packDate(kDateSample.year, kDateSample.month, kDateSample.day),
              calc::shortDate(kDateSample, regional)))
        return WordForm::Date;
    if (shows(coder, calc::packTime(kTimeSample.hour, kTimeSample.minute, kTimeSample.second),
              calc::longTime(kTimeSample, regional)))
        return WordForm::Time;
    return WordForm::Other;
}

} // namespace

CellForm cellForm(const model::DatabaseModel& db, int slot, const model::TextColumn& column,
                  const platform::Regional& regional) {
    CellForm form;
    form.decimals = shownDecimals(db, slot);
    if (column.coder() != nullptr)
        form.words = wordForm(*column.coder(), form.decimals, regional);
    return form;
}

int shownDecimals(const model::DatabaseModel& db, int slot) {
    const model::FieldDef& field = db.Fields[static_cast<std::size_t>(slot)];
    const bool calculated = field.Type == FieldType::Expression || field.Type == FieldType::AdvExpression;
    if (calculated && resultKind(db.Expressions.at(slot).ResultType) == ResultKind::Whole)
        return 0;
    return field.Decimals;
}

ResultKind resultKind(std::uint8_t ResultType) {
    static constexpr ResultKind kKinds[] = {
        ResultKind::Number, ResultKind::Date,    ResultKind::Date,    ResultKind::Date,  ResultKind::Whole,
        ResultKind::Whole,  ResultKind::Whole,   ResultKind::Time,    ResultKind::Whole, ResultKind::Whole,
        ResultKind::Whole,  ResultKind::Seconds, ResultKind::Minutes, ResultKind::Text,
    };
    return ResultType < std::size(kKinds) ? kKinds[ResultType] : ResultKind::Unknown;
}

} // namespace tallybook::pdb
