// Written from the manual page kqueue(2); see ../../README.md.
#pragma once

#include <cstdint>
#include <ctime>

#define EVFILT_TIMER (-7)

#define EV_ADD 0x0001
#define EV_DELETE 0x0002
#define EV_ONESHOT 0x0010

#define NOTE_NSECONDS 0x00000004
#define NOTE_MACH_CONTINUOUS_TIME 0x00000080

struct kevent {
    std::uintptr_t ident;
    std::int16_t filter;
    std::uint16_t flags;
    std::uint32_t fflags;
    std::intptr_t data;
    void* udata;
};

#define EV_SET(event, a, b, c, d, e, f)                                                                                \
    do {                                                                                                               \
        auto* const target = (event);                                                                                  \
        target->ident = (a);                                                                                           \
        target->filter = (b);                                                                                          \
        target->flags = (c);                                                                                           \
        target->fflags = (d);                                                                                          \
        target->data = (e);                                                                                            \
        target->udata = (f);                                                                                           \
    } while (false)

extern "C" {
int kqueue();
int kevent(int kq, const struct kevent* changelist, int nchanges, struct kevent* eventlist, int nevents,
    const timespec* timeout);
}
