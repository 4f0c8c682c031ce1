// How the usual texts of a column fit into 32 bits.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::model {

// What a coder's words are. Where a word is the value as it stands in a file, cells need no text on their way.
enum class WordForm : std::uint8_t {
    Other,   // words that say nothing to a file
    Whole,   // a whole number in two's complement
    Decimal, // the bits of a single, shown with `decimals` digits
    Date,    // year * 65536 + month * 256 + day
    Time,    // hour * 65536 + minute * 256 + second
};
struct CellForm {
    WordForm words = WordForm::Other;
    int decimals = 0; // digits behind the point, of Decimal alone
};

// A column's cells are texts, and nothing but texts to everybody outside. A coder lets the column keep the ones
// that have the column's usual form ("12", "1/2/2003", "0.50") in four bytes. The rule that makes this safe:
// text(encode(t)) gives back exactly `t`; a text for which no word does that is kept as it is.
class CellCoder {
public:
    virtual ~CellCoder() = default;

    // The word that stands for this very text, or nothing.
    virtual std::optional<std::uint32_t> encode(std::string_view text) = 0;

    // The text that a word stands for. Takes any word; the text is empty for one that stands for none. The view lies
    // in the coder or somewhere in `scratch`, and lasts until either changes.
    virtual std::string_view text(std::uint32_t word, std::string& scratch) const = 0;

    virtual CellForm form() const { return {}; }
};

} // namespace tallybook::model
