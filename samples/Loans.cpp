// Who has borrowed which of the books: a join into the sample of the books, with lookups.
#include "SampleBuilder.h"
#include "Samples.h"

#include <string_view>

namespace tallybook::samples {

namespace {

using model::FieldType;

constexpr int kTitle = 1; // slots of the books
constexpr int kAuthor = 2;
constexpr int kPrice = 6;
constexpr int kNumber = 11;
constexpr std::string_view kBooks = "Books";

struct Loan {
    std::string_view book, lentTo, lent, back, remarks; // the book's number
};

constexpr Loan kLoans[] = {
    {"36", "Lotte", "1/6/1996", "", "A present by now, perhaps."},
    {"30", "Hanna", "12/24/2000", "", ""},
    {"17", "Carl", "7/2/2001", "1/12/2002", "Asked for it twice."},
    {"46", "Jürgen", "11/1/2001", "", ""},
    {"15", "Jürgen", "11/1/2001", "", ""},
    {"3", "Ruth", "2/3/2002", "5/19/2002", ""},
    {"48", "Lotte", "8/10/2002", "", "Wants the next one too."},
    {"28", "Ruth", "9/1/2002", "9/8/2002", ""},
    {"6", "Mother", "3/30/2003", "", ""},
    {"2", "Hanna", "5/4/2003", "", ""},
    {"24", "Carl", "6/15/2003", "11/2/2003", ""},
    {"3", "Carl", "11/2/2003", "2/8/2004", "The chapters on whales only."},
};

model::ExternalDef& external(SampleBuilder& sample, int slot) {
    model::ExternalDef& made = sample.database().Externals[slot];
    made.Source = kBooks;
    return made;
}

int addLookup(SampleBuilder& sample, std::string_view name, int join, int shown) {
    const int slot = sample.addField(FieldType::DBLookup, name);
    model::ExternalDef& made = external(sample, slot);
    made.SourceField = static_cast<std::uint8_t>(join);
    made.MatchField = static_cast<std::uint8_t>(shown);
    return slot;
}

} // namespace

platform::Bytes loans() {
    SampleBuilder sample("MS2_Loans");
    const int book = sample.addField(FieldType::DBJoin, "Book");
    const int author = addLookup(sample, "Author", book, kAuthor);
    const int price = addLookup(sample, "Price", book, kPrice);
    const int lentTo = sample.addField(FieldType::Text, "Lent to");
    const int lent = sample.addField(FieldType::Date, "Lent");
    const int back = sample.addField(FieldType::Date, "Back");
    const int remarks = sample.addField(FieldType::Memo, "Remarks");
    model::ExternalDef& join = external(sample, book);
    join.SourceField = kNumber;
    join.MatchField = kTitle;
    join.KeyType = static_cast<std::uint8_t>(FieldType::AutoIncremental);
    sample.field(lentTo).SearchField = 1;
    sample.field(lent).Default = "A";

    for (const Loan& loan : kLoans) {
        sample.addRecord();
        sample.setKey(book, loan.book);
        sample.set(lentTo, loan.lentTo);
        sample.set(lent, loan.lent);
        sample.set(back, loan.back);
        sample.set(remarks, loan.remarks);
    }

    sample.addView("By borrower", {lentTo, book, author, lent}, lentTo);
    sample.addFilter("Lent to Hanna", {{lentTo, '=', "Hanna"}});
    sample.addForm({book, author, price, lentTo, lent, back, remarks});
    return sample.build();
}

} // namespace tallybook::samples
