#pragma once

#include "platform/linux/item/PanelTone.h"

#include <QObject>

namespace orvella {

/// Follows the tone of the desktop's panel while the program runs. Needs the QGuiApplication.
class PanelToneWatch final : public QObject {
    Q_OBJECT

public:
    PanelToneWatch();

    [[nodiscard]] PanelTone tone() const { return m_tone; }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void changed();

private:
    PanelTone m_tone = PanelTone::unknown;
};

} // namespace orvella
