// Numbers that look random and are the same everywhere.
#pragma once

#include <cstdint>

namespace tallybook::samples {

// The standard's distributions differ by library.
class SteadyNumbers {
public:
    // From 0 to below the limit.
    std::uint32_t next(std::uint32_t limit) {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return static_cast<std::uint32_t>(m_state >> 32) % limit;
    }

private:
    std::uint64_t m_state = 0x9E3779B97F4A7C15;
};

} // namespace tallybook::samples
