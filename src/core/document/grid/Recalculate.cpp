#include "core/document/grid/Recalculate.h"

#include "core/calc/cells/CellResult.h"
#include "core/calc/conditions/EvalCond.h"
#include "core/calc/expressions/AdvancedField.h"
#include "core/calc/expressions/OlderExpression.h"
#include "core/calc/expressions/SimpleExpression.h"
#include "core/document/grid/Progress.h"
#include "core/platform/Guards.h"

#include <optional>
#include <string>
#include <vector>

namespace tallybook::document {

namespace {

using model::Document;
using model::FieldType;
using platform::Services;

constexpr int kRecordsAStep = 256; // between two movements of the bar

// The bar of the whole recalculation: one field after the other from 0 to the last record.
class FieldProgress {
public:
    FieldProgress(Services& services, int records) : m_bar(services.screen, {}), m_records(records) {
        m_bar.show("Calculating...", 0, records);
    }

    void begin(const model::FieldDef& field) { m_caption = "Calculating " + field.Name + " ..."; }

    void at(int record) {
        if (record % kRecordsAStep == 0 || record == m_records - 1)
            show(record);
    }
    void show(int record) { m_bar.show(m_caption, record, m_records); }

private:
    ProgressBar m_bar;
    int m_records;
    std::string m_caption;
};

// The rows that hold records, a bit each, by blocks of 256. A pass that goes through them in this order reads and
// writes the store as it lies, whatever order a sort has made.
std::vector<model::RowBits> rowsByBlock(const model::GridModel& grd) {
    std::vector<model::RowBits> blocks;
    for (int record = 0; record < grd.dataRows(); ++record) {
        const std::uint32_t id = grd.order().id(record);
        if (id / model::kBlockRows >= blocks.size())
            blocks.resize(id / model::kBlockRows + 1);
        model::setBit(blocks[id / model::kBlockRows], id % model::kBlockRows);
    }
    return blocks;
}

// Calls visit(block, rows) for each block that holds records.
template <class Visit> void eachBlock(const Document& doc, FieldProgress& progress, Visit&& visit) {
    const auto blocks = rowsByBlock(doc.grd);
    int done = 0;
    for (std::uint32_t block = 0; block < blocks.size(); ++block) {
        if (!model::anyBit(blocks[block]))
            continue;
        progress.show(done);
        visit(block, blocks[block]);
        done += static_cast<int>(model::countBits(blocks[block]));
    }
    progress.show(doc.NumDataRecs - 1);
}

void recalcSimpleBlocks(Document& doc, const calc::SimpleExpression& expression, calc::ResultColumn& results,
                        FieldProgress& progress) {
    calc::NumberLanes numbers;
    eachBlock(doc, progress, [&](std::uint32_t block, const model::RowBits& rows) {
        expression.evaluateBlock(block, numbers);
        results.setBlock(block, rows, numbers, expression.decimals());
    });
}

void recalcSimple(Document& doc, const Services& services, int field, FieldProgress& progress) {
    calc::SimpleExpression expression(doc, field, services.regional, services.clock.now());
    calc::ResultColumn results(doc.grd.column(model::columnOfSlot(field)), services.regional);
    if (expression.hasBlocks())
        return recalcSimpleBlocks(doc, expression, results, progress);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        progress.at(record);
        const calc::RecordRows rows = calc::recordRows(doc.grd, record);
        results.set(rows.row, expression.evaluate(rows));
    }
}

// Rows with a fault are computed one by one.
void recalcAdvancedBlocks(Document& doc, int column, calc::AdvancedField& expression, calc::ResultColumn& results,
                          FieldProgress& progress) {
    calc::NumberLanes numbers;
    model::RowBits faults;
    model::WordColumn& colours = doc.grd.colours(column);
    const bool anyColour = !colours.empty();
    eachBlock(doc, progress, [&](std::uint32_t block, const model::RowBits& rows) {
        const std::uint32_t begin = block * model::kBlockRows;
        expression.evaluateBlock(block, numbers, faults);
        results.setBlock(block, rows, numbers, expression.decimals());
        model::eachBit(model::commonBits(rows, faults), [&](std::uint32_t place) {
            results.set(begin + place, expression.evaluate({begin + place, std::nullopt}, 0).cell);
        });
        if (anyColour)
            model::eachBit(rows, [&](std::uint32_t place) { colours.erase(begin + place); });
    });
}

void recalcAdvanced(Document& doc, const Services& services, int field, FieldProgress& progress) {
    const int column = model::columnOfSlot(field);
    calc::AdvancedField expression(doc, field, services.regional, services.clock.now());
    calc::ResultColumn results(doc.grd.column(column), services.regional);
    if (expression.hasBlocks())
        return recalcAdvancedBlocks(doc, column, expression, results, progress);
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

// The older evaluation reads check boxes from CellLongs, where files of the present format have nothing of them.
class CheckLongs {
public:
    explicit CheckLongs(Document& doc) : m_doc(doc) {
        eachCheckbox([&](int slot) {
            for (int record = 0; record < m_doc.NumDataRecs; ++record)
                m_doc.CellLongs.set(record, slot, isTicked(record, slot) ? 1 : 0);
        });
    }
    ~CheckLongs() {
        eachCheckbox([&](int slot) { m_doc.CellLongs.slotColumn(slot).clear(); });
    }
    CheckLongs(const CheckLongs&) = delete;
    CheckLongs& operator=(const CheckLongs&) = delete;

private:
    bool isTicked(int record, int slot) const {
        return m_doc.grd.picture(record + model::kFirstDataRow, model::columnOfSlot(slot)) == model::Picture::CheckOn;
    }
    template <class Visit> void eachCheckbox(Visit&& visit) {
        for (int slot = 1; slot <= model::MaxUserFields; ++slot)
            if (m_doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type == FieldType::Checkbox)
                visit(slot);
    }

    Document& m_doc;
};

void calcOlderField(Document& doc, const Services& services, int field, FieldProgress& progress) {
    const int column = model::columnOfSlot(field);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        progress.at(record);
        doc.grd.setText(record + model::kFirstDataRow, column, calc::calcExpression(doc, services, field, record));
    }
}

} // namespace

void calcOlderExpressions(Document& doc, Services& services) {
    if (doc.NumDataRecs < 1)
        return;
    const platform::Freeze freeze(services.screen, doc);
    const platform::HourGlass wait(services.screen);
    FieldProgress progress(services, doc.NumDataRecs);
    const CheckLongs checks(doc);
    for (int field = 1; field < model::highestField(doc.CurrDB20); ++field) {
        const model::FieldDef& def = doc.CurrDB20.Fields[static_cast<std::size_t>(field)];
        if (def.Type != FieldType::Expression)
            continue;
        progress.begin(def);
        calcOlderField(doc, services, field, progress);
    }
}

void recalcExpressions(Document& doc, Services& services) {
    if (doc.NumDataRecs < 1)
        return;
    const platform::Freeze freeze(services.screen, doc);
    const platform::HourGlass wait(services.screen);
    FieldProgress progress(services, doc.NumDataRecs);
    const int last = model::highestField(doc.CurrDB20) - 1;
    for (int field = 1; field <= last; ++field)
        recalcField(doc, services, field, progress);
}

} // namespace tallybook::document
