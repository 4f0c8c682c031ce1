// An open descriptor that closes itself, and system calls that a signal interrupted, made again.
#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace tallybook::adapters {

template <class Call> auto retried(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

class FileHandle {
public:
    explicit FileHandle(int descriptor = -1) : m_descriptor(descriptor) {}
    ~FileHandle() { (void)close(); }
    FileHandle(FileHandle&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileHandle& operator=(FileHandle&& other) noexcept {
        (void)close();
        m_descriptor = std::exchange(other.m_descriptor, -1);
        return *this;
    }

    int get() const { return m_descriptor; }
    bool isOpen() const { return m_descriptor >= 0; }

    // Closes once. False when the system reported a failure (in errno); the descriptor is gone all the same, so
    // that a second try could close another file. An interrupted close has closed.
    bool close() {
        const int descriptor = std::exchange(m_descriptor, -1);
        return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
    }

private:
    int m_descriptor;
};

} // namespace tallybook::adapters
