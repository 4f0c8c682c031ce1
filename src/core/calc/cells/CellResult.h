// What a calculated field comes to for a record, and how it becomes the text of its cell.
#pragma once

#include "core/calc/cells/CellReader.h"
#include "core/model/CellCoder.h"
#include "core/model/TextColumn.h"
#include "core/platform/Regional.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallybook::calc {

struct CellResult {
    enum class Form : std::uint8_t {
        Nothing,             // the empty text
        Number,              // value with `decimals` digits
        Moment,              // a serial, as a general date
        ShortDate,           // the day of a serial
        TimeOfDay,           // the time of a serial, as a long time
        HoursMinutesSeconds, // a count of seconds, as "h:m:s" without leading zeros
        HoursMinutes,        // the same without the seconds
        PlainText,           // `text`, which lies elsewhere
    };
    Form form = Form::Nothing;
    double value = 0;
    int decimals = 0;
    std::string_view text = {};

    bool operator==(const CellResult&) const = default;
};

// What every evaluator gives where it has no result.
inline constexpr CellResult kNumberZero{CellResult::Form::Number};

// Appends the text of a result.
void appendResult(const CellResult& result, const platform::Regional& regional, std::string& out);

// Writes the results of a pass into the column of the calculated field, by row id, as words where the column's coder
// has one. The column must keep its coder meanwhile; whoever draws the grid is to be told afterwards.
class ResultColumn {
public:
    ResultColumn(model::TextColumn& texts, const platform::Regional& regional);

    void set(std::uint32_t row, const CellResult& result);

    // The same for rows of a block of 256, a bit each; its other rows get no cell. The numbers have `decimals` (0..3)
    // digits; what is not finite is kNumberZero.
    void setBlock(std::uint32_t block, const model::RowBits& rows, const NumberLanes& numbers, int decimals);

private:
    void stageNumber(std::uint32_t place, double number, int decimals);
    void stageText(std::uint32_t place, std::string_view text);
    void setDecimal(std::uint32_t row, const CellResult& result, std::uint64_t magnitude);
    bool isThere(std::uint32_t row, std::string_view text) const;
    void setText(std::uint32_t row, std::string_view text);
    std::optional<std::uint32_t> wordOf(const CellResult& result) const;

    model::TextColumn& m_texts;
    const platform::Regional& m_regional;
    model::CellForm m_form;
    std::string m_text;
    model::TextStage m_stage;
};

} // namespace tallybook::calc
