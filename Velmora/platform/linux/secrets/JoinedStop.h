#pragma once

#include <functional>
#include <stop_token>

namespace orvella {

/// A stop that is requested as soon as one of two others is.
class JoinedStop final {
public:
    JoinedStop(std::stop_token first, std::stop_token second)
        : m_first(std::move(first), Forward {m_stop})
        , m_second(std::move(second), Forward {m_stop})
    {
    }

    JoinedStop(const JoinedStop&) = delete;
    JoinedStop& operator=(const JoinedStop&) = delete;

    [[nodiscard]] std::stop_token token() const { return m_stop.get_token(); }

private:
    struct Forward {
        std::stop_source stop;

        // The flow that is stopped may end and take this object with it.
        void operator()() const { std::stop_source(stop).request_stop(); }
    };

    std::stop_source m_stop;
    std::stop_callback<Forward> m_first;
    std::stop_callback<Forward> m_second;
};

} // namespace orvella
