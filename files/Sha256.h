#pragma once
// The fingerprint by which a file is known again, whatever its name has become.

#include <string>
#include <string_view>

namespace Quillon {

// The SHA-256 of bytes (FIPS 180-4) as 64 hexadecimal digits in small letters.
std::string Sha256(std::string_view bytes);

} // namespace Quillon
