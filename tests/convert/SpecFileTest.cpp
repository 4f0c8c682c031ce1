#include "core/convert/SpecFile.h"

#include "adapters/PosixFiles.h"
#include "support/FailingFiles.h"
#include "support/TempFolder.h"
#include "support/TestServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tallybook::convert {
namespace {

using testing::HasSubstr;

// Lines as they stand between double quotes.
std::string quotedLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += '"' + line + "\"\r\n";
    return text;
}

std::vector<std::string> headLines() {
    return {"VRS:1.0",  "EXT:TEXT", "INT:Books", "URL:C:\\data\\books.csv",
            "TYP:C",    "DTF:0",    "OBJ:none",  "FRS:Y,N, 0, 0, 0",
            "USR:Fred", "ITO:",     "ITA:N",     "SAV:",
            "APP:1",    "CAT:0",    "LST:0",     "FLD:1",
            "Pdb:0"};
}

void addRow(std::vector<std::string>& lines, const std::string& numbers, const std::string& own = {},
            const std::string& type = {}, const std::string& outside = {}) {
    lines.push_back(numbers);
    lines.push_back("OFD:" + own);
    lines.push_back("OTP:" + type);
    lines.push_back("EFD:" + outside);
}

std::vector<std::string> wholeLines() {
    std::vector<std::string> lines = headLines();
    addRow(lines, "F00:00,00");
    addRow(lines, "F01:02,01", "Title", "Text", "Book title");
    for (int row = 2; row <= 80; ++row)
        addRow(lines, "F" + std::string(row < 10 ? "0" : "") + std::to_string(row) + ":00,00");
    return lines;
}

// The line that begins with a key, changed.
std::string changed(std::vector<std::string> lines, const std::string& key, const std::string& line) {
    for (std::string& one : lines)
        if (one.starts_with(key)) {
            one = line;
            return quotedLines(lines);
        }
    ADD_FAILURE() << key;
    return {};
}

std::string without(std::vector<std::string> lines, const std::string& key) {
    std::erase_if(lines, [&](const std::string& line) { return line.starts_with(key); });
    return quotedLines(lines);
}

ConversionSpec booksSpec() {
    ConversionSpec spec;
    spec.ExternalKind = "TEXT";
    spec.TallybookName = "Books";
    spec.ExternalPath = "C:\\data\\books.csv";
    spec.SourceKind = "C";
    spec.ObjectName = "none";
    spec.FirstRowNames = "Y";
    spec.SecondRowTypes = "N";
    spec.HotSyncUser = "Fred";
    spec.InstallToAll = "N";
    spec.AppendRecords = 1;
    spec.LastEntry = 1;
    spec.Entries[1] = {2, 1, "Title", "Text", "Book title"};
    return spec;
}

ConversionSpec parsed(std::string_view text, SpecFields fields = SpecFields::With) {
    ConversionSpec spec;
    const auto status = parseSpecs(text, spec, fields);
    EXPECT_TRUE(status.ok()) << (status.ok() ? "" : status.error().text);
    return spec;
}

TEST(SpecFileTest, writesTheTextByteForByte) {
    EXPECT_EQ(formSpecs(booksSpec()).value(), quotedLines(wholeLines()));
}

TEST(SpecFileTest, readsWhatItWrites) {
    EXPECT_EQ(parsed(quotedLines(wholeLines())), booksSpec());
}

TEST(SpecFileTest, readsLinesThatEndInALineFeedAlone) {
    std::string text = quotedLines(wholeLines());
    std::erase(text, '\r');
    EXPECT_EQ(parsed(text), booksSpec());
}

TEST(SpecFileTest, readsAnOlderFileWithoutTheLineOfDates) {
    EXPECT_EQ(parsed(without(wholeLines(), "DTF:")), booksSpec());
}

// An object whose name holds these letters is taken for the line of dates, and the lines behind it slip.
TEST(SpecFileTest, losesStepAtAnOlderFilesObjectNamedLikeTheLineOfDates) {
    std::vector<std::string> lines = wholeLines();
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("DTF:"); });
    lines[5] = "OBJ:DTF table";
    ConversionSpec spec;
    EXPECT_FALSE(parseSpecs(quotedLines(lines), spec, SpecFields::With).ok());
    EXPECT_EQ(spec, ConversionSpec());
    const ConversionSpec slipped = parsed(quotedLines(lines), SpecFields::Without);
    EXPECT_EQ(slipped.ObjectName, "Y,N, 0, 0, 0");
    EXPECT_EQ(slipped.FirstRowNames, "Fred");
}

TEST(SpecFileTest, takesTheOrderOfDatesFromTheLineOfTheFirstRows) {
    EXPECT_EQ(parsed(changed(wholeLines(), "DTF:", "DTF:1")).DateFormat, 0);
    EXPECT_EQ(parsed(changed(wholeLines(), "FRS:", "FRS:Y,N, 0, 1, 0")).DateFormat, 1);
}

TEST(SpecFileTest, completesAShortLineOfTheFirstRows) {
    const ConversionSpec spec = parsed(changed(wholeLines(), "FRS:", "FRS:Y"));
    EXPECT_EQ(spec.FirstRowNames, "Y");
    EXPECT_EQ(spec.SecondRowTypes, "N");
    EXPECT_EQ(spec.TimeFormat, 0);
    EXPECT_EQ(spec.DateFormat, 0);
    EXPECT_EQ(spec.HasSeconds, 0);
}

TEST(SpecFileTest, passesOverItemsBehindTheFifthOfTheFirstRows) {
    EXPECT_EQ(parsed(changed(wholeLines(), "FRS:", "FRS:N,Y, 1, 1, 1, 9, 9")).HasSeconds, 1);
}

TEST(SpecFileTest, storesACategoryMappingByItsRow) {
    ConversionSpec spec = booksSpec();
    spec.MapCategories = 1;
    EXPECT_THAT(formSpecs(spec).value(), HasSubstr("\"CAT:0\""));
    spec.MapCategories = 0;
    spec.Entries[0].ExternalFieldName = "Kind";
    EXPECT_THAT(formSpecs(spec).value(), HasSubstr("\"CAT:1\""));
}

TEST(SpecFileTest, storesEightyFilledRows) {
    ConversionSpec spec = booksSpec();
    for (std::size_t row = 1; row <= 80; ++row)
        spec.Entries[row] = {static_cast<std::uint8_t>(row + 1), 1, "F", "Text", "G"};
    spec.LastEntry = 80;
    const std::string text = formSpecs(spec).value();
    EXPECT_THAT(text, HasSubstr("\"FLD:80\""));
    EXPECT_THAT(text, HasSubstr("\"F80:81,01\""));
    EXPECT_EQ(parsed(text), spec);
}

TEST(SpecFileTest, leavesTheRowsAloneWithoutItsFields) {
    ConversionSpec spec;
    spec.Entries[3].OwnFieldName = "kept";
    ASSERT_TRUE(parseSpecs(quotedLines(headLines()), spec, SpecFields::Without).ok());
    EXPECT_EQ(spec.Entries[3].OwnFieldName, "kept");
    EXPECT_EQ(spec.TallybookName, "Books");
}

TEST(SpecFileTest, keepsCommasInValues) {
    ConversionSpec spec = booksSpec();
    spec.ExternalPath = "PROVIDER=MSDASQL;DSN=a,b;UID=x;";
    spec.Entries[1].ExternalFieldName = "Title, in full";
    EXPECT_EQ(parsed(formSpecs(spec).value()), spec);
}

TEST(SpecFileTest, keepsEveryByteOfTheCodePage) {
    ConversionSpec spec = booksSpec();
    spec.TallybookName.clear();
    for (int c = 1; c < 256; ++c)
        if (c != '"')
            spec.TallybookName += static_cast<char>(c);
    EXPECT_EQ(parsed(formSpecs(spec).value()).TallybookName, spec.TallybookName);
}

TEST(SpecFileTest, refusesADoubleQuoteInAValue) {
    ConversionSpec spec = booksSpec();
    spec.TallybookName = "The \"Books\"";
    EXPECT_EQ(formSpecs(spec).error().text, "A conversion spec cannot hold a double quote; there is one in INT.");
}

TEST(SpecFileTest, refusesDamagedFiles) {
    const auto lines = wholeLines();
    const std::vector<std::string> damaged = {
        "",
        "\"VRS:1.0",
        quotedLines(headLines()), // the rows are missing
        without(lines, "USR:"),
        changed(lines, "EXT:", "EX"),
        changed(lines, "APP:", "APP:256"),
        changed(lines, "LST:", "LST:-1"),
        changed(lines, "FRS:", "FRS:Y,N, 40000, 0, 0"),
        changed(lines, "F07:", "F07:08,3"),
        changed(lines, "DTF:", "DTF:1e9"),
    };
    for (const std::string& text : damaged) {
        ConversionSpec spec = booksSpec();
        const auto status = parseSpecs(text, spec, SpecFields::With);
        EXPECT_FALSE(status.ok()) << text.substr(0, 60);
        EXPECT_EQ(spec, booksSpec());
    }
}

// Letters read as no number at all, and rows that there are not are nobody's.
TEST(SpecFileTest, takesLettersForNoNumberAndKeepsRowsInBounds) {
    EXPECT_EQ(parsed(changed(wholeLines(), "APP:", "APP:yes")).AppendRecords, 0);
    const ConversionSpec spec = parsed(changed(wholeLines(), "FLD:", "FLD:255"));
    EXPECT_EQ(spec.LastEntry, 255);
    EXPECT_EQ(lastRow(spec), 80);
    const ConversionSpec rows = parsed(changed(wholeLines(), "F01:", "F01:99,99"));
    EXPECT_EQ(slotOfRow(rows.Entries[1]), -1);
    EXPECT_EQ(slotOfRow({82, 1, {}, {}, {}}), 81);
    EXPECT_EQ(slotOfRow({0, 0, {}, {}, {}}), -1);
}

TEST(SpecFileTest, neverReadsPastAnyEnd) {
    const std::string text = quotedLines(wholeLines());
    for (std::size_t length = 0; length + 3 < text.size(); length += 7) {
        ConversionSpec spec;
        EXPECT_FALSE(parseSpecs(std::string_view(text).substr(0, length), spec, SpecFields::With).ok()) << length;
    }
}

class SpecFolderTest : public testing::Test {
protected:
    SpecFolderTest() {
        t.files.addFolder("/app/ConversionSpecs/Import");
        t.files.addFolder("/app/ConversionSpecs/Export");
    }

    void put(const std::filesystem::path& path, const std::string& text) {
        t.files.put(path, {text.begin(), text.end()});
    }

    test::TestServices t;
    ConversionSpec spec = booksSpec();
};

TEST_F(SpecFolderTest, keepsTheSpecsOfBothDirectionsApart) {
    EXPECT_EQ(specPath(t, SpecDirection::Import, "Books in"), "/app/ConversionSpecs/Import/Books in.mcs");
    EXPECT_EQ(specPath(t, SpecDirection::Export, "\xDC"), "/app/ConversionSpecs/Export/\xC3\x9C.mcs");
}

TEST_F(SpecFolderTest, listsSpecsWhateverTheCaseOfTheirEnding) {
    put("/app/ConversionSpecs/Import/b.mcs", "");
    put("/app/ConversionSpecs/Import/A.MCS", "");
    put("/app/ConversionSpecs/Import/note.txt", "");
    put("/app/ConversionSpecs/Import/.mcs", "");
    const auto files = specFiles(t, SpecDirection::Import);
    ASSERT_TRUE(files.ok());
    EXPECT_THAT(files.value(),
                testing::ElementsAre("/app/ConversionSpecs/Import/A.MCS", "/app/ConversionSpecs/Import/b.mcs"));
    EXPECT_EQ(specName(files.value()[0]), "A");
}

TEST_F(SpecFolderTest, writesAndReadsAFile) {
    const auto path = specPath(t, SpecDirection::Import, "Books");
    spec.MapCategories = 1;
    ASSERT_TRUE(writeSpecs(t, spec, path));
    EXPECT_EQ(spec.MapCategories, 0);
    ConversionSpec read;
    ASSERT_TRUE(readSpecs(t, read, path));
    EXPECT_EQ(read, spec);
}

TEST_F(SpecFolderTest, tellsAMissingFile) {
    EXPECT_FALSE(readSpecs(t, spec, "/app/ConversionSpecs/Import/No.mcs"));
    EXPECT_THAT(t.user.texts(),
                testing::ElementsAre("Conversion Specs /app/ConversionSpecs/Import/No.mcs not found"));
    EXPECT_EQ(spec, booksSpec());
}

TEST_F(SpecFolderTest, showsWhatIsWrongWithAFile) {
    put("/app/ConversionSpecs/Import/Bad.mcs", "\"VRS:1.0\"\r\n\"EXT:TEXT\"\r\n\"IN\"\r\n");
    t.user.errorAnswers = {platform::ErrorAnswer::GoOn};
    EXPECT_FALSE(readSpecs(t, spec, "/app/ConversionSpecs/Import/Bad.mcs"));
    ASSERT_EQ(t.user.errors.size(), 1u);
    EXPECT_EQ(t.user.errors[0].tag, "Conversion Specs : ReadSpecs (Procedure)");
    EXPECT_EQ(t.user.errors[0].text, "Line 3 of the conversion spec is too short.");
}

TEST_F(SpecFolderTest, leavesTheOldFileWhenTheNewOneCannotBeWritten) {
    const auto path = specPath(t, SpecDirection::Import, "Books");
    put(path, "old");
    spec.TallybookName = "\"";
    t.user.errorAnswers = {platform::ErrorAnswer::GoOn};
    EXPECT_FALSE(writeSpecs(t, spec, path));
    EXPECT_EQ(t.user.errors[0].tag, "Conversion Specs : WriteSpecs (Procedure)");
    const auto& bytes = t.files.bytes(path);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "old");
}

TEST_F(SpecFolderTest, refusesNamesThatNoFileMayHave) {
    EXPECT_EQ(faultOfSpecName("Books 2024"), "");
    EXPECT_EQ(faultOfSpecName("   "), "Enter the Conversion Specs name.");
    EXPECT_THAT(faultOfSpecName("../Books"), HasSubstr("may not have any of these characters"));
    EXPECT_THAT(faultOfSpecName(std::string(241, 'a')), HasSubstr("at most 240 bytes"));
}

// On a real disk: folders and pipes of a spec's name, and who may look into it.
TEST(SpecOnDiskTest, isForItsOwnerAloneAndNeverWaitsForAPipe) {
    test::TempFolder folder;
    test::TestServices t;
    adapters::PosixFiles posix;
    platform::Services services{t.user, t.user, posix, t.clock, t.regional, folder.path()};
    test::putFile(folder / "Books.mcs", "old");
    ConversionSpec spec = booksSpec();
    ASSERT_TRUE(writeSpecs(services, spec, folder / "Books.mcs"));
    EXPECT_EQ(std::filesystem::status(folder / "Books.mcs").permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);

    std::filesystem::create_directory(folder / "Folder.mcs");
    ASSERT_EQ(mkfifo((folder / "Pipe.mcs").c_str(), 0600), 0);
    t.user.errorAnswers = {platform::ErrorAnswer::GoOn, platform::ErrorAnswer::GoOn, platform::ErrorAnswer::GoOn,
                           platform::ErrorAnswer::GoOn};
    for (const char* name : {"Folder.mcs", "Pipe.mcs"}) {
        EXPECT_FALSE(readSpecs(services, spec, folder / name));
        EXPECT_FALSE(writeSpecs(services, spec, folder / name));
    }
    EXPECT_TRUE(std::filesystem::is_directory(folder / "Folder.mcs"));
}

TEST(SpecOnDiskTest, standsOldOrNewWhateverCallFails) {
    test::TempFolder folder;
    test::TestServices t;
    adapters::PosixFiles posix;
    test::FailingFiles files(posix);
    platform::Services services{t.user, t.user, files, t.clock, t.regional, folder.path()};
    const auto path = folder / "Books.mcs";
    ConversionSpec spec = booksSpec();
    ASSERT_TRUE(writeSpecs(services, spec, path));
    const int calls = files.calls();
    const std::string whole = test::getFile(path);
    for (int call = 1; call <= calls; ++call) {
        test::putFile(path, "old");
        files.restart(call);
        t.user.errorAnswers = {platform::ErrorAnswer::GoOn};
        EXPECT_FALSE(writeSpecs(services, spec, path)) << call;
        const std::string left = test::getFile(path);
        EXPECT_TRUE(left == "old" || left == whole) << call;
        EXPECT_EQ(test::namesIn(folder.path()), "Books.mcs") << call;
    }
}

TEST(ConnectionStringTest, givesTheValueOfAKey) {
    EXPECT_EQ(GetStrVal("DSN=a;UID=b;", "DSN="), "a");
    EXPECT_EQ(GetStrVal("DSN=a;UID=b;", "UID="), "b");
    EXPECT_EQ(GetStrVal("DSN=a;UID=b;", "PWD="), "");
    EXPECT_EQ(GetStrVal("PROVIDER=MSDASQL;DSN=shop", "DSN="), "shop");
}

TEST(StoredPathTest, takesEitherSeparator) {
    EXPECT_EQ(storedPath("/home/ann\\books.csv", "/app"), "/home/ann/books.csv");
    EXPECT_EQ(storedPath("lists\\B\xFC.csv", "/app"), "/app/lists/B\xC3\xBC.csv");
}

} // namespace
} // namespace tallybook::convert
