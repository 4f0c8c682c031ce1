// Makes a database from scratch, a field and a record at a time.
#pragma once

#include "core/model/Document.h"
#include "core/platform/Files.h"

#include <array>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::samples {

// One condition of a filter: a field against a constant. Operators as in files: = ! < L > J h H s S.
struct Condition {
    int slot = 0;
    char op = '=';
    std::string value;
};

// Texts are UTF-8. The clock stands at 2004-03-01 09:30:00, so that the same calls give the same bytes.
class SampleBuilder {
public:
    explicit SampleBuilder(std::string name); // with its prefix

    model::DatabaseModel& database() { return m_doc.CurrDB20; }
    model::Document& document() { return m_doc; }

    void setCategories(std::initializer_list<const char*> names) { addItems(0, names); }
    int addField(model::FieldType type, std::string_view name); // gives its slot
    model::FieldDef& field(int slot) { return m_doc.CurrDB20.Fields[static_cast<std::size_t>(slot)]; }
    void addItems(int slot, std::initializer_list<const char*> items); // ids from 1 in this order

    // Records. The cells of the newest one are filled.
    void addRecord(std::string_view category = {}); // with the next key
    void set(int slot, std::string_view text);
    void setItem(int slot, std::string_view item); // of a List or Radio Button
    void check(int slot, bool on);
    void setKey(int slot, std::string_view key); // of a join
    void setPicture(int slot, platform::Bytes bitmap);
    void setColour(int slot, std::uint32_t colour);

    void addView(std::string_view name, std::initializer_list<int> slots, int sortSlot);
    void addFilter(std::string_view name,
                   const std::vector<Condition>& conditions); // all of them must hold, at most 3
    void addForm(std::initializer_list<int> slots); // rows of the base screen, labelled with the fields' names

    // The file's bytes. Throws std::runtime_error when the writer refuses.
    platform::Bytes build();

private:
    int row() const { return m_doc.grd.rows() - 1; }
    int record() const { return row() - model::kFirstDataRow; }

    model::Document m_doc;
    int m_fields = 0;
    int m_views = 0;
    int m_filters = 0;
    std::vector<platform::Bytes> m_pictures;
};

} // namespace tallybook::samples
