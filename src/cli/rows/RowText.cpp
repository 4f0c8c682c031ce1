#include "cli/rows/RowText.h"

#include "cli/frame/VisibleText.h"

namespace tallybook::cli {

namespace {

constexpr unsigned char kDelete = 0x7F;

bool isControl(char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < 0x20 || code == kDelete;
}

// The control character from 128 to 159 that two bytes of UTF-8 at a place stand for; 0 for anything else.
int upperControl(std::string_view text, std::size_t at) {
    if (text[at] != '\xC2' || at + 1 == text.size())
        return 0;
    const auto code = static_cast<unsigned char>(text[at + 1]);
    return code < 0xA0 ? code : 0;
}

void appendHex(std::string_view start, int code, std::string& out) {
    static constexpr std::string_view kHex = "0123456789abcdef";
    out += start;
    out += kHex[static_cast<std::size_t>(code) >> 4];
    out += kHex[static_cast<std::size_t>(code) & 15];
}

void appendEscaped(char c, std::string& out) {
    switch (c) {
    case '"':
        out += "\\\"";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    default:
        break;
    }
    if (isControl(c))
        appendHex("\\u00", static_cast<unsigned char>(c), out);
    else
        out += c;
}

} // namespace

void appendJsonString(std::string_view text, std::string& out) {
    out += '"';
    for (std::size_t at = 0; at < text.size(); ++at) {
        const int upper = upperControl(text, at);
        if (upper != 0)
            appendHex("\\u00", upper, out), ++at;
        else
            appendEscaped(text[at], out);
    }
    out += '"';
}

void RowText::add(std::string_view cell) {
    if (m_finished) {
        m_row.clear();
        m_cells = 0;
        m_finished = false;
    }
    if (m_cells++ > 0)
        m_row += m_form == RowForm::Tsv ? '\t' : ',';
    switch (m_form) {
    case RowForm::Csv:
        if (m_audience == Audience::Terminal)
            addCsv(visibleBlock(cell));
        else
            addCsv(cell);
        break;
    case RowForm::Tsv:
        addTsv(cell);
        break;
    case RowForm::Json:
        appendJsonString(cell, m_row);
        break;
    }
}

std::string_view RowText::finish() {
    if (m_finished || m_cells == 0)
        m_row.clear();
    else if (m_form == RowForm::Csv && m_row.empty())
        m_row = "\"\""; // a line without anything would be no row at all
    m_finished = true;
    if (m_form == RowForm::Csv)
        m_row += "\r\n";
    else if (m_form == RowForm::Tsv)
        m_row += '\n';
    return m_row;
}

void RowText::addCsv(std::string_view cell) {
    if (cell.find_first_of("\",\r\n") == std::string_view::npos) {
        m_row += cell;
        return;
    }
    m_row += '"';
    for (const char c : cell) {
        if (c == '"')
            m_row += '"';
        m_row += c;
    }
    m_row += '"';
}

void RowText::addTsv(std::string_view cell) {
    for (std::size_t at = 0; at < cell.size(); ++at) {
        const char c = cell[at];
        const int upper = upperControl(cell, at);
        if (c == '\t')
            m_row += "\\t";
        else if (c == '\n')
            m_row += "\\n";
        else if (c == '\r')
            m_row += "\\r";
        else if (c == '\\')
            m_row += "\\\\";
        else if (upper != 0)
            appendHex("\\x", upper, m_row), ++at;
        else if (isControl(c))
            appendHex("\\x", static_cast<unsigned char>(c), m_row);
        else
            m_row += c;
    }
}

} // namespace tallybook::cli
