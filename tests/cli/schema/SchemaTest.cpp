// A description gives back the structure that it was made of, whatever a file holds.
#include "SampleBuilder.h"
#include "Samples.h"
#include "cli/schema/SchemaDatabase.h"
#include "core/pdb/Database.h"
#include "support/AnyDatabase.h"
#include "support/TestServices.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace tallybook::cli {
namespace {

using model::FieldType;
using platform::Bytes;

class SchemaTest : public ::testing::Test {
protected:
    Json describe(const Bytes& file) {
        model::Document doc;
        EXPECT_TRUE(pdb::readDatabase(doc, file, "MS2_A.pdb", t.regional).ok());
        return describeDatabase(doc.CurrDB20, "MS2_A", t);
    }

    // The fixed records of what a description makes.
    std::vector<Bytes> made(const Json& description) {
        model::Document doc;
        try {
            makeDatabase(SchemaObject(description, {}), doc, t, "A");
        } catch (const SchemaFault& fault) {
            ADD_FAILURE() << fault.place << ": " << fault.text << '\n' << shownJson(description);
        }
        const auto built = pdb::buildDatabase(doc, t);
        EXPECT_TRUE(built.ok());
        return fixedRecords(built.value().bytes);
    }

    static std::vector<Bytes> fixedRecords(const Bytes& file) {
        const auto offset = [&](std::size_t record) {
            const std::size_t at = 78 + 8 * record;
            return std::size_t{file[at]} << 24 | std::size_t{file[at + 1]} << 16 | std::size_t{file[at + 2]} << 8 |
                   file[at + 3];
        };
        const std::size_t count = std::size_t{file[76]} << 8 | file[77];
        std::vector<Bytes> records;
        for (std::size_t record = 0; record < 87; ++record) {
            const std::size_t end = record + 1 < count ? offset(record + 1) : file.size();
            records.emplace_back(file.begin() + static_cast<std::ptrdiff_t>(offset(record)),
                                 file.begin() + static_cast<std::ptrdiff_t>(end));
        }
        return records;
    }

    // What a description leaves out: the passwords, the last key, the spare filters.
    static std::vector<Bytes> withoutWhatIsLeftOut(std::vector<Bytes> records) {
        std::fill(records[0].begin() + 24, records[0].begin() + 84, std::uint8_t{0});
        std::fill(records[83].begin() + 1, records[83].end(), std::uint8_t{0});
        std::fill(records[86].end() - 192, records[86].end(), std::uint8_t{0});
        return records;
    }

    void expectSame(const std::vector<Bytes>& made, std::vector<Bytes> expected, const Json& description) {
        expected = withoutWhatIsLeftOut(expected);
        const std::vector<Bytes> given = withoutWhatIsLeftOut(made);
        for (std::size_t record = 0; record < expected.size(); ++record)
            ASSERT_EQ(given[record], expected[record]) << "record " << record << '\n' << shownJson(description);
    }

    test::TestServices t;
};

TEST_F(SchemaTest, givesBackEverySample) {
    for (const samples::Sample& sample : samples::samples()) {
        SCOPED_TRACE(sample.fileName);
        const Json description = describe(sample.make());
        expectSame(made(description), fixedRecords(sample.make()), description);
    }
}

TEST_F(SchemaTest, givesBackWhatNoDialogMakes) {
    for (std::uint32_t seed = 1; seed <= 25; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const test::AnyDatabase any(seed);
        std::vector<Bytes> expected;
        for (std::size_t record = 0; record < 87; ++record)
            expected.push_back(any.saved.records[record].bytes);
        // An open and a save move the links; a description has them where the file has them.
        for (const int slot : any.conditionalSlots)
            for (std::size_t at = test::kConditionalLinks; at < test::kConditionalLinks + 2; ++at)
                expected[static_cast<std::size_t>(slot) + 2][at] =
                    any.foreign.records[static_cast<std::size_t>(slot) + 2].bytes[at];
        const Json description = describe(any.foreign.bytes());
        expectSame(made(description), expected, description);
        for (const platform::Message& message : t.user.messages)
            ADD_FAILURE() << message.text;
        t.user.messages.clear();
    }
}

// Databases as people design them, with what a handheld leaves in them here and there.
class PlainDatabase {
public:
    explicit PlainDatabase(std::uint32_t seed) : m_numbers(seed), m_sample("MS2_A") {
        designCategories();
        for (int fields = 1 + below(6); fields > 0; --fields)
            addField();
        if (below(2) == 0)
            m_sample.addFilter("Some", {{1, '=', "5"}});
        if (below(2) == 0)
            m_sample.addView("Short", {1}, 1);
    }

    Bytes file() { return m_sample.build(); }

private:
    int below(int end) { return static_cast<int>(m_numbers() % static_cast<std::uint32_t>(end)); }
    template <std::size_t n> const char* oneOf(const char* const (&texts)[n]) { return texts[below(n)]; }

    void designCategories() {
        model::FieldDef& categories = m_sample.field(0);
        categories.Name = oneOf({"Categories", "Categories", "Rooms", ""});
        categories.HandheldByte = static_cast<std::uint8_t>(below(2) * 3);
        categories.Decimals = static_cast<std::uint8_t>(below(4) / 3);
        categories.SearchField = static_cast<std::uint8_t>(below(4) / 3);
        if (below(2) == 0)
            m_sample.setCategories({"home", "work"});
        if (below(4) == 0)
            for (int item = 0; item < 70; ++item) // more than the list editor takes
                m_sample.addItems(0, {std::to_string(item).c_str()});
    }

    void addField() {
        static constexpr FieldType kTypes[] = {FieldType::Text,
                                               FieldType::Long,
                                               FieldType::Checkbox,
                                               FieldType::List,
                                               FieldType::ConditionalExpression,
                                               FieldType::ConditionalExpression};
        const int slot =
            m_sample.addField(kTypes[below(6)], std::string("Field ") + static_cast<char>('A' + below(26)));
        m_sample.field(slot).HandheldByte = static_cast<std::uint8_t>(below(3) / 2);
        if (m_sample.field(slot).Type == FieldType::List)
            m_sample.addItems(slot, {"one", "two"});
        if (m_sample.field(slot).Type == FieldType::ConditionalExpression)
            addConditions(m_sample.database().CondExprs[slot]);
    }

    void addConditions(model::CondExprDef& condition) {
        const int count = 1 + below(3);
        std::array<std::uint8_t, 6> operands{};
        for (int n = 0; n < count; ++n) {
            operands[static_cast<std::size_t>(n) * 2] = 1;
            condition.CondOps[static_cast<std::size_t>(n)] = static_cast<std::uint8_t>("=!<>"[below(4)]);
            condition.CondValues[static_cast<std::size_t>(n)] = std::to_string(below(10));
            if (n > 0)
                condition.CondLinks[static_cast<std::size_t>(n) - 1] = static_cast<std::uint8_t>("AO"[below(2)]);
        }
        if (below(4) == 0)
            condition.CondLinks[0] = 0; // as after a second save
        std::copy_n(operands.begin(), 3, condition.CondFields.begin());
        std::copy_n(operands.begin() + 3, 3, condition.CondFields2.begin());
        condition.TrueText = "yes";
        condition.FalseKind = static_cast<std::uint8_t>(below(5));
    }

    std::mt19937 m_numbers;
    samples::SampleBuilder m_sample;
};

TEST_F(SchemaTest, givesBackWhatPeopleDesign) {
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Bytes file = PlainDatabase(seed).file();
        for (const char* saves : {"new", "saved once", "saved twice"}) {
            SCOPED_TRACE(saves);
            const Json description = describe(file);
            ASSERT_NO_FATAL_FAILURE(expectSame(made(description), fixedRecords(file), description));
            model::Document doc;
            ASSERT_TRUE(pdb::readDatabase(doc, file, "MS2_A.pdb", t.regional).ok());
            file = pdb::buildDatabase(doc, t).value().bytes;
        }
    }
}

TEST_F(SchemaTest, takesCategoriesThatCarrySomethingWithoutTheirName) {
    const Json description = Json::parse(R"({"categories": {"items": ["work"], "carried": {"handheldByte": 3}}})");
    EXPECT_EQ(made(description)[1], test::hex("01 01 00 00 03 00*9 'Categories' 00 00"));
    const Json alone = Json::parse(R"({"categories": {"carried": {"handheldByte": 3}}})");
    EXPECT_EQ(made(alone)[1], test::hex("01 01 00 00 03 00*9 'Categories' 00 00"));
}

TEST_F(SchemaTest, saysWhatStandsBesideCarriedValuesToo) {
    const Json description = Json::parse(R"({"fields": [
        {"name": "Year", "type": "Integer", "default": "5", "carried": {"handheldByte": 3, "incDec": 9}}]})");
    EXPECT_EQ(made(description)[1], test::hex("01 02 00 00 00*10 'Categories' 00 00"
                                              "01 02 03 00 00 09 00 00 00*4 'Year' 00 '5' 00"));
}

TEST_F(SchemaTest, refusesCarriedValuesThatSaySomethingElse) {
    const char* cases[] = {
        R"({"fields": [{"name": "Year", "type": "Integer", "default": "5", "carried": {"default": "6"}}]})",
        R"({"fields": [{"name": "Kind", "type": "List", "items": ["a"],
            "carried": {"list": [{"id": 1, "text": "b"}]}}]})",
        R"({"fields": [{"name": "A", "type": "Text"}],
            "views": [{"name": "Short", "columns": ["A"], "carried": {"columns": [{"field": 2, "width": 9}]}}]})",
        R"({"fields": [{"name": "A", "type": "Text"}], "filters": [{"name": "Odd",
            "conditions": [{"field": "A", "value": "x"}], "carried": {"condValues": ["y", "", ""]}}]})",
        R"({"startup": {"text": "one"}, "carried": {"startupText": "two"}})"};
    for (const char* text : cases) {
        const Json description = Json::parse(text);
        model::Document doc;
        try {
            makeDatabase(SchemaObject(description, {}), doc, t, "A");
            ADD_FAILURE() << text;
        } catch (const SchemaFault& fault) {
            EXPECT_EQ(fault.code, ExitCode::Refused);
            EXPECT_TRUE(fault.place.ends_with("carried")) << fault.place;
        }
    }
}

TEST_F(SchemaTest, namesFreeSlotsAsANewDatabaseDoes) {
    const Json description = Json::parse(R"({"fields": [{"slot": 3, "name": "Fld01", "type": "Text"}]})");
    // Slot 1 cannot be called Fld01, since slot 3 is.
    EXPECT_EQ(made(description)[1], test::hex("01 04 00 00 00*10 'Categories' 00 00"
                                              "01 00 00*10 00 00"
                                              "02 00 00*10 'Fld02' 00 00"
                                              "03 01 00*10 'Fld01' 00 00"));
}

TEST_F(SchemaTest, expressionsNameFieldsBehindThem) {
    const Json description = Json::parse(R"({"fields": [
        {"name": "Total", "type": "Adv Expression", "advancedExpression": {"text": "Part * 2"}},
        {"name": "Part", "type": "Expression", "expression": {"format": "Floating", "operands": ["2"]}}]})");
    const std::vector<Bytes> records = made(description);
    // The record's number, the result type, then the slot of the field named first.
    EXPECT_EQ((Bytes{records[3][0], records[3][1], records[3][2]}), (Bytes{3, 0, 2}));
}

TEST_F(SchemaTest, sortKeysMayStandOnFieldsThatAreNoColumns) {
    const Json description = Json::parse(R"({
        "fields": [{"name": "A", "type": "Text"}, {"name": "B", "type": "Text"}],
        "views": [{"name": "Short", "columns": ["A"], "sort": [{}, {"field": "B", "descending": true}]}]})");
    EXPECT_EQ(made(description)[85], test::hex("55 01 'Short' 00*16 00 02 00 00 01 00 0000 00 00 00*6 01"
                                               "01 3C 00*3"));
}

} // namespace
} // namespace tallybook::cli
