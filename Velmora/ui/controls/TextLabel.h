#pragma once

#include "ui/look/Look.h"

#include <QLabel>

namespace orvella {

/// What a text's colour says.
enum class Tone { primary, secondary, green, red };

/// Plain text in one of the styles, in lines of a fixed height.
///
/// Whatever the text holds, it is shown as it stands: no markup, no shortcuts. What does not fit ends in "…".
class TextLabel final : public QLabel {
    Q_OBJECT

public:
    enum class Lines { one, two, three, twenty, all };

    TextLabel(const Look& look, TypeStyle style, Tone tone = Tone::primary, Lines lines = Lines::one);

    void setTone(Tone tone);
    /// Lines may also end within words, for addresses and the like, which have no other place for it.
    void setBreaksAnywhere();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The lines that are shown in this width, the last one shortened if there is more.
    [[nodiscard]] QStringList lines(int width) const;
    [[nodiscard]] int mostLines() const;
    [[nodiscard]] QColor colour() const;

    const Look& m_look;
    TypeStyle m_style;
    Tone m_tone;
    Lines m_lines;
    bool m_breaksAnywhere = false;
};

/// A label with its text set.
[[nodiscard]] TextLabel* label(const Look& look, TypeStyle style, const QString& text, Tone tone = Tone::primary,
    TextLabel::Lines lines = TextLabel::Lines::one);

} // namespace orvella
