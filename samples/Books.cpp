// Books on a shelf: who wrote them, what they cost, who has borrowed them.
#include "SampleBuilder.h"
#include "Samples.h"

#include <string_view>

namespace tallybook::samples {

namespace {

using model::FieldType;

struct Book {
    std::string_view shelf, title, author, genre, year, pages, price, rating, bought, lentTo, notes;
};

constexpr Book kBooks[] = {
    {"English", "Pride and Prejudice", "Jane Austen", "Novel", "1813", "432", "7.50", "Great", "3/17/2001", "", ""},
    {"English", "Emma", "Jane Austen", "Novel", "1815", "474", "7.50", "Good", "3/17/2001", "Hanna", ""},
    {"English", "Moby-Dick", "Herman Melville", "Novel", "1851", "635", "9.90", "Good", "6/2/2001", "",
     "The chapters on whales can be read on their own."},
    {"English", "Bartleby, the Scrivener", "Herman Melville", "Stories", "1853", "64", "3.20", "Great", "1/12/2002",
     "", ""},
    {"English", "Wuthering Heights", "Emily Brontë", "Novel", "1847", "416", "6.95", "Good", "6/2/2001", "", ""},
    {"English", "Jane Eyre", "Charlotte Brontë", "Novel", "1847", "532", "6.95", "Great", "6/2/2001", "Mother", ""},
    {"English", "The Tenant of Wildfell Hall", "Anne Brontë", "Novel", "1848", "512", "6.95", "", "11/8/2003", "",
     ""},
    {"English", "Great Expectations", "Charles Dickens", "Novel", "1861", "544", "8.00", "Great", "12/24/1999", "",
     "Present from Ruth."},
    {"English", "Bleak House", "Charles Dickens", "Novel", "1853", "1036", "10.00", "", "5/10/2003", "",
     "Start again; stopped at chapter 12."},
    {"English", "A Christmas Carol", "Charles Dickens", "Stories", "1843", "96", "4.50", "Good", "12/5/1998", "", ""},
    {"English", "Middlemarch", "George Eliot", "Novel", "1871", "880", "9.00", "Great", "8/19/2002", "", ""},
    {"English", "Silas Marner", "George Eliot", "Novel", "1861", "240", "5.50", "Fair", "8/19/2002", "", ""},
    {"Translated", "Madame Bovary", "Gustave Flaubert", "Novel", "1857", "384", "8.50", "Good", "2/26/2000", "",
     "Translation of 1992."},
    {"French", "Les Misérables", "Victor Hugo", "Novel", "1862", "1463", "14.90", "", "10/3/2003", "", ""},
    {"French", "Le Père Goriot", "Honoré de Balzac", "Novel", "1835", "320", "7.20", "Good", "2/26/2000", "Jürgen",
     ""},
    {"French", "Germinal", "Émile Zola", "Novel", "1885", "592", "8.80", "Good", "9/9/2000", "", ""},
    {"Translated", "War and Peace", "Leo Tolstoy", "Novel", "1869", "1273", "16.50", "Great", "7/14/1997", "",
     "Maps at the back.\nList of persons at the front."},
    {"Translated", "Anna Karenina", "Leo Tolstoy", "Novel", "1878", "864", "11.00", "Great", "7/14/1997", "", ""},
    {"Translated", "Crime and Punishment", "Fyodor Dostoevsky", "Novel", "1866", "551", "9.20", "Great", "4/18/1998",
     "", ""},
    {"Translated", "The Brothers Karamazov", "Fyodor Dostoevsky", "Novel", "1880", "796", "12.40", "", "10/3/2003",
     "", ""},
    {"Translated", "Dead Souls", "Nikolai Gogol", "Novel", "1842", "464", "8.00", "Good", "4/18/1998", "", ""},
    {"Translated", "The Lady with the Dog", "Anton Chekhov", "Stories", "1899", "256", "6.00", "Great", "5/30/2002",
     "", ""},
    {"Translated", "The Cherry Orchard", "Anton Chekhov", "Play", "1904", "112", "4.80", "Good", "5/30/2002", "", ""},
    {"Translated", "Don Quixote", "Miguel de Cervantes", "Novel", "1605", "1072", "13.50", "Good", "9/25/1999", "",
     "First part 1605, second part 1615."},
    {"Translated", "The Divine Comedy", "Dante Alighieri", "Poetry", "1320", "752", "12.00", "", "10/13/2001", "",
     ""},
    {"Translated", "The Decameron", "Giovanni Boccaccio", "Stories", "1353", "909", "11.50", "Good", "10/13/2001", "",
     ""},
    {"German", "Faust", "Johann Wolfgang von Goethe", "Play", "1808", "464", "5.60", "Great", "10/1/1996", "",
     "School copy, full of notes."},
    {"German", "Die Verwandlung", "Franz Kafka", "Stories", "1915", "74", "2.60", "Great", "10/1/1996", "", ""},
    {"German", "Der Prozess", "Franz Kafka", "Novel", "1925", "272", "5.00", "Good", "2/8/1997", "", ""},
    {"German", "Buddenbrooks", "Thomas Mann", "Novel", "1901", "759", "11.90", "Great", "12/24/2000", "Hanna",
     "Present from Hanna, who has borrowed it ever since."},
    {"German", "Effi Briest", "Theodor Fontane", "Novel", "1895", "349", "4.60", "Fair", "2/8/1997", "", ""},
    {"German", "Der Schimmelreiter", "Theodor Storm", "Stories", "1888", "160", "3.10", "Good", "2/8/1997", "", ""},
    {"Swedish", "Gösta Berlings saga", "Selma Lagerlöf", "Novel", "1891", "430", "8.40", "Good", "7/21/2003", "", ""},
    {"Translated", "Peer Gynt", "Henrik Ibsen", "Play", "1867", "224", "6.20", "Good", "7/21/2003", "", ""},
    {"Translated", "Hunger", "Knut Hamsun", "Novel", "1890", "232", "7.10", "Fair", "7/21/2003", "", ""},
    {"Translated", "Fairy Tales", "Hans Christian Andersen", "Stories", "1837", "438", "9.80", "Great", "12/24/1995",
     "Lotte", ""},
    {"English", "Hamlet", "William Shakespeare", "Play", "1603", "342", "5.20", "Great", "9/5/1994", "", ""},
    {"English", "The Tempest", "William Shakespeare", "Play", "1611", "208", "5.20", "Good", "9/5/1994", "", ""},
    {"English", "Sonnets", "William Shakespeare", "Poetry", "1609", "176", "4.90", "Great", "2/14/1995", "", ""},
    {"English", "Paradise Lost", "John Milton", "Poetry", "1667", "453", "8.30", "", "5/10/2003", "", ""},
    {"English", "Leaves of Grass", "Walt Whitman", "Poetry", "1855", "624", "9.50", "Good", "3/9/2002", "", ""},
    {"English", "Walden", "Henry David Thoreau", "Science", "1854", "352", "6.40", "Good", "3/9/2002", "", ""},
    {"English", "The Adventures of Huckleberry Finn", "Mark Twain", "Novel", "1884", "366", "5.90", "Great",
     "6/17/1995", "", ""},
    {"English", "The Scarlet Letter", "Nathaniel Hawthorne", "Novel", "1850", "279", "5.40", "Fair", "6/17/1995", "",
     ""},
    {"English", "Frankenstein", "Mary Shelley", "Novel", "1818", "280", "5.80", "Good", "10/31/2000", "", ""},
    {"English", "Dracula", "Bram Stoker", "Novel", "1897", "418", "6.30", "Good", "10/31/2000", "Jürgen", ""},
    {"English", "The Time Machine", "H. G. Wells", "Novel", "1895", "118", "4.10", "Good", "1/20/2001", "", ""},
    {"Translated", "Around the World in Eighty Days", "Jules Verne", "Novel", "1873", "256", "6.70", "Great",
     "12/24/1994", "Lotte", ""},
    {"English", "On the Origin of Species", "Charles Darwin", "Science", "1859", "502", "10.50", "Good", "11/2/2002",
     "", ""},
    {"English", "The Voyage of the Beagle", "Charles Darwin", "Science", "1839", "448", "9.70", "", "11/8/2003", "",
     ""},
    {"Translated", "Relativity", "Albert Einstein", "Science", "1916", "168", "7.90", "Fair", "1/18/2003", "",
     "“A popular exposition” – so he says."},
    {"Translated", "Dialogue Concerning the Two Chief World Systems", "Galileo Galilei", "Science", "1632", "586",
     "14.20", "", "1/18/2003", "", ""},
    {"Translated", "The Histories", "Herodotus", "History", "-430", "771", "10.80", "Good", "5/22/1999", "",
     "Year is a guess: -430 as 430 BC."},
    {"Translated", "Commentaries on the Gallic War", "Julius Caesar", "History", "-50", "288", "7.40", "Fair",
     "5/22/1999", "", ""},
    {"English", "The Decline and Fall of the Roman Empire", "Edward Gibbon", "History", "1776", "848", "12.80", "",
     "9/13/2003", "", "Abridged."},
    {"Translated", "The Travels", "Marco Polo", "History", "1300", "381", "8.90", "Good", "7/6/2002", "", ""},
    {"Translated", "Odyssey", "Homer", "Poetry", "-700", "416", "8.60", "Great", "8/29/1998", "", ""},
    {"Translated", "Meditations", "Marcus Aurelius", "History", "180", "192", "5.30", "Good", "12/28/2003", "", ""},
};

} // namespace

platform::Bytes books() {
    SampleBuilder sample("MS2_Books");
    sample.setCategories({"English", "German", "French", "Swedish", "Translated"});
    const int title = sample.addField(FieldType::Text, "Title");
    const int author = sample.addField(FieldType::Text, "Author");
    const int genre = sample.addField(FieldType::List, "Genre");
    const int year = sample.addField(FieldType::Integer, "Year");
    const int pages = sample.addField(FieldType::Integer, "Pages");
    const int price = sample.addField(FieldType::Float, "Price");
    const int read = sample.addField(FieldType::Checkbox, "Read");
    const int rating = sample.addField(FieldType::RadioButton, "Rating");
    const int bought = sample.addField(FieldType::Date, "Bought");
    const int lentTo = sample.addField(FieldType::Text, "Lent to");
    const int number = sample.addField(FieldType::AutoIncremental, "Number");
    const int notes = sample.addField(FieldType::Memo, "Notes");
    sample.addItems(genre, {"Novel", "Stories", "Play", "Poetry", "Science", "History"});
    sample.addItems(rating, {"Poor", "Fair", "Good", "Great"});
    sample.field(title).SearchField = 1;
    sample.field(author).SearchField = 1;
    sample.field(year).IncDec = 1;
    sample.field(price).Decimals = 2;
    sample.field(bought).Default = "A";

    int count = 0;
    for (const Book& book : kBooks) {
        sample.addRecord(book.shelf);
        sample.set(title, book.title);
        sample.set(author, book.author);
        sample.setItem(genre, book.genre);
        sample.set(year, book.year);
        sample.set(pages, book.pages);
        sample.set(price, book.price);
        sample.check(read, !book.rating.empty());
        if (!book.rating.empty())
            sample.setItem(rating, book.rating);
        sample.set(bought, book.bought);
        sample.set(lentTo, book.lentTo);
        sample.set(number, std::to_string(++count));
        sample.set(notes, book.notes);
    }
    sample.database().AutoIncNext[number] = count + 1;

    sample.addView("By author", {author, title, year, genre}, author);
    sample.addView("To read", {title, author, pages}, pages);
    sample.addView("Lent", {lentTo, title, author}, lentTo);
    sample.addFilter("Not read", {{read, '=', "0"}});
    sample.addFilter("Long novels", {{genre, '=', "Novel"}, {pages, '>', "600"}});
    sample.addFilter("Before 1800", {{year, '<', "1800"}});
    sample.addForm({title, author, genre, year, pages, price, read, rating, bought, lentTo, number, notes});
    return sample.build();
}

} // namespace tallybook::samples
