// The check of the simple form of expressions before it is stored.
#include "core/calc/expressions/ExpressionTokens.h"
#include "core/calc/expressions/SimpleConstant.h"
#include "core/calc/values/Dates.h"
#include "core/design/Dialog.h"
#include "core/design/ExpressionBuilder.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tallybook::design {

namespace {

namespace result = calc::result;
using model::FieldType;

constexpr int kNone = -1;
constexpr int kDivision = 4; // position in cmbOper
constexpr std::string_view kIncomplete = "Complete the Expression";
constexpr std::string_view kInvalid = "Invalid Expression";

// The choices, and the field that the expression is for.
struct SimpleForm {
    const SimpleChoices& choices;
    const model::DatabaseModel& db;
    int ownSlot;

    const OperandChoice& operand(int number) const { return choices.operands[static_cast<std::size_t>(number)]; }
    bool isTyped(int number) const { return operand(number).position < 0; }
    // An entry other than the blank one counts, even that of a field without a name.
    bool isFilled(int number) const {
        return isTyped(number) ? !trimmed(operand(number).text).empty() : operand(number).position > 0;
    }
    int lastOperand() const {
        for (int k = kOperands - 1; k >= 0; --k)
            if (isFilled(k))
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
    // The number that was typed; nothing for an entry, and for another text.
    std::optional<double> number(int operand, const platform::Regional& regional) const {
        return isTyped(operand) ? calc::constantNumber(this->operand(operand).text, regional) : std::nullopt;
    }
};

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
        if (form.isTyped(k) && form.operand(k).text == "0" && k > 0 && form.operatorAt(k - 1) == kDivision)
            return refuse(services, "The expression generates a Divide by zero. Correct the Expression", kInvalid);
        if (!form.isFilled(k))
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

std::optional<FieldType> typeOfSlot(const SimpleForm& form, int slot) {
    if (slot == form.ownSlot)
        return FieldType::Expression;
    const model::FieldDef& field = form.db.Fields[static_cast<std::size_t>(slot)];
    const bool isNothing = field.Type == FieldType::NotUsed && field.Name.empty();
    return isNothing ? std::nullopt : std::optional(field.Type);
}

// The type of a text that no entry is; nothing when it means none.
std::optional<FieldType> typeOfText(const SimpleForm& form, std::string_view text, platform::Services& services) {
    if (text == "Today")
        return FieldType::Date;
    if (text == "Now")
        return FieldType::Time;
    for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
        const std::string& name = form.db.Fields[static_cast<std::size_t>(slot)].Name;
        if (!name.empty() && (text == name || text == "Prev (" + name + ')'))
            return typeOfSlot(form, slot);
    }
    if (calc::isDate(text, services.regional, services.clock.now().year))
        return FieldType::Date;
    return std::nullopt;
}

std::optional<FieldType> typeOfOperand(const SimpleForm& form, int operand, platform::Services& services) {
    const OperandChoice& choice = form.operand(operand);
    const OperandEntry entry = operandEntry(choice.position);
    switch (entry.kind) {
    case OperandEntry::Kind::Today:
        return FieldType::Date;
    case OperandEntry::Kind::Now:
        return FieldType::Time;
    case OperandEntry::Kind::Field:
        return typeOfSlot(form, entry.slot);
    case OperandEntry::Kind::None:
        break;
    }
    return typeOfText(form, choice.text, services);
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
bool operandsFit(const SimpleForm& form, int last, platform::Services& services) {
    for (int k = last; k >= 0; --k) {
        if (form.number(k, services.regional))
            continue;
        const auto type = typeOfOperand(form, k, services);
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
    const auto number = form.number(1, services.regional);
    if (!addsNumber(form.choices.format) || !number)
        return true;
    const bool whole = *number > std::numeric_limits<std::int32_t>::min() &&
                       *number < std::numeric_limits<std::int32_t>::max() && std::trunc(*number) == *number &&
                       form.operand(1).text.find('.') == std::string::npos;
    return whole || refuse(services,
                           "Please check the value entered. The second operand can only be of the type Integer or "
                           "Long",
                           "Warning");
}

} // namespace

bool VerifyExpression(const SimpleChoices& choices, const model::DatabaseModel& db, platform::Services& services,
                      int ownSlot) {
    if (choices.format < 0)
        return refuse(services, "Select the return type for the Expression", "Incomplete Information");
    const SimpleForm form{choices, db, ownSlot};
    const int lastOperand = form.lastOperand();
    const int lastOperator = form.lastOperator();
    if (lastOperand != lastOperator + 1)
        return refuse(services, kIncomplete, kInvalid);
    return operandsAreThere(form, lastOperand, services) && operatorsAreThere(form, lastOperator, services) &&
           operandsFit(form, lastOperand, services) && secondOperandIsWhole(form, services);
}

} // namespace tallybook::design
