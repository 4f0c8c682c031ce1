#include "core/document/joins/ExternalPicker.h"

#include "core/document/edit/CellEditing.h"
#include "document/Book.h"

namespace tallybook::document {
namespace {

using model::FieldType;
using test::Book;

constexpr const char* kOrders = "/home/MS2_Orders.pdb";
constexpr const char* kCustomers = "/home/MS2_Customers.pdb";

// Customers with the keys 100 to 102; orders with a join in slot 1 that shows the name by the view 1, and a lookup.
struct ExternalPicker : testing::Test {
    ExternalPicker() {
        for (const char* folder : {"/app/Backup", "/app/Temp", "/home"})
            t.files.addFolder(folder);
        customers({"Ada", "Bea", "Cid"});
        Book orders(2);
        orders.join(1, "Customer", "Customers", 3, 1).ABField1 = 1;
        orders.lookup(2, "Paid", "Customers", 1, 2);
        orders.key(0, 1, "101");
        orders.write(t, kOrders);
        EXPECT_EQ(OpenDatabase(doc, t, kOrders), Outcome::Done);
        doc.grd.setCell(model::kFirstDataRow, model::columnOfSlot(1));
    }

    void customers(const std::vector<std::string>& names) {
        Book book(static_cast<int>(names.size()));
        book.field(1, FieldType::Text, "Name");
        book.field(2, FieldType::Checkbox, "Paid");
        book.field(3, FieldType::Key, "Key");
        for (std::size_t record = 0; record < names.size(); ++record)
            book.set(static_cast<int>(record), 1, names[record]);
        book.check(1, 2);
        book.view(0, "Other", {{1, 10}});
        book.view(1, "Picked", {{2, 20}, {3, 15}, {1, 60}});
        book.write(t, kCustomers);
    }

    static std::vector<std::string> texts(const ExtView& view, std::uint32_t row) {
        std::vector<std::string> all;
        std::string scratch;
        for (std::size_t column = 0; column < view.columns().size(); ++column)
            all.emplace_back(view.text(row, column, scratch));
        return all;
    }
    std::string cell(int record, int slot) const {
        return doc.grd.text(record + model::kFirstDataRow, model::columnOfSlot(slot));
    }
    std::string key(int record) const {
        std::string scratch;
        return std::string(doc.CellVals.get(record, 1, scratch));
    }

    test::TestServices t;
    model::Document doc;
};

using Texts = std::vector<std::string>;

TEST_F(ExternalPicker, opensForAJoinWithADisplayField) {
    EXPECT_EQ(GridEdit(doc, t, kKeyBlank).open, EditAction::Open::ExternalPicker);
    EXPECT_FALSE(doc.editor.open());
}

TEST_F(ExternalPicker, listsTheRecordsInTheColumnsOfTheView) {
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    const std::vector<ExtViewColumn> expected = {{2, "Paid", 800}, {3, "Key", 600}, {1, "Name", 2400}};
    EXPECT_EQ(view.columns(), expected);
    ASSERT_EQ(view.rows(), 3U);
    EXPECT_EQ(texts(view, 0), (Texts{"n", "100", "Ada"}));
    EXPECT_EQ(texts(view, 1), (Texts{"y", "101", "Bea"}));
    EXPECT_FALSE(doc.DocModified);
    EXPECT_TRUE(t.user.atRest());
}

TEST_F(ExternalPicker, viewThatIsNotThereStandsForAllFields) {
    for (const std::uint8_t number : {2, 13, 200}) {
        doc.CurrDB20.Externals[1].ABField1 = number;
        ExtView view(doc);
        view.AddRecordsToView(doc, t);
        ASSERT_EQ(view.columns().size(), 3U);
        EXPECT_EQ(view.columns()[0].header, "Name");
        EXPECT_EQ(texts(view, 2), (Texts{"Cid", "n", "102"}));
    }
}

TEST_F(ExternalPicker, chosenRecordGoesToTheCellWithItsKeyAndLookups) {
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    doc.grd.setCell(3, 1); // wherever the window left it
    view.cmdOK(doc, 2);
    EXPECT_EQ(cell(0, 1), "Cid");
    EXPECT_EQ(key(0), "102");
    EXPECT_EQ(cell(0, 2), "n");
    EXPECT_EQ(doc.grd.row(), 2);
    EXPECT_EQ(doc.grd.col(), model::columnOfSlot(1));
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(ExternalPicker, firstRecordCanBeChosen) {
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    view.cmdOK(doc, 0);
    EXPECT_EQ(cell(0, 1), "Ada");
    EXPECT_EQ(key(0), "100");
    EXPECT_EQ(cell(0, 2), "n");
}

TEST_F(ExternalPicker, noRecordEmptiesTheCellAndItsLookups) {
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    view.cmdOK(doc, 2);
    doc.DocModified = false;
    doc.grd.setCell(3, 1); // wherever the window left it
    view.cmdNone(doc);
    EXPECT_EQ(cell(0, 1), "");
    EXPECT_EQ(key(0), "");
    EXPECT_EQ(cell(0, 2), "");
    EXPECT_EQ(doc.grd.row(), 2);
    EXPECT_TRUE(doc.DocModified);
}

TEST_F(ExternalPicker, nothingChosenChangesNothing) {
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    view.cmdOK(doc, std::nullopt);
    view.cmdOK(doc, 3); // there is no such row
    EXPECT_EQ(cell(0, 1), "Bea");
    EXPECT_EQ(key(0), "101");
    EXPECT_EQ(cell(0, 2), "y");
    EXPECT_FALSE(doc.DocModified);
}

TEST_F(ExternalPicker, findsTextsInAllColumnsOfTheView) {
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    using Rows = std::vector<std::uint32_t>;
    EXPECT_EQ(view.rowsWith(""), (Rows{0, 1, 2}));
    EXPECT_EQ(view.rowsWith("A"), (Rows{0, 1}));
    EXPECT_EQ(view.rowsWith("ID"), (Rows{2}));
    EXPECT_EQ(view.rowsWith("102"), (Rows{2})); // of the key
    EXPECT_EQ(view.rowsWith("y"), (Rows{1}));   // of the check box
    EXPECT_EQ(view.rowsWith("Ada 100"), Rows{});
}

TEST_F(ExternalPicker, knowsTheRecordOfTheCell) {
    ExtView view(doc);
    EXPECT_EQ(view.rowOfCell(doc, t.regional), std::nullopt); // nothing has been read
    view.AddRecordsToView(doc, t);
    EXPECT_EQ(view.rowOfCell(doc, t.regional), 1U);
    view.cmdOK(doc, 2);
    EXPECT_EQ(view.rowOfCell(doc, t.regional), 2U);
    doc.grd.setCell(3, model::columnOfSlot(1)); // has no key
    ExtView second(doc);
    second.AddRecordsToView(doc, t);
    EXPECT_EQ(second.rowOfCell(doc, t.regional), std::nullopt);
}

TEST_F(ExternalPicker, nothingIsFoundWithoutADatabase) {
    ASSERT_TRUE(t.files.remove(kCustomers));
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    EXPECT_TRUE(view.rowsWith("").empty());
    EXPECT_TRUE(view.rowsWith("a").empty());
    EXPECT_EQ(view.rowOfCell(doc, t.regional), std::nullopt);
}

TEST_F(ExternalPicker, listIsFreshAndOtherCellsKeepWhatTheyShow) {
    customers({"Ada", "Bert", "Cid", "Dan"});
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    EXPECT_EQ(cell(0, 1), "Bea"); // as it was read
    ASSERT_EQ(view.rows(), 4U);
    doc.grd.setCell(3, model::columnOfSlot(1));
    ExtView second(doc);
    second.AddRecordsToView(doc, t);
    second.cmdOK(doc, 3);
    EXPECT_EQ(cell(1, 1), "Dan");
    EXPECT_EQ(key(1), "103");
    EXPECT_EQ(cell(0, 1), "Bea");
}

TEST_F(ExternalPicker, missingDatabaseGivesAMessageAndAnEmptyList) {
    ASSERT_TRUE(t.files.remove(kCustomers));
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    EXPECT_EQ(view.rows(), 0U);
    EXPECT_TRUE(view.columns().empty());
    EXPECT_EQ(t.user.texts(), (Texts{"Cannot find external database MS2_Customers.pdb. External references will not "
                                     "be displayed"}));
    EXPECT_EQ(t.user.messages[0].icon, platform::Icon::Critical);
    view.cmdOK(doc, 0);
    EXPECT_EQ(cell(0, 1), "Bea");
}

TEST_F(ExternalPicker, invalidDatabaseIsAskedAbout) {
    t.files.put(kCustomers, platform::Bytes(10));
    t.user.answers = {platform::Answer::No};
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    EXPECT_EQ(view.rows(), 0U);
    EXPECT_EQ(t.user.messages.size(), 1U);
}

TEST_F(ExternalPicker, joinThatWasDesignedJustNowCanBePicked) {
    doc.CurrDB20.Fields[5].Type = FieldType::DBJoin;
    doc.CurrDB20.Externals[5] = {"Customers", 1, 1, 0, 1}; // by the name
    doc.grd.setCell(3, model::columnOfSlot(5));
    ExtView view(doc);
    view.AddRecordsToView(doc, t);
    view.cmdOK(doc, 1);
    std::string scratch;
    EXPECT_EQ(cell(1, 5), "Bea");
    EXPECT_EQ(doc.CellVals.get(1, 5, scratch), "Bea");
}

} // namespace
} // namespace tallybook::document
