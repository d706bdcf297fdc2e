#pragma once

#include "ui/look/Glide.h"
#include "ui/look/Look.h"

#include <QWidget>

namespace orvella {

/// The ring that closes as the seconds of an ad run down, with the seconds that are left in it.
///
/// Assistive technology can read the seconds at any time; it is told of them at the start, half-way and at the end
/// only, because one that speaks each second cannot be listened to.
class CountdownGauge final : public QWidget {
    Q_OBJECT

public:
    /// `total` seconds, of which all are left at first.
    CountdownGauge(const Look& look, qint64 total);

    void setRemaining(qint64 remaining);

    [[nodiscard]] qint64 remaining() const { return m_remaining; }
    [[nodiscard]] qint64 total() const { return m_total; }

    /// How much of the ring is closed, from 0 to 1.
    [[nodiscard]] static double fraction(qint64 remaining, qint64 total);

Q_SIGNALS:
    /// Assistive technology was told of the seconds.
    void announced(qint64 remaining);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void announce();

    const Look& m_look;
    qint64 m_total;
    qint64 m_remaining;
    bool m_isStartAnnounced = false;
    Glide m_closed;
};

} // namespace orvella
