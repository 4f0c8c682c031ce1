// A database file put together from records that a test writes in hex, right or wrong.
#pragma once

#include "support/Hex.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tallybook::test {

// Starts as a database without fields, categories, views, filters and data records. A test changes what it is about
// and takes the bytes.
class RawFile {
public:
    struct Record {
        platform::Bytes bytes;
        std::uint8_t attributes = 0x40;
        std::size_t gapAhead = 0; // bytes of junk between the record before and this one
    };

    std::string name = "MS2_A";
    std::string creator = "MOSS";
    platform::Bytes stamps = platform::Bytes(28); // of the header, between the name and the type
    platform::Bytes listIds = platform::Bytes(8); // of the header, between the creator and the count
    std::size_t entryId = 0xABCDEF;               // of every entry of the record list
    std::vector<Record> records;

    RawFile() {
        for (int number = 0; number < 87; ++number)
            records.push_back({platform::Bytes{static_cast<std::uint8_t>(number), 1}});
        set(0, "00 00*6 15 00*7 00*9 00*60 00*40 00");
        set(1, "01 01 00 00 00*10 'Categories' 00 00");
        set(2, "02 00");
        set(83, "53 00000000");
        set(84, "54 01 01 00 28 0000 00");
        set(85, "55 00");
        set(86, "56 00 00*192");
    }

    void set(std::size_t record, std::string_view text) { records.at(record).bytes = hex(text); }
    void add(std::string_view text) { records.push_back({hex(text)}); }

    // Where a record starts in the file.
    std::size_t offset(std::size_t record) const {
        std::size_t place = 80 + 8 * records.size();
        for (std::size_t i = 0; i < record; ++i)
            place += records[i].gapAhead + records[i].bytes.size();
        return place + records[record].gapAhead;
    }

    platform::Bytes bytes() const {
        platform::Bytes file(name.begin(), name.end());
        file.resize(32);
        append(file, stamps);
        append(file, hex("'data' '" + creator + "'"));
        append(file, listIds);
        appendNumber(file, records.size(), 2);
        for (std::size_t i = 0; i < records.size(); ++i) {
            appendNumber(file, offset(i), 4);
            file.push_back(records[i].attributes);
            appendNumber(file, entryId, 3);
        }
        file.resize(file.size() + 2);
        for (const Record& record : records) {
            file.insert(file.end(), record.gapAhead, 0xEE);
            append(file, record.bytes);
        }
        return file;
    }

private:
    static void append(platform::Bytes& file, const platform::Bytes& bytes) {
        file.insert(file.end(), bytes.begin(), bytes.end());
    }
    static void appendNumber(platform::Bytes& file, std::size_t value, int bytes) {
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
            file.push_back(static_cast<std::uint8_t>(value >> shift));
    }
};

} // namespace tallybook::test
