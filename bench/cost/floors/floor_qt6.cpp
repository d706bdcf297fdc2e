// The toolkit's floor: a Qt Widgets program that shows only a QSystemTrayIcon with
// a menu of one entry. A click makes and shows a small window with a label.
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    QPixmap icon(22, 22);
    icon.fill(QColor(0x2e, 0x9e, 0x44));
    QMenu menu;
    QObject::connect(menu.addAction(QStringLiteral("Quit")), &QAction::triggered, &app, &QApplication::quit);
    QSystemTrayIcon tray {QIcon(icon)};
    tray.setToolTip(QStringLiteral("$ 0.00"));
    tray.setContextMenu(&menu);
    QObject::connect(&tray, &QSystemTrayIcon::activated, &app, [] {
        auto* popover = new QLabel(QStringLiteral("$ 0.00"));
        popover->setAttribute(Qt::WA_DeleteOnClose);
        popover->resize(260, 120);
        popover->show();
    });
    tray.show();
    return QApplication::exec();
}
