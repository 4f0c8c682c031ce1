#include "LargeTexts.h"

#include "Samples.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace tallybook::samples {

namespace {

constexpr std::size_t kFewestWords = 500;
constexpr std::uint32_t kTowns = 400;
constexpr std::uint32_t kRemarks = 60;

bool isPlainLower(const std::string& word) {
    return std::all_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

bool hasAccent(const std::string& word) {
    return std::any_of(word.begin(), word.end(), [](char c) { return (static_cast<unsigned char>(c) & 0x80) != 0; });
}

std::string capital(std::string word) {
    if (word[0] >= 'a' && word[0] <= 'z')
        word[0] = static_cast<char>(word[0] - 'a' + 'A');
    return word;
}

} // namespace

LargeTexts::LargeTexts(std::span<const std::string> words, SteadyNumbers& numbers)
    : m_words(words), m_numbers(numbers) {
    for (const std::string& word : words) {
        if (isPlainLower(word) && word.size() >= 3 && word.size() <= 10)
            m_names.push_back(capital(word));
        if (hasAccent(word))
            m_accented.push_back(word);
    }
    if (words.size() < kFewestWords || m_names.empty() || m_accented.empty())
        throw std::runtime_error("a table of texts needs a list of some hundred words, some of them with accents");
    for (std::uint32_t i = 0; i < kTowns; ++i)
        m_towns.push_back(once(4) ? capital(any(m_accented)) : any(m_names));
    for (std::uint32_t i = 0; i < kRemarks; ++i)
        m_remarks.push_back(sentences(1));
}

const std::string& LargeTexts::any(const std::vector<std::string>& texts) {
    return texts[m_numbers.next(static_cast<std::uint32_t>(texts.size()))];
}

// Capitals at the same places in all of them: every way of sorting letters then agrees.
std::string LargeTexts::name() {
    const std::string& first = any(m_names);
    return first + ' ' + any(m_names);
}

std::string LargeTexts::words(std::uint32_t count) {
    std::string text;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (i > 0)
            text += ' ';
        text += once(12) ? any(m_accented) : m_words[m_numbers.next(static_cast<std::uint32_t>(m_words.size()))];
    }
    return text;
}

std::string LargeTexts::sentences(std::uint32_t count) {
    std::string text;
    for (std::uint32_t i = 0; i < count; ++i)
        text += (i > 0 ? " " : "") + capital(words(between(2, 6))) + '.';
    return text;
}

std::string LargeTexts::memo() {
    std::string text = sentences(between(1, 3));
    for (std::uint32_t more = m_numbers.next(3); more > 0; --more)
        text += (once(3) ? "\n\n" : "\n") + sentences(between(1, 4));
    return text;
}

std::string LargeTexts::text(int field) {
    switch (field) {
    case 1:
        return name();
    case 2: // a title
        return capital(words(between(1, 4)));
    case 4: // whose
        return once(3) ? std::string(any(m_towns)) : name();
    case 8:
        return any(m_towns);
    case 11: // a street
        return capital(words(1)) + ' ' + std::to_string(between(1, 200));
    case 12: // an address for letters
        return any(m_names) + "@example.com";
    case 14: // a comment, of up to 254 characters
        return once(2) ? std::string() : sentences(between(1, 2));
    case 15:
        return any(m_remarks);
    case 16: // some words to find it by
        return words(between(1, 2));
    case 17:
        return once(4) ? words(between(1, 4)) : std::string();
    case 18:
        return once(5) ? capital(words(2)) : std::string();
    case 19:
    case 20:
        return once(10) ? memo() : std::string();
    default:
        return words(1);
    }
}

std::vector<std::string> readWords(std::span<const std::string> files) {
    std::vector<std::string> words;
    for (const std::string& name : files) {
        std::ifstream file(name);
        for (std::string word; std::getline(file, word);)
            if (!word.empty())
                words.push_back(word);
        if (!file.eof())
            throw std::runtime_error("cannot read the words of " + name);
    }
    return words;
}

} // namespace tallybook::samples
