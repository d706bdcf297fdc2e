#include "ui/LaunchWindow.h"

#include "platform/Screens.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

namespace orvella {

namespace {

constexpr Qt::WindowFlags kFlags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
    | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;

} // namespace

LaunchWindow::LaunchWindow(const Look& look, QWidget* view)
    : QWidget(nullptr, kFlags)
    , m_look(look)
{
    setWindowTitle(QStringLiteral("Orvella"));
    setObjectName(QStringLiteral("launchWindow"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(view);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void LaunchWindow::centre()
{
    move(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, sizeHint(), Screens::home().available).topLeft());
}

void LaunchWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void LaunchWindow::paintEvent(QPaintEvent* /*event*/)
{
    QPainter(this).fillRect(rect(), m_look.theme().window);
}

} // namespace orvella
