#include "support/AnyDatabase.h"

#include <algorithm>
#include <array>
#include <bit>
#include <random>
#include <string>
#include <utility>

namespace tallybook::test {

namespace {

using platform::Bytes;

// Numbers from a seed. The library's distributions differ from one maker to the next, so they are not used.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : m_engine(seed) {}

    std::uint32_t number() { return static_cast<std::uint32_t>(m_engine()); }
    int below(int limit) { return static_cast<int>(number() % static_cast<std::uint32_t>(limit)); }
    int between(int least, int most) { return least + below(most - least + 1); }
    bool oneIn(int count) { return below(count) == 0; }
    std::uint8_t byte() { return static_cast<std::uint8_t>(number()); }
    Bytes bytes(std::size_t count) {
        Bytes all(count);
        for (std::uint8_t& value : all)
            value = byte();
        return all;
    }
    // 0 to `most` characters, any but NUL.
    std::string text(int most) {
        std::string all(static_cast<std::size_t>(below(most + 1)), ' ');
        for (char& c : all)
            c = static_cast<char>(between(1, 255));
        return all;
    }
    template <class T> void shuffle(std::vector<T>& values) {
        for (std::size_t i = values.size(); i > 1; --i)
            std::swap(values[i - 1], values[number() % i]);
    }

private:
    std::mt19937 m_engine;
};

void append(Bytes& to, const Bytes& bytes) {
    to.insert(to.end(), bytes.begin(), bytes.end());
}

Bytes bytesOf(std::uint32_t value, int width) {
    Bytes bytes;
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    return bytes;
}

// A run of bytes in both forms.
struct Both {
    Bytes foreign;
    Bytes saved;

    void put(const Bytes& theirs, const Bytes& ours) {
        append(foreign, theirs);
        append(saved, ours);
    }
    void put(const Bytes& same) { put(same, same); }
    void byte(std::uint8_t value) { put({value}); }
    void byte(std::uint8_t theirs, std::uint8_t ours) { put(Bytes{theirs}, Bytes{ours}); }
    void text(const std::string& value) {
        put(Bytes(value.begin(), value.end()));
        byte(0);
    }
    // A text of fixed width, with junk behind its NUL.
    void area(const std::string& value, std::size_t width, Dice& dice) {
        Bytes ours(value.begin(), value.end());
        Bytes theirs = ours;
        if (value.size() < width) {
            theirs.push_back(0);
            append(theirs, dice.bytes(width - theirs.size()));
        }
        ours.resize(width);
        put(theirs, ours);
    }
    void add(const Both& other) { put(other.foreign, other.saved); }
};

enum Type : std::uint8_t {
    NotUsed,
    Text,
    Integer,
    Long,
    Float,
    List,
    Checkbox,
    Date,
    Time,
    Expression,
    Memo,
    Key,
    Join,
    Lookup,
    OneToMany,
    AddressJoin,
    AddressLookup,
    Radio,
    Image,
    Conditional,
    AutoInc,
    Plugin,
    AdvExpression,
    Unknown
};

struct Field {
    std::uint8_t type = NotUsed;
    std::uint8_t decimals = 0;
    std::uint8_t autoWriter = 0;
    std::uint8_t resultType = 0;
    std::uint8_t keyType = 0;
};

// Singles that do not show all their digits: read, decimals, as saved.
struct Rounded {
    int decimals;
    std::uint32_t read;
    std::uint32_t saved; // 0: no cell
};
constexpr std::array<Rounded, 6> kRounded = {{{0, 0x40200000, 0x40400000},
                                              {1, 0x3E000000, 0x3DCCCCCD},
                                              {2, 0x3EAAAAAB, 0x3EA8F5C3},
                                              {2, 0x3A83126F, 0},
                                              {3, 0xC0490FDB, 0xC0491687},
                                              {3, 0x80000000, 0}}};

class Maker {
public:
    Maker(std::uint32_t seed, AnyDatabase& made) : m_dice(seed), m_made(made) {}

    void make() {
        m_records = m_dice.oneIn(4) ? 0 : m_dice.between(1, 12);
        m_version = std::array<std::uint8_t, 5>{21, 21, 20, 3, 200}[static_cast<std::size_t>(m_dice.below(5))];
        chooseFields();
        header();
        record(headerValues());
        record(fieldTable());
        for (int slot = 0; slot <= 80; ++slot)
            record(attribute(slot), hasTail(slot));
        record(lastKey());
        record(forms());
        record(views());
        record(filters(), false); // what lies ahead of the data records decides about the spare ones
        dataRecords();
    }

private:
    Field& field(int slot) { return m_fields[static_cast<std::size_t>(slot)]; }

    void chooseFields() {
        m_highest = m_dice.oneIn(8) ? m_dice.below(3) : m_dice.below(81);
        for (int slot = 1; slot <= m_highest; ++slot) {
            Field& chosen = field(slot);
            chosen.type = static_cast<std::uint8_t>(m_dice.oneIn(20) ? m_dice.between(23, 255) : m_dice.below(23));
            chosen.decimals = m_dice.oneIn(10) ? m_dice.byte() : static_cast<std::uint8_t>(m_dice.below(4));
            chosen.autoWriter = m_dice.oneIn(3) ? static_cast<std::uint8_t>(m_dice.between(1, 7)) : std::uint8_t{0};
            chosen.resultType = static_cast<std::uint8_t>(m_dice.below(15));
            chosen.keyType =
                std::array<std::uint8_t, 6>{1, 2, 3, 11, 20, 9}[static_cast<std::size_t>(m_dice.below(6))];
        }
        if (m_highest > 0 && field(m_highest).type == NotUsed)
            field(m_highest).type = Text;
    }

    void header() {
        m_made.foreign.records.clear();
        m_made.saved.records.clear();
        std::string name = "MS2_" + m_dice.text(28);
        m_made.foreign.name = name;
        m_made.saved.name = name.substr(0, 31);
        m_made.foreign.stamps = m_dice.bytes(28);
        m_made.saved.stamps = hex("8000 0001 BA8BA685 BA8BA685 00000000 00000001 00000000 00000000");
        m_made.foreign.listIds = m_dice.bytes(8);
        m_made.foreign.entryId = m_dice.number() & 0xFFFFFF;
        m_made.saved.entryId = 0;
    }

    // A fixed record, with its number ahead.
    void record(const Both& content, bool mayHaveTail = true) {
        const auto number = static_cast<std::uint8_t>(m_made.saved.records.size());
        Both whole;
        whole.byte(number);
        whole.add(content);
        if (mayHaveTail && m_dice.oneIn(4))
            append(whole.foreign, m_dice.bytes(3));
        const std::size_t gap = mayHaveTail && m_dice.oneIn(4) ? 2 : 0;
        m_made.foreign.records.push_back({whole.foreign, number < 86 ? m_dice.byte() : std::uint8_t{0x10}, gap});
        m_made.saved.records.push_back({whole.saved});
    }

    // Bytes behind the block of an expression would change which form it has.
    bool hasTail(int slot) { return field(slot).type != Expression && field(slot).type != AdvExpression; }

    Both headerValues() {
        Both out;
        out.put(m_dice.bytes(6));
        out.byte(m_version, 21);
        out.put(m_dice.bytes(7 + 9));
        for (int i = 0; i < 6; ++i)
            out.area(m_dice.text(10), 10, m_dice);
        out.put(m_dice.bytes(40));
        out.text(m_dice.text(60));
        return out;
    }

    Both entry(int slot) {
        const Field& described = field(slot);
        Both out;
        out.byte(static_cast<std::uint8_t>(slot));
        out.byte(slot == 0 ? m_dice.byte() : described.type, slot == 0 ? std::uint8_t{0} : described.type);
        out.byte(m_dice.byte());
        out.byte(described.decimals);
        out.byte(described.autoWriter);
        out.put(m_dice.bytes(3 + 4));
        out.text(m_dice.text(20));
        out.text(m_dice.text(10));
        return out;
    }

    Both fieldTable() {
        std::vector<Bytes> theirs;
        Both out;
        Bytes ours;
        for (int slot = 0; slot <= 81; ++slot) {
            const bool used = slot <= m_highest;
            if (!used && !m_dice.oneIn(10))
                continue;
            if (slot > 0 && used && field(slot).type == NotUsed && m_dice.oneIn(2)) {
                ours.push_back(static_cast<std::uint8_t>(slot)); // a hole in their table
                append(ours, Bytes(13));
                continue;
            }
            Both one = entry(slot);
            if (!used)
                one.foreign[1] = NotUsed;
            theirs.push_back(one.foreign);
            if (used)
                append(ours, one.saved);
        }
        m_dice.shuffle(theirs);
        out.byte(static_cast<std::uint8_t>(theirs.size()), static_cast<std::uint8_t>(m_highest + 1));
        for (const Bytes& one : theirs)
            append(out.foreign, one);
        append(out.saved, ours);
        return out;
    }

    Both list() {
        Both out;
        std::vector<std::uint8_t> ids;
        for (int id = 1; id <= 255; ++id)
            ids.push_back(static_cast<std::uint8_t>(id));
        m_dice.shuffle(ids);
        ids.resize(static_cast<std::size_t>(m_dice.oneIn(20) ? 255 : m_dice.below(8)));
        out.byte(static_cast<std::uint8_t>(ids.size()));
        out.put(Bytes(ids.begin(), ids.end()));
        for (std::size_t i = 0; i < ids.size(); ++i)
            out.text(m_dice.text(20));
        return out;
    }

    Both expression(int slot, std::size_t tokens) {
        static constexpr std::array<std::pair<std::uint8_t, std::uint8_t>, 4> kOperators = {
            {{42, 92}, {43, 90}, {45, 91}, {47, 93}}};
        const bool old = m_dice.oneIn(3);
        const std::size_t theirs = old ? 7 : tokens;
        Both out;
        out.byte(field(slot).resultType);
        for (std::size_t i = 0; i < tokens; ++i) {
            std::uint8_t token = m_dice.byte();
            std::uint8_t migrated = token;
            if (m_dice.oneIn(3))
                token = migrated = kOperators[static_cast<std::size_t>(m_dice.below(4))].first;
            for (const auto& [from, to] : kOperators)
                if (token == from && m_version < 21 && i < 15)
                    migrated = to;
            if (i < theirs)
                out.byte(token, migrated);
            else
                out.saved.push_back(0);
        }
        for (std::size_t i = 0; i < tokens; ++i) {
            if (i < theirs)
                out.area(m_dice.text(11), 11, m_dice);
            else
                out.saved.resize(out.saved.size() + 11);
        }
        out.put(m_dice.bytes(1), {0});
        return out;
    }

    Both conditions() {
        Both out;
        out.area(m_dice.text(21), 21, m_dice);
        out.put(m_dice.bytes(6));
        for (int i = 0; i < 3; ++i)
            out.area(m_dice.text(20), 20, m_dice);
        out.put(m_dice.bytes(3));
        return out;
    }

    Both conditional(int slot) {
        m_made.conditionalSlots.push_back(slot);
        Both out = conditions();
        const std::uint8_t first = m_dice.byte();
        out.put({first, m_dice.byte()}, {0, first});
        out.put(m_dice.bytes(4), Bytes(4));
        for (int branch = 0; branch < 2; ++branch) {
            out.byte(m_dice.byte());
            out.area(m_dice.text(21), 21, m_dice);
            out.byte(m_dice.byte());
        }
        return out;
    }

    Both external(int slot) {
        Both out;
        out.text(m_dice.text(31));
        out.put(m_dice.bytes(3));
        out.byte(field(slot).keyType);
        out.put(m_dice.bytes(1));
        return out;
    }

    Both oneToMany() {
        Both out;
        out.area(m_dice.text(33), 33, m_dice);
        out.put(m_dice.bytes(6));
        out.area(m_dice.text(21), 21, m_dice);
        out.area(m_dice.text(21), 21, m_dice);
        out.put(m_dice.bytes(3));
        return out;
    }

    Both plugin() {
        Both out;
        out.put(m_dice.bytes(19));
        const int entries = m_dice.oneIn(10) ? 255 : m_dice.below(5);
        out.byte(static_cast<std::uint8_t>(entries));
        for (int i = 0; i < entries; ++i) {
            out.put(m_dice.bytes(2));
            out.text(m_dice.text(10));
        }
        return out;
    }

    Both attribute(int slot) {
        const Field& described = field(slot);
        if (slot == 0)
            return list();
        switch (described.type) {
        case List:
        case Radio:
            return list();
        case Text:
        case Integer:
        case Long:
        case Float:
        case Memo:
            if (described.autoWriter != 0)
                return list();
            break;
        case Expression:
            return expression(slot, 15);
        case AdvExpression:
            return expression(slot, 48);
        case Join:
        case Lookup:
        case AddressJoin:
        case AddressLookup:
            return external(slot);
        case OneToMany:
            return oneToMany();
        case Plugin:
            return plugin();
        case Conditional:
            return conditional(slot);
        case AutoInc: {
            Both out;
            out.put(bytesOf(m_dice.number() & 0xFFFFFF, 4)); // above it, the older layout would read on
            return out;
        }
        default:
            break;
        }
        Both empty;
        empty.put(m_dice.bytes(1), {1});
        return empty;
    }

    Both lastKey() {
        Both out;
        const Bytes key = m_dice.bytes(4);
        out.put(key, m_records > 0 ? key : bytesOf(1, 4));
        return out;
    }

    Both colour() {
        Both out;
        out.put(m_dice.bytes(1), {0});
        out.put(m_dice.bytes(3));
        return out;
    }

    Both forms() {
        Both out;
        out.put(m_dice.bytes(1));
        const int forms = m_dice.below(17);
        out.byte(static_cast<std::uint8_t>(forms));
        for (int form = 0; form < forms; ++form) {
            out.text(m_dice.text(20));
            out.put(m_dice.bytes(3));
            const int items = m_dice.below(13);
            out.byte(static_cast<std::uint8_t>(items));
            for (int item = 0; item < items; ++item) {
                out.put(m_dice.bytes(3));
                out.add(colour());
                out.add(colour());
                out.put(m_dice.bytes(1));
                out.add(colour());
                out.add(colour());
                out.put(m_dice.bytes(3));
                out.text(m_dice.text(12));
                out.text(m_dice.text(12));
            }
        }
        return out;
    }

    Both views() {
        Both out;
        const int views = m_dice.below(14);
        out.byte(static_cast<std::uint8_t>(views));
        for (int view = 0; view < views; ++view) {
            out.area(m_dice.text(21), 21, m_dice);
            out.put(m_dice.bytes(16));
            std::vector<Bytes> columns;
            const int count = m_dice.oneIn(6) ? 81 : m_dice.below(10);
            std::size_t used = 0;
            for (int i = 0; i < count; ++i) {
                columns.push_back(m_dice.bytes(5));
                if (m_dice.oneIn(4))
                    columns.back()[0] = 0;
                if (columns.back()[0] != 0)
                    used = columns.size();
            }
            out.byte(static_cast<std::uint8_t>(columns.size()), static_cast<std::uint8_t>(used));
            for (std::size_t i = 0; i < columns.size(); ++i)
                out.put(columns[i], i < used ? columns[i] : Bytes{});
        }
        return out;
    }

    Both filter() {
        Both out = conditions();
        out.put(m_dice.bytes(6));
        return out;
    }

    Both filters() {
        std::vector<Both> all(static_cast<std::size_t>(m_dice.below(14)));
        std::size_t used = 0;
        for (std::size_t i = 0; i < all.size(); ++i) {
            all[i] = filter();
            if (m_dice.oneIn(3))
                all[i].foreign[21] = all[i].saved[21] = 0; // unused
            if (all[i].saved[21] != 0 && i < 12)
                used = i + 1;
        }
        Both out;
        out.byte(static_cast<std::uint8_t>(all.size()), static_cast<std::uint8_t>(used));
        for (std::size_t i = 0; i < all.size(); ++i)
            out.put(all[i].foreign, i < used ? all[i].saved : Bytes{});
        const bool present = m_dice.below(3) > 0;
        for (int i = 0; i < 2; ++i) {
            const Both spare = filter();
            out.put(present ? spare.foreign : Bytes{}, present && m_records > 0 ? spare.saved : Bytes(96));
        }
        return out;
    }

    void dataRecords() {
        for (int i = 0; i < m_records; ++i) {
            while (m_dice.oneIn(4))
                m_made.foreign.records.push_back({m_dice.bytes(5), static_cast<std::uint8_t>(0x80 | m_dice.byte())});
            const Both made = dataRecord();
            const std::size_t gap = i > 0 && m_dice.oneIn(3) ? 3 : 0;
            m_made.foreign.records.push_back({made.foreign, static_cast<std::uint8_t>(m_dice.byte() & 0x7F), gap});
            m_made.saved.records.push_back({made.saved});
        }
    }

    Both dataRecord() {
        Both out;
        out.put(m_dice.bytes(1), {87});
        out.put(m_dice.bytes(1 + 4));
        std::vector<Bytes> theirs;
        for (int slot = 1; slot <= m_highest; ++slot) {
            Both one = cell(slot);
            append(out.saved, one.saved);
            theirs.push_back(one.foreign);
        }
        m_dice.shuffle(theirs);
        for (const Bytes& one : theirs)
            append(out.foreign, one);
        append(out.saved, Bytes(2));
        switch (m_dice.below(3)) {
        case 0: // no end mark: the record's bytes end
            break;
        case 1:
            append(out.foreign, Bytes(2));
            break;
        default:
            append(out.foreign, Bytes(2));
            append(out.foreign, m_dice.bytes(4));
            break;
        }
        return out;
    }

    // A cell of the slot's type, or something that stands in its place.
    Both cell(int slot) {
        const auto number = static_cast<std::uint8_t>(slot);
        const std::uint8_t type = field(slot).type;
        const bool hasBody =
            type != NotUsed && type != Key && type != Lookup && type != OneToMany && type != Plugin && type < Unknown;
        Both out;
        if (m_dice.oneIn(3) || !hasBody) {
            if (m_dice.oneIn(3)) // a type without a body
                out.foreign = {std::array<std::uint8_t, 4>{11, 13, 14, 99}[number % 4], number};
            else if (m_dice.oneIn(3) && type != Long && type != AutoInc)
                out.foreign = {Long, number, 1, 2, 3, 4}; // of a field that was a Long once
            if (type == Checkbox)
                out.saved = {type, number, 0};
            return out;
        }
        const Both body = cellBody(slot);
        out.foreign = {type, number};
        append(out.foreign, body.foreign);
        if (!body.saved.empty()) {
            out.saved = {type, number};
            append(out.saved, body.saved);
        }
        return out;
    }

    // The body behind type and slot; nothing in its saved form when no cell is saved.
    Both cellBody(int slot) {
        switch (field(slot).type) {
        case Text:
        case AddressLookup:
            return countedText({}, 300);
        case Integer:
            return whole(2);
        case Long:
        case AutoInc:
            return whole(4);
        case Float:
            return single(field(slot).decimals, true);
        case List:
        case Radio:
            return item();
        case Checkbox: {
            Both out;
            const std::uint8_t value = static_cast<std::uint8_t>(m_dice.below(3));
            out.byte(value, value == 1 ? 1 : 0);
            return out;
        }
        case Date:
            return date();
        case Time:
            return time();
        case Expression:
            return result(slot);
        case Memo:
            return memo();
        case Join:
            return join(slot);
        case AddressJoin:
            return address();
        case Image:
            return picture();
        case Conditional:
            return countedText(colourIndex(), 300);
        case AdvExpression:
            return advResult(slot);
        default:
            return {};
        }
    }

    Both whole(int width) {
        Both out;
        const std::uint32_t value = m_dice.oneIn(5) ? 0 : m_dice.number();
        const Bytes bytes = bytesOf(value, width);
        const bool zero = std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t b) { return b == 0; });
        out.put(bytes, zero ? Bytes{} : bytes);
        return out;
    }

    // A single, mostly one whose display is its value. `zeroIsNothing`: a number of 0 leaves no cell.
    Both single(int decimals, bool zeroIsNothing) {
        Both out;
        if (decimals > 3) {
            out.put(m_dice.bytes(4), {});
            return out;
        }
        const Rounded& rounded = kRounded[static_cast<std::size_t>(m_dice.below(static_cast<int>(kRounded.size())))];
        std::uint32_t theirs = rounded.read;
        std::uint32_t ours = rounded.saved;
        if (rounded.decimals != decimals || m_dice.oneIn(2)) {
            static constexpr std::array<float, 4> kPowers = {1, 10, 100, 1000};
            const auto units = static_cast<float>(m_dice.between(-1000000, 1000000));
            const float value = m_dice.oneIn(8) ? 0.0F : units / kPowers[static_cast<std::size_t>(decimals)];
            theirs = ours = std::bit_cast<std::uint32_t>(value == 0 ? 0.0F : value);
        }
        out.put(bytesOf(theirs, 4), ours == 0 && zeroIsNothing ? Bytes{} : bytesOf(ours, 4));
        return out;
    }

    Both item() {
        Both out;
        const std::uint8_t id = m_dice.oneIn(6) ? std::uint8_t{0} : m_dice.byte();
        out.put({id}, id == 0 ? Bytes{} : Bytes{id});
        return out;
    }

    Both date() {
        Both out;
        Bytes value = bytesOf(static_cast<std::uint32_t>(m_dice.between(100, 9999)), 2);
        value.push_back(static_cast<std::uint8_t>(m_dice.between(1, 12)));
        value.push_back(static_cast<std::uint8_t>(m_dice.between(1, 28)));
        if (m_dice.oneIn(8))
            out.put({value[0], value[1], value[2], 32}, {}); // no calendar has it
        else
            out.put(value);
        return out;
    }

    Both time() {
        Both out;
        const Bytes value = {0, static_cast<std::uint8_t>(m_dice.below(24)),
                             static_cast<std::uint8_t>(m_dice.below(60)),
                             static_cast<std::uint8_t>(m_dice.below(60))};
        if (m_dice.oneIn(8))
            out.put({0, 24, value[2], value[3]}, Bytes(4)); // no clock has it
        else
            out.put(value);
        return out;
    }

    // Seconds of a duration that a clock can show; whole minutes when seconds are not shown.
    Both duration(int unit, bool zeroIsNothing) {
        Both out;
        const int seconds = m_dice.below(86400 / unit) * unit;
        const Bytes bytes = bytesOf(std::bit_cast<std::uint32_t>(static_cast<float>(seconds)), 4);
        out.put(bytes, seconds == 0 && zeroIsNothing ? Bytes{} : bytes);
        return out;
    }

    Both value(int slot, bool zeroIsNothing) {
        switch (field(slot).resultType) {
        case 0:
            return single(field(slot).decimals, zeroIsNothing);
        case 1:
        case 2:
        case 3:
            return date();
        case 7:
            return time();
        case 11:
            return duration(1, zeroIsNothing);
        case 12:
            return duration(60, zeroIsNothing);
        case 13:
        case 14:
            return {};
        default:
            return single(0, zeroIsNothing);
        }
    }

    Both result(int slot) { return value(slot, true); }

    Both advResult(int slot) {
        Both out = colourIndex();
        if (field(slot).resultType == 13) {
            out.put(m_dice.bytes(4), Bytes(4));
            return countedText(out, 300, false);
        }
        const Both shown = value(slot, false);
        out.put(shown.foreign, shown.saved);
        out.byte(0);
        if (shown.saved.empty()) // nothing is shown, so there is no cell
            out.saved.clear();
        return out;
    }

    Both colourIndex() {
        Both out;
        const std::uint8_t index = m_dice.oneIn(5) ? m_dice.byte() : static_cast<std::uint8_t>(m_dice.below(5));
        out.byte(index, index > 4 ? std::uint8_t{0} : index);
        return out;
    }

    // A text behind `ahead`; the length of another program may be wrong, as long as it is not 0.
    Both countedText(Both ahead, int most, bool emptyHasNul = true) {
        const std::string text = m_dice.oneIn(10) ? std::string() : "t" + m_dice.text(m_dice.oneIn(5) ? most : 20);
        if (text.empty()) {
            append(ahead.foreign, emptyHasNul ? Bytes(2) : Bytes(1));
            ahead.saved.clear(); // no text, no cell
            return ahead;
        }
        const std::string cut = text.substr(0, 254);
        const auto length = static_cast<std::uint8_t>(cut.size());
        ahead.byte(m_dice.oneIn(5) ? static_cast<std::uint8_t>(m_dice.between(1, 255)) : length, length);
        ahead.put(Bytes(text.begin(), text.end()), Bytes(cut.begin(), cut.end()));
        ahead.byte(0);
        return ahead;
    }

    Both memo() {
        Both out;
        const std::string text = m_dice.text(m_dice.oneIn(5) ? 5000 : 60);
        if (text.empty()) {
            out.put(Bytes(2), {});
            return out;
        }
        const Bytes length = bytesOf(static_cast<std::uint32_t>(text.size()), 2);
        out.put(m_dice.oneIn(5) ? Bytes{0, 1} : length, length);
        out.text(text);
        return out;
    }

    Both join(int slot) {
        const std::uint8_t type = field(slot).keyType;
        Both out;
        out.byte(type);
        if (type == 1)
            return countedText(out, 253); // a key of 255 characters is saved whole
        if (type == 9) {                  // no type of a key
            out.saved.clear();
            return out;
        }
        out.put(m_dice.bytes(type == 2 ? 2 : 4));
        return out;
    }

    Both address() {
        Both out;
        const bool valid = !m_dice.oneIn(4);
        out.put(bytesOf(valid ? m_dice.number() >> 1 | 1 : m_dice.number() | 0x80000000, 4));
        out = countedText(out, 300);
        if (!valid || out.saved.empty()) {
            // an id without a text is saved without anything behind it, which only fits at a record's end
            out = {};
            out.put({0, 0, 0, 0, 0, 0}, {});
        }
        return out;
    }

    Both picture() {
        Both out;
        const int length = m_dice.oneIn(10) ? 3000 : m_dice.below(40);
        out.put(bytesOf(static_cast<std::uint32_t>(length), 2));
        out.put(m_dice.bytes(static_cast<std::size_t>(length) + 1));
        return out;
    }

    Dice m_dice;
    AnyDatabase& m_made;
    int m_records = 0;
    int m_highest = 0; // slot in use
    std::uint8_t m_version = 21;
    std::array<Field, 82> m_fields{};
};

} // namespace

AnyDatabase::AnyDatabase(std::uint32_t seed) {
    Maker(seed, *this).make();
}

} // namespace tallybook::test
