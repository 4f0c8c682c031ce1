#include "core/model/Document.h"

#include "support/Records.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace tallybook::model {
namespace {

using test::columnLongs;
using test::columnTexts;
using test::fillColumn;
using test::recordKeys;
using Texts = std::vector<std::string>;

std::string valOf(const Document& doc, int record, int slot) {
    std::string scratch;
    return std::string(doc.CellVals.get(record, slot, scratch));
}

// Three records a, b and c with keys 1, 2 and 3 and something beside every cell of slot 3.
void fillThree(Document& doc) {
    fillColumn(doc, 3, {"a", "b", "c"});
    for (int record = 0; record < 3; ++record) {
        doc.RecKeys.set(record, record + 1);
        doc.CellLongs.set(record, 3, 10 * (record + 1));
        doc.CellVals.set(record, 3, "key " + std::to_string(record + 1));
    }
}

TEST(Document, hasAHiddenPlaceholderRowWithoutRecords) {
    Document doc;
    clearDocument(doc);
    EXPECT_TRUE(hasNoRecords(doc));
    EXPECT_EQ(doc.NumDataRecs, 0);
    EXPECT_EQ(doc.NumFileRecs, 87);
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.rowHeight(2), 0);
    EXPECT_EQ(doc.grd.visibleRows(), 0);
    EXPECT_EQ(doc.grd.columnWidth(0), 480);
    EXPECT_EQ(doc.grd.columnWidth(82), 0);
}

TEST(Document, takesThePlaceholderForItsFirstRecord) {
    Document doc;
    clearDocument(doc);
    EXPECT_EQ(appendRecord(doc), 2);
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.rowHeight(2), kDefaultSize);
    EXPECT_EQ(doc.NumDataRecs, 1);
    EXPECT_EQ(doc.NumFileRecs, 88);
    EXPECT_EQ(appendRecord(doc), 3);
    EXPECT_EQ(doc.grd.rows(), 4);
    EXPECT_EQ(doc.NumDataRecs, 2);
}

TEST(Document, leavesThePlaceholderBehindItsLastRecord) {
    Document doc;
    resetRows(doc, 1);
    doc.grd.setText(2, 4, "text");
    doc.RecKeys.set(0, 7);
    doc.CellLongs.set(0, 3, 7);
    doc.CellVals.set(0, 3, "7");
    removeRecord(doc, 2);
    EXPECT_TRUE(hasNoRecords(doc));
    EXPECT_EQ(doc.grd.rows(), 3);
    EXPECT_EQ(doc.grd.rowHeight(2), 0);
    EXPECT_EQ(doc.NumFileRecs, 87);
    appendRecord(doc);
    EXPECT_EQ(doc.grd.text(2, 4), "");
    EXPECT_EQ(doc.RecKeys[0], 0);
    EXPECT_EQ(doc.CellLongs.get(0, 3), 0);
    EXPECT_EQ(valOf(doc, 0, 3), "");
}

TEST(Document, takesARecordOutWithAllThatStandsBesideIt) {
    Document doc;
    fillThree(doc);
    removeRecord(doc, 3);
    EXPECT_EQ(columnTexts(doc, 3), (Texts{"a", "c"}));
    EXPECT_EQ(recordKeys(doc), (std::vector<int>{1, 3}));
    EXPECT_EQ(columnLongs(doc, 3), (std::vector<int>{10, 30}));
    EXPECT_EQ(valOf(doc, 1, 3), "key 3");
    EXPECT_EQ(doc.NumDataRecs, 2);
    EXPECT_EQ(doc.NumFileRecs, 89);
    appendRecord(doc);
    EXPECT_EQ(columnTexts(doc, 3), (Texts{"a", "c", ""}));
    EXPECT_EQ(recordKeys(doc), (std::vector<int>{1, 3, 0}));
    EXPECT_EQ(columnLongs(doc, 3), (std::vector<int>{10, 30, 0}));
    EXPECT_EQ(valOf(doc, 2, 3), "");
}

TEST(Document, keepsTheTablesBesideTheirRowsWhenTheseMove) {
    Document doc;
    fillThree(doc);
    doc.grd.permuteRows({2, 0, 1});
    EXPECT_EQ(columnTexts(doc, 3), (Texts{"c", "a", "b"}));
    EXPECT_EQ(recordKeys(doc), (std::vector<int>{3, 1, 2}));
    EXPECT_EQ(columnLongs(doc, 3), (std::vector<int>{30, 10, 20}));
    EXPECT_EQ(valOf(doc, 0, 3), "key 3");
    doc.CellVals.set(0, 3, "changed");
    EXPECT_EQ(valOf(doc, 0, 3), "changed");
    EXPECT_EQ(valOf(doc, 1, 3), "key 1");
}

TEST(Document, keepsTheTablesOfSlotsApart) {
    Document doc;
    fillThree(doc);
    doc.CellLongs.set(0, 0, 4);
    doc.CellLongs.set(0, 81, -1);
    EXPECT_EQ(doc.CellLongs.get(0, 0), 4);
    EXPECT_EQ(doc.CellLongs.get(0, 81), -1);
    EXPECT_EQ(doc.CellLongs.get(0, 3), 10);
    EXPECT_EQ(doc.CellLongs.get(1, 0), 0);
    doc.CellLongs.set(0, 81, 0);
    EXPECT_TRUE(doc.CellLongs.slotColumn(81).empty());
}

TEST(Document, forgetsEverythingButItsPathsWhenCleared) {
    Document doc;
    fillThree(doc);
    doc.CurrDB20.DBName = "MS2_Books";
    doc.CurrFilePath = "/home/ann/MS2_Books.pdb";
    doc.DocModified = doc.FileOK = doc.GridReady = true;
    doc.Is2xFormat = false;
    doc.CurrField = 3;
    doc.CurrentView = "Short";
    doc.CurrentFilter = 2;
    doc.MultiFilterSel.set(1);
    doc.ViewColWidths.fill(5);
    doc.LastRowInView = 4;
    doc.SessionPwd[1] = "secret";
    doc.editor.kind = EditorKind::Text1;
    clearDocument(doc);
    EXPECT_EQ(doc.CurrDB20, DatabaseModel{});
    EXPECT_EQ(doc.CurrFilePath, "/home/ann/MS2_Books.pdb");
    EXPECT_FALSE(doc.DocModified);
    EXPECT_FALSE(doc.FileOK);
    EXPECT_FALSE(doc.GridReady);
    EXPECT_TRUE(doc.Is2xFormat);
    EXPECT_EQ(doc.CurrField, 0);
    EXPECT_EQ(doc.CurrentView, "");
    EXPECT_EQ(doc.CurrentFilter, 0);
    EXPECT_TRUE(doc.MultiFilterSel.none());
    EXPECT_EQ(doc.ViewColWidths[0], 0);
    EXPECT_EQ(doc.LastRowInView, 0);
    EXPECT_EQ(doc.SessionPwd[1], "");
    EXPECT_FALSE(doc.editor.open());
    EXPECT_EQ(doc.RecKeys[0], 0);
    EXPECT_EQ(doc.CellLongs.get(0, 3), 0);
    EXPECT_EQ(doc.grd.text(2, 4), "");
}

TEST(Document, resetsToAnyNumberOfRecords) {
    Document doc;
    fillThree(doc);
    resetRows(doc, 5);
    EXPECT_EQ(doc.NumDataRecs, 5);
    EXPECT_EQ(doc.NumFileRecs, 92);
    EXPECT_EQ(doc.grd.dataRows(), 5);
    EXPECT_EQ(recordKeys(doc), std::vector<int>(5));
    EXPECT_EQ(columnTexts(doc, 3), Texts(5));
}

struct PlainRecord {
    std::string text;
    int key = 0;
    int number = 0;
    std::string val;
};

TEST(Document, agreesWithPlainRecordsThroughRandomChanges) {
    std::mt19937 random(13);
    Document doc;
    clearDocument(doc);
    std::vector<PlainRecord> plain;
    for (int step = 0; step < 6000; ++step) {
        const auto choice = random() % 6;
        if (plain.empty() || choice == 0) {
            ASSERT_EQ(appendRecord(doc), kFirstDataRow + static_cast<int>(plain.size()));
            plain.emplace_back();
        } else if (choice == 1 && random() % 2) {
            const auto gone = static_cast<int>(random() % plain.size());
            removeRecord(doc, kFirstDataRow + gone);
            plain.erase(plain.begin() + gone);
        } else {
            const auto record = static_cast<int>(random() % plain.size());
            PlainRecord& changed = plain[static_cast<std::size_t>(record)];
            changed = {std::to_string(random() % 100), step, static_cast<int>(random() % 3), std::to_string(step)};
            doc.grd.setText(record + kFirstDataRow, 5, changed.text);
            doc.RecKeys.set(record, changed.key);
            doc.CellLongs.set(record, 4, changed.number);
            doc.CellVals.set(record, 4, changed.val);
        }
        ASSERT_EQ(doc.NumDataRecs, static_cast<int>(plain.size()));
        ASSERT_EQ(hasNoRecords(doc), plain.empty());
        for (int record = 0; record < doc.NumDataRecs && step % 20 == 0; ++record) {
            const PlainRecord& expected = plain[static_cast<std::size_t>(record)];
            ASSERT_EQ(doc.grd.text(record + kFirstDataRow, 5), expected.text);
            ASSERT_EQ(doc.RecKeys[record], expected.key);
            ASSERT_EQ(doc.CellLongs.get(record, 4), expected.number);
            ASSERT_EQ(valOf(doc, record, 4), expected.val);
        }
    }
}

} // namespace
} // namespace tallybook::model
