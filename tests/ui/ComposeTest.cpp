#include "ui/Compose.h"

#include <QLabel>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

QWidget* box(int width, int height)
{
    auto* const widget = new QWidget;
    widget->setFixedSize(width, height);
    return widget;
}

/// Ten points each way, and beyond them one, two, three and four.
class Reacher final : public QWidget, public Reaching {
public:
    Reacher() { setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

    [[nodiscard]] QMargins reach() const override { return {1, 2, 3, 4}; }
    [[nodiscard]] QSize sizeHint() const override { return QSize(10, 10).grownBy(reach()); }
};

QWidget* shown(QWidget& window, QLayout* layout, QSize size)
{
    window.setLayout(layout);
    window.resize(size);
    window.show();
    return &window;
}

} // namespace

class ComposeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aColumnLeavesTheSameSpaceBetweenItsEntries()
    {
        QWidget window;
        auto* const first = box(20, 10);
        auto* const second = box(20, 10);

        shown(window, column(16, {first, second, FlexibleSpace {}}), {100, 100});

        QCOMPARE(first->y(), 0);
        QCOMPARE(second->y(), 26);
    }

    void aRowCentresItsEntriesAndPushesThemApart()
    {
        QWidget window;
        auto* const low = box(20, 10);
        auto* const high = box(20, 30);

        shown(window, row(0, {low, FlexibleSpace {}, high}), {100, 30});

        QCOMPARE(low->geometry(), QRect(0, 10, 20, 10));
        QCOMPARE(high->x(), 80);
    }

    void aRowRunsInTheDirectionOfReading()
    {
        QWidget window;
        window.setLayoutDirection(Qt::RightToLeft);
        auto* const first = box(20, 10);

        shown(window, row(0, {first, FlexibleSpace {}}), {100, 10});

        QCOMPARE(first->x(), 80);
    }

    void whatReachesKeepsItsPlace_data()
    {
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::addColumn<QRect>("geometry");
        QTest::newRow("left to right") << Qt::LeftToRight << QRect(30 - 1, 30 - 2, 14, 16);
        QTest::newRow("right to left") << Qt::RightToLeft << QRect(60 - 3, 30 - 2, 14, 16);
    }

    void whatReachesKeepsItsPlace()
    {
        QFETCH(const Qt::LayoutDirection, direction);
        QFETCH(const QRect, geometry);
        QWidget window;
        window.setLayoutDirection(direction);
        auto* const reacher = new Reacher;

        shown(window, padded({30, 30, 30, 30}, row(0, {reacher, FlexibleSpace {}})), {100, 70});

        QCOMPARE(reacher->geometry(), geometry);
    }

    void aPartThatDoesNotApplyIsNotThere()
    {
        QWidget window;
        int built = 0;
        auto* const part = new Conditional([&built] {
            ++built;
            auto* const label = new QLabel;
            label->setObjectName(u"part"_s);
            label->setFixedHeight(10);
            return label;
        });
        auto* const last = box(20, 10);
        shown(window, column(16, {box(20, 10), part, last, FlexibleSpace {}}), {100, 100});
        QVERIFY(!window.findChild<QLabel*>(u"part"_s));
        QCOMPARE(last->y(), 26);

        part->setPresent(true);
        part->setPresent(true);
        QTRY_COMPARE(last->y(), 52);
        QVERIFY(window.findChild<QLabel*>(u"part"_s));
        QCOMPARE(built, 1);

        part->setPresent(false);
        QTRY_COMPARE(last->y(), 26);
        QVERIFY(!window.findChild<QLabel*>(u"part"_s));
    }
};

QTEST_MAIN(ComposeTest)

#include "ComposeTest.moc"
