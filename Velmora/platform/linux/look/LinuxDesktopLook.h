#pragma once

#include "platform/DesktopLook.h"
#include "platform/linux/look/SettingsPortal.h"
#include "platform/linux/look/XSettingsReader.h"

#include <QObject>

#include <optional>

namespace orvella {

/// How things are to look, by the first of these that has a word for it: the desktop's portal, its settings on X11, and
/// for the scheme the palette that Qt has from the desktop. Needs the QGuiApplication.
///
/// It only works where the program leaves the application's palette alone.
class LinuxDesktopLook final : public QObject, public DesktopLook {
    Q_OBJECT

public:
    explicit LinuxDesktopLook(QDBusConnection bus);

    [[nodiscard]] Scheme scheme() const override { return m_look.scheme; }

    [[nodiscard]] bool isHighContrast() const override { return m_look.isHighContrast; }

    [[nodiscard]] bool isMotionReduced() const override { return m_look.isMotionReduced; }

    [[nodiscard]] double textScale() const override { return m_look.textScale; }

    [[nodiscard]] QString fontFamily() const override { return m_look.fontFamily; }

    [[nodiscard]] QString fixedFontFamily() const override { return m_look.fixedFontFamily; }

    void watch(std::function<void()> changed) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void followScreen();
    [[nodiscard]] LookWishes currentLook() const;
    void update();

    SettingsPortal m_portal;
    std::optional<XSettingsReader> m_xSettings;
    QMetaObject::Connection m_screen;
    LookWishes m_look;
    std::function<void()> m_changed;
};

} // namespace orvella
