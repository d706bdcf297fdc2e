#pragma once

#include "platform/DesktopLook.h"
#include "platform/macos/CocoaWorkspace.h"

#include <QObject>

namespace orvella {

/// The appearance and the accessibility settings of macOS. It has no size of text of its own, and Qt knows its
/// fonts. Needs the application object.
class MacDesktopLook final : public QObject, public DesktopLook {
    Q_OBJECT

public:
    explicit MacDesktopLook(CocoaWorkspace& workspace);

    [[nodiscard]] Scheme scheme() const override;
    [[nodiscard]] bool isHighContrast() const override;
    [[nodiscard]] bool isMotionReduced() const override;

    [[nodiscard]] double textScale() const override { return 1; }

    [[nodiscard]] QString fontFamily() const override { return {}; }

    [[nodiscard]] QString fixedFontFamily() const override { return {}; }

    /// Once.
    void watch(std::function<void()> changed) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void compare();

    CocoaWorkspace& m_workspace;
    CocoaWorkspace::Look m_known;
    std::function<void()> m_changed;
};

} // namespace orvella
