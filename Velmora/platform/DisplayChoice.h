#pragma once

#include <QByteArray>

namespace orvella {

/// Which display the toolkit shows the program on, and that it brings no other toolkit along. Made before the
/// application object; what the viewer and the desktop have said in the environment is there again when this goes, for
/// the program and for those that are started later.
class DisplayChoice final {
public:
    DisplayChoice();
    DisplayChoice(const DisplayChoice&) = delete;
    DisplayChoice& operator=(const DisplayChoice&) = delete;
    ~DisplayChoice();

    /// Whether there is none to try.
    [[nodiscard]] bool isEmpty() const;
    /// Whether none has let the program in; then nothing is shown. After the application object.
    [[nodiscard]] bool isRefused() const;

private:
    QByteArray m_former;
    QByteArray m_desktop;
};

} // namespace orvella
