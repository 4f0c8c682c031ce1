#include "adapters/IniSettings.h"

#include "core/platform/AppFolders.h"
#include "core/platform/WholeFile.h"

#include <utility>

namespace tallybook::adapters {

namespace {

constexpr std::uint64_t kMaxSettings = 1 << 20; // bytes; our own file has a few hundred

std::string escaped(std::string_view value) {
    std::string text;
    for (const char c : value) {
        if (c == '\\')
            text += "\\\\";
        else if (c == '\n')
            text += "\\n";
        else if (c == '\r')
            text += "\\r";
        else
            text += c;
    }
    return text;
}

// An unknown escape stands for itself.
std::string unescaped(std::string_view text) {
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (text[i] != '\\' || (next != '\\' && next != 'n' && next != 'r')) {
            value += text[i];
            continue;
        }
        value += next == 'n' ? '\n' : next == 'r' ? '\r' : '\\';
        ++i;
    }
    return value;
}

// The next line without its end; the text moves behind it.
std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

} // namespace

IniSettings::IniSettings(platform::Files& files, std::filesystem::path file)
    : m_files(files), m_file(std::move(file)) {
    const auto state = m_files.state(m_file);
    if (!state || state.value().kind != platform::FileKind::Regular || state.value().size > kMaxSettings)
        return;
    if (const auto bytes = m_files.read(m_file))
        parse(std::string(bytes.value().begin(), bytes.value().end()));
}

std::optional<std::string> IniSettings::value(std::string_view section, std::string_view key) const {
    const auto keys = m_sections.find(section);
    if (keys == m_sections.end())
        return std::nullopt;
    const auto found = keys->second.find(key);
    if (found == keys->second.end())
        return std::nullopt;
    return found->second;
}

void IniSettings::set(std::string_view section, std::string_view key, std::string_view value) {
    if (this->value(section, key) == value)
        return;
    m_sections[std::string(section)][std::string(key)] = value;
    m_changed = true;
}

void IniSettings::removeSection(std::string_view section) {
    if (const auto found = m_sections.find(section); found != m_sections.end()) {
        m_sections.erase(found);
        m_changed = true;
    }
}

platform::Status IniSettings::save() {
    if (!m_changed)
        return {};
    if (platform::Status folder = platform::makeFolderPath(m_files, m_file.parent_path()); !folder)
        return folder;
    const std::string text = print();
    const platform::Bytes bytes(text.begin(), text.end());
    if (platform::Status written = platform::writeWholeFile(m_files, m_file, bytes); !written)
        return written;
    m_changed = false;
    return {};
}

void IniSettings::parse(std::string_view text) {
    Section* section = nullptr;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        const std::size_t sign = line.find('=');
        if (line.find('\0') != std::string_view::npos) // no line of ours
            continue;
        if (line.starts_with('[')) // lines below a broken heading belong to no section
            section = line.ends_with(']') && line.size() > 2
                          ? &m_sections[std::string(line.substr(1, line.size() - 2))]
                          : nullptr;
        else if (section != nullptr && sign != std::string_view::npos && sign > 0)
            (*section)[std::string(line.substr(0, sign))] = unescaped(line.substr(sign + 1));
    }
}

std::string IniSettings::print() const {
    std::string text;
    for (const auto& [section, keys] : m_sections) {
        text += '[' + section + "]\n";
        for (const auto& [key, value] : keys)
            text += key + '=' + escaped(value) + '\n';
    }
    return text;
}

} // namespace tallybook::adapters
