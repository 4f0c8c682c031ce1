// The attributes of a field as they stand in its record, behind the record's number: a reader and a writer for each
// kind. A reader fails when the file ends inside its block; what a block does not fill keeps its default.
#pragma once

#include "core/model/Definitions.h"
#include "core/pdb/ByteReader.h"
#include "core/pdb/ByteWriter.h"

#include <cstdint>

namespace tallybook::pdb {

// Which generation of files is read. The older one has shorter blocks for expressions and joins.
enum class FormatGeneration : std::uint8_t { Format1x, Format2x };

// Count, the ids of all items, then their texts.
platform::Result<model::ListDef> readLists(ByteReader& in);
void buildList(const model::ListDef& list, ByteWriter& out); // at most 255 items

// Result type, tokens, texts, a zero. `blockLength` is the length of the whole record: below 92 bytes it has 7
// tokens and texts. Operators of a format version below 21 get their present codes.
struct ExpressionForm {
    int tokens = 15; // 15 for an Expression, 48 for an Adv Expression
    std::int64_t blockLength = 0;
    std::uint8_t FormatVersion = 21;
    FormatGeneration generation = FormatGeneration::Format2x; // 1.x has no result type
};
platform::Result<model::ExprDef> readExpression(ByteReader& in, const ExpressionForm& form);

// Gives the operators of an older expression, the characters of their signs, their present codes. It does so in all
// of the first 15 tokens, operands too.
void renewOperators(model::ExprDef& expression);

void buildExpression(const model::ExprDef& expression, ByteWriter& out);    // 15 tokens
void buildNewExpression(const model::ExprDef& expression, ByteWriter& out); // 48 tokens

// Source, then its field, the field shown, and three bytes that depend on the field's type.
platform::Result<model::ExternalDef> readExternal(ByteReader& in, FormatGeneration generation);
void buildExternal(const model::ExternalDef& external, ByteWriter& out);

platform::Result<model::OneToManyDef> ReadOneToMany(ByteReader& in);
void BuildOneToMany(const model::OneToManyDef& oneToMany, ByteWriter& out);

platform::Result<model::PluginDef> ReadPlugin(ByteReader& in);
void BuildPlugin(const model::PluginDef& plugin, ByteWriter& out); // at most 255 entries

// Reading fills link entries 1 and 2, writing takes 0 and 1: the links move by one with each open and save.
platform::Result<model::CondExprDef> ReadConditionalExp(ByteReader& in);
void buildConditionalExp(const model::CondExprDef& condition, ByteWriter& out);

} // namespace tallybook::pdb
