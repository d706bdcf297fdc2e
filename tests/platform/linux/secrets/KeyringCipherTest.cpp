#include "platform/linux/secrets/KeyringCipher.h"

#include <QTest>

using namespace orvella;

namespace {

/// The prime of the second Oakley group (RFC 2409, section 6.2).
const auto kPrime = QByteArray::fromHex("FFFFFFFFFFFFFFFFC90FDAA22168C234C4C6628B80DC1CD129024E088A67CC74"
                                        "020BBEA63B139B22514A08798E3404DDEF9519B3CD3A431B302B0A6DF25F1437"
                                        "4FE1356D6D51C245E485B576625E7EC6F44C42E9A637ED6B0BFF5CB6F406B7ED"
                                        "EE386BFB5A899FA5AE9F24117C4B1FE649286651ECE65381FFFFFFFFFFFFFFFF");

} // namespace

class KeyringCipherTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatOneSealsTheOtherOpens_data()
    {
        QTest::addColumn<QByteArray>("plain");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a byte less than a block") << QByteArray(15, 'a');
        QTest::newRow("a block") << QByteArray(16, 'a');
        QTest::newRow("a token") << QByteArray("token-0123456789abcdef-0123456789abcdef");
        QTest::newRow("bytes that are no text") << QByteArray("\0\xFF\x80 \n", 5);
    }

    void whatOneSealsTheOtherOpens()
    {
        QFETCH(const QByteArray, plain);
        KeyringCipher program;
        KeyringCipher service;

        QVERIFY(program.agree(service.publicKey()));
        QVERIFY(service.agree(program.publicKey()));

        const auto opened = service.opened(program.sealed(Secret(plain)));
        QVERIFY(opened);
        QCOMPARE(opened->reveal(), plain);
    }

    void aSealedSecretShowsNothingAndIsNeverTheSame()
    {
        KeyringCipher program;
        const KeyringCipher service;
        QVERIFY(program.agree(service.publicKey()));
        const Secret secret("token-0123456789");

        const auto first = program.sealed(secret);
        const auto second = program.sealed(secret);

        QVERIFY(!first.value.contains("token"));
        QVERIFY(first.parameters != second.parameters);
        QVERIFY(first.value != second.value);
    }

    void anotherKeyDoesNotOpenIt()
    {
        KeyringCipher program;
        const KeyringCipher service;
        KeyringCipher stranger;
        QVERIFY(program.agree(service.publicKey()));
        QVERIFY(stranger.agree(service.publicKey()));
        const Secret secret("token-0123456789");

        const auto opened = stranger.opened(program.sealed(secret));

        QVERIFY(!opened || *opened != secret);
    }

    void whatIsCutIsNotOpened()
    {
        KeyringCipher program;
        KeyringCipher service;
        QVERIFY(program.agree(service.publicKey()));
        QVERIFY(service.agree(program.publicKey()));
        auto cut = program.sealed(Secret("token"));
        auto bare = cut;
        cut.value.chop(1);
        bare.parameters.clear();

        QVERIFY(!service.opened(cut));
        QVERIFY(!service.opened(bare));
        QVERIFY(!service.opened({}));
    }

    void aKeyThatKeepsNothingSecretIsRefused_data()
    {
        QTest::addColumn<QByteArray>("key");
        auto last = kPrime;
        last.back() = static_cast<char>(last.back() - 1);
        QTest::newRow("none") << QByteArray();
        QTest::newRow("0") << QByteArray(128, 0);
        QTest::newRow("1") << QByteArray(127, 0) + QByteArray(1, 1);
        QTest::newRow("the prime less one") << last;
        QTest::newRow("the prime") << kPrime;
        QTest::newRow("a longer number") << QByteArray(129, 1);
    }

    void aKeyThatKeepsNothingSecretIsRefused()
    {
        QFETCH(const QByteArray, key);

        QVERIFY(!KeyringCipher().agree(key));
    }

    void anyOtherKeyIsTaken()
    {
        auto key = kPrime;
        key.back() = static_cast<char>(key.back() - 2);

        QVERIFY(KeyringCipher().agree(key));
        QVERIFY(KeyringCipher().agree(QByteArray(1, 2)));
    }

    void aPublicKeyHasTheSizeOfThePrime()
    {
        for (int round = 0; round < 20; ++round) {
            const KeyringCipher cipher;
            QCOMPARE(cipher.publicKey().size(), kPrime.size());
            QVERIFY(cipher.publicKey() < kPrime);
        }
    }
};

QTEST_APPLESS_MAIN(KeyringCipherTest)

#include "KeyringCipherTest.moc"
