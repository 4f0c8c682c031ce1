#include "core/pdb/AttributeBlocks.h"

#include "support/Hex.h"

#include <gtest/gtest.h>

namespace tallybook::pdb {
namespace {

using platform::Bytes;
using test::hex;
using test::toHex;

constexpr auto k2x = FormatGeneration::Format2x;
constexpr auto k1x = FormatGeneration::Format1x;

// What a writer puts out.
template <class Value> std::string built(void (*build)(const Value&, ByteWriter&), const Value& value) {
    ByteWriter out;
    build(value, out);
    return toHex(out.take());
}

// Every shorter run of the bytes must fail the reader, with its tag.
template <class Read> void refusesEveryPrefix(const Bytes& bytes, const std::string& tag, Read read) {
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        ByteReader in(platform::ByteSpan(bytes).first(length));
        const auto result = read(in);
        ASSERT_FALSE(result.ok()) << length << " bytes";
        EXPECT_EQ(result.error().tag, tag);
        EXPECT_EQ(result.error().kind, platform::ErrorKind::Format);
    }
}

TEST(Lists, hasAllIdsAheadOfAllTexts) {
    const Bytes bytes = hex("03 05 FF 01 'one' 00 00 'three' 00");
    ByteReader in(bytes);
    const auto list = readLists(in);
    ASSERT_TRUE(list.ok());
    EXPECT_EQ(list.value().ItemIds, hex("05 FF 01"));
    EXPECT_EQ(list.value().Items, (std::vector<std::string>{"one", "", "three"}));
    EXPECT_EQ(in.left(), 0u);
    EXPECT_EQ(built(buildList, list.value()), toHex(bytes));
    refusesEveryPrefix(bytes, "Load_DBProps : readLists", readLists);
}

TEST(Lists, mayBeEmpty) {
    const Bytes bytes = hex("00");
    ByteReader in(bytes);
    EXPECT_EQ(readLists(in).value().Count(), 0);
    EXPECT_EQ(built(buildList, model::ListDef{}), "00");
}

TEST(Lists, writesNoMoreThan255Items) {
    model::ListDef list;
    for (int i = 0; i < 300; ++i) {
        list.ItemIds.push_back(static_cast<std::uint8_t>(i));
        list.Items.emplace_back("x");
    }
    ByteWriter out;
    buildList(list, out);
    const Bytes bytes = out.take();
    EXPECT_EQ(bytes.size(), 1u + 255 + 2 * 255);
    ByteReader in(bytes);
    EXPECT_EQ(readLists(in).value().Count(), 255);
}

TEST(Lists, everyCharacterSurvivesInAnItem) {
    const model::ListDef list{{1}, {test::allCharacters()}};
    ByteWriter out;
    buildList(list, out);
    const Bytes bytes = out.take();
    ByteReader in(bytes);
    EXPECT_EQ(readLists(in).value(), list);
}

// An Expression's record without its number is 182 bytes, an Adv Expression's 578.
TEST(Expressions, shortBlockHas15Tokens) {
    const Bytes bytes = hex("07  01 5A 56 00*12  00*22 '1234567890' 00 00*132  00");
    ByteReader in(bytes);
    const auto read = readExpression(in, {15, 183});
    ASSERT_TRUE(read.ok());
    model::ExprDef expected;
    expected.ResultType = 7;
    expected.Tokens = {1, 90, 86};
    expected.TokenTexts[2] = "1234567890";
    EXPECT_EQ(read.value(), expected);
    EXPECT_EQ(in.left(), 1u); // the closing zero is skipped with whatever else lies ahead of the next record
    EXPECT_EQ(built(buildExpression, expected), toHex(bytes));
    refusesEveryPrefix(platform::Bytes(bytes.begin(), bytes.end() - 1), "Load_DBProps : readExpression",
                       [](ByteReader& part) {
                           return readExpression(part, {15, 183});
                       });
}

TEST(Expressions, longBlockHas48Tokens) {
    const Bytes bytes = hex("0D  5E 01*46 60  03 00*10 'abcdefghijk'  00*495  '12345678901' 00");
    ByteReader in(bytes);
    const auto read = readExpression(in, {48, 579});
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().ResultType, 13);
    EXPECT_EQ(read.value().Tokens[0], 94u);
    EXPECT_EQ(read.value().Tokens[46], 1u);
    EXPECT_EQ(read.value().Tokens[47], 96u);
    EXPECT_EQ(read.value().TokenTexts[0], "\x03");
    EXPECT_EQ(read.value().TokenTexts[1], "abcdefghijk"); // the whole width
    EXPECT_EQ(read.value().TokenTexts[47], "12345678901");
    EXPECT_EQ(built(buildNewExpression, read.value()), toHex(bytes));
    EXPECT_EQ(bytes.size(), 578u);
}

TEST(Expressions, blockOf91BytesOrFewerHasSevenTokens) {
    const Bytes bytes = hex("04  01 5A 02 5B 03 5C 04  'a' 00*10 00*55 'g' 00*10  'beyond' 00*600");
    const struct {
        int tokens;
        std::int64_t blockLength;
        bool full;
    } cases[] = {{15, 91, false}, {48, 91, false}, {15, -5, false}, {15, 92, true}, {48, 92, true}};
    for (const auto& c : cases) {
        ByteReader in(bytes);
        const auto read = readExpression(in, {c.tokens, c.blockLength});
        ASSERT_TRUE(read.ok());
        EXPECT_EQ(read.value().Tokens[6], 4u);
        EXPECT_EQ(read.value().Tokens[7], c.full ? 'a' : 0u) << c.blockLength;
        if (!c.full) {
            EXPECT_EQ(read.value().TokenTexts[0], "a");
            EXPECT_EQ(read.value().TokenTexts[6], "g");
            EXPECT_EQ(read.value().TokenTexts[7], "");
        }
        EXPECT_EQ(in.position(), c.full ? 1u + 12u * static_cast<unsigned>(c.tokens) : 85u);
    }
}

TEST(Expressions, oldBlockOf87BytesIsRemappedInItsSevenTokens) {
    const Bytes bytes = hex("0D  2B 2B 01 2D 02 2A 2F  00*77"); // behind the slot's byte
    ByteReader in(bytes);
    const auto read = readExpression(in, {48, 87, 20});
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(in.left(), 0u);
    EXPECT_EQ(read.value().ResultType, 13);
    // Operands are no exception: fields 43 and 47 become signs.
    const std::vector<std::uint32_t> expected = {90, 90, 1, 91, 2, 92, 93};
    for (std::size_t i = 0; i < read.value().Tokens.size(); ++i) {
        EXPECT_EQ(read.value().Tokens[i], i < 7 ? expected[i] : 0u);
        EXPECT_EQ(read.value().TokenTexts[i], "");
    }
}

TEST(Expressions, colourBlackComesBackAsAnEmptyText) {
    model::ExprDef expression;
    expression.Tokens = {89, 86};
    expression.TokenTexts[0] = std::string(1, '\0');
    expression.TokenTexts[1] = "1";
    ByteWriter out;
    buildNewExpression(expression, out);
    const Bytes bytes = out.take();
    ByteReader in(bytes);
    const auto read = readExpression(in, {48, 579});
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().TokenTexts[0], "");
    EXPECT_EQ(read.value().TokenTexts[1], "1");
}

TEST(Expressions, sevenTokensAreWrittenInTheFullForm) {
    const Bytes bytes = hex("04  01 5A 02 00*4  00*77");
    ByteReader in(bytes);
    const auto read = readExpression(in, {15, 86});
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(built(buildExpression, read.value()), toHex(hex("04 01 5A 02 00*12 00*165 00")));
}

TEST(Expressions, oldOperatorsGetTheirPresentCodes) {
    const Bytes bytes = hex("00  01 2A 2B 2D 2F 2E 2C 29 30 2A 2A 2A 2A 2A 2A 2A 2B 00*31  00*528 00");
    const struct {
        std::uint8_t version;
        std::uint32_t times, plus, minus, divided;
    } cases[] = {{0, 92, 90, 91, 93}, {20, 92, 90, 91, 93}, {21, 42, 43, 45, 47}, {255, 42, 43, 45, 47}};
    for (const auto& c : cases) {
        ByteReader in(bytes);
        const auto read = readExpression(in, {48, 579, c.version});
        ASSERT_TRUE(read.ok());
        const auto& tokens = read.value().Tokens;
        EXPECT_EQ(tokens[1], c.times);
        EXPECT_EQ(tokens[2], c.plus);
        EXPECT_EQ(tokens[3], c.minus);
        EXPECT_EQ(tokens[4], c.divided);
        EXPECT_EQ(tokens[5], 46u);
        EXPECT_EQ(tokens[6], 44u);
        EXPECT_EQ(tokens[7], 41u);
        EXPECT_EQ(tokens[8], 48u);
        EXPECT_EQ(tokens[14], c.times);
        EXPECT_EQ(tokens[15], 42u); // only the first 15 are looked at
    }
}

TEST(Expressions, formerGenerationHasNoResultType) {
    const Bytes bytes = hex("01 2B 02 00*12 00*165 00");
    ByteReader in(bytes);
    const auto read = readExpression(in, {15, 182, 0, k1x});
    ASSERT_TRUE(read.ok());
    EXPECT_EQ(read.value().ResultType, 0);
    EXPECT_EQ(read.value().Tokens[0], 1u);
    EXPECT_EQ(read.value().Tokens[1], 90u);
}

TEST(Expressions, writesTheLowByteOfATokenAndCutsItsText) {
    model::ExprDef expression;
    expression.Tokens[0] = 0x123;
    expression.TokenTexts[0] = "123456789012";
    EXPECT_EQ(built(buildExpression, expression), toHex(hex("00 23 00*14 '12345678901' 00*154 00")));
}

TEST(Externals, hasFiveBytesBehindItsSource) {
    const Bytes bytes = hex("'MS2_Books' 00 01 02 03 14 05");
    ByteReader in(bytes);
    const auto read = readExternal(in, k2x);
    ASSERT_TRUE(read.ok());
    const model::ExternalDef expected{"MS2_Books", 1, 2, 3, 20, 5};
    EXPECT_EQ(read.value(), expected);
    EXPECT_EQ(read.value().SortField(), 3);
    EXPECT_EQ(read.value().ABField2(), 5);
    EXPECT_EQ(built(buildExternal, expected), toHex(bytes));
    refusesEveryPrefix(bytes, "Load_DBProps : readExternal",
                       [](ByteReader& part) { return readExternal(part, k2x); });
}

TEST(Externals, formerGenerationMayHaveTwoAddressBookFields) {
    const struct {
        const char* bytes;
        model::ExternalDef expected;
        std::size_t left;
    } cases[] = {
        {"'x' 00 01 02 00 09 09", {"x", 1, 2, 0, 11, 0}, 2},
        {"'x' 00 01 02 01 07 08 09", {"x", 1, 2, 7, 11, 8}, 1},
        {"'x' 00 01 02 02 07 08", {"x", 1, 2, 0, 11, 0}, 2},
    };
    for (const auto& c : cases) {
        const Bytes bytes = hex(c.bytes);
        ByteReader in(bytes);
        EXPECT_EQ(readExternal(in, k1x).value(), c.expected) << c.bytes;
        EXPECT_EQ(in.left(), c.left) << c.bytes;
    }
}

TEST(OneToManys, hasAreasOfFixedWidth) {
    const Bytes bytes =
        hex("'MS2_Orders' 00*23  01 02 03  04 05 06  'First' 00*16  '123456789012345678901' 07 08 09");
    ByteReader in(bytes);
    const auto read = ReadOneToMany(in);
    ASSERT_TRUE(read.ok());
    const model::OneToManyDef expected{"MS2_Orders", {1, 2, 3}, {4, 5, 6}, "First", "123456789012345678901",
                                       {7, 8, 9}};
    EXPECT_EQ(read.value(), expected);
    EXPECT_EQ(bytes.size(), 84u);
    EXPECT_EQ(built(BuildOneToMany, expected), toHex(bytes));
    refusesEveryPrefix(bytes, "Load_DBProps : ReadOneToMany", ReadOneToMany);
}

TEST(Plugins, hasParametersAndEntries) {
    const Bytes bytes = hex("FFFFFFFE 03 01 02 03 04 05 06 07 08 09 0A  0B 0C 0D 0E  02  11 12 'a' 00  13 14 00");
    ByteReader in(bytes);
    const auto read = ReadPlugin(in);
    ASSERT_TRUE(read.ok());
    const model::PluginDef expected{
        -2, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {11, 12, 13, 14}, {{0x11, 0x12, "a"}, {0x13, 0x14, ""}}};
    EXPECT_EQ(read.value(), expected);
    EXPECT_EQ(built(BuildPlugin, expected), toHex(bytes));
    refusesEveryPrefix(bytes, "Load_DBProps : ReadPlugin", ReadPlugin);
}

TEST(Plugins, writesNoMoreThan255Entries) {
    model::PluginDef plugin;
    plugin.Entries.resize(256);
    ByteWriter out;
    BuildPlugin(plugin, out);
    EXPECT_EQ(out.take().size(), 20u + 255 * 3);
}

const char* const kCondition = "'Late' 00*17  01 02 03 04 05 06  'T' 00*19 00*20 '01234567890123456789'  02 03 04"
                               "07 08  00*4  01 'due' 00*18 09  02 'paid' 00*17 0A";

TEST(ConditionalExps, readsLinksIntoEntries1And2) {
    const Bytes bytes = hex(kCondition);
    EXPECT_EQ(bytes.size(), 142u);
    ByteReader in(bytes);
    const auto read = ReadConditionalExp(in);
    ASSERT_TRUE(read.ok());
    model::CondExprDef expected;
    expected.Name = "Late";
    expected.CondFields = {1, 2, 3};
    expected.CondFields2 = {4, 5, 6};
    expected.CondValues = {"T", "", "01234567890123456789"};
    expected.CondOps = {2, 3, 4};
    expected.CondLinks = {0, 7, 8};
    expected.TrueKind = 1;
    expected.TrueText = "due";
    expected.TrueField = 9;
    expected.FalseKind = 2;
    expected.FalseText = "paid";
    expected.FalseField = 10;
    EXPECT_EQ(read.value(), expected);
    refusesEveryPrefix(bytes, "Load_DBProps : ReadConditionalExp", ReadConditionalExp);
}

TEST(ConditionalExps, writesLinksFromEntries0And1) {
    const Bytes bytes = hex(kCondition);
    ByteReader in(bytes);
    Bytes moved = bytes;
    moved[90] = 0; // the links 7 and 8 have moved on by one
    moved[91] = 7;
    EXPECT_EQ(built(buildConditionalExp, ReadConditionalExp(in).value()), toHex(moved));
}

TEST(ConditionalExps, gapIsSkippedAndWrittenAsZeros) {
    Bytes bytes = hex(kCondition);
    const Bytes junk = hex("AA BB CC DD");
    std::copy(junk.begin(), junk.end(), bytes.begin() + 92);
    ByteReader in(bytes);
    const auto read = ReadConditionalExp(in);
    EXPECT_EQ(read.value().TrueKind, 1);
    ByteWriter out;
    buildConditionalExp(read.value(), out);
    const Bytes written = out.take();
    EXPECT_EQ(toHex(platform::ByteSpan(written).subspan(92, 4)), "00 00 00 00");
}

} // namespace
} // namespace tallybook::pdb
