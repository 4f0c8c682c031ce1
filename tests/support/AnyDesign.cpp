#include "support/AnyDesign.h"

#include "core/calc/expressions/ExpressionTokens.h"
#include "core/pdb/Database.h"
#include "support/AnyDatabase.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace tallybook::test {

namespace {

namespace token = calc::token;
using model::DatabaseModel;
using model::FieldType;

const std::filesystem::path kCopy = "/app/Temp/Copy.pdb";

class Designer {
public:
    Designer(DatabaseModel& db, std::uint32_t seed) : m_db(db), m_engine(seed) {}

    void design() {
        for (int slot = 1; slot <= model::MaxUserFields; ++slot)
            if (static_cast<int>(field(slot).Type) >= model::kFieldTypes)
                field(slot).Type = FieldType::NotUsed;
        for (int slot = 1; slot <= model::MaxUserFields; ++slot)
            if (field(slot).Type != FieldType::NotUsed)
                field(slot).Name = name(slot);
        for (int slot = 1; slot <= model::MaxUserFields; ++slot)
            attributes(slot);
        m_db.DBName = "MS2_Any book";
        field(0).Name = "Categories";
        for (std::size_t slot = 0; slot < m_db.Filters.size(); ++slot)
            filter(m_db.Filters[slot], slot);
    }

private:
    model::FieldDef& field(int slot) { return m_db.Fields[static_cast<std::size_t>(slot)]; }
    int below(int limit) { return static_cast<int>(m_engine() % static_cast<std::uint32_t>(limit)); }
    bool oneIn(int count) { return below(count) == 0; }
    template <class T> const T& one(const std::vector<T>& of) {
        return of[static_cast<std::size_t>(below(static_cast<int>(of.size())))];
    }

    // Each name once: a dialog refuses a name that another field has.
    std::string name(int slot) {
        static const std::vector<std::string> kStarts = {"Field ", "Unit\xA0Price ", "two\nlines ",
                                                         "Fld",    "a]b ",           "\x8A\xFC "};
        static const std::vector<std::string> kWords = {"Today", "Now", "PI", "PrevIndex", "12", "Prev (Today)", "0"};
        const auto number = static_cast<std::size_t>(slot);
        if (number <= kWords.size())
            return kWords[number - 1];
        return one(kStarts) + std::to_string(slot + 100);
    }

    // The slots with a field of one of the types.
    std::vector<std::uint32_t> slotsOf(std::initializer_list<FieldType> types) {
        std::vector<std::uint32_t> found;
        for (int slot = 1; slot <= model::MaxUserFields; ++slot)
            if (std::find(types.begin(), types.end(), field(slot).Type) != types.end())
                found.push_back(static_cast<std::uint32_t>(slot));
        return found;
    }

    void attributes(int slot) {
        switch (field(slot).Type) {
        case FieldType::Expression:
            m_db.Expressions[slot] = simple();
            break;
        case FieldType::AdvExpression:
            m_db.Expressions[slot] = advanced();
            break;
        case FieldType::RadioButton:
            m_db.Lists[slot] = options();
            break;
        case FieldType::ConditionalExpression:
            m_db.CondExprs[slot].CondFields[0] = static_cast<std::uint8_t>(slot);
            break;
        case FieldType::DBJoin:
        case FieldType::DBLookup:
            m_db.Externals[slot].Source = "two\nlines";
            break;
        case FieldType::Integer:
        case FieldType::Long:
        case FieldType::Float:
            field(slot).Default = one<std::string>({"", " 7", "7", "abc", "1\n2", "-7"});
            break;
        default:
            break;
        }
    }

    std::uint32_t number() {
        auto slots = slotsOf({FieldType::Integer, FieldType::Long, FieldType::Float, FieldType::Checkbox,
                              FieldType::List, FieldType::AutoIncremental});
        slots.push_back(token::kNumber);
        const std::uint32_t chosen = one(slots);
        return chosen == token::kNumber || oneIn(2) ? chosen : chosen + token::kPreviousRecord;
    }
    std::uint32_t day() {
        auto slots = slotsOf({FieldType::Date});
        slots.push_back(token::kToday);
        return one(slots);
    }
    std::uint32_t time() {
        auto slots = slotsOf({FieldType::Time});
        slots.push_back(token::kNow);
        return one(slots);
    }

    model::ExprDef simple() {
        model::ExprDef made;
        made.TokenTexts.fill(one<std::string>({"2.50", "007", "1e3", "2,5", "1.000"}));
        made.ResultType = static_cast<std::uint8_t>(below(13));
        const int format = made.ResultType;
        if (format == 0) {
            const int operands = 1 + below(8);
            for (int i = 0; i < operands; ++i) {
                made.Tokens[static_cast<std::size_t>(i) * 2] = number();
                if (i > 0)
                    made.Tokens[static_cast<std::size_t>(i) * 2 - 1] = 90 + static_cast<std::uint32_t>(below(4));
            }
            return made;
        }
        made.Tokens[0] = format <= 6 ? day() : time();
        made.Tokens[1] = token::kMinus;
        made.Tokens[2] = format <= 3 || format == 7 ? number() : format <= 6 ? day() : time();
        if (made.Tokens[2] == token::kNumber)
            made.TokenTexts[2] = "30";
        return made;
    }

    model::ExprDef advanced() {
        model::ExprDef made;
        made.Tokens[0] = number();
        made.TokenTexts[0] = "2";
        made.Tokens[1] = token::kTimes;
        made.Tokens[2] = number();
        made.TokenTexts[2] = "2.50";
        made.TokenTexts[40] = "left";
        made.ResultType = one<std::uint8_t>({0, 4, 5, 6, 13, 14, 200});
        if (oneIn(3)) {
            made.Tokens = {token::kToday};
            made.ResultType = one<std::uint8_t>({1, 2, 3, 13});
        }
        return made;
    }

    model::ListDef options() {
        model::ListDef made;
        const int count = 2 + below(9);
        for (int i = 0; i < count; ++i) {
            made.ItemIds.push_back(static_cast<std::uint8_t>(200 - i));
            made.Items.push_back("option\n" + std::to_string(i));
        }
        return made;
    }

    // The first condition has a field; the others are as they came.
    void filter(model::FilterDef& filter, std::size_t slot) {
        const auto slots = slotsOf({FieldType::Text, FieldType::Integer, FieldType::Date});
        if (filter.CondFields[0] == 0 || slots.empty())
            return;
        filter.Name = "F" + std::to_string(slot);
        filter.CondFields[0] = static_cast<std::uint8_t>(one(slots));
        for (std::string& constant : filter.CondValues)
            constant = constant.substr(0, 19);
        if (oneIn(2)) {
            filter.CondFields[2] = static_cast<std::uint8_t>(one(slots));
            filter.CondLinks = {'A', 'O'};
        }
    }

    DatabaseModel& m_db;
    std::mt19937 m_engine;
};

} // namespace

void openAny(model::Document& doc, TestServices& t, std::uint32_t seed) {
    const platform::Bytes file = AnyDatabase(seed).foreign.bytes();
    const auto status = pdb::readDatabase(doc, file, "Any", t.regional);
    ASSERT_TRUE(status.ok()) << status.error().description();
    t.files.put(kCopy, file);
    doc.TempCopyPath = kCopy;
    doc.CurrFilePath = "/app/MS2_Any_book.pdb";
    doc.CurrFolder = "/app";
    doc.GridReady = true;
}

void openDesigned(model::Document& doc, TestServices& t, std::uint32_t seed) {
    openAny(doc, t, seed);
    Designer(doc.CurrDB20, seed).design();
    doc.CurrDB20.NumFields = static_cast<std::uint8_t>(std::max(model::highestField(doc.CurrDB20), 1));
}

std::string recordsOf(const model::Document& doc) {
    std::string content;
    std::string scratch;
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        content += "\nrecord " + std::to_string(record) + " key " + std::to_string(doc.RecKeys[record]);
        for (int slot = 0; slot <= model::MaxUserFields; ++slot) {
            const int row = record + model::kFirstDataRow;
            const int column = model::columnOfSlot(slot);
            content += "\n" + std::to_string(slot) + ": " + std::string(doc.grd.text(row, column, scratch));
            content += " / " + std::string(doc.CellVals.get(record, slot, scratch));
            content += " / " + std::to_string(static_cast<int>(doc.grd.picture(row, column)));
            content += " / " + std::to_string(doc.grd.colour(row, column));
            content += " / " + std::to_string(doc.CellLongs.get(record, slot));
        }
    }
    return content;
}

} // namespace tallybook::test
