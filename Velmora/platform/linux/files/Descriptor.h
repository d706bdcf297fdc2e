#pragma once

#include <cerrno>
#include <unistd.h>

namespace orvella {

/// An open file that closes itself, and leaves `errno` as it was: it may say why something before has failed.
class Descriptor final {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    ~Descriptor()
    {
        if (!isOpen())
            return;
        const auto reason = errno;
        ::close(m_number);
        errno = reason;
    }

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }

    [[nodiscard]] int number() const { return m_number; }

private:
    int m_number;
};

} // namespace orvella
