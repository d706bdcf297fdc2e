#include "ui/LaunchWindow.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
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
    const auto* const under = QGuiApplication::screenAt(QCursor::pos());
    const auto* const screen = under ? under : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    move(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, sizeHint(), screen->availableGeometry()).topLeft());
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
