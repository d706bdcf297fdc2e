#pragma once

#include <unistd.h>

namespace orvella {

/// An open file that closes itself.
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
        if (isOpen())
            ::close(m_number);
    }

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }

    [[nodiscard]] int number() const { return m_number; }

private:
    int m_number;
};

} // namespace orvella
