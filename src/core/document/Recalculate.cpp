#include "core/document/Recalculate.h"

#include "core/calc/AdvancedField.h"
#include "core/calc/CellResult.h"
#include "core/calc/EvalCond.h"
#include "core/calc/SimpleExpression.h"
#include "core/document/Progress.h"
#include "core/platform/Guards.h"

#include <string>

namespace tallybook::document {

namespace {

using model::Document;
using model::FieldType;
using platform::Services;

constexpr int kRecordsAStep = 256; // between two movements of the bar

// The bar of the whole recalculation: one field after the other from 0 to the last record.
class FieldProgress {
public:
    FieldProgress(Services& services, int records) : m_bar(services.ui, {}), m_records(records) {
        m_bar.show("Calculating...", 0, records);
    }

    void begin(const model::FieldDef& field) { m_caption = "Calculating " + field.Name + " ..."; }

    void at(int record) {
        if (record % kRecordsAStep == 0 || record == m_records - 1)
            m_bar.show(m_caption, record, m_records);
    }

private:
    ProgressBar m_bar;
    int m_records;
    std::string m_caption;
};

void recalcSimple(Document& doc, const Services& services, int field, FieldProgress& progress) {
    calc::SimpleExpression expression(doc, field, services.regional, services.clock.now());
    calc::ResultColumn results(doc.grd.column(model::columnOfSlot(field)), services.regional);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        progress.at(record);
        const calc::RecordRows rows = calc::recordRows(doc.grd, record);
        results.set(rows.row, expression.evaluate(rows));
    }
}

void recalcAdvanced(Document& doc, const Services& services, int field, FieldProgress& progress) {
    const int column = model::columnOfSlot(field);
    calc::AdvancedField expression(doc, field, services.regional, services.clock.now());
    calc::ResultColumn results(doc.grd.column(column), services.regional);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        progress.at(record);
        const calc::RecordRows rows = calc::recordRows(doc.grd, record);
        const calc::AdvancedField::Outcome outcome = expression.evaluate(rows, record);
        results.set(rows.row, outcome.cell);
        calc::setResultColour(doc.grd.colours(column), rows.row, outcome.colour);
    }
}

void recalcField(Document& doc, Services& services, int field, FieldProgress& progress) {
    const model::FieldDef& def = doc.CurrDB20.Fields[static_cast<std::size_t>(field)];
    switch (def.Type) {
    case FieldType::Expression:
        progress.begin(def);
        recalcSimple(doc, services, field, progress);
        break;
    case FieldType::AdvExpression:
        progress.begin(def);
        recalcAdvanced(doc, services, field, progress);
        break;
    case FieldType::ConditionalExpression:
        calc::CalcCondExppression(doc, services, field);
        break;
    default:
        return;
    }
    doc.grd.touch();
}

} // namespace

void recalcExpressions(Document& doc, Services& services) {
    if (doc.NumDataRecs < 1)
        return;
    const platform::Freeze freeze(services.ui, doc);
    const platform::HourGlass wait(services.ui);
    FieldProgress progress(services, doc.NumDataRecs);
    const int last = model::highestField(doc.CurrDB20) - 1;
    for (int field = 1; field <= last; ++field)
        recalcField(doc, services, field, progress);
}

} // namespace tallybook::document
