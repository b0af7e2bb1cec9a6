#include "batch/outputs/JsonString.h"

#include "input/Utf8Text.h"

namespace Quillon {

namespace {

std::string Escaped(unsigned char code) {
    const char* const digits = "0123456789abcdef";
    return {'\\', 'u', '0', '0', digits[code >> 4], digits[code & 15]};
}

} // namespace

std::string JsonString(const std::string& bytes) {
    std::string text = "\"";
    for (std::size_t i = 0; i < bytes.size();) {
        const auto code = static_cast<unsigned char>(bytes[i]);
        const std::size_t length = code < 0x80 ? 1 : Utf8SequenceLength(bytes, i);
        if (code == '"' || code == '\\')
            text += {'\\', bytes[i]};
        else if (length == 0 || code < 0x20 || code == 0x7F)
            text += Escaped(code);
        else
            text.append(bytes, i, length);
        i += length == 0 ? 1 : length;
    }
    return text + "\"";
}

} // namespace Quillon
