#pragma once

#include "sandbox/Call.h"
#include "sandbox/Fault.h"

#include <QString>

#include <array>
#include <expected>

namespace orvella::sandbox {

/// Which calls fail, and how.
class FaultPlan final {
public:
    /// Adds "CALL=KIND[:ARG]", several of them separated by commas. A call may have a delay and one other fault; of two
    /// others the later one counts. The error is one sentence.
    [[nodiscard]] std::expected<void, QString> add(const QString& specification);

    [[nodiscard]] const Fault& of(Call call) const { return m_faults[static_cast<std::size_t>(call)]; }

private:
    std::expected<void, QString> addOne(const QString& specification);

    std::array<Fault, kCallRoutes.size()> m_faults;
};

} // namespace orvella::sandbox
