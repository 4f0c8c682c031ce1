#include "cli/rows/GridRows.h"

#include "core/calc/expressions/ExpressionTokens.h"
#include "core/calc/values/Ansi.h"
#include "core/document/views/Views.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <set>

namespace tallybook::cli {

namespace {

using model::Document;
using model::FieldType;
using model::GridModel;

// What stands in a printed column, settled once for all records.
enum class ColumnKind : std::uint8_t { File, RecordNumber, Key, CategoryId, ItemId, Text, Number, Check };

struct PrintedColumn {
    ColumnKind kind;
    int slot; // of a cell or an item's id
    std::string name;
};

bool isNumberResult(std::uint8_t resultType) {
    namespace result = calc::result;
    return resultType == result::kFloating || (resultType >= result::kDays && resultType <= result::kYears) ||
           (resultType >= result::kHours && resultType <= result::kSeconds);
}

ColumnKind kindOfField(const model::DatabaseModel& db, int slot) {
    switch (db.Fields[static_cast<std::size_t>(slot)].Type) {
    case FieldType::Integer:
    case FieldType::Long:
    case FieldType::Float:
    case FieldType::Key:
    case FieldType::AutoIncremental:
        return ColumnKind::Number;
    case FieldType::Expression:
    case FieldType::AdvExpression:
        return isNumberResult(db.Expressions.at(slot).ResultType) ? ColumnKind::Number : ColumnKind::Text;
    case FieldType::Checkbox:
        return ColumnKind::Check;
    default:
        return ColumnKind::Text;
    }
}

bool hasItemIds(const model::DatabaseModel& db, int slot) {
    const FieldType type = db.Fields[static_cast<std::size_t>(slot)].Type;
    return slot > 0 && (type == FieldType::List || type == FieldType::RadioButton);
}

std::string fieldName(const Document& doc, int slot) {
    return calc::ansi::toUtf8(doc.grd.text(0, model::columnOfSlot(slot)));
}

std::vector<PrintedColumn> printedColumns(const Document& doc, const RowsRequest& request) {
    std::vector<PrintedColumn> columns;
    if (request.file)
        columns.push_back({ColumnKind::File, 0, "_file"});
    if (request.numbers)
        columns.push_back({ColumnKind::RecordNumber, 0, "#"});
    if (request.ids) {
        columns.push_back({ColumnKind::Key, 0, "_key"});
        columns.push_back({ColumnKind::CategoryId, 0, "_category"});
    }
    for (const int slot : request.slots)
        columns.push_back({kindOfField(doc.CurrDB20, slot), slot, fieldName(doc, slot)});
    for (const int slot : request.slots)
        if (request.ids && hasItemIds(doc.CurrDB20, slot))
            columns.push_back({ColumnKind::ItemId, slot, "_id:" + fieldName(doc, slot)});
    return columns;
}

// Members of one object need names of their own: one that is taken gets its slot behind it.
void makeNamesUnique(std::vector<PrintedColumn>& columns) {
    std::set<std::string> taken;
    for (PrintedColumn& column : columns) {
        if (!taken.insert(column.name).second)
            column.name += " @" + std::to_string(column.slot);
        taken.insert(column.name);
    }
}

// The texts of one record's columns.
class RecordTexts {
public:
    RecordTexts(const Document& doc, const RowsRequest& request) : m_doc(doc), m_request(request) {}

    // UTF-8; lasts until the next call. Numbers and ids of nothing are empty.
    std::string_view text(const PrintedColumn& column, const ShownRow& shown) {
        const int record = shown.row - model::kFirstDataRow;
        switch (column.kind) {
        case ColumnKind::File:
            return *m_request.file;
        case ColumnKind::RecordNumber:
            return digits(shown.number);
        case ColumnKind::Key:
            return digits(m_doc.RecKeys[record]);
        case ColumnKind::CategoryId:
            return digits(m_doc.CellLongs.get(record, 0));
        case ColumnKind::ItemId: {
            const int id = m_doc.CellLongs.get(record, column.slot);
            return id == 0 ? std::string_view{} : digits(id);
        }
        case ColumnKind::Check:
            return isChecked(column, shown) ? "Y" : "N";
        case ColumnKind::Text:
        case ColumnKind::Number:
            break;
        }
        return utf8(m_doc.grd.text(shown.row, model::columnOfSlot(column.slot), m_scratch), m_converted);
    }

    bool isChecked(const PrintedColumn& column, const ShownRow& shown) const {
        return m_doc.grd.picture(shown.row, model::columnOfSlot(column.slot)) == model::Picture::CheckOn;
    }

private:
    std::string_view digits(std::int64_t number) {
        m_converted = std::to_string(number);
        return m_converted;
    }

    const Document& m_doc;
    const RowsRequest& m_request;
    std::string m_scratch;
    std::string m_converted;
};

void writeTable(const Document& doc, const RowsRequest& request, std::ostream& out) {
    const std::vector<PrintedColumn> columns = printedColumns(doc, request);
    RecordTexts texts(doc, request);
    RowText line(request.form, request.audience);
    if (request.header) {
        for (const PrintedColumn& column : columns)
            line.add(column.name);
        out << line.finish();
    }
    for (const ShownRow& row : request.rows) {
        for (const PrintedColumn& column : columns)
            line.add(texts.text(column, row));
        out << line.finish();
    }
}

void writeJson(const Document& doc, const RowsRequest& request, std::ostream& out) {
    const std::vector<PrintedColumn> columns = printedColumns(doc, request);
    out << "{\"fields\": [";
    std::string field;
    for (const PrintedColumn& column : columns) {
        if (column.kind == ColumnKind::RecordNumber)
            continue;
        field += field.empty() ? "\n" : ",\n";
        field += "{\"slot\": " + std::to_string(column.slot) + ", \"name\": ";
        appendJsonString(column.name, field);
        field += ", \"type\": ";
        appendJsonString(calc::ansi::toUtf8(doc.grd.text(1, model::columnOfSlot(column.slot))), field);
        field += '}';
    }
    out << field << "\n],\n\"records\": [";
    RecordTexts texts(doc, request);
    RowText line(RowForm::Json);
    const char* start = "\n[";
    for (const ShownRow& row : request.rows) {
        for (const PrintedColumn& column : columns)
            line.add(texts.text(column, row));
        out << start << line.finish() << ']';
        start = ",\n[";
    }
    out << "\n]}\n";
}

// A text that JSON takes as a number: -12.50, 1E+15.
bool isJsonNumber(std::string_view text) {
    const auto digits = [&] {
        const std::size_t count = std::min(text.find_first_not_of("0123456789"), text.size());
        text.remove_prefix(count);
        return count;
    };
    const auto take = [&](std::string_view any) {
        const bool there = !text.empty() && any.find(text.front()) != std::string_view::npos;
        text.remove_prefix(there ? 1 : 0);
        return there;
    };
    take("-");
    const bool leadingZero = text.starts_with('0');
    const std::size_t whole = digits();
    if (whole == 0 || (leadingZero && whole > 1))
        return false;
    if (take(".") && digits() == 0)
        return false;
    if (take("eE")) {
        take("+-");
        if (digits() == 0)
            return false;
    }
    return text.empty();
}

void appendTyped(std::string_view text, bool isNumber, std::string& out) {
    if (text.empty())
        out += "null";
    else if (isNumber && isJsonNumber(text))
        out += text;
    else
        appendJsonString(text, out);
}

void writeJsonLines(const Document& doc, const RowsRequest& request, std::ostream& out) {
    std::vector<PrintedColumn> columns = printedColumns(doc, request);
    makeNamesUnique(columns);
    std::vector<std::string> starts; // of each member, its name included
    for (const PrintedColumn& column : columns) {
        starts.emplace_back(starts.empty() ? "{" : ", ");
        appendJsonString(column.name, starts.back());
        starts.back() += ": ";
    }
    RecordTexts texts(doc, request);
    std::string line;
    for (const ShownRow& row : request.rows) {
        line.clear();
        for (std::size_t i = 0; i < columns.size(); ++i) {
            line += starts[i];
            if (columns[i].kind == ColumnKind::Check)
                line += texts.isChecked(columns[i], row) ? "true" : "false";
            else
                appendTyped(texts.text(columns[i], row),
                            columns[i].kind != ColumnKind::Text && columns[i].kind != ColumnKind::File, line);
        }
        out << line << (columns.empty() ? "{}\n" : "}\n");
    }
}

} // namespace

std::vector<int> usedColumns(const Document& doc) {
    std::vector<int> columns;
    for (int slot = 0; slot <= model::MaxUserFields; ++slot)
        if (doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type != FieldType::NotUsed)
            columns.push_back(model::columnOfSlot(slot));
    return columns;
}

std::string_view shownCell(const Document& doc, int row, int column, std::string& scratch) {
    const auto slot = static_cast<std::size_t>(model::slotOfColumn(column));
    if (doc.CurrDB20.Fields[slot].Type == FieldType::Checkbox)
        return doc.grd.picture(row, column) == model::Picture::CheckOn ? "Y" : "N";
    return doc.grd.text(row, column, scratch);
}

std::string_view utf8(std::string_view text, std::string& scratch) {
    if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return text;
    scratch = calc::ansi::toUtf8(text);
    return scratch;
}

std::vector<int> shownSlots(const Document& doc) {
    if (document::isViewShown(doc))
        return {doc.ViewFields.begin(), doc.ViewFields.end()};
    std::vector<int> slots;
    for (const int column : usedColumns(doc))
        slots.push_back(model::slotOfColumn(column));
    return slots;
}

std::vector<ShownRow> shownRows(const Document& doc) {
    const GridModel& grid = document::shownGrid(doc);
    std::vector<int> rowOfId; // in the grid of all fields
    for (int row = doc.grd.rows() - 1; document::isViewShown(doc) && row >= model::kFirstDataRow; --row) {
        const std::uint32_t id = doc.grd.rowId(row);
        rowOfId.resize(std::max<std::size_t>(rowOfId.size(), std::size_t{id} + 1));
        rowOfId[id] = row;
    }
    std::vector<ShownRow> rows;
    rows.reserve(static_cast<std::size_t>(grid.visibleRows()));
    for (int at = 0; at < grid.visibleRows(); ++at) {
        const int row = grid.visibleRow(at);
        const int number = row - model::kFirstDataRow + 1;
        rows.push_back({rowOfId.empty() ? row : rowOfId[grid.rowId(row)], number});
    }
    return rows;
}

std::vector<std::string> columnNames(const Document& doc, const RowsRequest& request) {
    std::vector<std::string> names;
    for (const PrintedColumn& column : printedColumns(doc, request))
        names.push_back(column.name);
    return names;
}

void writeRows(const Document& doc, const RowsRequest& request, std::ostream& out) {
    if (request.jsonLines)
        writeJsonLines(doc, request, out);
    else if (request.form == RowForm::Json)
        writeJson(doc, request, out);
    else
        writeTable(doc, request, out);
}

} // namespace tallybook::cli
