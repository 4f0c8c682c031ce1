#include "core/pdb/QuickCells.h"

#include "core/calc/values/Dates.h"
#include "core/pdb/Layout.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace tallybook::pdb {

namespace {

using model::FieldType;

std::uint32_t longAt(const std::uint8_t* bytes) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return std::endian::native == std::endian::little ? __builtin_bswap32(value) : value;
}

std::uint32_t integerAt(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(std::int32_t{static_cast<std::int16_t>(bytes[0] << 8 | bytes[1])});
}

bool isDate(std::uint32_t word) {
    return calc::isRealDate(
        {static_cast<int>(word >> 16), static_cast<int>(word >> 8 & 0xFF), static_cast<int>(word & 0xFF)});
}

bool isTime(std::uint32_t word) {
    return word >> 16 <= 23 && (word >> 8 & 0xFF) <= 59 && (word & 0xFF) <= 59;
}

} // namespace

QuickCells::Kind QuickCells::kindOf(const Target& target) {
    const bool plain = target.texts->coder() == nullptr;
    switch (target.type) {
    case FieldType::Text:
        return plain ? Kind::Text : Kind::None;
    case FieldType::Memo:
        return plain ? Kind::Memo : Kind::None;
    case FieldType::Integer:
        return target.form.words == WordForm::Whole ? Kind::Integer : Kind::None;
    case FieldType::Long:
    case FieldType::AutoIncremental:
        return target.form.words == WordForm::Whole ? Kind::Long : Kind::None;
    case FieldType::Float: {
        const bool fits = target.form.words == WordForm::Decimal && target.form.decimals == target.decimals;
        return fits ? Kind::Single : Kind::None;
    }
    case FieldType::Date:
        return target.form.words == WordForm::Date ? Kind::Date : Kind::None;
    case FieldType::Time:
        return target.form.words == WordForm::Time ? Kind::Time : Kind::None;
    case FieldType::List:
    case FieldType::RadioButton:
        return Kind::Item;
    case FieldType::Checkbox:
        return Kind::Check;
    default:
        return Kind::None;
    }
}

void QuickCells::add(int slot, const Target& target) {
    const Kind kind = kindOf(target);
    if (kind == Kind::None)
        return;
    auto& stage = m_stages[static_cast<std::size_t>(slot)];
    stage = std::make_unique<Stage>();
    stage->target = target;
    stage->kind = kind;
}

void QuickCells::enter(std::uint32_t row) {
    m_place = row % model::kBlockRows;
    const std::int64_t block = row / model::kBlockRows;
    if (block == m_block)
        return;
    const bool isNew = block > m_block;
    finish();
    m_block = block;
    if (!isNew)
        return;
    for (std::size_t slot = 0; slot < m_stages.size(); ++slot)
        if (Stage* stage = m_stages[slot].get())
            (slot == 0 ? m_category : m_quick[slot]) = {static_cast<std::uint8_t>(stage->target.type), stage->kind,
                                                        stage};
}

std::size_t QuickCells::take(platform::ByteSpan cells) {
    const std::uint8_t* at = cells.data();
    std::size_t left = cells.size();
    while (left >= layout::kCellHeader) {
        const Quick& quick = m_quick[at[1]];
        if (quick.kind == Kind::None || at[0] != quick.type)
            break;
        const std::size_t body = takeCell(quick, at + layout::kCellHeader, left - layout::kCellHeader);
        if (body == 0)
            break;
        at += layout::kCellHeader + body;
        left -= layout::kCellHeader + body;
    }
    return cells.size() - left;
}

// Gives the bytes of the cell's body, none when it is not taken.
std::size_t QuickCells::takeCell(const Quick& quick, const std::uint8_t* body, std::size_t left) {
    Stage& stage = *quick.stage;
    const auto addWord = [&](std::uint32_t word, std::size_t size) {
        if (!stage.texts.isBehind(m_place))
            return std::size_t{0};
        stage.texts.addWord(m_place, word);
        return size;
    };
    constexpr std::size_t kLong = 4;
    switch (quick.kind) {
    case Kind::Text:
        return takeText(stage, body, left, 1);
    case Kind::Memo:
        return takeText(stage, body, left, 2);
    case Kind::Integer:
        return left >= 2 ? addWord(integerAt(body), 2) : 0;
    case Kind::Long:
        return left >= kLong ? addWord(longAt(body), kLong) : 0;
    case Kind::Single:
        return left >= kLong && std::isfinite(std::bit_cast<float>(longAt(body))) ? addWord(longAt(body), kLong) : 0;
    case Kind::Date:
        return left >= kLong && isDate(longAt(body)) ? addWord(longAt(body), kLong) : 0;
    case Kind::Time:
        return left >= kLong && isTime(longAt(body)) ? addWord(longAt(body), kLong) : 0;
    case Kind::Item:
        return left >= 1 && takeItem(stage, *body) ? 1 : 0;
    case Kind::Check:
        if (left < 1 || !stage.words.isBehind(m_place))
            return 0;
        stage.words.add(m_place,
                        static_cast<std::uint32_t>(*body == 1 ? model::Picture::CheckOn : model::Picture::CheckOff));
        return 1;
    case Kind::None:
        break;
    }
    return 0;
}

// A text that is there and ends with its NUL, which decides whatever length is told.
std::size_t QuickCells::takeText(Stage& stage, const std::uint8_t* body, std::size_t left, std::size_t lengthBytes) {
    if (left <= lengthBytes || !stage.texts.isBehind(m_place))
        return 0;
    const unsigned length = lengthBytes == 1 ? body[0] : static_cast<unsigned>(body[0] << 8 | body[1]);
    const std::uint8_t* text = body + lengthBytes;
    const void* nul = length == 0 ? nullptr : std::memchr(text, 0, left - lengthBytes);
    if (nul == nullptr || nul == text)
        return 0;
    const auto size = static_cast<std::size_t>(static_cast<const std::uint8_t*>(nul) - text);
    stage.texts.addText(m_place, {reinterpret_cast<const char*>(text), size});
    return lengthBytes + size + 1;
}

bool QuickCells::takeItem(Stage& stage, std::uint8_t item) {
    const std::int64_t word = (*stage.target.items)[item];
    if (word < 0 || !stage.texts.isBehind(m_place))
        return false;
    stage.texts.addWord(m_place, static_cast<std::uint32_t>(word));
    if (item != 0)
        stage.words.add(m_place, item);
    return true;
}

bool QuickCells::takeCategory(std::uint8_t item) {
    return m_category.kind != Kind::None && takeItem(*m_category.stage, item);
}

void QuickCells::close(int slot) {
    Quick& quick = slot == 0 ? m_category : m_quick[static_cast<std::size_t>(slot)];
    if (quick.kind == Kind::None)
        return;
    write(*quick.stage);
    quick = {};
}

void QuickCells::finish() {
    for (int slot = 0; slot < model::MaxFieldSlots; ++slot)
        close(slot);
}

void QuickCells::write(Stage& stage) {
    const auto block = static_cast<std::uint32_t>(m_block);
    if (!stage.texts.empty())
        stage.target.texts->setBlock(block, stage.texts);
    if (!stage.words.empty())
        stage.target.words->setBlock(block, stage.words);
    stage.texts.clear();
    stage.words.clear();
}

} // namespace tallybook::pdb
