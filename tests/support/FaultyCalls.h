#pragma once

#include <QByteArray>

namespace orvella {

/// While it lives, one kind of system call of this process fails as on a bad disk. One at a time.
///
/// It stands before the C library, for the program and for Qt alike: open, stat, read, mkostemp, write, fsync, rename,
/// renameat2, mkdir, chmod, fchmod and flock.
class FaultyCalls final {
public:
    enum class Lasting { once, everAfter };

    /// The `number`-th such call from now on, counted from 1, fails with `error` of errno.h.
    FaultyCalls(QByteArray call, int number, int error, Lasting lasting);
    FaultyCalls(const FaultyCalls&) = delete;
    FaultyCalls& operator=(const FaultyCalls&) = delete;
    ~FaultyCalls();

    /// As many bytes as a single write takes; the rest is for the next.
    void shortenWrites(size_t most) { m_mostWritten = most; }

    /// Whether it has come to it.
    [[nodiscard]] bool hasFailed() const { return m_calls >= m_number; }

    /// For the calls themselves: the error that it meets, or 0.
    static int errorOf(const char* call);
    static size_t mostWritten();

private:
    QByteArray m_call;
    int m_number;
    int m_error;
    Lasting m_lasting;
    int m_calls = 0;
    size_t m_mostWritten = SIZE_MAX;
};

} // namespace orvella
