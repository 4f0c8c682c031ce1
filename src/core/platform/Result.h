// What an operation that can fail gives back: its value, or an error that says what, where and in which
// operation. Getting the value out is the check.
#pragma once

#include <cassert>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace tallybook::platform {

enum class ErrorKind : std::uint8_t {
    Format,   // the bytes break the format
    File,     // the computer refused something about a file
    Refused,  // the user or a rule said no; what had to be said has been said
    Internal, // anything else
};

struct Error {
    ErrorKind kind = ErrorKind::Internal;
    std::string tag;                       // the operation's name, as "Load_DBProps : readLists"
    std::string text;                      // the reason, a sentence without its place
    std::optional<int> record{};           // number of the file's record, from 0
    std::optional<std::uint64_t> offset{}; // byte of the file, from 0
    int number = 0;                        // the system's error number, 0 for none

    // The reason with its place in front: "Record 85: 200 views, at most 13".
    std::string description() const { return record ? "Record " + std::to_string(*record) + ": " + text : text; }
};

template <class T> class [[nodiscard]] Result {
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    bool ok() const { return m_state.index() == 0; }
    explicit operator bool() const { return ok(); }

    // The value; asking for it without ok() is a fault of the program.
    T& value() & {
        assert(ok());
        return *std::get_if<0>(&m_state);
    }
    const T& value() const& {
        assert(ok());
        return *std::get_if<0>(&m_state);
    }
    T&& value() && {
        assert(ok());
        return std::move(*std::get_if<0>(&m_state));
    }
    const Error& error() const {
        assert(!ok());
        return *std::get_if<1>(&m_state);
    }

private:
    std::variant<T, Error> m_state;
};

template <> class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}

    bool ok() const { return !m_error; }
    explicit operator bool() const { return ok(); }
    const Error& error() const {
        assert(!ok());
        return *m_error;
    }

private:
    std::optional<Error> m_error;
};

using Status = Result<void>;

} // namespace tallybook::platform
