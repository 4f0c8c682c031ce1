// A variable of the environment for the length of a test.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tallybook::test {

// Sets a variable of the environment, or removes it, and puts it back.
class Variable {
public:
    Variable(const char* name, const char* value) : m_name(name) {
        if (const char* before = std::getenv(name))
            m_before = before;
        set(value);
    }
    ~Variable() { set(m_before ? m_before->c_str() : nullptr); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    void set(const char* value) {
        if (value == nullptr)
            unsetenv(m_name);
        else
            setenv(m_name, value, 1);
    }
    const char* m_name;
    std::optional<std::string> m_before;
};

} // namespace tallybook::test
