#include "ContainerMutator.h"

#include "core/model/FieldType.h"
#include "core/model/Limits.h"

#include <algorithm>

namespace tallybook::fuzz {

namespace {

constexpr std::size_t kHeaderSize = 78;
constexpr std::size_t kEntrySize = 8;
constexpr std::size_t kCountPlace = 76;
constexpr std::ptrdiff_t kCreatorPlace = 64;
constexpr std::size_t kMostRecords = 400; // more only slow the search down
constexpr std::size_t kDataHead = 6;      // record number, category and key, in front of a record's cells
constexpr std::size_t kFieldTable = 1;

std::size_t pick(std::mt19937& random, std::size_t count) {
    return random() % count;
}

std::uint32_t longAt(platform::ByteSpan bytes, std::size_t place) {
    return static_cast<std::uint32_t>(bytes[place]) << 24 | static_cast<std::uint32_t>(bytes[place + 1]) << 16 |
           static_cast<std::uint32_t>(bytes[place + 2]) << 8 | bytes[place + 3];
}

void putLong(platform::Bytes& bytes, std::size_t value) {
    for (const int shift : {24, 16, 8, 0})
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

std::size_t pickData(const Container& container, const Shape& shape, std::mt19937& random) {
    return shape.fixedRecords + pick(random, container.records.size() - shape.fixedRecords);
}

// A cell of a type and slot with a few bytes behind it, put somewhere among the record's cells.
void insertCell(platform::Bytes& record, std::mt19937& random) {
    platform::Bytes cell = {static_cast<std::uint8_t>(pick(random, model::kFieldTypes + 2)),
                            static_cast<std::uint8_t>(1 + pick(random, model::MaxFieldSlots))};
    for (std::size_t more = pick(random, 9); more > 0; --more)
        cell.push_back(static_cast<std::uint8_t>(random()));
    const std::size_t place =
        std::min(record.size(), kDataHead + pick(random, std::max<std::size_t>(record.size(), 1)));
    record.insert(record.begin() + static_cast<std::ptrdiff_t>(place), cell.begin(), cell.end());
}

// Another type for the first cell, whose place is known.
void retypeCell(platform::Bytes& record, std::mt19937& random) {
    if (record.size() > kDataHead)
        record[kDataHead] = static_cast<std::uint8_t>(pick(random, model::kFieldTypes + 2));
}

// The place behind the NUL of the text at `from`, or the end.
std::size_t behindText(const platform::Bytes& bytes, std::size_t from) {
    const auto start = bytes.begin() + static_cast<std::ptrdiff_t>(std::min(from, bytes.size()));
    const auto nul = std::find(start, bytes.end(), 0);
    return static_cast<std::size_t>(nul - bytes.begin()) + (nul == bytes.end() ? 0 : 1);
}

// Another type for a field, so that its attribute record is read in another way.
void retypeField(platform::Bytes& table, const Shape& shape, std::mt19937& random) {
    std::size_t entry = shape.fieldTableHead;
    for (std::size_t skip = pick(random, model::kFieldTypes + 2); skip > 0; --skip) {
        std::size_t next = entry + shape.fieldEntryHead;
        for (std::size_t text = 0; text < shape.fieldEntryTexts; ++text)
            next = behindText(table, next);
        if (next + 1 >= table.size())
            break;
        entry = next;
    }
    if (entry + 1 < table.size())
        table[entry + 1] = static_cast<std::uint8_t>(pick(random, model::kFieldTypes + 2));
}

void copyRecord(Container& container, std::mt19937& random) {
    if (container.records.size() >= kMostRecords)
        return;
    const std::size_t from = pick(random, container.records.size());
    const std::size_t to = pick(random, container.records.size() + 1);
    const platform::Bytes copied = container.records[from];
    container.records.insert(container.records.begin() + static_cast<std::ptrdiff_t>(to), copied);
    container.attributes.insert(container.attributes.begin() + static_cast<std::ptrdiff_t>(to),
                                container.attributes[from]);
}

void removeRecord(Container& container, std::mt19937& random) {
    const std::size_t gone = pick(random, container.records.size());
    container.records.erase(container.records.begin() + static_cast<std::ptrdiff_t>(gone));
    container.attributes.erase(container.attributes.begin() + static_cast<std::ptrdiff_t>(gone));
}

void cutRecord(platform::Bytes& record, std::mt19937& random) {
    if (!record.empty())
        record.resize(pick(random, record.size()));
}

void mutateData(Container& container, const Shape& shape, std::mt19937& random, const MutateBytes& mutateBytes) {
    platform::Bytes& record = container.records[pickData(container, shape, random)];
    switch (pick(random, 4)) {
    case 0:
        return insertCell(record, random);
    case 1:
        return retypeCell(record, random);
    default:
        return mutateBytes(record);
    }
}

void mutateAny(Container& container, const Shape& shape, std::mt19937& random, const MutateBytes& mutateBytes) {
    const std::size_t chosen = pick(random, container.records.size());
    switch (pick(random, 10)) {
    case 0:
        return copyRecord(container, random);
    case 1:
        return removeRecord(container, random);
    case 2:
        return cutRecord(container.records[chosen], random);
    case 3:
        container.attributes[chosen] = static_cast<std::uint8_t>(random());
        return;
    case 4:
        return mutateBytes(container.header);
    case 5:
        if (container.records.size() > kFieldTable)
            retypeField(container.records[kFieldTable], shape, random);
        return;
    default:
        return mutateBytes(container.records[chosen]);
    }
}

// A reader stops at a wrong creator, or at the first fixed record whose number is wrong: nothing behind it would ever
// be tried.
void repair(Container& container, const Shape& shape) {
    container.header.resize(kHeaderSize);
    std::copy(shape.creator.begin(), shape.creator.end(), container.header.begin() + kCreatorPlace);
    while (container.records.size() < shape.fixedRecords) {
        container.records.push_back({0, 1});
        container.attributes.push_back(0x40);
    }
    for (std::size_t record = 0; record < container.records.size(); ++record) {
        if (container.records[record].empty())
            container.records[record].push_back(0);
        container.records[record][0] = static_cast<std::uint8_t>(std::min(record, shape.fixedRecords));
    }
}

} // namespace

std::optional<Container> takeApart(platform::ByteSpan file) {
    if (file.size() < kHeaderSize)
        return std::nullopt;
    Container container;
    container.header.assign(file.begin(), file.begin() + kHeaderSize);
    const std::size_t claimed = static_cast<std::size_t>(file[kCountPlace]) << 8 | file[kCountPlace + 1];
    const std::size_t count = std::min({claimed, (file.size() - kHeaderSize) / kEntrySize, kMostRecords});
    for (std::size_t record = 0; record < count; ++record) {
        const std::size_t entry = kHeaderSize + record * kEntrySize;
        const std::size_t from = std::min<std::size_t>(longAt(file, entry), file.size());
        std::size_t to = record + 1 < count ? longAt(file, entry + kEntrySize) : file.size();
        to = std::clamp(to, from, file.size());
        container.records.emplace_back(file.begin() + static_cast<std::ptrdiff_t>(from),
                                       file.begin() + static_cast<std::ptrdiff_t>(to));
        container.attributes.push_back(file[entry + 4]);
    }
    return container;
}

platform::Bytes putTogether(const Container& container) {
    platform::Bytes file = container.header;
    file.resize(kHeaderSize);
    file[kCountPlace] = static_cast<std::uint8_t>(container.records.size() >> 8);
    file[kCountPlace + 1] = static_cast<std::uint8_t>(container.records.size());
    std::size_t offset = kHeaderSize + container.records.size() * kEntrySize + 2;
    for (std::size_t record = 0; record < container.records.size(); ++record) {
        putLong(file, offset);
        file.push_back(container.attributes[record]);
        file.insert(file.end(), 3, 0);
        offset += container.records[record].size();
    }
    file.insert(file.end(), 2, 0);
    for (const platform::Bytes& record : container.records)
        file.insert(file.end(), record.begin(), record.end());
    return file;
}

void mutate(Container& container, const Shape& shape, std::mt19937& random, const MutateBytes& mutateBytes) {
    if (container.records.empty() || pick(random, 50) == 0) {
        mutateBytes(container.header);
    } else if (container.records.size() > shape.fixedRecords && pick(random, 3) == 0) {
        mutateData(container, shape, random, mutateBytes);
    } else {
        mutateAny(container, shape, random, mutateBytes);
    }
    if (pick(random, 20) != 0)
        repair(container, shape);
}

} // namespace tallybook::fuzz
