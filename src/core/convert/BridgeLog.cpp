#include "core/convert/BridgeLog.h"

#include "core/platform/OwnTexts.h"

#include <utility>

namespace tallybook::convert {

namespace {

// A value on one line.
std::string shown(std::string_view value) {
    std::string text;
    for (const char c : value.substr(0, BridgeLog::kShownValue))
        text += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    if (value.size() > BridgeLog::kShownValue)
        text += "...";
    return text;
}

std::string counted(std::uint64_t count, std::string_view things) {
    return std::to_string(count) + ' ' + std::string(things) + (count == 1 ? "" : "s");
}

std::string_view wordOf(ValueFate fate) {
    switch (fate) {
    case ValueFate::LeftOut:
        return "left out";
    case ValueFate::Cut:
        return "cut";
    case ValueFate::Changed:
        return "changed";
    }
    return {};
}

} // namespace

void BridgeLog::value(std::uint64_t record, std::string_view field, std::string_view value, ValueFate fate,
                      std::string_view reason) {
    ++(fate == ValueFate::LeftOut ? m_leftOut : m_changed);
    if (m_lines.size() >= kMostLines) {
        ++m_more;
        return;
    }
    add(platform::texts::valueLine(record, shown(field), shown(value), wordOf(fate), reason));
}

void BridgeLog::note(std::string_view line) {
    add(std::string(line));
}

void BridgeLog::add(std::string line) {
    if (m_lines.size() < kMostLines)
        m_lines.push_back(std::move(line));
    else
        ++m_more;
}

std::string BridgeLog::text() const {
    std::string all;
    for (const std::string& line : m_lines)
        all += line + "\r\n";
    if (m_more > 0)
        all += platform::texts::moreLines(m_more) + "\r\n";
    return all + m_summary;
}

std::string BridgeLog::countText(std::uint64_t records, std::string_view verb) const {
    std::string text = counted(records, "record") + ' ' + std::string(verb);
    if (m_leftOut > 0)
        text += ", " + counted(m_leftOut, "value") + " left out";
    if (m_changed > 0)
        text += ", " + counted(m_changed, "value") + " changed";
    return text;
}

} // namespace tallybook::convert
