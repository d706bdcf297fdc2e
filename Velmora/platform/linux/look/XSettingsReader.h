#pragma once

#include "platform/linux/look/LookWishes.h"
#include "platform/linux/x11/X11Display.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

namespace orvella {

/// The desktop's settings on X11, followed through whoever manages them; while nobody does, it says nothing.
class XSettingsReader final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit XSettingsReader(const X11Display& display);

    [[nodiscard]] const LookWishes& wishes() const { return m_wishes; }

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

Q_SIGNALS:
    /// Only when the wishes are others than before.
    void changed();

private:
    void findManager();
    void read();

    X11Display m_display;
    quint32 m_selection = 0;
    quint32 m_property = 0;
    quint32 m_announcement = 0;
    /// The window that carries the settings; 0 where there is none.
    quint32 m_manager = 0;
    LookWishes m_wishes;
};

} // namespace orvella
