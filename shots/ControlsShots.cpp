#include "ControlsShots.h"

#include "World.h"
#include "ui/ad/CountdownGauge.h"
#include "ui/controls/Button.h"
#include "ui/controls/CheckBox.h"
#include "ui/controls/IconButton.h"
#include "ui/controls/LinkButton.h"
#include "ui/controls/SwitchRow.h"

#include <QApplication>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kSize(640, 404);
constexpr int kLeft = 32;
constexpr int kCellGap = 20;

/// Lays the controls out in lines, each below its caption.
class Sheet final {
public:
    explicit Sheet(DesktopLook::Scheme scheme)
        : m_world(scheme)
        , m_page(kSize, scheme)
    {
        m_page.fill(QRect(QPoint(), kSize), look().theme().surface);
    }

    [[nodiscard]] const Look& look() const { return *m_world.look; }
    [[nodiscard]] const QImage& image() const { return m_page.image(); }

    void newLine(int top)
    {
        m_left = kLeft;
        m_top = top;
    }

    /// Shows a control in a window of its own, so that it can have the keyboard.
    void add(const QString& caption, QWidget* control, QSize size, Qt::FocusReason focus = Qt::NoFocusReason)
    {
        QWidget window;
        control->setParent(&window);
        const auto* const reaching = dynamic_cast<const Reaching*>(control);
        const auto reach = reaching ? reaching->reach() : QMargins();
        control->setGeometry(QRect(QPoint(), size.grownBy(reach)));
        window.resize(control->size());
        window.show();
        if (focus != Qt::NoFocusReason) {
            QApplication::setActiveWindow(&window);
            control->clearFocus();
            control->setFocus(focus);
        }
        settle();
        m_page.addCaption(caption, {m_left, m_top});
        m_page.addWidget(*control, {m_left - reach.left(), m_top + 12 - reach.top()});
        m_left += std::max(size.width(), QFontMetrics(QApplication::font()).horizontalAdvance(caption)) + kCellGap;
    }

private:
    World m_world;
    Page m_page;
    int m_left = kLeft;
    int m_top = 0;
};

template <class Toggle> QWidget* toggle(const Look& look, const QString& text, bool isOn, bool isEnabled = true)
{
    auto* const result = new Toggle(look, text);
    result->setChecked(isOn);
    result->setEnabled(isEnabled);
    return result;
}

QWidget* hovered(QWidget* widget)
{
    widget->setAttribute(Qt::WA_UnderMouse);
    return widget;
}

Button* pressed(Button* button)
{
    button->setDown(true);
    return button;
}

template <class Toggle> void addToggles(Sheet& sheet, const QString& text, QSize size)
{
    const auto& look = sheet.look();
    sheet.add(u"off"_s, toggle<Toggle>(look, text, false), size);
    sheet.add(u"on"_s, toggle<Toggle>(look, text, true), size);
    sheet.add(u"off, focus"_s, toggle<Toggle>(look, text, false), size, Qt::TabFocusReason);
    sheet.add(u"on, focus"_s, toggle<Toggle>(look, text, true), size, Qt::TabFocusReason);
    sheet.add(u"off, disabled"_s, toggle<Toggle>(look, text, false, false), size);
    sheet.add(u"on, disabled"_s, toggle<Toggle>(look, text, true, false), size);
}

void addButtons(Sheet& sheet, Button::Kind kind, const QString& text)
{
    const auto make = [&] { return new Button(sheet.look(), kind, text); };
    const auto size = Button(sheet.look(), kind, text).sizeHint() - QSize(8, 8);
    sheet.add(u"rest"_s, make(), size);
    sheet.add(u"hover"_s, hovered(make()), size);
    sheet.add(u"pressed"_s, pressed(make()), size);
    sheet.add(u"focus"_s, make(), size, Qt::TabFocusReason);
}

template <class Control> void addIcons(Sheet& sheet, QSize size, const std::function<Control*()>& make)
{
    sheet.add(u"rest"_s, make(), size);
    sheet.add(u"hover"_s, hovered(make()), size);
    sheet.add(u"focus"_s, make(), size, Qt::TabFocusReason);
}

void addGauge(Sheet& sheet, qint64 remaining, qint64 total)
{
    auto* const gauge = new CountdownGauge(sheet.look(), total);
    gauge->setRemaining(remaining);
    sheet.add(u"%1 of %2"_s.arg(remaining).arg(total), gauge, gauge->size());
}

} // namespace

std::vector<Shot> controlsShots(DesktopLook::Scheme scheme)
{
    Sheet sheet(scheme);
    const auto& look = sheet.look();
    sheet.newLine(38);
    addToggles<SwitchRow>(sheet, {}, {28, 16});
    sheet.newLine(92);
    addToggles<CheckBox>(sheet, u"Label"_s, {58, 16});
    sheet.newLine(146);
    addButtons(sheet, Button::Kind::prominent, u"Open ad"_s);
    sheet.newLine(212);
    addButtons(sheet, Button::Kind::plain, u"Open dashboard"_s);
    sheet.newLine(280);
    const auto link = [&look] { return new LinkButton(look, u"Link this Mac"_s); };
    addIcons<LinkButton>(sheet, std::unique_ptr<LinkButton>(link())->sizeHint() - QSize(8, 8), link);
    addIcons<IconButton>(sheet, {16, 16}, [&look] { return new IconButton(look, Symbol::info, 28); });
    addIcons<IconButton>(sheet, {16, 16}, [&look] { return new IconButton(look, Symbol::close, 28); });
    sheet.newLine(334);
    for (const auto& [remaining, total] :
        {std::pair(15, 15), {14, 15}, {10, 15}, {7, 15}, {1, 15}, {0, 15}, {120, 180}})
        addGauge(sheet, remaining, total);
    return {{u"controls"_s, sheet.image()}};
}

} // namespace orvella
