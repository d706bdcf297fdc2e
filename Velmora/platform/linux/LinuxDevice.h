#pragma once

#include "platform/Device.h"

namespace orvella {

/// This computer, as its files describe it.
class LinuxDevice final : public Device {
public:
    /// `root` is the folder that stands for "/".
    explicit LinuxDevice(QString root = QString(u'/'));

    /// The "pretty" host name of machine-info(5), which the desktops' settings write, else the static host name of
    /// hostname(5), else the one the kernel has. Asked afresh each time, and without the bus, whose answer may take
    /// long.
    [[nodiscard]] std::optional<QString> name() const override;

    [[nodiscard]] std::optional<QString> applicationVersion() const override;

private:
    QString m_root;
};

} // namespace orvella
