// The serial number, which comes from another place on each platform.

#include "tests/support/api_call.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::Failure;
using scripted::framed;
using scripted::Host;
using scripted::kFailingReplies;
using scripted::kPlatforms;
using scripted::OnPlatform;

constexpr const char *kReturnFalse = "KR_getSerialNumber-return UNI_ERROR_FALSE";
constexpr int32_t kOwnSerialPlatforms[] = {0, 2, PF_MTK, PF_SPEADTRUM, 7};

/** What is logged before the command. */
Log entry()
{
    Log log;
    log.api("KR_getSerialNumber-in");
    if (g_currentPlatform == PF_QC_LTE) log.api("KR_getSerialNumber-in-g_currentPlatform == PF_QC_LTE");
    return log;
}

const char *command()
{
    return g_currentPlatform == PF_QC_LTE ? "AT+CGSN" : "AT+ZMSN?";
}

struct SerialRow {
    const char *name;
    std::string reply;
    std::string paras;
    size_t needed;     ///< the least size that is taken
    std::string value; ///< as it is logged
    std::string bytes; ///< as they are written, where there is room
};

/** Expects that every size from the least that is taken gives the value, in a buffer of that size. */
void expectSerial(const SerialRow &row)
{
    for (const size_t more : {0U, 1U, 2U, 100U}) {
        const size_t size = row.needed + more;
        Host host;
        host.expect(command(), 5000, row.reply);
        const CallerBuffer buffer(size);
        EXPECT_EQ(KR_getSerialNumber(static_cast<int32_t>(size), buffer), UNI_ERROR_SUCCESS) << row.name;
        buffer.expect(row.bytes.substr(0, size), row.name);
        entry()
            .parsed(row.reply, row.paras, 1)
            .api("KR_getSerialNumber-out-pSerialNumber:%s", {row.value})
            .api("KR_getSerialNumber-return UNI_ERROR_SUCCESS")
            .expectFrom(host);
    }
    const auto needed = static_cast<int32_t>(row.needed);
    for (const int32_t size : {needed - 1, 0, -1, INT32_MIN}) {
        if (size >= needed) continue;
        Host host;
        host.expect(command(), 5000, row.reply);
        const CallerBuffer buffer(row.needed + 8);
        EXPECT_EQ(KR_getSerialNumber(size, buffer), UNI_ERROR_FALSE) << row.name << size;
        buffer.expect("", row.name);
        entry().parsed(row.reply, row.paras, 1).api(kReturnFalse).expectFrom(host);
    }
}

SerialRow lineRow(const char *name, const std::string &text, size_t needed, const std::string &value,
                  const std::string &bytes)
{
    return {name, framed({text.c_str()}), text, needed, value, bytes};
}

TEST(SerialNumber, IsPartOfTheImeiOnQualcomm)
{
    const OnPlatform on(PF_QC_LTE);
    const std::string end(1, '\0');
    const SerialRow rows[] = {
        lineRow("an IMEI", "861234567890123", 15, "789012", "789012" + end),
        lineRow("an IMEI with its version", "8612345678901234", 16, "789012", "789012" + end),
        {"named", framed({"+CGSN: 861234567890123"}), "861234567890123", 15, "789012", "789012" + end},
        {"quoted", framed({"+CGSN: \"861234567890123\""}), "\"861234567890123\"", 17, "678901", "678901" + end},
        lineRow("up to the last digit of the serial part", "86123456789012", 14, "789012", "789012" + end),
        lineRow("five digits of it", "8612345678901", 13, "78901", std::string("78901\0\0", 7)),
        lineRow("one digit of it", "861234567", 9, "7", std::string("7\0\0\0\0\0\0", 7)),
        lineRow("none of it", "86123456", 8, "", std::string(7, '\0')),
        lineRow("254 characters", filled(254), 254, filled(254).substr(8, 6), filled(254).substr(8, 6) + end),
        lineRow("255 characters", filled(255), 254, filled(254).substr(8, 6), filled(254).substr(8, 6) + end),
        lineRow("512 characters", filled(512), 254, filled(254).substr(8, 6), filled(254).substr(8, 6) + end),
    };
    for (const SerialRow &row : rows)
        expectSerial(row);
}

// An IMEI shorter than what is written of it: the size still bounds every byte.
TEST(SerialNumber, StaysInABufferThatFitsAStuntedImei)
{
    const OnPlatform on(PF_QC_LTE);
    for (const char *imei : {"", "8", "861", "861234"}) {
        const std::string reply = *imei != '\0' ? framed({imei}) : "\r\nOK\r\n";
        const size_t length = std::string(imei).size();
        Host host;
        host.expect("AT+CGSN", 5000, reply);
        const CallerBuffer buffer(length);
        EXPECT_EQ(KR_getSerialNumber(static_cast<int32_t>(length), buffer), UNI_ERROR_SUCCESS) << imei;
        if (length > 0) {
            EXPECT_EQ(*buffer, '\0') << imei;
        }
        entry()
            .parsed(reply, imei, 1)
            .api("KR_getSerialNumber-out-pSerialNumber:%s", {""})
            .api("KR_getSerialNumber-return UNI_ERROR_SUCCESS")
            .expectFrom(host);
    }
}

TEST(SerialNumber, IsTheModemsOwnElsewhere)
{
    const SerialRow rows[] = {
        lineRow("digits", "327B12345678", 12, "327B12345678", "327B12345678"),
        {"named", framed({"+ZMSN: 327B"}), "327B", 4, "327B", "327B"},
        {"named and quoted", framed({"+ZMSN: \"32 7B\""}), "\"32 7B\"", 7, "\"32 7B\"", "\"32 7B\""},
        {"none", "\r\nOK\r\n", "", 0, "", ""},
        lineRow("253 characters", filled(253), 253, filled(253), filled(253)),
        lineRow("254 characters", filled(254), 254, filled(254), filled(254)),
        lineRow("255 characters", filled(255), 254, filled(254), filled(254)),
        lineRow("256 characters", filled(256), 254, filled(254), filled(254)),
        lineRow("512 characters", filled(512), 254, filled(254), filled(254)),
        {"the longest", "\r\nN: \r\n" + repeated("7\r\n", 3408) + "\r\nOK\r\n", repeated(",\"7\"", 3408), 254,
         repeated(",\"7\"", 64).substr(0, 254), repeated(",\"7\"", 64).substr(0, 254)},
    };
    for (const int32_t platform : kOwnSerialPlatforms) {
        const OnPlatform on(platform);
        for (const SerialRow &row : rows)
            expectSerial(row);
    }
}

TEST(SerialNumber, DoesNotExistOnTsp)
{
    const OnPlatform on(PF_TSP);
    Host host;
    const CallerBuffer buffer(32);
    EXPECT_EQ(KR_getSerialNumber(32, buffer), UNI_ERROR_FALSE);
    buffer.expect("", "no command");
    Log()
        .api("KR_getSerialNumber-in")
        .api("KR_getSerialNumber-return UNI_ERROR_FALSE-g_currentPlatform == PF_TSP")
        .expectFrom(host);
}

TEST(SerialNumber, FailsWhenTheCommandCannotBeSent)
{
    for (const int32_t platform : kPlatforms) {
        if (platform == PF_TSP) continue;
        const OnPlatform on(platform);
        Host host;
        host.expectFailing(command(), 5000);
        const CallerBuffer buffer(32);
        EXPECT_EQ(KR_getSerialNumber(32, buffer), UNI_ERROR_FALSE) << platform;
        buffer.expect("", "send");
        entry().api(kReturnFalse).expectFrom(host);
    }
}

TEST(SerialNumber, FailsOnAnyOtherReply)
{
    for (const int32_t platform : kPlatforms) {
        if (platform == PF_TSP) continue;
        const OnPlatform on(platform);
        for (const Failure &failure : kFailingReplies) {
            Host host;
            host.expect(command(), 5000, *failure.reply);
            const CallerBuffer buffer(32);
            EXPECT_EQ(KR_getSerialNumber(32, buffer), UNI_ERROR_FALSE) << failure.name;
            buffer.expect("", failure.name);
            entry().failed(failure).api(kReturnFalse).expectFrom(host);
        }
    }
}

} // namespace
