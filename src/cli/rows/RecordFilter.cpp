#include "cli/rows/RecordFilter.h"

#include "cli/frame/IncomingText.h"
#include "core/calc/values/Ansi.h"
#include "core/design/ExpressionStore.h"

namespace tallybook::cli {

namespace {

// Behind the last slot of a file.
constexpr int kSpareSlot = model::MaxFieldSlots - 1;

std::optional<std::string> faultOf(const std::string& text, const std::vector<std::string>& names,
                                   calc::TokenArray& tokens, calc::TokenTextArray& texts) {
    calc::CompileError error;
    if (calc::Compile(text, names, tokens, texts, error) < 0)
        return calc::ansi::toUtf8(error.text);
    return std::nullopt;
}

// Whether the made-up values of a trial give it a value.
std::optional<std::string> trialFault(const model::DatabaseModel& db, const platform::Services& services,
                                      const model::ExprDef& expression) {
    calc::FieldValueTable values;
    values.fill({calc::FieldValues{-1, -1, "True"}, calc::FieldValues{}});
    std::string result;
    std::uint8_t colour = 0;
    const bool done =
        calc::Evaluate(calc::kTrialRecord, design::fieldKinds(db), values, expression.Tokens, expression.TokenTexts,
                       expression.ResultType, 0, {services.regional, services.clock.now()}, result, colour);
    return done ? std::nullopt : std::optional(calc::ansi::toUtf8(result));
}

} // namespace

RecordFilter::RecordFilter(const model::Document& doc, const platform::Services& services)
    : m_doc(&doc), m_field(doc, kSpareSlot, services.regional, services.clock.now()) {}

std::optional<RecordFilter> RecordFilter::compile(const std::string& text, model::Document& doc,
                                                  const platform::Services& services, std::string& reason) {
    const std::string condition = checkedText(text);
    const std::vector<std::string> names = design::usableFieldNames(doc.CurrDB20);
    model::ExprDef expression;
    // On its own first, so that a message is about what was written and not about what stands around it.
    std::optional<std::string> fault = faultOf(condition, names, expression.Tokens, expression.TokenTexts);
    if (!fault)
        fault = faultOf("If (" + condition + ", 1, 0)", names, expression.Tokens, expression.TokenTexts);
    if (!fault)
        fault = trialFault(doc.CurrDB20, services, expression);
    if (fault) {
        reason = "--where: " + *fault;
        return std::nullopt;
    }
    doc.CurrDB20.Expressions[kSpareSlot] = expression;
    return RecordFilter(doc, services);
}

bool RecordFilter::holds(int row) {
    const int record = row - model::kFirstDataRow;
    return m_field.evaluate(calc::recordRows(m_doc->grd, record), record).cell.value != 0;
}

} // namespace tallybook::cli
