// The check of the simple form of expressions before it is stored.
#include "core/calc/expressions/ExpressionTokens.h"
#include "core/calc/values/Dates.h"
#include "core/calc/values/Numbers.h"
#include "core/design/Dialog.h"
#include "core/design/ExpressionBuilder.h"

#include <algorithm>
#include <limits>

namespace tallybook::design {

namespace {

namespace result = calc::result;
using model::FieldType;

constexpr int kNone = -1;
constexpr int kDivision = 4; // position in cmbOper
constexpr std::string_view kIncomplete = "Complete the Expression";
constexpr std::string_view kInvalid = "Invalid Expression";

// The choices with the texts that the lists show.
struct SimpleForm {
    const SimpleChoices& choices;
    std::array<std::string, kOperands> texts;

    int lastOperand() const {
        for (int k = kOperands - 1; k >= 0; --k)
            if (!trimmed(texts[static_cast<std::size_t>(k)]).empty())
                return k;
        return kNone;
    }
    int operatorAt(int number) const { return choices.operators[static_cast<std::size_t>(number)]; }
    int lastOperator() const {
        for (int i = kOperators - 1; i >= 0; --i)
            if (operatorAt(i) > 0)
                return i;
        return kNone;
    }
    const std::string& text(int operand) const { return texts[static_cast<std::size_t>(operand)]; }
};

SimpleForm formOf(const SimpleChoices& choices, const model::DatabaseModel& db) {
    const std::vector<std::string> entries = operandEntries(db);
    SimpleForm form{choices, {}};
    for (std::size_t k = 0; k < form.texts.size(); ++k) {
        const OperandChoice& operand = choices.operands[k];
        const auto position = static_cast<std::size_t>(operand.position);
        form.texts[k] = operand.position < 0 || position >= entries.size() ? operand.text : entries[position];
    }
    return form;
}

bool refuse(platform::Services& services, std::string_view text, std::string_view title) {
    say(services, text, title);
    return false;
}

bool isFormatOf(int format, int first, int last) {
    return format >= first && format <= last;
}

// Formats that add a number to a date or a time.
bool addsNumber(int format) {
    return isFormatOf(format, result::kDateAndDays, result::kDateAndYears) || format == result::kTime;
}

bool operandsAreThere(const SimpleForm& form, int last, platform::Services& services) {
    for (int k = last; k >= 0; --k) {
        if (form.text(k) == "0" && k > 0 && form.operatorAt(k - 1) == kDivision)
            return refuse(services, "The expression generates a Divide by zero. Correct the Expression", kInvalid);
        if (trimmed(form.text(k)).empty())
            return refuse(services, kIncomplete, kInvalid);
    }
    return true;
}

bool operatorsAreThere(const SimpleForm& form, int last, platform::Services& services) {
    for (int i = last; i >= 0; --i)
        if (form.operatorAt(i) <= 0)
            return refuse(services, kIncomplete, kInvalid);
    return true;
}

// The type of an operand's text; nothing when it is no word of the lists.
std::optional<FieldType> typeOfText(std::string_view text, const model::DatabaseModel& db,
                                    platform::Services& services) {
    if (text == "Today")
        return FieldType::Date;
    if (text == "Now")
        return FieldType::Time;
    for (std::size_t slot = 1; slot <= model::MaxUserFields; ++slot) {
        const model::FieldDef& field = db.Fields[slot];
        if (!field.Name.empty() && (text == field.Name || text == "Prev (" + field.Name + ')'))
            return field.Type;
    }
    if (calc::isDate(text, services.regional, services.clock.now().year))
        return FieldType::Date;
    return std::nullopt;
}

bool isNumberType(FieldType type) {
    static constexpr std::array kTypes = {FieldType::Integer,
                                          FieldType::Long,
                                          FieldType::Float,
                                          FieldType::List,
                                          FieldType::Checkbox,
                                          FieldType::Expression,
                                          FieldType::DBLookup,
                                          FieldType::RadioButton,
                                          FieldType::ConditionalExpression,
                                          FieldType::AutoIncremental,
                                          FieldType::AdvExpression};
    return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

enum class Wanted { Number, Date, Time };

Wanted wantedAt(int operand, int format) {
    if (format == result::kFloating || (operand > 0 && addsNumber(format)))
        return Wanted::Number;
    return isFormatOf(format, result::kDateAndDays, result::kYears) ? Wanted::Date : Wanted::Time;
}

bool fits(FieldType type, Wanted wanted) {
    switch (wanted) {
    case Wanted::Number:
        return isNumberType(type);
    case Wanted::Date:
        return type == FieldType::Date;
    case Wanted::Time:
        return type == FieldType::Time;
    }
    return false;
}

// The texts for the first operand and the others differ by a comma.
std::string_view wantedText(Wanted wanted, int operand) {
    switch (wanted) {
    case Wanted::Number:
        return operand == 0 ? " should only be an Integer, Long, or Float"
                            : " should only be an Integer, Long or Float";
    case Wanted::Date:
        return " should be only be a Date";
    case Wanted::Time:
        return " should be only be a Time";
    }
    return {};
}

// One pass from the last operand down, each matched and then checked; numbers pass.
bool operandsFit(const SimpleForm& form, int last, const model::DatabaseModel& db, platform::Services& services) {
    for (int k = last; k >= 0; --k) {
        if (calc::isNumeric(form.text(k), services.regional))
            continue;
        const auto type = typeOfText(form.text(k), db, services);
        if (!type)
            return refuse(services, "Select the proper fields from the list", "Invalid Field Name");
        const Wanted wanted = wantedAt(k, form.choices.format);
        if (!fits(*type, wanted))
            return refuse(
                services,
                "Value / Field type required at " + std::to_string(k + 1) + std::string(wantedText(wanted, k)), {});
    }
    return true;
}

// What is added to a date or a time is a whole number.
bool secondOperandIsWhole(const SimpleForm& form, platform::Services& services) {
    const std::string& text = form.text(1);
    const auto number = calc::parseNumber(text, services.regional);
    if (!addsNumber(form.choices.format) || !number)
        return true;
    const bool whole = *number > std::numeric_limits<std::int32_t>::min() &&
                       *number < std::numeric_limits<std::int32_t>::max() && text.find('.') == std::string::npos &&
                       text.find(services.regional.decimal) == std::string::npos;
    return whole || refuse(services,
                           "Please check the value entered. The second operand can only be of the type Integer or "
                           "Long",
                           "Warning");
}

} // namespace

bool VerifyExpression(const SimpleChoices& choices, const model::DatabaseModel& db, platform::Services& services) {
    if (choices.format < 0)
        return refuse(services, "Select the return type for the Expression", "Incomplete Information");
    const SimpleForm form = formOf(choices, db);
    const int lastOperand = form.lastOperand();
    const int lastOperator = form.lastOperator();
    if (lastOperand != lastOperator + 1)
        return refuse(services, kIncomplete, kInvalid);
    return operandsAreThere(form, lastOperand, services) && operatorsAreThere(form, lastOperator, services) &&
           operandsFit(form, lastOperand, db, services) && secondOperandIsWhole(form, services);
}

} // namespace tallybook::design
