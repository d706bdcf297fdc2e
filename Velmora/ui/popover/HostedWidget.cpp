#include "ui/popover/HostedWidget.h"

#include <QWidget>
#include <QWindow>

#include <utility>

namespace orvella {

namespace {

/// Made where it is not there yet.
QWindow& windowOf(QWidget& widget)
{
    widget.winId();
    return *widget.windowHandle();
}

std::optional<NativePopover::Part> part(const QWidget* widget)
{
    if (widget == nullptr)
        return std::nullopt;
    auto& whole = *widget->window();
    return NativePopover::Part {&windowOf(whole), QRect(widget->mapTo(&whole, QPoint()), widget->size())};
}

} // namespace

HostedWidget::HostedWidget(std::unique_ptr<NativePopover> popover, QWidget& widget)
    : m_popover(std::move(popover))
    , m_widget(widget)
{
    // A popover brings its ground with it.
    widget.setAttribute(Qt::WA_TranslucentBackground);
}

void HostedWidget::open(QSize size, const std::optional<PopoverAnchor>& anchor)
{
    m_widget.setFixedSize(size);
    m_popover->show(windowOf(m_widget), size, anchor ? part(anchor->widget) : std::nullopt);
    // Before, it would come up as a window of its own for a moment.
    m_widget.setVisible(m_popover->isShown());
}

void HostedWidget::performClose()
{
    m_popover->performClose();
}

} // namespace orvella
