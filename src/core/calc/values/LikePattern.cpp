#include "core/calc/values/LikePattern.h"

#include <algorithm>
#include <string>

namespace tallybook::calc {

namespace {

constexpr std::size_t kBytes = 256;
constexpr std::size_t kBits = 64; // of a word

std::uint8_t byteOf(char c) {
    return static_cast<std::uint8_t>(c);
}

} // namespace

// Takes a pattern apart from its front to its end.
class LikePattern::Parser {
public:
    Parser(LikePattern& pattern, TextCase mode) : m_pattern(pattern), m_mode(mode) {}

    // False when the pattern is not well formed.
    bool parse(std::string_view rest) {
        while (!rest.empty()) {
            const char c = rest.front();
            std::size_t length = 1;
            if (c == '*')
                endRun();
            else if (c == '[')
                length = takeList(rest);
            else
                takeOne(c);
            if (length == 0)
                return false;
            rest.remove_prefix(length);
        }
        endRun();
        return true;
    }

private:
    using Characters = Run::Characters;

    std::uint8_t keyOf(char c) const { return byteOf(m_mode == TextCase::Folded ? upper(c) : c); }

    // The characters whose keys lie from one to the other, both included.
    Characters between(std::uint8_t from, std::uint8_t to) const {
        Characters all;
        for (std::size_t byte = 0; byte < kBytes; ++byte) {
            const std::uint8_t key = keyOf(static_cast<char>(byte));
            all[byte] = key >= from && key <= to;
        }
        return all;
    }

    void takeOne(char c) {
        if (c == '?') {
            add(Characters().set());
        } else if (c == '#') {
            Characters digits;
            for (const char digit : std::string_view("0123456789"))
                digits.set(byteOf(digit));
            add(digits);
        } else {
            m_elements.push_back(between(keyOf(c), keyOf(c)));
            m_stretch += c;
        }
    }

    // The length of a list with its brackets, 0 when it is none. "[]" is nothing, which is everywhere.
    std::size_t takeList(std::string_view rest) {
        const std::size_t close = rest.find(']');
        if (close == std::string_view::npos)
            return 0;
        std::string_view list = rest.substr(1, close - 1);
        const bool excluded = list.starts_with('!');
        if (excluded)
            list.remove_prefix(1);
        else if (list.empty())
            return close + 1;
        Characters all;
        while (!list.empty()) {
            const bool isRange = list.size() > 2 && list[1] == '-';
            const std::uint8_t from = keyOf(list[0]);
            const std::uint8_t to = keyOf(list[isRange ? 2 : 0]);
            if (from > to)
                return 0;
            all |= between(from, to);
            list.remove_prefix(isRange ? 3 : 1);
        }
        add(excluded ? ~all : all);
        return close + 1;
    }

    // An element that does not stand for itself.
    void add(const Characters& characters) {
        m_elements.push_back(characters);
        m_isFixed = false;
        endStretch();
    }

    void endStretch() {
        if (!m_stretch.empty())
            m_pattern.m_fixed.emplace_back(m_stretch, m_mode);
        m_stretch.clear();
    }

    void endRun() {
        std::optional<TextFinder> fixed;
        if (m_isFixed)
            fixed.emplace(m_stretch, m_mode);
        m_pattern.m_allFixed = m_pattern.m_allFixed && m_isFixed;
        m_pattern.m_least += m_elements.size();
        m_pattern.m_runs.emplace_back(m_elements, std::move(fixed));
        endStretch();
        m_elements.clear();
        m_isFixed = true;
    }

    LikePattern& m_pattern;
    TextCase m_mode;
    std::vector<Characters> m_elements; // of the run so far
    bool m_isFixed = true;
    std::string m_stretch; // characters that stand for themselves, since another element
};

LikePattern::Run::Run(const std::vector<Characters>& elements, std::optional<TextFinder> fixed)
    : m_size(elements.size()), m_fixed(std::move(fixed)), m_words((m_size + kBits - 1) / kBits) {
    if (m_fixed)
        return;
    m_bits.resize(kBytes * m_words);
    for (std::size_t i = 0; i < m_size; ++i)
        for (std::size_t byte = 0; byte < kBytes; ++byte)
            m_bits[byte * m_words + i / kBits] |= std::uint64_t{elements[i][byte]} << i % kBits;
}

bool LikePattern::Run::isAt(std::string_view text, std::size_t place) const {
    if (m_fixed)
        return m_fixed->find(text.substr(place, m_size)) == 0;
    for (std::size_t i = 0; i < m_size; ++i)
        if ((m_bits[byteOf(text[place + i]) * m_words + i / kBits] >> i % kBits & 1) == 0)
            return false;
    return true;
}

// All beginnings of the run that end at a character are kept as bits, and moved on together with the next character.
std::size_t LikePattern::Run::find(std::string_view text, std::size_t from) const {
    if (m_fixed)
        return m_fixed->find(text, from);
    std::vector<std::uint64_t> begun(m_words);
    for (std::size_t at = from; at < text.size(); ++at) {
        const std::uint64_t* matching = &m_bits[byteOf(text[at]) * m_words];
        std::uint64_t carry = 1; // a new beginning
        for (std::size_t word = 0; word < m_words; ++word) {
            const std::uint64_t next = begun[word] >> (kBits - 1);
            begun[word] = (begun[word] << 1 | carry) & matching[word];
            carry = next;
        }
        if ((begun[m_words - 1] >> (m_size - 1) % kBits & 1) != 0)
            return at + 1 - m_size;
    }
    return std::string_view::npos;
}

LikePattern::LikePattern(std::string_view pattern, TextCase mode) {
    m_wellFormed = Parser(*this, mode).parse(pattern);
}

// A run that is found at its first place leaves the most to those behind it.
bool LikePattern::matches(std::string_view text) const {
    if (!m_wellFormed || text.size() < m_least)
        return false;
    const Run& first = m_runs.front();
    const Run& last = m_runs.back();
    if (m_runs.size() == 1)
        return text.size() == first.size() && first.isAt(text, 0);
    const std::size_t end = text.size() - last.size();
    if (!first.isAt(text, 0) || !last.isAt(text, end) || !hasFixedParts(text))
        return false;
    std::size_t at = first.size();
    for (std::size_t i = 1; i + 1 < m_runs.size(); ++i) {
        at = m_runs[i].find(text.substr(0, end), at);
        if (at == std::string_view::npos)
            return false;
        at += m_runs[i].size();
    }
    return true;
}

// A quick look ahead of runs that cost more. Fixed runs are such a look themselves.
bool LikePattern::hasFixedParts(std::string_view text) const {
    if (m_allFixed)
        return true;
    std::size_t at = 0;
    for (const TextFinder& part : m_fixed) {
        at = part.find(text, at);
        if (at == std::string_view::npos)
            return false;
        at += part.size();
    }
    return true;
}

bool LikePattern::mayMatchIn(std::string_view bytes) const {
    if (!m_wellFormed)
        return false;
    const auto longest = std::ranges::max_element(m_fixed, {}, &TextFinder::size);
    return longest == m_fixed.end() || longest->find(bytes) != std::string_view::npos;
}

bool LikePattern::mayMatchOf(const std::bitset<256>& alphabet) const {
    return m_wellFormed &&
           std::ranges::all_of(m_fixed, [&](const TextFinder& part) { return part.isMadeOf(alphabet); });
}

bool like(std::string_view text, std::string_view pattern, TextCase mode) {
    return LikePattern(pattern, mode).matches(text);
}

} // namespace tallybook::calc
