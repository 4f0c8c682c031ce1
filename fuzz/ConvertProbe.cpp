#include "ConvertProbe.h"

#include "core/convert/DelimitedText.h"
#include "core/convert/SpecFile.h"
#include "core/convert/TextBridge.h"
#include "support/TestServices.h"

#include <algorithm>

namespace tallybook::fuzz {

namespace {

using Records = std::vector<std::vector<std::string>>;

std::string_view textOf(platform::ByteSpan bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

class Pieces : public convert::ByteSource {
public:
    Pieces(std::string_view text, std::size_t size) : m_left(text), m_size(size) {}
    platform::Result<std::size_t> read(std::span<char> room) override {
        const std::size_t count = std::min({m_size, room.size(), m_left.size()});
        std::copy_n(m_left.begin(), count, room.begin());
        m_left.remove_prefix(count);
        return count;
    }

private:
    std::string_view m_left;
    std::size_t m_size;
};

class Kept : public convert::ByteSink {
public:
    std::string text;
    platform::Status write(std::string_view bytes) override {
        text += bytes;
        return {};
    }
};

Records recordsOf(std::string_view text, char delimiter, std::size_t piece) {
    Pieces source(text, piece);
    convert::DelimitedReader reader(source, delimiter);
    Records all;
    std::string scratch;
    while (reader.next()) {
        auto& record = all.emplace_back();
        for (std::size_t item = 0; item < std::min(reader.items(), convert::DelimitedReader::kMostItems); ++item)
            record.emplace_back(reader.item(item, scratch));
    }
    return all;
}

std::string written(const Records& records, char delimiter) {
    Kept sink;
    convert::DelimitedWriter writer(sink, delimiter);
    for (const auto& record : records) {
        for (const std::string& item : record)
            writer.add(item);
        writer.endRecord();
    }
    (void)writer.finish();
    return sink.text;
}

const std::filesystem::path kCsv = "/a.csv";
const std::filesystem::path kPdb = "/MS2_A.pdb";

void put(test::TestServices& t, std::string_view text) {
    t.files.put(kCsv, {text.begin(), text.end()});
}

convert::BridgeCode import(test::TestServices& t, std::int16_t mode, const convert::BridgeFlags& flags) {
    convert::BridgeCall call{.services = t.services};
    return convert::Text2Tiny(call, kCsv, kPdb, mode, flags);
}

// The text of an export; nothing when there is none.
std::string exported(test::TestServices& t, const convert::BridgeFlags& flags) {
    convert::BridgeCall call{.services = t.services};
    if (convert::Tiny2Text(call, kPdb, "/out.csv", 0, flags) != convert::BridgeCode::Good)
        return {};
    const platform::Bytes& bytes = t.files.bytes("/out.csv");
    return {bytes.begin(), bytes.end()};
}

// An empty database with a field of every type that travels.
const platform::Bytes& everyType() {
    static const platform::Bytes kMade = [] {
        test::TestServices t;
        put(t, "T,I,L,F,List,C,D,Ti,M,K,R,A\n"
               "text,integer,long,float,list,checkbox,date,time,memo,key,radio,auto\n");
        (void)import(t, 0, {.WithTypeRow = 1, .WithNameRow = 1});
        return t.files.bytes(kPdb);
    }();
    return kMade;
}

convert::BridgeFlags flagsOf(std::uint8_t a, std::uint8_t b) {
    const auto bit = [](int byte, int place) { return static_cast<std::int16_t>(byte >> place & 1); };
    return {.HasSeconds = bit(a, 0),
            .WithCategories = bit(a, 1),
            .ListsAsIndex = bit(a, 2),
            .Delimiter = static_cast<std::int16_t>(b % 3),
            .TimeFlag = bit(a, 3),
            .WithTypeRow = bit(a, 4),
            .DateFlag = bit(a, 5),
            .WithNameRow = bit(a, 6),
            .DecimalFlag = bit(a, 7)};
}

} // namespace

std::string probeSpecs(platform::ByteSpan input) {
    convert::ConversionSpec spec;
    const auto status = convert::parseSpecs(textOf(input), spec, convert::SpecFields::With);
    if (!status)
        return status.error().text.empty() ? "a refusal without reason" : "";
    const auto text = convert::formSpecs(spec);
    if (!text)
        return {};
    convert::ConversionSpec again;
    if (!convert::parseSpecs(text.value(), again, convert::SpecFields::With))
        return "what was written cannot be read again";
    again.MapCategories = spec.MapCategories; // stored as the first row has it
    return again == spec ? "" : "what was read changes when it is written and read again";
}

std::string probeDelimited(platform::ByteSpan input) {
    if (input.empty())
        return {};
    const char delimiter = ",;\t"[input[0] % 3];
    const std::string_view text = textOf(input.subspan(1));
    const Records records = recordsOf(text, delimiter, text.size() + 1);
    if (recordsOf(text, delimiter, input[0] / 3 + 1u) != records)
        return "the records depend on the pieces that they come in";
    if (recordsOf(written(records, delimiter), delimiter, text.size() + 1) != records)
        return "what was read changes when it is written and read again";
    return {};
}

std::string probeImport(platform::ByteSpan input) {
    if (input.size() < 2)
        return {};
    convert::BridgeFlags flags = flagsOf(input[0], input[1]);
    const auto mode = static_cast<std::int16_t>(input[1] / 3 % 3);
    test::TestServices t;
    if (mode != 0)
        t.files.put(kPdb, everyType());
    put(t, textOf(input.subspan(2)));
    if (import(t, mode, flags) != convert::BridgeCode::Good)
        return {};
    flags.WithTypeRow = 0;
    flags.ListsAsIndex = 0;
    flags.HasSeconds = 1;
    const std::string first = exported(t, flags);
    if (mode == 0)
        return {}; // fields that were left free have no column in the text
    put(t, first);
    if (import(t, 2, flags) != convert::BridgeCode::Good)
        return "what was brought out is not taken back";
    return exported(t, flags) == first ? "" : "a text changes on its way in and out";
}

} // namespace tallybook::fuzz
