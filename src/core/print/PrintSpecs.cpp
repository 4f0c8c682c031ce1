#include "core/print/PrintSpecs.h"

#include "core/calc/values/Numbers.h"
#include "core/platform/AppFolders.h"
#include "core/platform/WholeFile.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tallybook::print {

namespace {

constexpr std::string_view kReadTag = "Printing : ReadPrintSpecs";
constexpr std::string_view kWriteTag = "Printing : WritePrintSpecs";
constexpr std::string_view kLineEnd = "\r\n";

// The order of the file, which is not that of the window.
constexpr std::array kFileOrder = {
    &PrintSpec::UserName,     &PrintSpec::DatabasePath, &PrintSpec::Paper,      &PrintSpec::Portrait,
    &PrintSpec::TopMargin,    &PrintSpec::BottomMargin, &PrintSpec::LeftMargin, &PrintSpec::RightMargin,
    &PrintSpec::Date,         &PrintSpec::FileName,     &PrintSpec::GridLines,  &PrintSpec::PageNumber,
    &PrintSpec::RecordNumber, &PrintSpec::Title,        &PrintSpec::Memo,
};

// Takes one item after the other off the bytes: a quoted text, or what stands up to a comma or a line end.
class Items {
public:
    explicit Items(std::string_view bytes) : m_rest(bytes) {}

    std::optional<std::string_view> next() {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r\n"), m_rest.size()));
        if (m_rest.empty())
            return std::nullopt;
        return m_rest.front() == '"' ? quoted() : bare();
    }

private:
    std::optional<std::string_view> quoted() {
        const std::size_t end = m_rest.find('"', 1);
        if (end == std::string_view::npos) {
            m_rest = {};
            return std::nullopt;
        }
        const std::string_view item = m_rest.substr(1, end - 1);
        m_rest.remove_prefix(end + 1);
        skipSeparator();
        return item;
    }

    std::string_view bare() {
        const std::string_view item = m_rest.substr(0, m_rest.find_first_of(",\r\n"));
        m_rest.remove_prefix(item.size());
        skipSeparator();
        return item;
    }

    void skipSeparator() {
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t"), m_rest.size()));
        if (m_rest.starts_with(','))
            m_rest.remove_prefix(1);
    }

    std::string_view m_rest;
};

std::size_t countOf(std::string_view first) {
    const std::optional<std::int32_t> count = calc::toInt32(first, {});
    return static_cast<std::size_t>(std::max(count.value_or(1), 1));
}

std::optional<PrintSpec> nextSpec(Items& items) {
    PrintSpec spec;
    for (const auto member : kFileOrder) {
        const std::optional<std::string_view> item = items.next();
        if (!item)
            return std::nullopt;
        spec.*member = *item;
    }
    return spec;
}

bool canBeStored(const PrintSpec& spec) {
    return std::all_of(kFileOrder.begin(), kFileOrder.end(),
                       [&](const auto member) { return print::canBeStored(spec.*member); });
}

} // namespace

std::string printSpecBytes(const PrintSpecTable& table) {
    std::string bytes = std::to_string(table.size());
    bytes += kLineEnd;
    for (const PrintSpec& spec : table) {
        for (const auto member : kFileOrder) {
            bytes += '"';
            bytes += spec.*member;
            bytes += '"';
            bytes += kLineEnd;
        }
    }
    return bytes;
}

ParsedPrintSpecs parsePrintSpecs(std::string_view bytes) {
    Items items(bytes);
    ParsedPrintSpecs parsed;
    const std::optional<std::string_view> first = items.next();
    const std::size_t count = countOf(first.value_or(""));
    while (parsed.whole && parsed.table.size() < count) {
        if (std::optional<PrintSpec> spec = nextSpec(items))
            parsed.table.push_back(*std::move(spec));
        else
            parsed.whole = false;
    }
    if (parsed.table.empty())
        parsed.table.emplace_back();
    return parsed;
}

bool canBeStored(std::string_view text) {
    return text.find_first_of("\"\r\n") == std::string_view::npos;
}

PrintSpecTable ReadPrintSpecs(platform::Services& services) {
    const std::filesystem::path path = platform::applicationPath(services, kPrintSpecFile);
    const auto state = services.files.state(path);
    if (state && state.value().kind == platform::FileKind::Missing)
        return PrintSpecTable(1);
    const auto bytes = services.files.read(path);
    if (!bytes) {
        platform::Error error = bytes.error();
        error.tag = kReadTag;
        services.ui.showError(error);
        return PrintSpecTable(1);
    }
    ParsedPrintSpecs parsed =
        parsePrintSpecs({reinterpret_cast<const char*>(bytes.value().data()), bytes.value().size()});
    if (!parsed.whole)
        services.ui.showError({.kind = platform::ErrorKind::Format,
                               .tag = std::string(kReadTag),
                               .text = "The file of the page setups ends too early"});
    return std::move(parsed.table);
}

bool WritePrintSpecs(const PrintSpecTable& table, platform::Services& services) {
    PrintSpecTable kept;
    std::copy_if(table.begin(), table.end(), std::back_inserter(kept),
                 [](const PrintSpec& spec) { return canBeStored(spec); });
    const std::string bytes = printSpecBytes(kept);
    const platform::Status written =
        platform::writeWholeFile(services.files, platform::applicationPath(services, kPrintSpecFile),
                                 {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    if (written)
        return true;
    platform::Error error = written.error();
    error.tag = kWriteTag;
    services.ui.showError(error);
    return false;
}

const PrintSpec* findSpec(const PrintSpecTable& table, std::string_view user, std::string_view database) {
    const auto found = std::find_if(table.begin(), table.end(), [&](const PrintSpec& spec) {
        return spec.UserName == user && spec.DatabasePath == database;
    });
    return found == table.end() ? nullptr : &*found;
}

PrintSpec& specFor(PrintSpecTable& table, const std::string& user, const std::string& database) {
    if (const PrintSpec* found = findSpec(table, user, database))
        return table[static_cast<std::size_t>(found - table.data())];
    PrintSpec fresh;
    fresh.UserName = user;
    fresh.DatabasePath = database;
    return table.emplace_back(std::move(fresh));
}

} // namespace tallybook::print
