#include "core/convert/SpecFile.h"

#include "core/calc/values/Numbers.h"
#include "core/calc/values/Text.h"
#include "core/platform/Ansi.h"
#include "core/platform/AppFolders.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"
#include "core/platform/WholeFile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace tallybook::convert {

namespace {

using platform::Error;
using platform::ErrorKind;
using platform::Status;
namespace texts = platform::texts;

constexpr std::string_view kReadTag = "Conversion Specs : ReadSpecs (Procedure)";
constexpr std::string_view kWriteTag = "Conversion Specs : WriteSpecs (Procedure)";
constexpr std::size_t kKeyLength = 4;           // "EXT:"
constexpr std::uint64_t kLargestFile = 1 << 20; // bytes; a full spec has some 50,000
constexpr std::size_t kMostInName = 240;        // bytes
constexpr std::string_view kSpecNameTooLong = "The name is too long: a file name may have at most 240 bytes.";

Error formatError(std::string_view tag, std::string text) {
    return {.kind = ErrorKind::Format, .tag = std::string(tag), .text = std::move(text)};
}

bool isBlank(char c) {
    return c == ' ' || c == '\r' || c == '\n' || c == '\t';
}

// Takes one item after the other. An item in double quotes runs to the next one and then to the next comma or line
// end; any other runs to the comma or line end. The first failure sticks.
class ItemReader {
public:
    explicit ItemReader(std::string_view text) : m_left(text) {}

    std::string_view item() {
        while (!m_left.empty() && isBlank(m_left.front()))
            m_left.remove_prefix(1);
        if (m_left.empty()) {
            fail(std::string(texts::kSpecTooShort));
            return {};
        }
        ++m_line;
        if (m_left.front() == '"')
            return quotedItem();
        return takeTo(m_left.find_first_of(",\r\n"));
    }

    std::string_view value() {
        const std::string_view all = item();
        return m_failure ? std::string_view() : valueOf(all);
    }

    // What stands behind the key of an item.
    std::string_view valueOf(std::string_view all) {
        if (all.size() >= kKeyLength)
            return all.substr(kKeyLength);
        fail(texts::specLineTooShort(m_line));
        return {};
    }

    std::string text() { return std::string(value()); }
    std::uint8_t byte() { return static_cast<std::uint8_t>(numberOf(value(), 0, 255)); }
    std::int16_t integer(std::string_view digits) {
        constexpr auto kLimits = std::numeric_limits<std::int16_t>();
        return static_cast<std::int16_t>(numberOf(digits, kLimits.min(), kLimits.max()));
    }

    // The number that a text begins with, 0 for none.
    int numberOf(std::string_view digits, int least, int most) {
        const double number = std::nearbyint(calc::val(digits));
        if (number >= least && number <= most)
            return static_cast<int>(number);
        fail(texts::specNumberOutOfRange(m_line));
        return 0;
    }

    void failLine() { fail(texts::specLineTooShort(m_line)); }

    bool ok() const { return !m_failure; }
    Status status() const {
        if (m_failure)
            return formatError(kReadTag, *m_failure);
        return {};
    }

private:
    std::string_view quotedItem() {
        m_left.remove_prefix(1);
        const std::string_view found = takeTo(m_left.find('"'));
        (void)takeTo(m_left.find_first_of(",\r\n"));
        return found;
    }

    // What stands ahead of a place, which is taken too.
    std::string_view takeTo(std::size_t place) {
        const std::string_view taken = m_left.substr(0, place);
        m_left.remove_prefix(std::min(m_left.size(), taken.size() + 1));
        return taken;
    }

    void fail(std::string text) {
        if (!m_failure)
            m_failure = std::move(text);
    }

    std::string_view m_left;
    int m_line = 0;
    std::optional<std::string> m_failure;
};

void parseFirstRows(ItemReader& in, ConversionSpec& spec) {
    std::array<std::string_view, 5> items{};
    std::string_view left = in.value();
    for (std::string_view& item : items) {
        const std::size_t comma = left.find(',');
        item = left.substr(0, comma);
        left.remove_prefix(comma == std::string_view::npos ? left.size() : comma + 1);
    }
    const bool hasTypes = !items[1].empty();
    spec.FirstRowNames = items[0];
    spec.SecondRowTypes = hasTypes ? std::string(items[1]) : "N";
    spec.TimeFormat = in.integer(items[2]);
    spec.DateFormat = in.integer(items[3]); // the file holds it twice, and the later one counts
    spec.HasSeconds = in.integer(items[4]);
}

// | "F07:08,03" | the slot plus 1 at the fifth character, the type at the eighth
void parseRow(ItemReader& in, ConversionSpecEntry& row) {
    constexpr std::size_t kSlotPlace = 4;
    constexpr std::size_t kTypePlace = 7;
    const std::string_view numbers = in.item();
    if (!in.ok())
        return;
    if (numbers.size() < kTypePlace + 2)
        return in.failLine();
    row.SlotPlusOne = static_cast<std::uint8_t>(in.numberOf(numbers.substr(kSlotPlace, 2), 0, 99));
    row.TypeCode = static_cast<std::uint8_t>(in.numberOf(numbers.substr(kTypePlace, 2), 0, 99));
    row.OwnFieldName = in.text();
    row.OwnTypeName = in.text();
    row.ExternalFieldName = in.text();
}

void parseHead(ItemReader& in, ConversionSpec& spec) {
    (void)in.item(); // the version, which nobody looks at
    spec.ExternalKind = in.text();
    spec.TallybookName = in.text();
    spec.ExternalPath = in.text();
    spec.SourceKind = in.text();
    std::string_view object = in.item();
    if (object.find("DTF") != std::string_view::npos) {
        spec.DateFormat = in.integer(in.valueOf(object));
        object = in.item();
    }
    if (in.ok())
        spec.ObjectName = in.valueOf(object);
    parseFirstRows(in, spec);
    spec.HotSyncUser = in.text();
    spec.InstallToUser = in.text();
    spec.InstallToAll = in.text();
    spec.SaveCopyFolder = in.text();
    spec.AppendRecords = in.byte();
    spec.MapCategories = in.byte();
    spec.ListsAsIndex = in.byte();
    spec.LastEntry = in.byte();
    spec.NewDatabase = in.byte();
}

// Builds the lines. The first failure sticks.
class LineWriter {
public:
    void line(std::string_view key, std::string_view value) {
        if (value.find('"') != std::string_view::npos && !m_failure)
            m_failure = texts::specHoldsQuote(key);
        m_text += '"';
        m_text += key;
        m_text += value;
        m_text += "\"\r\n";
    }
    void line(std::string_view key, int number) { line(key, std::to_string(number)); }

    void row(std::size_t number, const ConversionSpecEntry& row) {
        if (std::max(row.SlotPlusOne, row.TypeCode) > 99 && !m_failure)
            m_failure = texts::kSpecRowTooLarge;
        line('F' + calc::zeroPadded(number, 2) + ':',
             calc::zeroPadded(row.SlotPlusOne, 2) + ',' + calc::zeroPadded(row.TypeCode, 2));
        line("OFD:", row.OwnFieldName);
        line("OTP:", row.OwnTypeName);
        line("EFD:", row.ExternalFieldName);
    }

    platform::Result<std::string> finish() {
        if (m_failure)
            return formatError(kWriteTag, *m_failure);
        return std::move(m_text);
    }

private:
    std::string m_text;
    std::optional<std::string> m_failure;
};

std::uint8_t storedMapCategories(const ConversionSpec& spec) {
    return spec.Entries[0].ExternalFieldName.empty() ? 0 : 1;
}

bool show(platform::Services& services, Error error, std::string_view tag) {
    if (error.tag.empty())
        error.tag = tag;
    services.ui.showError(error);
    return false;
}

platform::Result<std::string> readText(platform::Files& files, const std::filesystem::path& path) {
    const auto state = files.state(path);
    if (!state)
        return state.error();
    if (state.value().size > kLargestFile)
        return Error{.kind = ErrorKind::File,
                     .tag = std::string(kReadTag),
                     .text = texts::tooLarge(platform::shownPath(path))};
    const auto bytes = files.read(path);
    if (!bytes)
        return bytes.error();
    return std::string(bytes.value().begin(), bytes.value().end());
}

bool isMissing(platform::Files& files, const std::filesystem::path& path) {
    const auto state = files.state(path);
    return state && state.value().kind == platform::FileKind::Missing;
}

bool hasSpecEnding(const std::string& name) {
    return name.size() > kSpecEnding.size() &&
           calc::equalText(std::string_view(name).substr(name.size() - kSpecEnding.size()), kSpecEnding,
                           calc::TextCase::Folded);
}

} // namespace

Status parseSpecs(std::string_view text, ConversionSpec& spec, SpecFields fields) {
    ConversionSpec read = spec;
    ItemReader in(text);
    parseHead(in, read);
    if (fields == SpecFields::With)
        for (int row = 0; row < kSpecRows && in.ok(); ++row)
            parseRow(in, read.Entries[static_cast<std::size_t>(row)]);
    if (in.ok())
        spec = std::move(read);
    return in.status();
}

platform::Result<std::string> formSpecs(const ConversionSpec& spec) {
    LineWriter out;
    out.line("VRS:", "1.0");
    out.line("EXT:", spec.ExternalKind);
    out.line("INT:", spec.TallybookName);
    out.line("URL:", spec.ExternalPath);
    out.line("TYP:", spec.SourceKind);
    out.line("DTF:", spec.DateFormat);
    out.line("OBJ:", spec.ObjectName);
    out.line("FRS:", spec.FirstRowNames + ',' + spec.SecondRowTypes + ',' + calc::spacedText(spec.TimeFormat) + ',' +
                         calc::spacedText(spec.DateFormat) + ',' + calc::spacedText(spec.HasSeconds));
    out.line("USR:", spec.HotSyncUser);
    out.line("ITO:", spec.InstallToUser);
    out.line("ITA:", spec.InstallToAll);
    out.line("SAV:", spec.SaveCopyFolder);
    out.line("APP:", spec.AppendRecords);
    out.line("CAT:", storedMapCategories(spec));
    out.line("LST:", spec.ListsAsIndex);
    out.line("FLD:", spec.LastEntry);
    out.line("Pdb:", spec.NewDatabase);
    for (std::size_t row = 0; row < kSpecRows; ++row)
        out.row(row, spec.Entries[row]);
    return out.finish();
}

std::filesystem::path specsFolder(platform::Services& services, SpecDirection direction) {
    return platform::applicationPath(services, direction == SpecDirection::Import ? platform::kImportSpecsFolder
                                                                                  : platform::kExportSpecsFolder);
}

std::filesystem::path specPath(platform::Services& services, SpecDirection direction, std::string_view name) {
    return specsFolder(services, direction) / (platform::ansi::toUtf8(name) + std::string(kSpecEnding));
}

std::string faultOfSpecName(std::string_view name) {
    if (name.find_first_not_of(' ') == std::string_view::npos)
        return std::string(texts::kSpecNameEmpty);
    if (platform::ansi::toUtf8(name).size() > kMostInName)
        return std::string(kSpecNameTooLong);
    const bool forbidden = std::any_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' ||
               std::string_view("\\/:*?\"<>|").find(c) != std::string_view::npos;
    });
    return forbidden ? std::string(texts::kNameForbidden) : std::string();
}

bool readSpecs(platform::Services& services, ConversionSpec& spec, const std::filesystem::path& path, SpecPlace place,
               SpecFields fields) {
    if (place == SpecPlace::ByPath && isMissing(services.files, path)) {
        services.ui.message({.text = "Conversion Specs " + platform::shownPath(path) + " not found",
                             .icon = platform::Icon::Critical,
                             .title = {}});
        return false;
    }
    const Status loaded = loadSpecs(services.files, spec, path, fields);
    return loaded || show(services, loaded.error(), kReadTag);
}

Status loadSpecs(platform::Files& files, ConversionSpec& spec, const std::filesystem::path& path, SpecFields fields) {
    const auto text = readText(files, path);
    if (!text)
        return text.error();
    return parseSpecs(text.value(), spec, fields);
}

bool writeSpecs(platform::Services& services, ConversionSpec& spec, const std::filesystem::path& path) {
    spec.MapCategories = storedMapCategories(spec);
    const auto text = formSpecs(spec);
    if (!text)
        return show(services, text.error(), kWriteTag);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.value().data());
    const Status written =
        platform::writeWholeFile(services.files, path, {bytes, text.value().size()}, platform::Privacy::OwnerOnly);
    return written || show(services, written.error(), kWriteTag);
}

platform::Result<std::vector<std::filesystem::path>> specFiles(platform::Services& services,
                                                               SpecDirection direction) {
    const std::filesystem::path folder = specsFolder(services, direction);
    std::vector<std::filesystem::path> found;
    if (isMissing(services.files, folder))
        return found;
    const auto listed = services.files.list(folder);
    if (!listed)
        return listed.error();
    for (const std::filesystem::path& path : listed.value())
        if (hasSpecEnding(path.filename().string()))
            found.push_back(folder / path.filename());
    return found;
}

std::string specName(const std::filesystem::path& file) {
    return platform::shownPath(file.stem());
}

} // namespace tallybook::convert
