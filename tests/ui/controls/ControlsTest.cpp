#include "support/FakePlatform.h"
#include "ui/controls/Button.h"
#include "ui/controls/CheckBox.h"
#include "ui/controls/IconButton.h"
#include "ui/controls/LinkButton.h"
#include "ui/controls/SwitchRow.h"

#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakeLook desktop;
    Look look {desktop};
};

/// Whether a ring is drawn where none of the control itself is: just inside of the widget's edge.
bool hasRing(QWidget& control, const Look& look)
{
    QImage image(control.size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    control.render(&image, {}, {}, QWidget::DrawChildren);
    return image.pixelColor(image.width() / 2, 1) == look.theme().ink;
}

void focus(QWidget& window, QWidget& control, Qt::FocusReason reason)
{
    window.show();
    QApplication::setActiveWindow(&window);
    control.clearFocus();
    control.setFocus(reason);
}

} // namespace

class ControlsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theWholeRowIsTheTarget_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::newRow("on the label") << QPoint(20, 16);
        QTest::newRow("between label and switch") << QPoint(150, 16);
        QTest::newRow("on the switch") << QPoint(290, 16);
        QTest::newRow("in the gap above") << QPoint(150, 1);
        QTest::newRow("in the gap below") << QPoint(150, 30);
    }

    void theWholeRowIsTheTarget()
    {
        QFETCH(const QPoint, place);
        World world;
        SwitchRow row(world.look, u"Auto open ads"_s);
        row.resize(QSize(300, 16).grownBy(row.reach()));

        QTest::mouseClick(&row, Qt::LeftButton, {}, place);

        QVERIFY(row.isChecked());
    }

    void aRowIsAtLeast24PointsHigh()
    {
        World world;

        QVERIFY(SwitchRow(world.look, u"Text"_s).sizeHint().height() >= 24);
        QVERIFY(CheckBox(world.look, u"Text"_s).sizeHint().height() >= 24);
    }

    void inAColumnARowTakesItsPlaceOnlyAndReachesIntoTheGaps()
    {
        World world;
        QWidget window;
        auto* const first = new SwitchRow(world.look, u"First"_s);
        auto* const second = new SwitchRow(world.look, u"Second"_s);

        window.setLayout(column(16, {first, second}));
        window.resize(window.layout()->sizeHint());
        window.show();

        QCOMPARE(window.height(), 16 + 16 + 16);
        QCOMPARE(first->geometry().bottom() + 1, second->geometry().top());
    }

    void spaceTogglesWhatHasTheKeyboard()
    {
        World world;
        SwitchRow row(world.look, u"Text"_s);

        QTest::keyClick(&row, Qt::Key_Space);

        QVERIFY(row.isChecked());
    }

    void aDisabledRowCannotBeToggledButKeepsItsHelp()
    {
        World world;
        SwitchRow row(world.look, u"Text"_s);
        row.setToolTip(u"Why not"_s);
        row.setEnabled(false);
        row.resize(row.sizeHint());

        QTest::mouseClick(&row, Qt::LeftButton);

        QVERIFY(!row.isChecked());
        QCOMPARE(row.toolTip(), u"Why not"_s);
    }

    void theRingShowsOnlyToThoseWhoUseTheKeyboard()
    {
        World world;
        QWidget window;
        window.resize(200, 100);
        Button button(world.look, Button::Kind::plain, u"Text"_s);
        button.setParent(&window);
        button.resize(button.sizeHint());

        focus(window, button, Qt::MouseFocusReason);
        QVERIFY(button.hasFocus());
        QVERIFY(!hasRing(button, world.look));

        focus(window, button, Qt::TabFocusReason);
        QVERIFY(hasRing(button, world.look));

        button.clearFocus();
        QVERIFY(!hasRing(button, world.look));
    }

    void aClickLeavesTheKeyboardWhereItIs()
    {
        World world;
        QWidget window;
        window.setFocusPolicy(Qt::ClickFocus);
        Button button(world.look, Button::Kind::plain, u"Text"_s);
        button.setParent(&window);
        button.resize(button.sizeHint());
        focus(window, window, Qt::OtherFocusReason);

        QTest::mouseClick(&button, Qt::LeftButton);

        QVERIFY(!button.hasFocus());
    }

    void returnFollowsALinkAndPressesAnIcon()
    {
        World world;
        LinkButton link(world.look, u"Link"_s);
        IconButton icon(world.look, Symbol::info, 44);
        const QSignalSpy followed(&link, &QPushButton::clicked);
        const QSignalSpy pressed(&icon, &QPushButton::clicked);

        QTest::keyClick(&link, Qt::Key_Return);
        QTest::keyClick(&icon, Qt::Key_Enter);
        QTest::keyClick(&icon, Qt::Key_Space);

        QCOMPARE(followed.count(), 1);
        QCOMPARE(pressed.count(), 2);
    }

    void anIconIsAsTallATargetAsItsRow()
    {
        World world;

        QCOMPARE(IconButton(world.look, Symbol::close, 44).sizeHint().height(), 44);
    }

    void theRolesAreThoseThatTheyLookLike()
    {
        World world;
        SwitchRow row(world.look, u"Row"_s);
        CheckBox box(world.look, u"Box"_s);
        Button button(world.look, Button::Kind::prominent, u"Button"_s);
        LinkButton link(world.look, u"Link"_s);

        const auto role = [](QWidget& widget) { return QAccessible::queryAccessibleInterface(&widget)->role(); };
        const auto name = [](QWidget& widget) {
            return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
        };
        QCOMPARE(role(row), QAccessible::CheckBox);
        QCOMPARE(role(box), QAccessible::CheckBox);
        QCOMPARE(role(button), QAccessible::Button);
        QCOMPARE(role(link), QAccessible::Link);
        QCOMPARE(name(row), u"Row"_s);
        QCOMPARE(name(link), u"Link"_s);
    }

    void assistiveTechnologyFollowsALink()
    {
        World world;
        LinkButton link(world.look, u"Link"_s);
        const QSignalSpy followed(&link, &QPushButton::clicked);

        auto* const actions = QAccessible::queryAccessibleInterface(&link)->actionInterface();
        QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        actions->doAction(QAccessibleActionInterface::pressAction());

        QCOMPARE(followed.count(), 1);
    }

    void aButtonIsAsWideAsItsTextAndPadding()
    {
        World world;
        Button button(world.look, Button::Kind::plain, QString());
        QCOMPARE(button.sizeHint().shrunkBy(button.reach()), QSize(26, 28));

        button.setLeastWidth(80);

        QCOMPARE(button.sizeHint().shrunkBy(button.reach()).width(), 80);
    }
};

QTEST_MAIN(ControlsTest)

#include "ControlsTest.moc"
