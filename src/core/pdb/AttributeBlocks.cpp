#include "core/pdb/AttributeBlocks.h"

#include "core/pdb/Conditions.h"
#include "core/pdb/Layout.h"

#include <algorithm>

namespace tallybook::pdb {

namespace {

using model::CondExprDef;
using model::ExprDef;
using model::ExternalDef;
using model::ListDef;
using model::OneToManyDef;
using model::PluginDef;
using model::PluginEntry;

// The operators of older files are the characters of their signs.
std::uint32_t presentOperator(std::uint32_t token) {
    switch (token) {
    case '*':
        return 92;
    case '+':
        return 90;
    case '-':
        return 91;
    case '/':
        return 93;
    default:
        return token;
    }
}

void buildTokens(const ExprDef& expression, std::size_t tokens, ByteWriter& out) {
    out.outByte(expression.ResultType);
    for (std::size_t i = 0; i < tokens; ++i)
        out.outByte(static_cast<std::uint8_t>(expression.Tokens[i]));
    for (std::size_t i = 0; i < tokens; ++i)
        out.outArea(expression.TokenTexts[i], layout::kTokenTextWidth);
    out.outByte(0);
}

} // namespace

// | 1 | Count | Count | ItemIds | ... | Items, zero texts |
platform::Result<ListDef> readLists(ByteReader& in) {
    ListDef list;
    const std::size_t count = in.getByte();
    for (std::size_t i = 0; i < count && in.ok(); ++i)
        list.ItemIds.push_back(in.getByte());
    for (std::size_t i = 0; i < count && in.ok(); ++i)
        list.Items.emplace_back(in.getText());
    return in.give("Load_DBProps : readLists", std::move(list));
}

void buildList(const ListDef& list, ByteWriter& out) {
    const std::size_t count = std::min({list.Items.size(), list.ItemIds.size(), layout::kMostInByte});
    out.outByte(static_cast<std::uint8_t>(count));
    out.outBytes(platform::ByteSpan(list.ItemIds).first(count));
    for (std::size_t i = 0; i < count; ++i)
        out.outZeroText(list.Items[i]);
}

// | 1 | ResultType | n | Tokens | 11 n | TokenTexts | 1 | 0 |, n is 7, 15 or 48
platform::Result<ExprDef> readExpression(ByteReader& in, const ExpressionForm& form) {
    ExprDef expression;
    if (form.generation == FormatGeneration::Format2x)
        expression.ResultType = in.getByte();
    const bool full = form.blockLength >= layout::kFullExpression;
    const auto tokens = static_cast<std::size_t>(full ? form.tokens : layout::kOldTokens);
    for (std::size_t i = 0; i < tokens; ++i)
        expression.Tokens[i] = in.getByte();
    for (std::size_t i = 0; i < tokens; ++i)
        expression.TokenTexts[i] = in.getPaddedText(layout::kTokenTextWidth);
    if (form.FormatVersion < layout::kNewOperators)
        renewOperators(expression);
    return in.give("Load_DBProps : readExpression", std::move(expression));
}

void renewOperators(ExprDef& expression) {
    std::transform(expression.Tokens.begin(), expression.Tokens.begin() + model::kShortTokens,
                   expression.Tokens.begin(), presentOperator);
}

void buildExpression(const ExprDef& expression, ByteWriter& out) {
    buildTokens(expression, model::kShortTokens, out);
}

void buildNewExpression(const ExprDef& expression, ByteWriter& out) {
    buildTokens(expression, model::kTokens, out);
}

// | n+1 | Source | 1 | SourceField | 1 | MatchField | 1 | ABField1 | 1 | KeyType | 1 | Extra |
// In 1.x files, behind MatchField: | 1 | 1 when two address book fields follow | 2 | those |
platform::Result<ExternalDef> readExternal(ByteReader& in, FormatGeneration generation) {
    ExternalDef external;
    external.Source = in.getText();
    external.SourceField = in.getByte();
    external.MatchField = in.getByte();
    if (generation == FormatGeneration::Format2x) {
        external.ABField1 = in.getByte();
        external.KeyType = in.getByte();
        external.Extra = in.getByte();
    } else if (in.getByte() == 1) {
        external.ABField1 = in.getByte();
        external.Extra = in.getByte();
    }
    return in.give("Load_DBProps : readExternal", std::move(external));
}

void buildExternal(const ExternalDef& external, ByteWriter& out) {
    out.outZeroText(external.Source);
    out.outByte(external.SourceField);
    out.outByte(external.MatchField);
    out.outByte(external.ABField1);
    out.outByte(external.KeyType);
    out.outByte(external.Extra);
}

// | 33 | Source | 3 | MatchFields | 3 | SortFields | 21 | Label1 | 21 | Label2 | 3 | Options |
platform::Result<OneToManyDef> ReadOneToMany(ByteReader& in) {
    OneToManyDef oneToMany;
    oneToMany.Source = in.getPaddedText(layout::kOneToManySourceWidth);
    in.getBytes(oneToMany.MatchFields);
    in.getBytes(oneToMany.SortFields);
    oneToMany.Label1 = in.getPaddedText(layout::kOneToManyLabelWidth);
    oneToMany.Label2 = in.getPaddedText(layout::kOneToManyLabelWidth);
    in.getBytes(oneToMany.Options);
    return in.give("Load_DBProps : ReadOneToMany", std::move(oneToMany));
}

void BuildOneToMany(const OneToManyDef& oneToMany, ByteWriter& out) {
    out.outArea(oneToMany.Source, layout::kOneToManySourceWidth);
    out.outBytes(oneToMany.MatchFields);
    out.outBytes(oneToMany.SortFields);
    out.outArea(oneToMany.Label1, layout::kOneToManyLabelWidth);
    out.outArea(oneToMany.Label2, layout::kOneToManyLabelWidth);
    out.outBytes(oneToMany.Options);
}

// | 4 | PluginId | 1 | Kind | 10 | Params | 4 | Params2 | 1 | NumEntries | ... | entries: two bytes, zero text |
platform::Result<PluginDef> ReadPlugin(ByteReader& in) {
    PluginDef plugin;
    plugin.PluginId = in.getLong();
    plugin.Kind = in.getByte();
    in.getBytes(plugin.Params);
    in.getBytes(plugin.Params2);
    const int entries = in.getByte();
    for (int i = 0; i < entries && in.ok(); ++i) {
        PluginEntry& entry = plugin.Entries.emplace_back();
        entry.Byte1 = in.getByte();
        entry.Byte2 = in.getByte();
        entry.Text = in.getText();
    }
    return in.give("Load_DBProps : ReadPlugin", std::move(plugin));
}

void BuildPlugin(const PluginDef& plugin, ByteWriter& out) {
    const std::size_t entries = std::min(plugin.Entries.size(), layout::kMostInByte);
    out.outLong(static_cast<std::uint32_t>(plugin.PluginId));
    out.outByte(plugin.Kind);
    out.outBytes(plugin.Params);
    out.outBytes(plugin.Params2);
    out.outByte(static_cast<std::uint8_t>(entries));
    for (std::size_t i = 0; i < entries; ++i) {
        out.outByte(plugin.Entries[i].Byte1);
        out.outByte(plugin.Entries[i].Byte2);
        out.outZeroText(plugin.Entries[i].Text);
    }
}

// The conditions of Conditions.h, then
// | 2 | CondLinks | 4 | 0 | 1 | TrueKind | 21 | TrueText | 1 | TrueField | the same for the other branch |
platform::Result<CondExprDef> ReadConditionalExp(ByteReader& in) {
    CondExprDef condition;
    readConditions(in, condition);
    condition.CondLinks[1] = in.getByte();
    condition.CondLinks[2] = in.getByte();
    in.skipBytes(layout::kConditionGap);
    condition.TrueKind = in.getByte();
    condition.TrueText = in.getPaddedText(layout::kResultTextWidth);
    condition.TrueField = in.getByte();
    condition.FalseKind = in.getByte();
    condition.FalseText = in.getPaddedText(layout::kResultTextWidth);
    condition.FalseField = in.getByte();
    return in.give("Load_DBProps : ReadConditionalExp", std::move(condition));
}

void buildConditionalExp(const CondExprDef& condition, ByteWriter& out) {
    buildConditions(condition, out);
    out.outByte(condition.CondLinks[0]);
    out.outByte(condition.CondLinks[1]);
    out.zeros(layout::kConditionGap);
    out.outByte(condition.TrueKind);
    out.outArea(condition.TrueText, layout::kResultTextWidth);
    out.outByte(condition.TrueField);
    out.outByte(condition.FalseKind);
    out.outArea(condition.FalseText, layout::kResultTextWidth);
    out.outByte(condition.FalseField);
}

} // namespace tallybook::pdb
