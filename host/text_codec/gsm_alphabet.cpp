#include "host/text_codec/gsm_alphabet.h"

#include <algorithm>
#include <string_view>

namespace host {
namespace {

constexpr std::u16string_view kDefault = u"@£$¥èéùìòÇ\nØø\rÅå"
                                         u"Δ_ΦΓΛΩΠΨΣΘΞ ÆæßÉ"
                                         u" !\"#¤%&'()*+,-./"
                                         u"0123456789:;<=>?"
                                         u"¡ABCDEFGHIJKLMNO"
                                         u"PQRSTUVWXYZÄÖÑÜ§"
                                         u"¿abcdefghijklmno"
                                         u"pqrstuvwxyzäöñüà";
static_assert(kDefault.size() == 128);

struct Extension {
    uint8_t septet;
    char16_t character;
};

constexpr Extension kExtensions[] = {{0x0A, u'\f'}, {0x14, u'^'}, {0x28, u'{'}, {0x29, u'}'}, {0x2F, u'\\'},
                                     {0x3C, u'['},  {0x3D, u'~'}, {0x3E, u']'}, {0x40, u'|'}, {0x65, u'€'}};

} // namespace

char16_t gsmCharacter(uint8_t septet)
{
    return kDefault[septet];
}

char16_t gsmExtension(uint8_t septet)
{
    const auto *const found = std::find_if(std::begin(kExtensions), std::end(kExtensions),
                                           [=](const Extension &row) { return row.septet == septet; });
    return found != std::end(kExtensions) ? found->character : gsmCharacter(septet);
}

} // namespace host
