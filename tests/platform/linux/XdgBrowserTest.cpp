#include "platform/linux/XdgBrowser.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// A stand-in for xdg-open, first in PATH, writes down what it is asked to open.
class XdgBrowserTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        QFile program(m_folder.filePath(u"xdg-open"_s));
        QVERIFY(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\nfor word; do printf '%s\\n' \"$word\"; done >>'" + record().toUtf8() + "'\n");
        program.close();
        QVERIFY(program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        qputenv("PATH", QFile::encodeName(m_folder.path()) + ':' + qgetenv("PATH"));
    }

    void init() { QFile::remove(record()); }

    void aPageIsOpenedExactlyAsItsAddressReads_data()
    {
        QTest::addColumn<QByteArray>("address");

        for (const auto* const address : {"https://example.com/", "http://127.0.0.1:8787/viewer?a=b%20c&d=e#f",
                 "https://example.com/$(touch%20x)%60touch%60;'x'", "https://xn--bcher-kva.example/%C3%A4"})
            QTest::newRow(address) << QByteArray(address);
    }

    void aPageIsOpenedExactlyAsItsAddressReads()
    {
        QFETCH(QByteArray, address);

        QVERIFY(XdgBrowser().open(QUrl::fromEncoded(address)));

        QTRY_COMPARE(opened(), address + '\n');
    }

    void nothingButAWebAddressIsOpened()
    {
        for (const auto& text : {u"file:///etc/passwd"_s, u"javascript:alert(1)"_s, u"/etc/passwd"_s,
                 u"mailto:a@b.example"_s, u"https://user@example.com/"_s, u""_s})
            QVERIFY2(!XdgBrowser().open(QUrl(text)), qUtf8Printable(text));

        // What was to be opened before would be on record by the time this one is.
        QVERIFY(XdgBrowser().open(QUrl(u"https://example.com/last"_s)));
        QTRY_COMPARE(opened(), "https://example.com/last\n");
    }

private:
    [[nodiscard]] QString record() const { return m_folder.filePath(u"record"_s); }

    [[nodiscard]] QByteArray opened() const
    {
        QFile file(record());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_folder;
};

QTEST_MAIN(XdgBrowserTest)

#include "XdgBrowserTest.moc"
