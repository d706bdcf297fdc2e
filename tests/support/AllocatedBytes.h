#pragma once

#include <cstddef>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/allocator_interface.h>
#elif __has_feature(address_sanitizer)
#include <sanitizer/allocator_interface.h>
#define __SANITIZE_ADDRESS__
#else
#include <malloc.h>
#endif

namespace orvella {

/// What the program has of the heap at this moment, all libraries' included.
inline std::size_t allocatedBytes()
{
#ifdef __SANITIZE_ADDRESS__
    return __sanitizer_get_current_allocated_bytes();
#else
    return ::mallinfo2().uordblks;
#endif
}

} // namespace orvella
