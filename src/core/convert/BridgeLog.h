// What a conversion tells about values that did not travel as they were.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tallybook::convert {

inline constexpr std::string_view kLogName = "TBPKTXT.LOG"; // in the application folder

// What became of a value.
enum class ValueFate : std::uint8_t { LeftOut, Cut, Changed };

class BridgeLog {
public:
    static constexpr std::size_t kMostLines = 1000;
    static constexpr std::size_t kShownValue = 60; // characters of a value

    // A value of a record, from 1, that was left out, cut or changed.
    void value(std::uint64_t record, std::string_view field, std::string_view value, ValueFate fate,
               std::string_view reason);
    // Anything else worth telling.
    void note(std::string_view line);
    // The last line: what the user is shown.
    void setSummary(std::string summary) { m_summary = std::move(summary); }

    std::uint64_t leftOut() const { return m_leftOut; }
    std::uint64_t changed() const { return m_changed; } // cut ones too
    const std::vector<std::string>& lines() const { return m_lines; }
    const std::string& summary() const { return m_summary; }

    // The whole file, lines parted by CR LF and none behind the last.
    std::string text() const;

    // "58 records imported, 3 values left out"; `verb` as "imported".
    std::string countText(std::uint64_t records, std::string_view verb) const;

private:
    void add(std::string line);

    std::vector<std::string> m_lines;
    std::uint64_t m_more = 0; // lines behind the last one kept
    std::uint64_t m_leftOut = 0;
    std::uint64_t m_changed = 0;
    std::string m_summary;
};

} // namespace tallybook::convert
