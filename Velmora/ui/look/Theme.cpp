#include "ui/look/Theme.h"

#include "platform/DarkBackground.h"

#include <QPalette>

namespace orvella {

namespace {

constexpr QColor colour(QRgb rgb, qreal opacity = 1.0)
{
    QColor result(rgb);
    result.setAlphaF(static_cast<float>(opacity));
    return result;
}

} // namespace

Theme Theme::light()
{
    return {
        .isDark = false,
        .surface = colour(0xFFFFFF),
        .window = colour(0xF6F7F9),
        .card = colour(0xF0F2F5),
        .text = colour(0x1B1E23),
        .secondaryText = colour(0x59616C),
        .disabledText = colour(0x69717C),
        .ink = colour(0x2A5BD7),
        .green = colour(0x0B7A3E),
        .red = colour(0xBF1F2B),
        .accent = colour(0x2A5BD7),
        .accentHovered = colour(0x234EBD),
        .accentPressed = colour(0x1C42A3),
        .onAccent = colour(0xFFFFFF),
        .controlOff = colour(0x868E99),
        .box = colour(0xFFFFFF),
        .button = colour(0xFFFFFF),
        .buttonHovered = colour(0xF0F2F5),
        .buttonPressed = colour(0xE4E7EC),
        .buttonEdge = colour(0xC3C9D2),
        .divider = colour(0xDADEE4),
        .outline = colour(0x101418, 0.16),
        .hover = colour(0x1B1E23, 0.08),
        .scrollBar = colour(0x59616C, 0.55),
        .nearShadow = colour(0x101418, 0.10),
        .farShadow = colour(0x101418, 0.18),
    };
}

Theme Theme::dark()
{
    return {
        .isDark = true,
        .surface = colour(0x26282C),
        .window = colour(0x1E2023),
        .card = colour(0x32353A),
        .text = colour(0xF1F3F5),
        .secondaryText = colour(0xADB4BE),
        .disabledText = colour(0x979EA9),
        .ink = colour(0x8FB2FF),
        .green = colour(0x4CD484),
        .red = colour(0xFF938C),
        .accent = colour(0x3B6CE6),
        .accentHovered = colour(0x3362D6),
        .accentPressed = colour(0x2B56C2),
        .onAccent = colour(0xFFFFFF),
        .controlOff = colour(0x7A828D),
        .box = colour(0x2A2D32),
        .button = colour(0x3A3E45),
        .buttonHovered = colour(0x444850),
        .buttonPressed = colour(0x33363C),
        .buttonEdge = colour(0x4C5159),
        .divider = colour(0x383B41),
        .outline = colour(0xFFFFFF, 0.14),
        .hover = colour(0xFFFFFF, 0.10),
        .scrollBar = colour(0xADB4BE, 0.55),
        .nearShadow = colour(0x000000, 0.35),
        .farShadow = colour(0x000000, 0.55),
    };
}

Theme Theme::highContrast(const QPalette& palette)
{
    const auto window = palette.color(QPalette::Window);
    const auto text = palette.color(QPalette::WindowText);
    const auto highlight = palette.color(QPalette::Highlight);
    Theme theme = isDarkBackground(window) ? dark() : light();
    theme.surface = window;
    theme.window = window;
    theme.card = palette.color(QPalette::Base);
    theme.text = text;
    theme.secondaryText = text;
    theme.disabledText = palette.color(QPalette::Disabled, QPalette::WindowText);
    theme.ink = palette.color(QPalette::Link);
    theme.green = text;
    theme.red = text;
    theme.accent = highlight;
    theme.accentHovered = highlight;
    theme.accentPressed = highlight;
    theme.onAccent = palette.color(QPalette::HighlightedText);
    theme.controlOff = text;
    theme.box = palette.color(QPalette::Base);
    theme.button = palette.color(QPalette::Button);
    theme.buttonHovered = palette.color(QPalette::Button);
    theme.buttonPressed = palette.color(QPalette::Button);
    theme.buttonEdge = palette.color(QPalette::ButtonText);
    theme.divider = text;
    theme.outline = text;
    theme.scrollBar = text;
    return theme;
}

} // namespace orvella
