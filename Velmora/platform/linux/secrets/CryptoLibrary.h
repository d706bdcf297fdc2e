#pragma once

#include <openssl/bn.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

namespace orvella {

/// OpenSSL's libcrypto, loaded when the keyring is first asked: with its millions of bytes it would take a twentieth of
/// the program's start. The functions are OpenSSL's own.
class CryptoLibrary final {
public:
    /// Ends the program where the library is missing or lacks a function, as the system's loader would.
    CryptoLibrary();

    decltype(&BN_new) bnNew = nullptr;
    decltype(&BN_clear_free) bnClearFree = nullptr;
    decltype(&BN_set_flags) bnSetFlags = nullptr;
    decltype(&BN_set_word) bnSetWord = nullptr;
    decltype(&BN_sub_word) bnSubWord = nullptr;
    decltype(&BN_cmp) bnCmp = nullptr;
    decltype(&BN_value_one) bnValueOne = nullptr;
    decltype(&BN_bin2bn) bnBin2bn = nullptr;
    decltype(&BN_bn2binpad) bnBn2binpad = nullptr;
    decltype(&BN_priv_rand) bnPrivRand = nullptr;
    decltype(&BN_mod_exp) bnModExp = nullptr;
    decltype(&BN_CTX_secure_new) bnCtxSecureNew = nullptr;
    decltype(&BN_CTX_free) bnCtxFree = nullptr;
    decltype(&BN_get_rfc2409_prime_1024) bnGetRfc2409Prime1024 = nullptr;
    decltype(&RAND_bytes) randBytes = nullptr;
    decltype(&EVP_aes_128_cbc) evpAes128Cbc = nullptr;
    decltype(&EVP_CIPHER_CTX_new) evpCipherCtxNew = nullptr;
    decltype(&EVP_CIPHER_CTX_free) evpCipherCtxFree = nullptr;
    decltype(&EVP_EncryptInit_ex) evpEncryptInit = nullptr;
    decltype(&EVP_EncryptUpdate) evpEncryptUpdate = nullptr;
    decltype(&EVP_EncryptFinal_ex) evpEncryptFinal = nullptr;
    decltype(&EVP_DecryptInit_ex) evpDecryptInit = nullptr;
    decltype(&EVP_DecryptUpdate) evpDecryptUpdate = nullptr;
    decltype(&EVP_DecryptFinal_ex) evpDecryptFinal = nullptr;
};

} // namespace orvella
