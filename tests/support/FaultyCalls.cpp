#include "support/FaultyCalls.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvella {

namespace {

FaultyCalls*& current()
{
    static FaultyCalls* faulty = nullptr;
    return faulty;
}

} // namespace

FaultyCalls::FaultyCalls(QByteArray call, int number, int error, Lasting lasting)
    : m_call(std::move(call))
    , m_number(number)
    , m_error(error)
    , m_lasting(lasting)
{
    current() = this;
}

FaultyCalls::~FaultyCalls()
{
    current() = nullptr;
}

int FaultyCalls::errorOf(const char* call)
{
    auto* const faulty = current();
    if (!faulty || faulty->m_call != call)
        return 0;
    ++faulty->m_calls;
    const auto isMet = faulty->m_calls == faulty->m_number
        || (faulty->m_lasting == Lasting::everAfter && faulty->m_calls > faulty->m_number);
    return isMet ? faulty->m_error : 0;
}

size_t FaultyCalls::mostWritten()
{
    return current() ? current()->m_mostWritten : SIZE_MAX;
}

namespace {

/// The call as the C library has it, unless it is to fail.
template <class Function, class... Arguments> auto callUnlessFaulty(const char* name, Arguments... arguments)
{
    if (const auto error = FaultyCalls::errorOf(name)) {
        errno = error;
        return decltype(std::declval<Function>()(arguments...))(-1);
    }
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name))(arguments...);
}

} // namespace

} // namespace orvella

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    return orvella::callUnlessFaulty<int (*)(const char*, int, ...)>("open", path, flags, mode);
}

int stat(const char* path, struct stat* found)
{
    return orvella::callUnlessFaulty<int (*)(const char*, struct stat*)>("stat", path, found);
}

ssize_t read(int file, void* bytes, size_t size)
{
    return orvella::callUnlessFaulty<ssize_t (*)(int, void*, size_t)>("read", file, bytes, size);
}

int mkostemp(char* name, int flags)
{
    return orvella::callUnlessFaulty<int (*)(char*, int)>("mkostemp", name, flags);
}

ssize_t write(int file, const void* bytes, size_t size)
{
    const auto taken = std::min(size, orvella::FaultyCalls::mostWritten());
    return orvella::callUnlessFaulty<ssize_t (*)(int, const void*, size_t)>("write", file, bytes, taken);
}

int fsync(int file)
{
    return orvella::callUnlessFaulty<int (*)(int)>("fsync", file);
}

int rename(const char* from, const char* to)
{
    return orvella::callUnlessFaulty<int (*)(const char*, const char*)>("rename", from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags)
{
    return orvella::callUnlessFaulty<int (*)(int, const char*, int, const char*, unsigned)>(
        "renameat2", fromFolder, from, toFolder, to, flags);
}

int mkdir(const char* path, mode_t mode)
{
    return orvella::callUnlessFaulty<int (*)(const char*, mode_t)>("mkdir", path, mode);
}

int chmod(const char* path, mode_t mode)
{
    return orvella::callUnlessFaulty<int (*)(const char*, mode_t)>("chmod", path, mode);
}

int fchmod(int file, mode_t mode)
{
    return orvella::callUnlessFaulty<int (*)(int, mode_t)>("fchmod", file, mode);
}

int flock(int file, int operation)
{
    return orvella::callUnlessFaulty<int (*)(int, int)>("flock", file, operation);
}
}
