// The texts of a table for measuring that is made of real words.
#pragma once

#include "SteadyNumbers.h"

#include <span>
#include <string>
#include <vector>

namespace tallybook::samples {

// Texts as people keep them: names and towns that repeat, titles and comments that do not, letters with accents,
// cells that are often empty, and long memos in a tenth of the records.
class LargeTexts {
public:
    // The words must outlive it, the numbers too, which it draws from. Throws std::runtime_error for too few words.
    LargeTexts(std::span<const std::string> words, SteadyNumbers& numbers);

    // The text of a field, 1 to 20, in the next record; empty where it has none.
    std::string text(int field);

private:
    bool once(std::uint32_t in) { return m_numbers.next(in) == 0; }
    std::uint32_t between(std::uint32_t least, std::uint32_t most) {
        return least + m_numbers.next(most - least + 1);
    }
    const std::string& any(const std::vector<std::string>& texts);
    std::string name();
    std::string words(std::uint32_t count);
    std::string sentences(std::uint32_t count);
    std::string memo();

    std::span<const std::string> m_words;
    SteadyNumbers& m_numbers;
    std::vector<std::string> m_names;    // of letters without accents, with a capital
    std::vector<std::string> m_accented; // words with a letter beyond ASCII
    std::vector<std::string> m_towns;
    std::vector<std::string> m_remarks; // sentences that are used again and again
};

} // namespace tallybook::samples
