// The toolkit's floor with Orvella's kind of work: floor_qt6 that also asks a JSON
// service over HTTPS, at once and then every N seconds, and puts a figure of the
// answer in the tooltip. Usage: floor_qt6poll URL SECONDS
#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPixmap>
#include <QSystemTrayIcon>
#include <QTimer>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QUrl url(QApplication::arguments().value(1));
    const int seconds = QApplication::arguments().value(2).toInt();

    QPixmap icon(22, 22);
    icon.fill(QColor(0x2e, 0x9e, 0x44));
    QMenu menu;
    QObject::connect(menu.addAction(QStringLiteral("Quit")), &QAction::triggered, &app, &QApplication::quit);
    QSystemTrayIcon tray {QIcon(icon)};
    tray.setContextMenu(&menu);
    tray.show();

    QNetworkAccessManager net;
    const auto poll = [&] {
        QNetworkReply* reply = net.get(QNetworkRequest(url));
        QObject::connect(reply, &QNetworkReply::finished, &app, [&tray, reply] {
            if (reply->error() != QNetworkReply::NoError)
                qWarning("%s", qPrintable(reply->errorString()));
            const double cents = QJsonDocument::fromJson(reply->readAll())["cents"].toDouble();
            tray.setToolTip(QStringLiteral("$ %1").arg(cents / 100, 0, 'f', 2));
            reply->deleteLater();
        });
    };
    QTimer timer;
    timer.setTimerType(Qt::VeryCoarseTimer);
    QObject::connect(&timer, &QTimer::timeout, &app, poll);
    timer.start(seconds * 1000);
    QTimer::singleShot(0, &app, poll);
    return QApplication::exec();
}
