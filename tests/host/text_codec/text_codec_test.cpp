#include <array>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <iconv.h>

#include <gtest/gtest.h>

#include <mainControl/host.h>

namespace {

constexpr const char *kFailed = "(failed)";

std::string hexOf(const std::string &octets)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : octets) {
        text += kDigits[static_cast<unsigned char>(c) >> 4U];
        text += kDigits[static_cast<unsigned char>(c) & 0xFU];
    }
    return text;
}

/** Decodes into a buffer of exactly the room that the codec promises to keep to, so that sanitizers see it spill. */
std::string decoded(const std::string &hex)
{
    std::vector<char> room(hex.size() / 2 * 3 + 1, '?');
    const int result = CODE_Usc2orGsm7ToAscDecode(hex.c_str(), room.data(), 0);
    EXPECT_TRUE(result == 0 || result == 1);
    EXPECT_TRUE(result == 1 || room[0] == '\0') << hex;
    EXPECT_NE(std::memchr(room.data(), '\0', room.size()), nullptr) << hex;
    return result == 1 ? room.data() : kFailed;
}

std::string octetsOf(std::initializer_list<unsigned> values)
{
    std::string octets;
    for (const unsigned value : values)
        octets += static_cast<char>(value);
    return octets;
}

std::string decodedOctets(std::initializer_list<unsigned> values)
{
    return decoded(hexOf(octetsOf(values)));
}

/** UTF-8 of big-endian UTF-16, by the C library. */
std::string byIconv(std::string utf16)
{
    iconv_t converter = iconv_open("UTF-8", "UTF-16BE");
    std::array<char, 64> room{};
    char *in = utf16.data();
    char *out = room.data();
    size_t inLeft = utf16.size();
    size_t outLeft = room.size();
    const bool isConverted = iconv(converter, &in, &inLeft, &out, &outLeft) != static_cast<size_t>(-1);
    iconv_close(converter);
    return isConverted ? std::string(room.data(), out) : kFailed;
}

/** The default alphabet in the columns of its table, by name where it has no letter of its own. */
constexpr std::array<const char *, 128> kAlphabet = {
    "@",        "\xC2\xA3", "$",        "\xC2\xA5", "\xC3\xA8", "\xC3\xA9", "\xC3\xB9", "\xC3\xAC", "\xC3\xB2",
    "\xC3\x87", "\x0A",     "\xC3\x98", "\xC3\xB8", "\x0D",     "\xC3\x85", "\xC3\xA5", "\xCE\x94", "_",
    "\xCE\xA6", "\xCE\x93", "\xCE\x9B", "\xCE\xA9", "\xCE\xA0", "\xCE\xA8", "\xCE\xA3", "\xCE\x98", "\xCE\x9E",
    " ",        "\xC3\x86", "\xC3\xA6", "\xC3\x9F", "\xC3\x89", " ",        "!",        "\"",       "#",
    "\xC2\xA4", "%",        "&",        "'",        "(",        ")",        "*",        "+",        ",",
    "-",        ".",        "/",        "0",        "1",        "2",        "3",        "4",        "5",
    "6",        "7",        "8",        "9",        ":",        ";",        "<",        "=",        ">",
    "?",        "\xC2\xA1", "A",        "B",        "C",        "D",        "E",        "F",        "G",
    "H",        "I",        "J",        "K",        "L",        "M",        "N",        "O",        "P",
    "Q",        "R",        "S",        "T",        "U",        "V",        "W",        "X",        "Y",
    "Z",        "\xC3\x84", "\xC3\x96", "\xC3\x91", "\xC3\x9C", "\xC2\xA7", "\xC2\xBF", "a",        "b",
    "c",        "d",        "e",        "f",        "g",        "h",        "i",        "j",        "k",
    "l",        "m",        "n",        "o",        "p",        "q",        "r",        "s",        "t",
    "u",        "v",        "w",        "x",        "y",        "z",        "\xC3\xA4", "\xC3\xB6", "\xC3\xB1",
    "\xC3\xBC", "\xC3\xA0"};

TEST(TextCodec, KnowsTheWholeDefaultAlphabet)
{
    for (unsigned septet = 0; septet < 128; ++septet)
        EXPECT_EQ(decodedOctets({septet}), kAlphabet[septet]) << septet;
}

TEST(TextCodec, KnowsTheExtensionTable)
{
    for (unsigned septet = 0; septet < 128; ++septet) {
        std::string expected = kAlphabet[septet];
        switch (septet) {
        case 0x0A:
            expected = "\f";
            break;
        case 0x14:
            expected = "^";
            break;
        case 0x28:
            expected = "{";
            break;
        case 0x29:
            expected = "}";
            break;
        case 0x2F:
            expected = "\\";
            break;
        case 0x3C:
            expected = "[";
            break;
        case 0x3D:
            expected = "~";
            break;
        case 0x3E:
            expected = "]";
            break;
        case 0x40:
            expected = "|";
            break;
        case 0x65:
            expected = "\xE2\x82\xAC";
            break;
        default:
            break;
        }
        EXPECT_EQ(decodedOctets({0x41, 0x1B, septet}), "A" + expected) << septet;
    }
}

TEST(TextCodec, AgreesWithTheCLibraryOnAllOfUcs2)
{
    for (unsigned unit = 1; unit < 0xFFFF; ++unit) {
        const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
        const std::string pair = octetsOf({unit >> 8U, unit & 0xFFU});
        const std::string expected = isSurrogate ? "\xEF\xBF\xBD" : byIconv(pair);
        if (decoded("80" + hexOf(pair)) != expected) ADD_FAILURE() << "behind 80: " << unit;
        if (decoded(hexOf(octetsOf({0x82, 1, unit >> 8U, unit & 0xFFU, 0x80}))) != expected)
            ADD_FAILURE() << "from a base of 82: " << unit;
        // An octet that is in no GSM text shows plain UCS-2.
        const unsigned first = unit >> 8U;
        if ((first < 0x80 || first > 0x82) && decoded("00C4" + hexOf(pair)) != "\xC3\x84" + expected)
            ADD_FAILURE() << "plain: " << unit;
    }
    EXPECT_EQ(decodedOctets({0x80, 0xD8, 0x3D, 0xDE, 0x00}), byIconv(octetsOf({0xD8, 0x3D, 0xDE, 0x00})));
}

TEST(TextCodec, DecodesTheFormsOfASim)
{
    const struct {
        const char *hex;
        const char *text;
    } rows[] = {
        {"", ""},
        {"FF", ""},
        {"FFFFFFFF", ""},
        // GSM default alphabet, filled up
        {"4B6F7261FFFFFFFF", "Kora"},
        {"4b6f7261", "Kora"},
        {"4B6F72611B65", "Kora\xE2\x82\xAC"},
        {"411B", "A "},
        {"411B1B", "A "},
        {"41FF42", kFailed},
        {"41C342", kFailed},
        // plain UCS-2
        {"004B006F00720061", "Kora"},
        {"004B006F00720061FFFF", "Kora"},
        {"004B00FF", "K\xC3\xBF"},
        {"041F04400438", "\xD0\x9F\xD1\x80\xD0\xB8"},
        {"004120130042", "A\xE2\x80\x93"
                         "B"},
        {"4E2D56FD79FB52A8", "\xE4\xB8\xAD\xE5\x9B\xBD\xE7\xA7\xBB\xE5\x8A\xA8"},
        {"00410000FFFF", "A"},
        // UCS-2 behind 80
        {"804E2D", "\xE4\xB8\xAD"},
        {"80004B006FFFFF", "Ko"},
        {"80004B006FFF", "Ko"},
        {"80004B006F41", kFailed},
        {"80", ""},
        // GSM characters and one half-page of UCS-2
        {"810108C4", "\xD1\x84"},
        {"8105134B6F95A6FF", "Ko\xE0\xA6\x95\xE0\xA6\xA6\xE0\xA7\xBF"},
        {"8102081B65FFFF", "\xE2\x82\xAC"},
        {"81020841", kFailed},
        {"8100", kFailed},
        {"810008", ""},
        // and from any base
        {"820405304B8283FF", "K\xD4\xB2\xD4\xB3\xD6\xAF"},
        {"820505304B8283FF", kFailed},
        {"820305304B8283FF", "K\xD4\xB2\xD4\xB3"},
        {"820105308A", "\xD4\xBA"},
        {"8202", kFailed},
        // no hexadecimal octets
        {"4", kFailed},
        {"4G", kFailed},
        {"4B 6F", kFailed},
    };
    for (const auto &row : rows)
        EXPECT_EQ(decoded(row.hex), row.text) << row.hex;
}

TEST(TextCodec, KeepsToItsRoomWhateverItGets)
{
    std::mt19937 random(3);
    for (int round = 0; round < 20000; ++round) {
        std::string octets;
        for (size_t left = random() % 20; left > 0; --left)
            octets += static_cast<char>(random() % 4 == 0 ? 0x80 + random() % 3 : random());
        decoded(hexOf(octets)); // which looks at the terminator; sanitizers look at the rest
    }
}

TEST(TextCodec, FailsWithoutTexts)
{
    char room[4] = "abc";
    EXPECT_EQ(CODE_Usc2orGsm7ToAscDecode(nullptr, room, 0), 0);
    EXPECT_EQ(CODE_Usc2orGsm7ToAscDecode("41", nullptr, 0), 0);
    EXPECT_EQ(CODE_InvertNumbers(nullptr, room, 2), -1);
    EXPECT_EQ(CODE_InvertNumbers("12", nullptr, 2), -1);
    EXPECT_STREQ(room, "abc");
}

TEST(TextCodec, InvertsThePairs)
{
    const struct {
        const char *source;
        int32_t length;
        const char *inverted; ///< nullptr for a failure
    } rows[] = {
        {"", 0, ""},          {"1234", 4, "2143"},   {"64F00064F010", 12, "460F00460F01"},
        {"aFBc", 4, "FacB"},  {"123456", 4, "2143"}, {"123", 3, nullptr},
        {"1234", 3, nullptr}, {"12", 4, nullptr},    {"12G4", 4, nullptr},
        {"12 4", 4, nullptr}, {"1234", -2, nullptr},
    };
    for (const auto &row : rows) {
        char room[16] = "untouched";
        EXPECT_EQ(CODE_InvertNumbers(row.source, room, row.length), row.inverted != nullptr ? 0 : -1) << row.source;
        EXPECT_STREQ(room, row.inverted != nullptr ? row.inverted : "untouched") << row.source;
    }
}

TEST(TextCodec, InvertsTwiceToTheSameText)
{
    std::mt19937 random(4);
    for (int round = 0; round < 1000; ++round) {
        std::string octets;
        for (size_t left = random() % 40; left > 0; --left)
            octets += static_cast<char>(random());
        const std::string text = hexOf(octets);
        std::string inPlace = text;
        const auto length = static_cast<int32_t>(text.size());
        EXPECT_EQ(CODE_InvertNumbers(inPlace.c_str(), inPlace.data(), length), 0);
        for (size_t i = 0; i < text.size(); i += 2)
            EXPECT_TRUE(inPlace[i] == text[i + 1] && inPlace[i + 1] == text[i]);
        EXPECT_EQ(CODE_InvertNumbers(inPlace.c_str(), inPlace.data(), length), 0);
        EXPECT_EQ(inPlace, text);
    }
}

} // namespace
