#include "TestBooks.h"

#include "SampleBuilder.h"
#include "core/pdb/Passwords.h"

namespace tallybook::cli {

namespace {

using model::FieldType;
using samples::SampleBuilder;

void addFields(SampleBuilder& sample) {
    sample.setCategories({"home", "work"});
    sample.addField(FieldType::Text, "Title");
    sample.addField(FieldType::Integer, "Count");
    sample.addField(FieldType::Long, "Total");
    sample.addField(FieldType::Float, "Price");
    sample.addField(FieldType::List, "Kind");
    sample.addField(FieldType::Checkbox, "Done");
    sample.addField(FieldType::Date, "Day");
    sample.addField(FieldType::Time, "Hour");
    sample.addField(FieldType::Memo, "Notes");
    sample.addField(FieldType::RadioButton, "Size");
    sample.addField(FieldType::AutoIncremental, "Number");
    sample.addField(FieldType::Key, "Key");
    sample.addField(FieldType::Integer, "Spin");
    sample.addField(FieldType::Date, "Changed");
    sample.addItems(5, {"red", "green", "blue"});
    sample.addItems(10, {"small", "large"});
    sample.field(4).Decimals = 2;
    sample.field(10).Default = "1";
    sample.field(13).IncDec = 1;
    sample.field(14).Default = "U";
    sample.database().AutoIncNext[11] = 4;
}

void addRecords(SampleBuilder& sample) {
    sample.addRecord("work");
    sample.set(1, "Élan, \"quoted\"");
    sample.set(2, "12");
    sample.set(3, "100000");
    sample.set(4, "3.50");
    sample.setItem(5, "green");
    sample.check(6, true);
    sample.set(7, "1/2/2003");
    sample.set(8, "1:05:09 PM");
    sample.set(9, "first line\nsecond\tline \\ end");
    sample.setItem(10, "large");
    sample.set(11, "1");
    sample.set(13, "7");
    sample.addRecord();
    sample.set(1, "Second");
    sample.set(11, "2");
    sample.addRecord("home");
    sample.set(1, "Third");
    sample.set(2, "-5");
    sample.set(11, "3");
}

} // namespace

platform::Bytes smallDatabase() {
    SampleBuilder sample("MS2_Small");
    addFields(sample);
    addRecords(sample);
    sample.addView("Short", {1, 2}, 1);
    sample.addFilter("Done", {{6, '=', "1"}});
    sample.addForm({1, 2, 3});
    return sample.build();
}

platform::Bytes lockedDatabase() {
    SampleBuilder sample("MS2_Locked");
    addFields(sample);
    addRecords(sample);
    sample.database().Passwords[static_cast<std::size_t>(model::PasswordKind::Login)] = pdb::ApplyPwd("secret");
    sample.database().Passwords[static_cast<std::size_t>(model::PasswordKind::Modify)] = pdb::ApplyPwd("change");
    return sample.build();
}

} // namespace tallybook::cli
