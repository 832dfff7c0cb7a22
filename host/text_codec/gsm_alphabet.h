/** The default alphabet of 3GPP TS 23.038 and its extension table. */
#ifndef HOST_TEXT_CODEC_GSM_ALPHABET_H
#define HOST_TEXT_CODEC_GSM_ALPHABET_H

#include <cstdint>

namespace host {

constexpr uint8_t kGsmEscape = 0x1B;

/** @param septet  below 128; the escape is a blank */
char16_t gsmCharacter(uint8_t septet);

/** The character behind an escape: of the extension table, otherwise of the default alphabet. */
char16_t gsmExtension(uint8_t septet);

} // namespace host

#endif
