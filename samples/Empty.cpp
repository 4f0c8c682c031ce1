// A database that waits for its first record.
#include "SampleBuilder.h"
#include "Samples.h"

namespace tallybook::samples {

using model::FieldType;

platform::Bytes empty() {
    SampleBuilder sample("MS2_Empty");
    sample.setCategories({"Home", "Work"});
    const int what = sample.addField(FieldType::Text, "What");
    const int priority = sample.addField(FieldType::List, "Priority");
    const int due = sample.addField(FieldType::Date, "Due");
    const int hours = sample.addField(FieldType::Float, "Hours");
    const int done = sample.addField(FieldType::Checkbox, "Done");
    const int notes = sample.addField(FieldType::Memo, "Notes");
    sample.addItems(priority, {"Low", "Normal", "High"});
    sample.field(hours).Decimals = 1;
    sample.field(hours).Default = "1.0";
    sample.field(due).Default = "A";
    sample.database().LastKey = 1; // what a database without records is read with
    sample.addView("Open", {what, priority, due}, due);
    sample.addView("Times", {what, hours, done}, what);
    sample.addFilter("Not done", {{done, '=', "0"}});
    sample.addForm({what, priority, due, hours, done, notes});
    return sample.build();
}

} // namespace tallybook::samples
