// make_seeds CORPUS FILE...: inputs to start a search from, taken from the small database and from files, a folder
// for each target. What a search then keeps of them is smaller: see -merge of libFuzzer.

#include "ContainerMutator.h"
#include "SmallDatabase.h"
#include "core/pdb/Database.h"
#include "core/pdb/Layout.h"
#include "support/OlderFile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;
namespace layout = tallybook::pdb::layout;
using tallybook::fuzz::Container;
using tallybook::model::FieldType;
using tallybook::platform::Bytes;

constexpr std::size_t kDataRecords = 3; // of each file

Bytes bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

const char* attributeTarget(FieldType type) {
    switch (type) {
    case FieldType::List:
    case FieldType::RadioButton:
    case FieldType::Text:
        return "list";
    case FieldType::Expression:
        return "short_expression";
    case FieldType::AdvExpression:
        return "long_expression";
    case FieldType::DBJoin:
    case FieldType::DBLookup:
    case FieldType::AddressBookJoin:
    case FieldType::AddressBookLookup:
        return "external";
    case FieldType::OneToMany:
        return "one_to_many";
    case FieldType::Plugin:
        return "plugin";
    case FieldType::ConditionalExpression:
        return "conditional";
    default:
        return nullptr;
    }
}

// The target that reads a record; none for a few bytes that need no search.
const char* targetOf(int record, const tallybook::model::DatabaseModel& db) {
    switch (record) {
    case layout::kHeaderValues:
        return "header_values";
    case layout::kFieldTable:
        return "field_table";
    case layout::kLastKey:
        return nullptr;
    case layout::kForms:
        return "forms";
    case layout::kViews:
        return "views";
    case layout::kFilters:
        return "filters";
    default:
        return record >= layout::kFirstData
                   ? "data_record"
                   : attributeTarget(db.Fields[static_cast<std::size_t>(record - layout::kFirstAttribute)].Type);
    }
}

class Seeds {
public:
    explicit Seeds(fs::path corpus) : m_corpus(std::move(corpus)) {}

    void addFile(const std::string& name, const Bytes& whole) {
        Container file = tallybook::fuzz::takeApart(whole).value();
        const std::size_t kept = std::min(file.records.size(), layout::kFirstData + kDataRecords);
        file.records.resize(kept);
        file.attributes.resize(kept);
        const Bytes bytes = tallybook::fuzz::putTogether(file);
        put("database", name, bytes);
        tallybook::model::DatabaseModel db;
        if (!tallybook::pdb::readStructure(db, bytes, name))
            return;
        for (std::size_t record = 0; record < kept; ++record)
            if (const char* target = targetOf(static_cast<int>(record), db))
                put(target, name + "-" + std::to_string(record), inputOf(record, file.records[record]));
    }

    void addOlder(const std::string& name, const Bytes& whole) { put("older", name, whole); }

private:
    // A fixed record without its number, which its reader finds behind it; a data record whole.
    static Bytes inputOf(std::size_t record, const Bytes& bytes) {
        return {bytes.begin() + (record < layout::kFirstData ? 1 : 0), bytes.end()};
    }

    void put(const char* target, const std::string& name, const Bytes& bytes) {
        fs::create_directories(m_corpus / target);
        std::ofstream file(m_corpus / target / name, std::ios::binary);
        std::copy(bytes.begin(), bytes.end(), std::ostreambuf_iterator<char>(file));
    }

    fs::path m_corpus;
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: make_seeds CORPUS FILE...\n");
        return 2;
    }
    Seeds seeds(argv[1]);
    seeds.addOlder("small", tallybook::test::smallOlder().bytes());
    seeds.addOlder("oldest", tallybook::test::smallOldest().bytes());
    seeds.addFile("small", tallybook::fuzz::smallDatabase());
    for (int file = 2; file < argc; ++file)
        seeds.addFile(fs::path(argv[file]).stem().string(), bytesOf(argv[file]));
    return 0;
}
