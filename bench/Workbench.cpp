#include "Workbench.h"

#include "core/document/file/OpenSave.h"
#include "core/platform/AppFolders.h"

#include <cstdlib>
#include <ctime>
#include <random>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace tallybook::bench {

namespace {

// A text of the column, from a row by chance or the next one that has any.
std::string textByChance(const model::Document& doc, int column, std::mt19937& random) {
    const unsigned records = static_cast<unsigned>(doc.NumDataRecs);
    const unsigned start = random() % records;
    std::string text;
    for (unsigned i = 0; text.empty() && i < records; ++i)
        text = doc.grd.text(static_cast<int>((start + i) % records) + model::kFirstDataRow, column);
    return text;
}

std::vector<int> columnsWithTexts(const model::Document& doc) {
    std::vector<int> columns;
    for (int slot = 1; slot < model::highestField(doc.CurrDB20); ++slot)
        if (doc.grd.column(model::columnOfSlot(slot)).cells() > 0)
            columns.push_back(model::columnOfSlot(slot));
    return columns;
}

} // namespace

Nanoseconds clockNow() {
    static const bool ofProcess = [] {
        const char* clock = std::getenv("TALLYBOOK_BENCH_CLOCK");
        return clock != nullptr && std::string_view(clock) == "cpu";
    }();
    timespec now{};
    clock_gettime(ofProcess ? CLOCK_PROCESS_CPUTIME_ID : CLOCK_MONOTONIC, &now);
    return std::chrono::seconds(now.tv_sec) + Nanoseconds(now.tv_nsec);
}

Workbench::Workbench(std::filesystem::path folder)
    : m_services{m_user, m_screen, m_files, m_clock, m_regional, std::move(folder)} {
    std::filesystem::create_directories(m_services.applicationFolder / platform::kTempFolder);
}

std::unique_ptr<model::Document> Workbench::open(const std::filesystem::path& file) {
    auto doc = std::make_unique<model::Document>();
    if (document::readPDBFile20(*doc, m_services, file) != document::Outcome::Done)
        throw std::runtime_error("cannot open " + file.string());
    return doc;
}

void Workbench::save(model::Document& doc, const std::filesystem::path& file) {
    if (document::savePDBFile20(doc, m_services, file) != document::Outcome::Done)
        throw std::runtime_error("cannot save " + file.string());
}

std::uint64_t everyText(const model::Document& doc) {
    std::uint64_t length = 0;
    const int used = model::highestField(doc.CurrDB20);
    for (int slot = 1; slot < used; ++slot)
        doc.grd.column(model::columnOfSlot(slot)).eachText([&](std::uint32_t, std::string_view text) {
            length += text.size();
        });
    return length;
}

std::vector<CellEdit> someEdits(const model::Document& doc, int count, unsigned seed) {
    const std::vector<int> columns = columnsWithTexts(doc);
    std::mt19937 random(seed);
    std::vector<CellEdit> edits;
    for (int i = 0; i < count && !columns.empty(); ++i) {
        const int column = columns[static_cast<std::size_t>(i) % columns.size()];
        const unsigned record = random() % static_cast<unsigned>(doc.NumDataRecs);
        edits.push_back({static_cast<int>(record) + model::kFirstDataRow, column, textByChance(doc, column, random)});
    }
    return edits;
}

void applyEdits(model::Document& doc, const std::vector<CellEdit>& edits) {
    for (const CellEdit& edit : edits) {
        doc.grd.setText(edit.row, edit.column, edit.text);
        doc.DocModified = true;
    }
}

void Checksum::add(std::string_view bytes) {
    for (const char byte : bytes)
        m_value = (m_value ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
}

std::uint64_t checksumOfTexts(const model::Document& doc) {
    Checksum sum;
    std::string scratch;
    const int used = model::highestField(doc.CurrDB20);
    for (int record = 0; record < doc.NumDataRecs; ++record) {
        for (int slot = 1; slot < used; ++slot) {
            const int row = record + model::kFirstDataRow;
            const int column = model::columnOfSlot(slot);
            sum.add(doc.grd.text(row, column, scratch));
            if (doc.grd.picture(row, column) == model::Picture::CheckOn)
                sum.add("1");
            sum.add(std::string_view("\0", 1));
        }
    }
    return sum.value();
}

std::uint64_t checksumOfFile(Workbench& bench, const std::filesystem::path& file) {
    const auto bytes = bench.services().files.read(file);
    if (!bytes)
        throw std::runtime_error(bytes.error().description());
    Checksum sum;
    sum.add({reinterpret_cast<const char*>(bytes.value().data()), bytes.value().size()});
    return sum.value();
}

} // namespace tallybook::bench
