#include "files/Sha256.h"

#include <array>
#include <cstdint>
#include <nettle/sha2.h>

namespace Quillon {

std::string Sha256(std::string_view bytes) {
    sha256_ctx state;
    sha256_init(&state);
    sha256_update(&state, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&state, digest.size(), digest.data());
    std::string text;
    for (const std::uint8_t byte : digest)
        text += {"0123456789abcdef"[byte >> 4U], "0123456789abcdef"[byte & 15U]};
    return text;
}

} // namespace Quillon
