#include "core/convert/DelimitedText.h"

#include "support/FailingFiles.h"
#include "support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallybook::convert {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Record = std::vector<std::string>;

// Gives its bytes one at a time, so that every place is once the end of a piece.
class Drip : public ByteSource {
public:
    explicit Drip(std::string_view text) : m_left(text) {}
    platform::Result<std::size_t> read(std::span<char> room) override {
        if (m_left.empty())
            return std::size_t{0};
        room[0] = m_left.front();
        m_left.remove_prefix(1);
        return std::size_t{1};
    }

private:
    std::string_view m_left;
};

std::vector<Record> recordsOf(ByteSource& source, char delimiter) {
    DelimitedReader reader(source, delimiter);
    std::vector<Record> all;
    std::string scratch;
    while (reader.next()) {
        Record& record = all.emplace_back();
        for (std::size_t item = 0; item < reader.items(); ++item)
            record.emplace_back(reader.item(item, scratch));
    }
    EXPECT_TRUE(reader.status().ok());
    return all;
}

std::vector<Record> read(std::string_view text, char delimiter = ',') {
    TextSource whole(text);
    Drip drip(text);
    const auto records = recordsOf(whole, delimiter);
    EXPECT_EQ(recordsOf(drip, delimiter), records) << text;
    return records;
}

TEST(DelimitedReaderTest, partsRecordsAtAnyLineEnd) {
    EXPECT_THAT(read("a,b\nc,d\r\ne,f\rg,h"),
                ElementsAre(Record{"a", "b"}, Record{"c", "d"}, Record{"e", "f"}, Record{"g", "h"}));
}

TEST(DelimitedReaderTest, takesAnEmptyLineAsARecordButNothingBehindTheLastLineEnd) {
    EXPECT_THAT(read(""), IsEmpty());
    EXPECT_THAT(read("\n"), ElementsAre(Record{""}));
    EXPECT_THAT(read("a\n\nb\n"), ElementsAre(Record{"a"}, Record{""}, Record{"b"}));
    EXPECT_THAT(read("a\r"), ElementsAre(Record{"a"}));
}

TEST(DelimitedReaderTest, readsItemsByTheirQuotes) {
    struct Case {
        std::string text;
        Record items;
    };
    const std::vector<Case> cases = {
        {"a,,b,", {"a", "", "b", ""}},
        {"\"a,b\",c", {"a,b", "c"}},
        {"\"\",x", {"", "x"}},
        {"\"say \"\"hi\"\"\",x", {"say \"hi\"", "x"}},     // doubled inside
        {"\"say \"hi\"\",x", {"say \"hi\"", "x"}},         // left single inside
        {"\"5\" by 3\"\",x", {"5\" by 3\"", "x"}},         // the same with a lone one in the middle
        {"\"\"hi\" he said\",x", {"\"hi\" he said", "x"}}, // and at the front
        {"\"line one\r\nline two\",x", {"line one\r\nline two", "x"}},
        {"\"\"\"\",x", {"\"", "x"}},               // one double quote, doubled
        {"a \"b, c\" d,x", {"a \"b, c\" d", "x"}}, // quotes inside an item part it off as well
        {" \"a\",x", {" \"a\"", "x"}},             // a blank ahead: the quotes are the item's own
        {"\"a\"b,x", {"\"a\"b", "x"}},
    };
    for (const Case& one : cases)
        EXPECT_THAT(read(one.text), ElementsAre(one.items)) << one.text;
}

TEST(DelimitedReaderTest, partsAtTheGivenSeparatorAlone) {
    EXPECT_THAT(read("a;b,c\td", ';'), ElementsAre(Record{"a", "b,c\td"}));
    EXPECT_THAT(read("a;b,c\td", '\t'), ElementsAre(Record{"a;b,c", "d"}));
}

TEST(DelimitedReaderTest, tellsARecordThatAnOpenQuoteHasMade) {
    TextSource source("a,b\nc,\"d\ne,f\n");
    DelimitedReader reader(source, ',');
    ASSERT_TRUE(reader.next());
    EXPECT_FALSE(reader.isUnclosed());
    ASSERT_TRUE(reader.next());
    EXPECT_TRUE(reader.isUnclosed());
    EXPECT_EQ(reader.records(), 2u);
    EXPECT_EQ(reader.raw(1), "\"d\ne,f\n");
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(reader.status().ok());
}

TEST(DelimitedReaderTest, keepsTheLineAndTheRawItems) {
    TextSource source("\"a\",b\r\nc");
    DelimitedReader reader(source, ',');
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.line(), "\"a\",b");
    EXPECT_EQ(reader.raw(0), "\"a\"");
    EXPECT_EQ(reader.raw(7), "");
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.line(), "c");
}

TEST(DelimitedReaderTest, countsItemsThatItDoesNotKeep) {
    const std::string text(1000, ',');
    TextSource source(text);
    DelimitedReader reader(source, ',');
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.items(), 1001u);
    EXPECT_EQ(reader.raw(255), "");
    EXPECT_EQ(reader.raw(1000), "");
}

TEST(DelimitedReaderTest, readsALineOfAMegabyteAndRefusesALargerRecordThanItKeeps) {
    const std::string line(1 << 20, 'x');
    TextSource good("a\n" + line + "\nb\n");
    const std::string text = "a\n" + line + "\nb\n";
    EXPECT_THAT(read("a\n" + std::string(70000, 'x') + "\nb\n"), testing::SizeIs(3));
    TextSource source(text);
    EXPECT_THAT(recordsOf(source, ','), ElementsAre(Record{"a"}, Record{line}, Record{"b"}));

    const std::string open = "a\n\"" + std::string(DelimitedReader::kLargestRecord + (1 << 20), 'y');
    TextSource tooLarge(open);
    DelimitedReader reader(tooLarge, ',');
    EXPECT_TRUE(reader.next());
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(reader.isTooLarge());
    EXPECT_EQ(reader.records(), 1u);
}

TEST(DelimitedReaderTest, noticesNulBytes) {
    TextSource text("a,b\n");
    DelimitedReader good(text, ',');
    while (good.next())
        continue;
    EXPECT_FALSE(good.hasNul());
    TextSource binary(std::string_view("a\0b\n", 4));
    DelimitedReader reader(binary, ',');
    EXPECT_TRUE(reader.next());
    EXPECT_TRUE(reader.hasNul());
}

TEST(DelimitedReaderTest, readsAFilePieceByPiece) {
    test::MemoryFiles files;
    std::string text;
    for (int record = 0; record < 100000; ++record)
        text += std::to_string(record) + ",x\r\n";
    files.put("/list.csv", {text.begin(), text.end()});
    FileSource source(files, "/list.csv");
    DelimitedReader reader(source, ',');
    std::string scratch;
    int number = 0;
    while (reader.next())
        ASSERT_EQ(reader.item(0, scratch), std::to_string(number++));
    EXPECT_EQ(number, 100000);
    EXPECT_EQ(reader.position(), text.size());
}

TEST(DelimitedReaderTest, givesTheFailureOfItsSource) {
    test::MemoryFiles files;
    FileSource source(files, "/missing.csv");
    DelimitedReader reader(source, ',');
    EXPECT_FALSE(reader.next());
    EXPECT_FALSE(reader.status().ok());
    EXPECT_FALSE(reader.next());
}

class Collected : public ByteSink {
public:
    std::string text;
    bool fails = false;
    platform::Status write(std::string_view bytes) override {
        if (fails)
            return platform::Error{.kind = platform::ErrorKind::File, .tag = {}, .text = "full"};
        text += bytes;
        return {};
    }
};

std::string written(const std::vector<Record>& records, char delimiter = ',') {
    Collected sink;
    DelimitedWriter writer(sink, delimiter);
    for (const Record& record : records) {
        for (const std::string& item : record)
            writer.add(item);
        writer.endRecord();
    }
    EXPECT_TRUE(writer.finish().ok());
    return sink.text;
}

TEST(DelimitedWriterTest, quotesWhatWouldBeMistaken) {
    EXPECT_EQ(written({{"a", "b c"}, {"", ""}}), "a,b c\r\n,\r\n");
    EXPECT_EQ(written({{"a,b", "say \"hi\"", "one\ntwo", "one\rtwo"}}),
              "\"a,b\",\"say \"\"hi\"\"\",\"one\ntwo\",\"one\rtwo\"\r\n");
    EXPECT_EQ(written({{"a,b", "c;d"}}, ';'), "a,b;\"c;d\"\r\n");
    EXPECT_EQ(written({{""}, {"x"}}), "\"\"\r\nx\r\n");
}

TEST(DelimitedWriterTest, isReadBackAsItWas) {
    const std::vector<Record> records = {
        {"\"", "\"\"", "\"a\"", "a\""}, {",", ";", "\t", " "}, {"\r\n", "\n\n", "\r", ""}, {"", "", "", "end"}};
    for (const char delimiter : {',', ';', '\t'})
        EXPECT_EQ(read(written(records, delimiter), delimiter), records);
}

TEST(DelimitedWriterTest, keepsTheFirstFailureOfItsSink) {
    Collected sink;
    sink.fails = true;
    DelimitedWriter writer(sink, ',');
    for (int record = 0; record < 100000; ++record) {
        writer.add("some text");
        writer.endRecord();
    }
    EXPECT_FALSE(writer.finish().ok());
    EXPECT_EQ(sink.text, "");
}

} // namespace
} // namespace tallybook::convert
