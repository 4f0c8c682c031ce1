#include "Targets.h"

#include "ContainerMutator.h"
#include "ConvertProbe.h"
#include "ExpressionProbe.h"
#include "PictureProbe.h"
#include "ReaderProbe.h"
#include "SmallDatabase.h"
#include "core/pdb/AttributeBlocks.h"
#include "core/pdb/Properties.h"
#include "core/pdb/Screens.h"

#include <algorithm>
#include <array>

namespace tallybook::fuzz {

namespace {

using model::DatabaseModel;
using pdb::ByteReader;
using pdb::ByteWriter;
using platform::Bytes;
using platform::ByteSpan;

const char* const kChanged = "what was read changes when it is written and read again";
const char* const kUnreadable = "what was written cannot be read again";

// What was read must come back the same when it is written and read again.
template <class Read, class Write> std::string roundTrip(ByteSpan input, Read read, Write write) {
    ByteReader in(input);
    const auto first = read(in);
    if (!first)
        return {};
    ByteWriter out;
    write(first.value(), out);
    const Bytes written = out.take();
    ByteReader again(written);
    const auto second = read(again);
    if (!second)
        return kUnreadable;
    return second.value() == first.value() ? "" : kChanged;
}

std::string list(ByteSpan input) {
    return roundTrip(input, pdb::readLists, pdb::buildList);
}

// Blocks of less than 92 bytes have the old form, which is written in the full one.
std::string expression(ByteSpan input, int tokens) {
    ByteReader in(input);
    const auto length = static_cast<std::int64_t>(input.size()) + 1; // the record's number stands in front
    const auto read = pdb::readExpression(in, {.tokens = tokens, .blockLength = length});
    if (!read)
        return {};
    ByteWriter out;
    (tokens == model::kTokens ? pdb::buildNewExpression : pdb::buildExpression)(read.value(), out);
    const Bytes written = out.take();
    ByteReader again(written);
    const auto full = static_cast<std::int64_t>(written.size()) + 1;
    const auto second = pdb::readExpression(again, {.tokens = tokens, .blockLength = full});
    if (!second)
        return kUnreadable;
    return second.value() == read.value() ? "" : kChanged;
}

std::string shortExpression(ByteSpan input) {
    return expression(input, model::kShortTokens);
}

std::string longExpression(ByteSpan input) {
    return expression(input, model::kTokens);
}

std::string external(ByteSpan input) {
    const auto read = [](ByteReader& in) { return pdb::readExternal(in, pdb::FormatGeneration::Format2x); };
    ByteReader older(input);
    (void)pdb::readExternal(older, pdb::FormatGeneration::Format1x);
    return roundTrip(input, read, pdb::buildExternal);
}

std::string oneToMany(ByteSpan input) {
    return roundTrip(input, pdb::ReadOneToMany, pdb::BuildOneToMany);
}

std::string plugin(ByteSpan input) {
    return roundTrip(input, pdb::ReadPlugin, pdb::BuildPlugin);
}

// The links move by one entry with each trip, so that they are moved back before the comparison.
std::string conditional(ByteSpan input) {
    const auto write = [](model::CondExprDef condition, ByteWriter& out) {
        condition.CondLinks = {condition.CondLinks[1], condition.CondLinks[2], 0};
        pdb::buildConditionalExp(condition, out);
    };
    return roundTrip(input, pdb::ReadConditionalExp, write);
}

// The same for records that are read into the whole model.
template <class Read, class Write> std::string recordTrip(ByteSpan input, Read read, Write write) {
    const auto load = [&read](ByteReader& in) -> platform::Result<DatabaseModel> {
        DatabaseModel db;
        if (const auto status = read(in, db); !status)
            return status.error();
        return db;
    };
    return roundTrip(input, load, write);
}

std::string forms(ByteSpan input) {
    return recordTrip(input, pdb::LoadFormProp20, pdb::buildForms);
}

// A view ends with its highest used column when it is written.
std::string views(ByteSpan input) {
    const auto read = [](ByteReader& in, DatabaseModel& db) {
        const auto status = pdb::LoadViewProp20(in, db);
        for (model::ViewDef& view : db.Views) {
            view.NumCols = static_cast<std::uint8_t>(model::highestColumn(view));
            std::fill(view.Columns.begin() + view.NumCols, view.Columns.end(), model::ViewColumn{});
        }
        return status;
    };
    return recordTrip(input, read, pdb::buildViews);
}

std::string filters(ByteSpan input) {
    const auto read = [](ByteReader& in, DatabaseModel& db) {
        return pdb::LoadFilterProp20(in, db, static_cast<std::uint32_t>(in.position() + in.left()));
    };
    return recordTrip(input, read, pdb::buildFilters);
}

// The field table, and the values of the header, are written with all the fixed records: the whole reader's target
// compares them. Here they are read alone, so that the search goes deep.
std::string headerValues(ByteSpan input) {
    DatabaseModel db;
    ByteReader in(input);
    const auto status = pdb::loadDBProps120(in, db);
    return !status && status.error().text.empty() ? "a refusal without reason" : "";
}

std::string fieldTable(ByteSpan input) {
    DatabaseModel db;
    ByteReader in(input);
    const auto status = pdb::loadDBProps220(in, db);
    return !status && status.error().text.empty() ? "a refusal without reason" : "";
}

std::string database(ByteSpan input) {
    return probeReader(input).complaint;
}

std::string older(ByteSpan input) {
    return probeOlder(input).complaint;
}

// The input as the only record of a database that has a field of every type.
std::string dataRecord(ByteSpan input) {
    static const Container kSmall = takeApart(smallDatabase()).value();
    Container file = kSmall;
    file.records.resize(model::kFixedRecords);
    file.attributes.resize(model::kFixedRecords);
    file.records.emplace_back(input.begin(), input.end());
    file.attributes.push_back(kSmall.attributes.back());
    return probeReader(putTogether(file)).complaint;
}

constexpr std::array<Target, 22> kTargets = {{{"database", database},
                                              {"older", older},
                                              {"header_values", headerValues},
                                              {"field_table", fieldTable},
                                              {"list", list},
                                              {"short_expression", shortExpression},
                                              {"long_expression", longExpression},
                                              {"external", external},
                                              {"one_to_many", oneToMany},
                                              {"plugin", plugin},
                                              {"conditional", conditional},
                                              {"forms", forms},
                                              {"views", views},
                                              {"filters", filters},
                                              {"data_record", dataRecord},
                                              {"compile", probeCompile},
                                              {"evaluate", probeEvaluate},
                                              {"palm_bitmap", probePalmBitmap},
                                              {"bmp", probeBmp},
                                              {"specs", probeSpecs},
                                              {"delimited", probeDelimited},
                                              {"import", probeImport}}};

} // namespace

std::span<const Target> targets() {
    return kTargets;
}

const Target& targetNamed(std::string_view name) {
    return *std::find_if(kTargets.begin(), kTargets.end(),
                         [name](const Target& target) { return target.name == name; });
}

} // namespace tallybook::fuzz
