// The real windows over databases of all kinds: one that is opened and closed with OK changes nothing but what it
// says, whatever a control can show.
#include "desktop/DialogDriver.h"
#include "desktop/FieldPropTest.h"
#include "desktop/dialogs/dlgFilterDesg.h"
#include "desktop/dialogs/frmListEditor.h"
#include "desktop/dialogs/frmPDBProps.h"
#include "desktop/dialogs/frmViewDesigner.h"
#include "support/AnyDesign.h"

#include <QLabel>

#include <gtest/gtest.h>
#include <string>

namespace tallybook::test {
namespace {

constexpr std::uint32_t kSeeds = 6;

struct State {
    explicit State(const model::Document& doc) : db(doc.CurrDB20), records(recordsOf(doc)) {}
    model::DatabaseModel db;
    std::string records;
};

void expectSame(const State& before, const model::Document& doc) {
    for (std::size_t slot = 0; slot < before.db.Fields.size(); ++slot)
        EXPECT_EQ(before.db.Fields[slot], doc.CurrDB20.Fields[slot]) << slot;
    EXPECT_TRUE(before.db == doc.CurrDB20);
    EXPECT_EQ(before.records, recordsOf(doc));
    EXPECT_FALSE(doc.DocModified);
}

// Databases of both kinds, one after the other.
template <class Try> void forEachDatabase(Try tryOne) {
    for (std::uint32_t seed = 0; seed < 2 * kSeeds && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestServices t;
        model::Document doc;
        if (seed % 2 == 0)
            openDesigned(doc, t, seed / 2);
        else
            openAny(doc, t, seed / 2);
        doc.DocModified = false;
        tryOne(doc, t);
    }
}

TEST(UnchangedDialogs, fieldProperties) {
    int accepted = 0;
    forEachDatabase([&](model::Document& doc, TestServices& t) {
        for (int slot = 0; slot <= model::highestField(doc.CurrDB20) && !testing::Test::HasFailure(); ++slot) {
            SCOPED_TRACE("slot " + std::to_string(slot));
            const State before(doc);
            LoneFieldProp form(doc, t, slot, design::FieldPropMode::Document);
            form.show();
            ok(form);
            accepted += form.isVisible() ? 0 : 1;
            expectSame(before, doc);
        }
    });
    EXPECT_GT(accepted, 50);
}

TEST(UnchangedDialogs, filterDesigner) {
    int accepted = 0;
    forEachDatabase([&](model::Document& doc, TestServices& t) {
        for (int slot = 0; slot < model::MaxFilters; ++slot) {
            const State before(doc);
            doc.CurrentFilter = static_cast<std::uint8_t>(slot + 1);
            desktop::dlgFilterDesg form(doc, t, nullptr);
            form.show();
            ok(form);
            accepted += form.isVisible() ? 0 : 1;
            expectSame(before, doc);
        }
    });
    EXPECT_GT(accepted, 5);
}

// Saving gives all columns the width 60 and makes the view the one that is shown.
TEST(UnchangedDialogs, viewDesigner) {
    int saved = 0;
    forEachDatabase([&](model::Document& doc, TestServices& t) {
        for (std::size_t slot = 0; slot + 1 < doc.CurrDB20.Views.size(); ++slot) {
            model::ViewDef& view = doc.CurrDB20.Views[slot];
            if (view.Name.empty() || view.NumCols == 0)
                continue;
            for (std::size_t i = 0; i < view.NumCols; ++i)
                view.Columns[i].Width = 60;
            const State before(doc);
            doc.CurrentView = view.Name;
            desktop::frmViewDesigner form(doc, t, nullptr);
            form.show();
            const auto messages = t.user.messages.size();
            clickOn(form, "cmdOK");
            saved += t.user.messages.size() == messages ? 1 : 0;
            EXPECT_TRUE(before.db.Views == doc.CurrDB20.Views) << slot;
            EXPECT_EQ(before.records, recordsOf(doc));
            clickOn(form, "cmdCancel"); // and asks nothing
        }
    });
    EXPECT_GT(saved, 5);
}

TEST(UnchangedDialogs, listEditor) {
    forEachDatabase([](model::Document& doc, TestServices& t) {
        const State before(doc);
        desktop::frmListEditor form(doc, t, 0, nullptr);
        form.show();
        for (int list = 0; list < child<QComboBox>(form, "cmbList")->count(); ++list)
            child<QComboBox>(form, "cmbList")->setCurrentIndex(list);
        ok(form);
        expectSame(before, doc);
    });
}

TEST(UnchangedDialogs, properties) {
    forEachDatabase([](model::Document& doc, TestServices& t) {
        State before(doc);
        design::UserList users{{"Ann"}, {"/app"}, "Ann", {}};
        desktop::frmPDBProps form(doc, t, users, {}, nullptr);
        form.show();
        clickOn(form, "CmdSearch");
        clickOn(form, "CmdLstOK");
        clickOn(form, "CmdStartup");
        clickOn(form, "CmdDone");
        clickOn(form, "cmdOK");
        before.db.NumFields = doc.CurrDB20.NumFields; // counted anew
        expectSame(before, doc);
    });
}

} // namespace
} // namespace tallybook::test
