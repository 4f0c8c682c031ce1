// Small documents for tests.
#pragma once

#include "core/model/Document.h"

#include <string>
#include <string_view>
#include <vector>

namespace tallybook::test {

// Gives the document one record for each text, with the texts in the slot's column.
inline void fillColumn(model::Document& doc, int slot, const std::vector<std::string>& texts) {
    if (doc.NumDataRecs != static_cast<int>(texts.size()))
        model::resetRows(doc, static_cast<int>(texts.size()));
    for (std::size_t record = 0; record < texts.size(); ++record)
        doc.grd.setText(static_cast<int>(record) + model::kFirstDataRow, model::columnOfSlot(slot), texts[record]);
}

// The texts of a slot's column, record by record.
inline std::vector<std::string> columnTexts(const model::Document& doc, int slot) {
    std::vector<std::string> texts;
    for (int record = 0; record < doc.NumDataRecs; ++record)
        texts.push_back(doc.grd.text(record + model::kFirstDataRow, model::columnOfSlot(slot)));
    return texts;
}

inline std::vector<model::Picture> columnPictures(const model::Document& doc, int slot) {
    std::vector<model::Picture> pictures;
    for (int record = 0; record < doc.NumDataRecs; ++record)
        pictures.push_back(doc.grd.picture(record + model::kFirstDataRow, model::columnOfSlot(slot)));
    return pictures;
}

// What stands beside a slot's cells, record by record.
inline std::vector<int> columnLongs(const model::Document& doc, int slot) {
    std::vector<int> longs;
    for (int record = 0; record < doc.NumDataRecs; ++record)
        longs.push_back(doc.CellLongs.get(record, slot));
    return longs;
}

inline std::vector<int> recordKeys(const model::Document& doc) {
    std::vector<int> keys;
    for (int record = 0; record < doc.NumDataRecs; ++record)
        keys.push_back(doc.RecKeys[record]);
    return keys;
}

} // namespace tallybook::test
