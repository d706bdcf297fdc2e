#include "platform/linux/secrets/CryptoLibrary.h"

#include "base/LateLibrary.h"

namespace orvella {

static_assert(OPENSSL_VERSION_MAJOR == 3);

CryptoLibrary::CryptoLibrary()
{
    LateLibrary library(QStringLiteral("crypto"), OPENSSL_SHLIB_VERSION);
    library.find(bnNew, "BN_new");
    library.find(bnClearFree, "BN_clear_free");
    library.find(bnSetFlags, "BN_set_flags");
    library.find(bnSetWord, "BN_set_word");
    library.find(bnSubWord, "BN_sub_word");
    library.find(bnCmp, "BN_cmp");
    library.find(bnValueOne, "BN_value_one");
    library.find(bnBin2bn, "BN_bin2bn");
    library.find(bnBn2binpad, "BN_bn2binpad");
    library.find(bnPrivRand, "BN_priv_rand");
    library.find(bnModExp, "BN_mod_exp");
    library.find(bnCtxSecureNew, "BN_CTX_secure_new");
    library.find(bnCtxFree, "BN_CTX_free");
    library.find(bnGetRfc2409Prime1024, "BN_get_rfc2409_prime_1024");
    library.find(randBytes, "RAND_bytes");
    library.find(evpAes128Cbc, "EVP_aes_128_cbc");
    library.find(evpCipherCtxNew, "EVP_CIPHER_CTX_new");
    library.find(evpCipherCtxFree, "EVP_CIPHER_CTX_free");
    library.find(evpEncryptInit, "EVP_EncryptInit_ex");
    library.find(evpEncryptUpdate, "EVP_EncryptUpdate");
    library.find(evpEncryptFinal, "EVP_EncryptFinal_ex");
    library.find(evpDecryptInit, "EVP_DecryptInit_ex");
    library.find(evpDecryptUpdate, "EVP_DecryptUpdate");
    library.find(evpDecryptFinal, "EVP_DecryptFinal_ex");
    if (!library.isWhole())
        qFatal("libcrypto cannot be used: %s", qUtf8Printable(library.missing()));
}

} // namespace orvella
