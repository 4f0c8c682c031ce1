// Texts brought into databases and out of them, in memory.
#pragma once

#include "core/convert/TextBridge.h"
#include "core/pdb/Database.h"
#include "support/TestServices.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tallybook::test {

struct BridgeFixture : testing::Test {
    BridgeFixture() {
        t.files.addFolder("/books");
        flags.WithNameRow = 1;
    }

    static inline const std::filesystem::path kPdb = "/books/MS2_Books.pdb";
    static inline const std::filesystem::path kCsv = "/books/list.csv";

    void putText(const std::string& text) { t.files.put(kCsv, {text.begin(), text.end()}); }
    std::string textOf(const std::filesystem::path& path) {
        const auto& bytes = t.files.bytes(path);
        return {bytes.begin(), bytes.end()};
    }
    bool has(const std::filesystem::path& path) { return t.files.has(path); }

    // Each gives the number of the code.
    int import(const std::string& text, convert::ImportMode mode = convert::ImportMode::Create) {
        putText(text);
        call = newCall();
        return numberOf(convert::Text2Tiny(*call, kCsv, kPdb, static_cast<std::int16_t>(mode), flags));
    }
    int append(const std::string& text) { return import(text, convert::ImportMode::Append); }
    int replace(const std::string& text) { return import(text, convert::ImportMode::Replace); }
    int create(const std::string& text) {
        if (has(kPdb)) {
            EXPECT_TRUE(t.files.remove(kPdb).ok());
        }
        return import(text);
    }
    int exportText(int appendOutput = 0) {
        call = newCall();
        return numberOf(
            convert::Tiny2Text(*call, kPdb, "/books/out.csv", static_cast<std::int16_t>(appendOutput), flags));
    }
    // The lines of an export, without line ends.
    std::string exported() {
        EXPECT_EQ(exportText(), 0);
        return textOf("/books/out.csv");
    }

    // Keeps a database of the test's making.
    void save(model::Document& doc) {
        auto built = pdb::buildDatabase(doc, t);
        ASSERT_TRUE(built.ok());
        t.files.put(kPdb, std::move(built.value().bytes));
    }
    void load(model::Document& doc) {
        model::clearDocument(doc);
        const auto bytes = t.files.read(kPdb);
        ASSERT_TRUE(bytes.ok());
        ASSERT_TRUE(pdb::readDatabase(doc, bytes.value(), "MS2_Books.pdb", t.regional).ok());
    }

    std::vector<std::string> logLines() const { return call->log.lines(); }
    std::string logFile() { return textOf("/app/TBPKTXT.LOG"); }

    std::unique_ptr<convert::BridgeCall> newCall() {
        return std::unique_ptr<convert::BridgeCall>(new convert::BridgeCall{.services = t.services});
    }

    TestServices t;
    convert::BridgeFlags flags;
    std::unique_ptr<convert::BridgeCall> call;
};

} // namespace tallybook::test
