// Between the floors: Qt without its GUI. The same item and menu as floor_sdbus.c,
// but on QCoreApplication and QtDBus: what a Qt program costs while no window is
// needed, if it puts off the GUI libraries until the first click.
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QVariantMap>

struct Pixmap {
    int w = 22, h = 22;
    QByteArray argb;
};
struct Layout {
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children;
};
Q_DECLARE_METATYPE(Pixmap)
Q_DECLARE_METATYPE(Layout)

QDBusArgument& operator<<(QDBusArgument& a, const Pixmap& p)
{
    a.beginStructure();
    a << p.w << p.h << p.argb;
    a.endStructure();
    return a;
}
const QDBusArgument& operator>>(const QDBusArgument& a, Pixmap& p)
{
    a.beginStructure();
    a >> p.w >> p.h >> p.argb;
    a.endStructure();
    return a;
}
QDBusArgument& operator<<(QDBusArgument& a, const Layout& l)
{
    a.beginStructure();
    a << l.id << l.properties << l.children;
    a.endStructure();
    return a;
}
const QDBusArgument& operator>>(const QDBusArgument& a, Layout& l)
{
    a.beginStructure();
    a >> l.id >> l.properties >> l.children;
    a.endStructure();
    return a;
}

class Item : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& m, const QDBusConnection& bus) override
    {
        const QString member = m.member();
        if (member == u"GetAll")
            bus.send(m.createReply(QVariant(m.path() == u"/MenuBar" ? menuProperties() : properties())));
        else if (member == u"Get")
            bus.send(m.createReply(
                QVariant::fromValue(QDBusVariant(properties().value(m.arguments().value(1).toString())))));
        else if (member == u"GetLayout")
            bus.send(m.createReply({1u, QVariant::fromValue(layout())}));
        else if (member == u"AboutToShow")
            bus.send(m.createReply(false));
        else if (member == u"Event") {
            bus.send(m.createReply());
            if (m.arguments().value(0).toInt() == 1 && m.arguments().value(1).toString() == u"clicked")
                QCoreApplication::quit();
        } else if (member == u"Activate" || member == u"SecondaryActivate" || member == u"ContextMenu"
            || member == u"Scroll")
            bus.send(m.createReply());
        else
            return false;
        return true;
    }

private:
    static QVariantMap properties()
    {
        Pixmap icon;
        for (int i = 0; i < icon.w * icon.h; ++i)
            icon.argb.append("\xff\x2e\x9e\x44", 4);
        return {{"Category", "ApplicationStatus"}, {"Id", "floor-qt6core"}, {"Title", "$ 0.00"}, {"Status", "Active"},
            {"IconName", ""}, {"ItemIsMenu", false}, {"IconPixmap", QVariant::fromValue(QList<Pixmap> {icon})},
            {"Menu", QVariant::fromValue(QDBusObjectPath("/MenuBar"))}};
    }
    static QVariantMap menuProperties() { return {{"Version", 3u}, {"Status", "normal"}}; }
    static Layout layout()
    {
        const Layout quit {1, {{"label", "Quit"}}, {}};
        return {0, {{"children-display", "submenu"}}, {QDBusVariant(QVariant::fromValue(quit))}};
    }
};

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    qDBusRegisterMetaType<Pixmap>();
    qDBusRegisterMetaType<QList<Pixmap>>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
    qDBusRegisterMetaType<Layout>();

    Item item;
    auto bus = QDBusConnection::sessionBus();
    const auto name = QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(app.applicationPid());
    bus.registerVirtualObject("/StatusNotifierItem", &item);
    bus.registerVirtualObject("/MenuBar", &item);
    bus.registerService(name);
    auto call = QDBusMessage::createMethodCall("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
        "org.kde.StatusNotifierWatcher", "RegisterStatusNotifierItem");
    call << name;
    bus.send(call);
    return QCoreApplication::exec();
}
