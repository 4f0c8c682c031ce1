#include "cli/rows/RowText.h"

namespace tallybook::cli {

namespace {

void appendEscaped(char c, std::string& out) {
    static constexpr std::string_view kHex = "0123456789abcdef";
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
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20) {
        out += c;
        return;
    }
    out += "\\u00";
    out += kHex[code >> 4];
    out += kHex[code & 15];
}

} // namespace

void appendJsonString(std::string_view text, std::string& out) {
    out += '"';
    for (const char c : text)
        appendEscaped(c, out);
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
    for (const char c : cell) {
        if (c == '\t')
            m_row += "\\t";
        else if (c == '\n')
            m_row += "\\n";
        else if (c == '\r')
            m_row += "\\r";
        else if (c == '\\')
            m_row += "\\\\";
        else
            m_row += c;
    }
}

} // namespace tallybook::cli
