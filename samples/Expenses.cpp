// Half a year of money spent, with a calculated total.
#include "SampleBuilder.h"
#include "Samples.h"

#include <string_view>

namespace tallybook::samples {

namespace {

using model::FieldType;

struct Expense {
    std::string_view category, date, time, what, kind, quantity, price, total, paidBy;
    bool refunded;
    std::string_view distance, remarks;
};

constexpr Expense kExpenses[] = {
    {"Private", "10/1/2003", "8:00:00 AM", "Rent", "Home", "1", "645.00", "645.00", "Transfer", false, "", ""},
    {"Private", "10/1/2003", "8:00:00 AM", "Electricity", "Home", "1", "48.30", "48.30", "Transfer", false, "", ""},
    {"Private", "10/1/2003", "8:00:00 AM", "Telephone", "Home", "1", "37.90", "37.90", "Transfer", false, "",
     "Higher because of calls abroad."},
    {"Business", "10/1/2003", "6:50:00 PM", "Dinner with customer", "Food", "1", "46.90", "46.90", "Card", true, "",
     "Second meeting about the spring order."},
    {"Business", "10/2/2003", "10:15:00 AM", "Lunch", "Food", "1", "10.00", "10.00", "Card", true, "", ""},
    {"Private", "10/3/2003", "10:45:00 AM", "Swimming pool", "Leisure", "3", "3.20", "9.60", "Cash", false, "", ""},
    {"Private", "10/4/2003", "7:55:00 AM", "Light bulbs", "Home", "5", "2.80", "14.00", "Cash", false, "", ""},
    {"Private", "10/5/2003", "3:10:00 PM", "Paperback", "Leisure", "1", "11.30", "11.30", "Card", false, "", ""},
    {"Private", "10/6/2003", "7:10:00 PM", "Groceries", "Food", "1", "19.20", "19.20", "Card", false, "", ""},
    {"Private", "10/7/2003", "4:55:00 PM", "Groceries", "Food", "1", "28.70", "28.70", "Card", false, "", ""},
    {"Private", "10/8/2003", "3:40:00 PM", "Swimming pool", "Leisure", "1", "3.20", "3.20", "Cash", false, "", ""},
    {"Private", "10/9/2003", "11:00:00 AM", "Light bulbs", "Home", "6", "2.15", "12.90", "Cash", false, "", ""},
    {"Business", "10/10/2003", "7:05:00 PM", "Petrol", "Transport", "1", "56.30", "56.30", "Card", false, "597", ""},
    {"Private", "10/13/2003", "2:40:00 PM", "Light bulbs", "Home", "5", "3.26", "16.30", "Cash", false, "", ""},
    {"Business", "10/14/2003", "11:40:00 AM", "Petrol", "Transport", "1", "46.40", "46.40", "Card", true, "220", ""},
    {"Business", "10/15/2003", "2:25:00 PM", "Dinner with customer", "Food", "1", "44.40", "44.40", "Card", true, "",
     "Second meeting about the spring order."},
    {"Business", "10/16/2003", "5:20:00 PM", "Dinner with customer", "Food", "1", "48.50", "48.50", "Card", true, "",
     "Second meeting about the spring order."},
    {"Private", "10/21/2003", "9:35:00 AM", "Light bulbs", "Home", "2", "2.46", "4.92", "Cash", false, "", ""},
    {"Private", "10/23/2003", "9:50:00 AM", "Swimming pool", "Leisure", "2", "3.20", "6.40", "Cash", false, "", ""},
    {"Private", "10/27/2003", "1:25:00 PM", "Swimming pool", "Leisure", "2", "3.20", "6.40", "Cash", false, "", ""},
    {"Business", "10/28/2003", "6:25:00 PM", "Hotel, per night", "Lodging", "2", "70.50", "141.00", "Card", true, "",
     ""},
    {"Private", "10/29/2003", "6:00:00 PM", "Batteries AAA", "Office", "4", "1.44", "5.76", "Cash", false, "", ""},
    {"Business", "10/30/2003", "8:05:00 AM", "Petrol", "Transport", "1", "47.50", "47.50", "Card", true, "166", ""},
    {"Private", "11/1/2003", "8:00:00 AM", "Rent", "Home", "1", "645.00", "645.00", "Transfer", false, "", ""},
    {"Private", "11/1/2003", "8:00:00 AM", "Electricity", "Home", "1", "48.30", "48.30", "Transfer", false, "", ""},
    {"Private", "11/1/2003", "8:00:00 AM", "Telephone", "Home", "1", "37.20", "37.20", "Transfer", false, "", ""},
    {"Private", "11/2/2003", "7:55:00 AM", "Light bulbs", "Home", "5", "2.36", "11.80", "Cash", false, "", ""},
    {"Private", "11/3/2003", "7:50:00 AM", "Cinema", "Leisure", "2", "7.72", "15.44", "Cash", false, "", ""},
    {"Private", "11/6/2003", "10:05:00 AM", "Groceries", "Food", "1", "40.50", "40.50", "Card", false, "", ""},
    {"Private", "11/7/2003", "3:30:00 PM", "Stamps", "Office", "8", "0.72", "5.76", "Cash", false, "", ""},
    {"Business", "11/8/2003", "10:05:00 AM", "Hotel, per night", "Lodging", "2", "82.20", "164.40", "Card", true, "",
     "Breakfast included."},
    {"Private", "11/9/2003", "11:50:00 AM", "Cinema", "Leisure", "3", "8.28", "24.84", "Cash", false, "", ""},
    {"Private", "11/10/2003", "3:50:00 PM", "Groceries", "Food", "1", "33.40", "33.40", "Card", false, "", ""},
    {"Business", "11/14/2003", "11:00:00 AM", "Printer paper", "Office", "1", "3.52", "3.52", "Card", true, "", ""},
    {"Private", "11/17/2003", "10:35:00 AM", "Groceries", "Food", "1", "27.60", "27.60", "Card", false, "", ""},
    {"Private", "11/19/2003", "1:40:00 PM", "Groceries", "Food", "1", "44.10", "44.10", "Card", false, "", ""},
    {"Business", "11/20/2003", "8:55:00 PM", "Taxi", "Transport", "1", "24.10", "24.10", "Cash", true, "15", ""},
    {"Business", "11/24/2003", "8:10:00 PM", "Ink cartridge", "Office", "1", "19.00", "19.00", "Card", true, "", ""},
    {"Private", "11/26/2003", "7:05:00 AM", "Batteries AAA", "Office", "8", "1.62", "12.96", "Cash", false, "", ""},
    {"Private", "11/27/2003", "5:20:00 PM", "Bread", "Food", "2", "3.02", "6.04", "Cash", false, "", ""},
    {"Private", "11/28/2003", "9:20:00 AM", "Bus", "Transport", "1", "2.18", "2.18", "Cash", false, "", ""},
    {"Business", "11/30/2003", "12:40:00 PM", "Petrol", "Transport", "1", "51.40", "51.40", "Card", true, "115", ""},
    {"Private", "12/1/2003", "8:00:00 AM", "Rent", "Home", "1", "645.00", "645.00", "Transfer", false, "", ""},
    {"Private", "12/1/2003", "8:00:00 AM", "Electricity", "Home", "1", "48.30", "48.30", "Transfer", false, "", ""},
    {"Private", "12/1/2003", "8:00:00 AM", "Telephone", "Home", "1", "26.80", "26.80", "Transfer", false, "", ""},
    {"Private", "12/1/2003", "9:30:00 AM", "Cinema", "Leisure", "1", "9.00", "9.00", "Cash", false, "", ""},
    {"Private", "12/2/2003", "11:50:00 AM", "Batteries AAA", "Office", "2", "1.34", "2.68", "Cash", false, "", ""},
    {"Business", "12/3/2003", "6:45:00 PM", "Parking", "Transport", "1", "5.48", "5.48", "Cash", true, "", ""},
    {"Private", "12/7/2003", "6:45:00 PM", "Stamps", "Office", "8", "0.96", "7.68", "Cash", false, "", ""},
    {"Business", "12/10/2003", "6:40:00 PM", "Petrol", "Transport", "1", "55.70", "55.70", "Card", false, "616", ""},
    {"Business", "12/11/2003", "4:55:00 PM", "Train ticket", "Transport", "1", "31.20", "31.20", "Card", true, "",
     "Return ticket."},
    {"Business", "12/12/2003", "5:25:00 PM", "Petrol", "Transport", "1", "42.40", "42.40", "Card", false, "542", ""},
    {"Private", "12/13/2003", "5:40:00 PM", "Light bulbs", "Home", "5", "2.52", "12.60", "Cash", false, "", ""},
    {"Business", "12/14/2003", "7:05:00 PM", "Taxi", "Transport", "1", "24.50", "24.50", "Cash", true, "24",
     "Late train."},
    {"Private", "12/15/2003", "2:20:00 PM", "Stamps", "Office", "6", "1.06", "6.36", "Cash", false, "", ""},
    {"Business", "12/18/2003", "7:15:00 PM", "Dinner with customer", "Food", "1", "57.40", "57.40", "Card", true, "",
     "Second meeting about the spring order."},
    {"Private", "12/23/2003", "8:35:00 AM", "Swimming pool", "Leisure", "1", "3.20", "3.20", "Cash", false, "", ""},
    {"Business", "12/24/2003", "9:25:00 AM", "Ink cartridge", "Office", "2", "21.50", "43.00", "Card", true, "", ""},
    {"Private", "12/25/2003", "7:35:00 AM", "Cinema", "Leisure", "3", "8.18", "24.54", "Cash", false, "", ""},
    {"Private", "12/27/2003", "5:35:00 PM", "Groceries", "Food", "1", "42.70", "42.70", "Card", false, "", ""},
    {"Private", "12/29/2003", "7:05:00 PM", "Bread", "Food", "1", "3.80", "3.80", "Cash", false, "", ""},
    {"Business", "12/30/2003", "2:00:00 PM", "Lunch", "Food", "1", "12.70", "12.70", "Card", false, "", ""},
    {"Private", "12/31/2003", "2:20:00 PM", "Light bulbs", "Home", "3", "2.89", "8.67", "Cash", false, "", ""},
    {"Private", "1/1/2004", "8:00:00 AM", "Rent", "Home", "1", "645.00", "645.00", "Transfer", false, "", ""},
    {"Private", "1/1/2004", "8:00:00 AM", "Electricity", "Home", "1", "48.30", "48.30", "Transfer", false, "", ""},
    {"Private", "1/1/2004", "8:00:00 AM", "Telephone", "Home", "1", "31.40", "31.40", "Transfer", false, "", ""},
    {"Private", "1/1/2004", "9:00:00 AM", "Bread", "Food", "2", "3.65", "7.30", "Cash", false, "", ""},
    {"Private", "1/4/2004", "9:30:00 AM", "Bus", "Transport", "4", "2.12", "8.48", "Cash", false, "", ""},
    {"Business", "1/6/2004", "12:00:00 PM", "Parking", "Transport", "1", "4.82", "4.82", "Cash", true, "", ""},
    {"Private", "1/9/2004", "10:55:00 AM", "Bread", "Food", "2", "2.43", "4.86", "Cash", false, "", ""},
    {"Private", "1/12/2004", "1:30:00 PM", "Cinema", "Leisure", "1", "9.00", "9.00", "Cash", false, "", ""},
    {"Business", "1/13/2004", "7:20:00 PM", "Dinner with customer", "Food", "1", "42.40", "42.40", "Card", true, "",
     "Mr. Lindqvist and two others."},
    {"Business", "1/14/2004", "5:20:00 PM", "Hotel, per night", "Lodging", "1", "81.10", "81.10", "Card", true, "",
     "Invoice is at the office."},
    {"Business", "1/16/2004", "12:15:00 PM", "Train ticket", "Transport", "2", "42.90", "85.80", "Card", true, "",
     "Return ticket."},
    {"Private", "1/18/2004", "5:30:00 PM", "Paperback", "Leisure", "1", "11.50", "11.50", "Card", false, "", ""},
    {"Private", "1/19/2004", "6:30:00 PM", "Swimming pool", "Leisure", "2", "3.20", "6.40", "Cash", false, "", ""},
    {"Private", "1/22/2004", "3:10:00 PM", "Groceries", "Food", "1", "32.80", "32.80", "Card", false, "", ""},
    {"Business", "1/24/2004", "11:20:00 AM", "Printer paper", "Office", "4", "4.15", "16.60", "Card", true, "", ""},
    {"Business", "1/26/2004", "3:50:00 PM", "Petrol", "Transport", "1", "54.30", "54.30", "Card", true, "251", ""},
    {"Business", "1/29/2004", "3:35:00 PM", "Petrol", "Transport", "1", "47.20", "47.20", "Card", true, "420", ""},
    {"Private", "2/1/2004", "8:00:00 AM", "Rent", "Home", "1", "645.00", "645.00", "Transfer", false, "", ""},
    {"Private", "2/1/2004", "8:00:00 AM", "Electricity", "Home", "1", "48.30", "48.30", "Transfer", false, "", ""},
    {"Private", "2/1/2004", "8:00:00 AM", "Telephone", "Home", "1", "38.40", "38.40", "Transfer", false, "",
     "Higher because of calls abroad."},
    {"Business", "2/2/2004", "1:30:00 PM", "Petrol", "Transport", "1", "55.10", "55.10", "Card", true, "465", ""},
    {"Private", "2/5/2004", "7:35:00 AM", "Paperback", "Leisure", "2", "8.74", "17.48", "Card", false, "", ""},
    {"Private", "2/6/2004", "3:50:00 PM", "Coffee", "Food", "1", "3.11", "3.11", "Cash", false, "", ""},
    {"Private", "2/9/2004", "10:30:00 AM", "Bus", "Transport", "4", "2.15", "8.60", "Cash", false, "", ""},
    {"Business", "2/12/2004", "8:00:00 PM", "Printer paper", "Office", "1", "3.81", "3.81", "Card", true, "", ""},
    {"Business", "2/14/2004", "7:35:00 PM", "Petrol", "Transport", "1", "58.20", "58.20", "Card", false, "154", ""},
    {"Private", "2/15/2004", "8:40:00 PM", "Cinema", "Leisure", "2", "8.69", "17.38", "Cash", false, "", ""},
    {"Private", "2/16/2004", "10:10:00 AM", "Bus", "Transport", "1", "1.99", "1.99", "Cash", false, "", ""},
    {"Private", "2/17/2004", "7:00:00 PM", "Coffee", "Food", "1", "2.10", "2.10", "Cash", false, "", ""},
    {"Business", "2/18/2004", "7:50:00 AM", "Printer paper", "Office", "2", "4.26", "8.52", "Card", true, "", ""},
    {"Private", "2/20/2004", "1:55:00 PM", "Bread", "Food", "1", "2.68", "2.68", "Cash", false, "", ""},
    {"Business", "2/24/2004", "4:15:00 PM", "Train ticket", "Transport", "2", "44.10", "88.20", "Card", true, "",
     "Return ticket."},
    {"Business", "2/25/2004", "7:00:00 AM", "Hotel, per night", "Lodging", "2", "113.00", "226.00", "Card", true, "",
     "Invoice is at the office."},
    {"Business", "2/26/2004", "12:50:00 PM", "Ink cartridge", "Office", "1", "27.40", "27.40", "Card", true, "", ""},
    {"Private", "2/27/2004", "3:15:00 PM", "Groceries", "Food", "1", "21.20", "21.20", "Card", false, "", ""},
    {"Business", "2/29/2004", "10:35:00 AM", "Dinner with customer", "Food", "1", "93.70", "93.70", "Card", true, "",
     "Mr. Lindqvist and two others."},
};

// quantity * price, as the simple form keeps it: operands and operators in turn.
model::ExprDef product(int left, int right) {
    constexpr std::uint32_t kTimes = 92;
    model::ExprDef expression;
    expression.Tokens[0] = static_cast<std::uint32_t>(left);
    expression.Tokens[1] = kTimes;
    expression.Tokens[2] = static_cast<std::uint32_t>(right);
    return expression;
}

} // namespace

platform::Bytes expenses() {
    SampleBuilder sample("MS2_Expenses");
    sample.setCategories({"Private", "Business"});
    const int date = sample.addField(FieldType::Date, "Date");
    const int time = sample.addField(FieldType::Time, "Time");
    const int what = sample.addField(FieldType::Text, "What");
    const int kind = sample.addField(FieldType::List, "Kind");
    const int quantity = sample.addField(FieldType::Integer, "Quantity");
    const int price = sample.addField(FieldType::Float, "Price");
    const int total = sample.addField(FieldType::Expression, "Total");
    const int paidBy = sample.addField(FieldType::RadioButton, "Paid by");
    const int refunded = sample.addField(FieldType::Checkbox, "Refunded");
    const int distance = sample.addField(FieldType::Long, "Distance (km)");
    const int remarks = sample.addField(FieldType::Memo, "Remarks");
    const int changed = sample.addField(FieldType::Date, "Changed");
    sample.addItems(kind, {"Food", "Transport", "Lodging", "Office", "Leisure", "Home"});
    sample.addItems(paidBy, {"Cash", "Card", "Transfer"});
    sample.field(date).Default = "A";
    sample.field(time).Default = "A";
    sample.field(changed).Default = "U";
    sample.field(quantity).Default = "1";
    sample.field(quantity).IncDec = 1;
    sample.field(price).Decimals = 2;
    sample.field(total).Decimals = 2;
    sample.field(what).SearchField = 1;
    sample.database().Expressions[total] = product(quantity, price);

    for (const Expense& expense : kExpenses) {
        sample.addRecord(expense.category);
        sample.set(date, expense.date);
        sample.set(time, expense.time);
        sample.set(what, expense.what);
        sample.setItem(kind, expense.kind);
        sample.set(quantity, expense.quantity);
        sample.set(price, expense.price);
        sample.set(total, expense.total);
        sample.setItem(paidBy, expense.paidBy);
        sample.check(refunded, expense.refunded);
        sample.set(distance, expense.distance);
        sample.set(remarks, expense.remarks);
        sample.set(changed, expense.date);
    }

    sample.addView("Totals", {date, what, total}, date);
    sample.addView("Travel", {date, what, distance, total, refunded}, date);
    sample.addFilter("Paid in cash", {{paidBy, '=', "Cash"}});
    sample.addFilter("To be refunded", {{refunded, '=', "0"}, {kind, '=', "Transport"}});
    sample.addFilter("Over 50", {{total, '>', "50"}});
    sample.addForm({date, time, what, kind, quantity, price, total, paidBy, refunded, distance, remarks});
    return sample.build();
}

} // namespace tallybook::samples
