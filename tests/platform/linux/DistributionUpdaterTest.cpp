#include "platform/linux/DistributionUpdater.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

QList<QMessageBox*> notices()
{
    QList<QMessageBox*> found;
    for (auto* const widget : QApplication::topLevelWidgets()) {
        if (auto* const box = qobject_cast<QMessageBox*>(widget))
            found.append(box);
    }
    return found;
}

} // namespace

class DistributionUpdaterTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_updater = std::make_unique<DistributionUpdater>(); }

    void cleanup()
    {
        m_updater.reset();
        QVERIFY(notices().isEmpty());
    }

    void startingShowsNothing()
    {
        m_updater->start();
        QTest::qWait(50);

        QVERIFY(notices().isEmpty());
    }

    void askingForUpdatesSaysWhereTheyComeFrom()
    {
        m_updater->checkForUpdates();

        QCOMPARE(notices().size(), 1);
        const auto* const notice = notices().constFirst();
        QVERIFY(notice->isVisible());
        QVERIFY(!notice->isModal());
        QCOMPARE(notice->objectName(), u"updateNotice"_s);
        QCOMPARE(notice->windowTitle(), u"Orvella"_s);
        QCOMPARE(notice->text(),
            u"Orvella is updated together with your system. Look for updates in your software centre."_s);
    }

    void askingAgainBringsTheSameNoticeToTheFront()
    {
        m_updater->checkForUpdates();
        auto* const first = notices().constFirst();
        QWidget other;
        other.show();
        other.activateWindow();
        QTRY_VERIFY(other.isActiveWindow());

        m_updater->checkForUpdates();

        QCOMPARE(notices(), QList {first});
        QTRY_VERIFY(first->isActiveWindow());
    }

    void aClosedNoticeIsGoneAndTheNextOneIsNew()
    {
        m_updater->checkForUpdates();
        const QPointer<QMessageBox> first(notices().constFirst());

        QTest::mouseClick(first->button(QMessageBox::Ok), Qt::LeftButton);

        QTRY_VERIFY(!first);
        m_updater->checkForUpdates();
        QCOMPARE(notices().size(), 1);
        QVERIFY(notices().constFirst()->isVisible());
    }

private:
    std::unique_ptr<DistributionUpdater> m_updater;
};

QTEST_MAIN(DistributionUpdaterTest)

#include "DistributionUpdaterTest.moc"
