#include "platform/linux/item/StatusItemFixture.h"

using namespace orvella;
using namespace Qt::StringLiterals;

/// How the item comes to the status areas of the session, whichever of them is there first.
class StatusItemRegistrationTest final : public QObject, private StatusItemFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

    void itRegistersByItsConnectionWhereAStatusAreaIsThere()
    {
        QVERIFY(m_area->start());

        show();

        QTRY_COMPARE(m_area->items(), QStringList {m_bus.baseService()});
    }

    void itRegistersWhenAStatusAreaComesLater()
    {
        show();
        QTest::qWait(50);

        QVERIFY(m_area->start());

        QTRY_COMPARE(m_area->items(), QStringList {m_bus.baseService()});
    }

    void itRegistersAgainWithARestartedStatusArea()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);

        m_area->stop();
        QTest::qWait(50);
        QVERIFY(m_area->start());

        QTRY_COMPARE(m_area->items(), QStringList {m_bus.baseService()});
    }

    void itRegistersWithAStatusAreaThatReplacesAnotherWithoutAPause()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);

        FakeStatusArea successor;
        m_area->stop();
        QVERIFY(successor.start());

        QTRY_COMPARE(successor.items(), QStringList {m_bus.baseService()});
    }

    void itNeverRegistersTwiceWithTheSameStatusArea()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);

        m_item->setAppearance(kAdReady);
        m_item->setAppearance(kBalance);
        QTest::qWait(100);

        QCOMPARE(m_area->items().size(), 1);
    }

    void aStatusAreaThatComesWhileTheItemLooksForItSeesItOnce()
    {
        show();
        QVERIFY(m_area->start());
        QTRY_COMPARE(m_area->items().size(), 1);

        QTest::qWait(100);

        QCOMPARE(m_area->items().size(), 1);
    }

    void itRegistersAgainWithAStatusAreaThatWasNotReady()
    {
        m_area->refuse(true);
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);
        QTest::qWait(50);

        m_area->refuse(false);
        m_area->announceHost();

        QTRY_COMPARE(m_area->items().size(), 2);
    }

    void itSaysWhetherThereIsAWatcherBeforeItRegisters()
    {
        QList<bool> known;
        qsizetype registeredBefore = -1;
        connect(m_item.get(), &StatusNotifierItem::watcherKnown, this, [&](bool isThere) {
            known.append(isThere);
            registeredBefore = m_area->items().size();
        });

        show();
        QTRY_COMPARE(known, QList<bool> {false});
        QVERIFY(m_area->start());
        QTRY_COMPARE(m_area->items().size(), 1);
        QCOMPARE(registeredBefore, 0);
        m_area->stop();

        QTRY_COMPARE(known, (QList<bool> {false, true, false}));
    }

    void aSecondPanelIsNoReasonToRegisterAgain()
    {
        showInArea();

        m_area->announceHost();
        QTest::qWait(100);

        QCOMPARE(m_area->items().size(), 1);
    }

    void itIsNotOnTheBusBeforeItIsShown()
    {
        QVERIFY(m_area->start());
        QTest::qWait(50);

        QCOMPARE(m_area->items(), QStringList());
        QVERIFY(!read(u"Id"_s).isValid());
    }
};

QTEST_MAIN(StatusItemRegistrationTest)

#include "StatusItemRegistrationTest.moc"
