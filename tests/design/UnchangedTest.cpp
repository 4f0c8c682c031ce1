// Every designer over databases of all kinds: one that is opened and closed with OK changes nothing but what it says.
#include "core/design/FieldProperties.h"
#include "core/design/FilterDesign.h"
#include "core/design/ListEditor.h"
#include "core/design/Properties.h"
#include "core/design/ViewDesign.h"
#include "support/AnyDesign.h"
#include "support/Regions.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace tallybook::design {
namespace {

using model::DatabaseModel;
using model::Document;
using model::FieldType;

constexpr std::uint32_t kSeeds = 60;

enum class Kind { Foreign, Designed };

class Unchanged : public testing::TestWithParam<Kind> {
protected:
    template <class Try> void forEachDatabase(Try tryOne) {
        for (std::uint32_t seed = 0; seed < kSeeds && !HasFailure(); ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            test::TestServices t;
            if (seed % 3 == 1)
                t.regional = test::german();
            Document doc;
            if (GetParam() == Kind::Foreign)
                test::openAny(doc, t, seed);
            else
                test::openDesigned(doc, t, seed);
            doc.DocModified = false;
            tryOne(doc, t);
        }
    }

    // What a try must leave alone.
    struct State {
        explicit State(const Document& doc) : db(doc.CurrDB20), records(test::recordsOf(doc)) {}
        DatabaseModel db;
        std::string records;
    };
    static void expectSame(const State& before, const Document& doc) {
        for (std::size_t slot = 0; slot < before.db.Fields.size(); ++slot)
            EXPECT_EQ(before.db.Fields[slot], doc.CurrDB20.Fields[slot]) << slot;
        EXPECT_TRUE(before.db == doc.CurrDB20);
        EXPECT_EQ(before.records, test::recordsOf(doc));
        EXPECT_FALSE(doc.DocModified);
    }
    bool isDesigned() const { return GetParam() == Kind::Designed; }
};

TEST_P(Unchanged, fieldPropertiesKeepEveryByte) {
    std::array<int, 256> accepted{};
    forEachDatabase([&](Document& doc, test::TestServices& t) {
        for (int slot = 0; slot <= model::highestField(doc.CurrDB20); ++slot) {
            SCOPED_TRACE("slot " + std::to_string(slot));
            const State before(doc);
            const auto type = static_cast<std::size_t>(doc.CurrDB20.Fields[static_cast<std::size_t>(slot)].Type);
            FieldPropDraft draft = fillAttributeValues(doc.CurrDB20, slot, t);
            const bool ok = fieldPropertiesOK(doc, t, slot, draft, FieldPropMode::Document).accepted;
            accepted[type] += ok ? 1 : 0;
            expectSame(before, doc);
            if (isDesigned() && type != 0) {
                EXPECT_TRUE(ok) << "type " << type << ": " << t.user.texts().back();
            }
            if (HasFailure())
                return;
        }
    });
    for (int type = 1; isDesigned() && type < model::kFieldTypes; ++type)
        EXPECT_GT(accepted[static_cast<std::size_t>(type)], 0) << type;
}

TEST_P(Unchanged, filtersKeepEveryByte) {
    int accepted = 0;
    forEachDatabase([&](Document& doc, test::TestServices& t) {
        const State before(doc);
        for (int slot = 0; slot < model::MaxFilters; ++slot) {
            const FilterControls shown =
                CurrentDefinition(doc.CurrDB20, doc.CurrDB20.Filters[static_cast<std::size_t>(slot)]);
            const bool complete = !shown.LblFilterName.empty() && shown.conditions[0].CmbFldListCmp > 0;
            const bool ok = filterOk(doc, t, slot, shown).accepted;
            accepted += ok ? 1 : 0;
            if (isDesigned()) {
                EXPECT_EQ(ok, complete) << slot << ": " << t.user.texts().back();
            }
        }
        expectSame(before, doc);
    });
    EXPECT_GT(accepted, 20);
}

// The links of a condition that was read from a file go to where they count.
TEST_P(Unchanged, conditionsKeepAllButTheirLinks) {
    int accepted = 0;
    forEachDatabase([&](Document& doc, test::TestServices& t) {
        for (int slot = 1; slot <= model::MaxUserFields; ++slot) {
            const model::CondExprDef& stored = std::as_const(doc.CurrDB20).CondExprs.at(slot);
            model::CondExprDef condition = stored;
            accepted +=
                conditionOk(doc.CurrDB20, t, CurrentDefinition(doc.CurrDB20, stored), condition).accepted ? 1 : 0;
            condition.CondLinks = stored.CondLinks;
            EXPECT_EQ(condition, stored) << slot;
        }
    });
    EXPECT_GT(accepted, 5);
}

// A saved view has columns of width 60, no matter which it had, and is the one shown.
TEST_P(Unchanged, viewsKeepAllButTheWidths) {
    int saved = 0;
    forEachDatabase([&](Document& doc, test::TestServices& t) {
        for (std::size_t slot = 0; slot + 1 < doc.CurrDB20.Views.size(); ++slot) {
            SCOPED_TRACE("view " + std::to_string(slot));
            model::ViewDef& view = doc.CurrDB20.Views[slot];
            if (view.Name.empty())
                continue; // it would get one
            if (isDesigned())
                view.Name = "V" + std::to_string(slot);
            model::ViewDef expected = view;
            for (std::size_t i = 0; i < expected.NumCols; ++i)
                expected.Columns[i].Width = 60;
            ViewDesign design(doc, t);
            design.showSlot(static_cast<int>(slot));
            const bool empty = expected.NumCols == 0;
            if (empty)
                t.user.answers = {platform::Answer::No};
            const bool ok = design.cmdOK();
            t.user.answers.clear();
            saved += ok ? 1 : 0;
            EXPECT_TRUE(!ok || view == expected);
            if (isDesigned()) {
                EXPECT_EQ(ok, !empty) << t.user.texts().back();
            }
        }
    });
    EXPECT_GT(saved, isDesigned() ? 50 : 0);
}

TEST_P(Unchanged, theListEditorKeepsEveryByte) {
    forEachDatabase([](Document& doc, test::TestServices& t) {
        const State before(doc);
        ListEditor editor(doc, t, 0);
        for (std::size_t list = 0; list < editor.cmbList().size(); ++list) {
            editor.chooseList(static_cast<int>(list));
            static_cast<void>(editor.lst());
        }
        EXPECT_FALSE(editor.OKButton());
        expectSame(before, doc);
    });
}

TEST_P(Unchanged, propertiesKeepEveryByte) {
    int accepted = 0;
    forEachDatabase([&](Document& doc, test::TestServices& t) {
        const State before(doc);
        UserList users{{"Ann"}, {"/app"}, "Ann", {}};
        Properties properties(doc, t, users);
        properties.CmdLstOK();
        EXPECT_TRUE(properties.CmdDone());
        accepted += properties.cmdOK() == Properties::Accepted::Done ? 1 : 0;
        State after = before;
        after.db.NumFields = doc.CurrDB20.NumFields; // counted anew
        expectSame(after, doc);
    });
    EXPECT_GT(accepted, isDesigned() ? static_cast<int>(kSeeds) - 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Databases, Unchanged, testing::Values(Kind::Foreign, Kind::Designed), [](const auto& kind) {
    return std::string(kind.param == Kind::Foreign ? "Foreign" : "Designed");
});

} // namespace
} // namespace tallybook::design
