// The default profile: the bearer of context 1, then the context of the profile.

#include "tests/support/api_call.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::Failure;
using scripted::Host;
using scripted::kFailures;
using scripted::kPlatforms;
using scripted::OnPlatform;

constexpr const char *kOk = "\r\nOK\r\n";
constexpr const char *kName = "KR_setDefaultProfile";

struct Profile {
    int32_t cid = 1;
    int32_t type = 0;
    const char *address = "";
    const char *primaryDns = "";
    const char *secondaryDns = "";
    int32_t authentication = 0;
    const char *name = "";
    const char *apn = "";
    const char *dialNumber = "";
    const char *user = "";
    const char *password = "";

    [[nodiscard]] uint32_t set() const
    {
        return KR_setDefaultProfile(cid, type, address, primaryDns, secondaryDns, authentication, name, apn, dialNumber,
                                    user, password);
    }
};

std::string orNull(const char *text)
{
    return text != nullptr ? text : "(null)";
}

Log entry(const Profile &profile)
{
    return Log()
        .api("%s: profileCid:%d", {kName, std::to_string(profile.cid)})
        .api("%s: pPDPType:%d", {kName, std::to_string(profile.type)})
        .api("%s: pIPAddress:%s", {kName, orNull(profile.address)})
        .api("%s: pPrimaryDNS:%s", {kName, orNull(profile.primaryDns)})
        .api("%s: pSecondaryDNS:%s", {kName, orNull(profile.secondaryDns)})
        .api("%s: pAuthentication:%d", {kName, std::to_string(profile.authentication)})
        .api("%s: pName:%s", {kName, orNull(profile.name)})
        .api("%s: pAPNName:%s", {kName, orNull(profile.apn)})
        .api("%s: pDialNum:%s", {kName, orNull(profile.dialNumber)})
        .api("%s: pUsername:%s", {kName, orNull(profile.user)})
        .api("%s: pPassword:%s", {kName, orNull(profile.password)});
}

void bearerFailed(Log &log)
{
    log.api("###T9LB LOG### %s-cgdflt Set failed\n", {kName});
}

void contextFailed(Log &log)
{
    log.api("%s:-return UNI_ERROR_FALSE-cgdcontSet failed", {kName});
}

/** Expects both commands, in order, and success. */
void expectSet(const Profile &profile, const std::string &bearer, const std::string &context)
{
    Host host;
    host.expect(bearer, 5000, kOk).expect(context, 5000, kOk);
    EXPECT_EQ(profile.set(), UNI_ERROR_SUCCESS) << context;
    entry(profile).parsed(kOk, "", 1).parsed(kOk, "", 1).api("%s:-return UNI_ERROR_SUCCESS", {kName}).expectFrom(host);
}

TEST(DefaultProfile, SetsTheBearerOfContextOneAndThenTheContext)
{
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        expectSet({.cid = 5, .type = 3, .apn = "internet"}, "AT*CGDFLT=1,\"IPV4V6\",\"internet\",,1",
                  "AT+CGDCONT=5,\"IPV4V6\",\"internet\",\"\",0,0");
        expectSet({.type = 0, .address = "10.0.0.1", .apn = "net"}, "AT*CGDFLT=1,\"IP\",\"net\",,1",
                  "AT+CGDCONT=1,\"IP\",\"net\",\"10.0.0.1\",0,0");
    }
}

struct TypeRow {
    int32_t type;
    const char *text;
};

TEST(DefaultProfile, NamesThreeTypes)
{
    const TypeRow rows[] = {{0, "IP"}, {1, ""},  {2, "IPV6"}, {3, "IPV4V6"},   {4, ""},
                            {5, ""},   {-1, ""}, {256, ""},   {INT32_MIN, ""}, {INT32_MAX, ""}};
    for (const TypeRow &row : rows) {
        expectSet({.cid = 2, .type = row.type, .apn = "a"}, std::string("AT*CGDFLT=1,\"") + row.text + "\",\"a\",,1",
                  std::string("AT+CGDCONT=2,\"") + row.text + "\",\"a\",\"\",0,0");
    }
}

TEST(DefaultProfile, PassesAnyContextNumber)
{
    for (const int32_t cid : {0, 1, 2, 16, 17, -1, INT32_MIN, INT32_MAX}) {
        expectSet({.cid = cid, .apn = "a"}, "AT*CGDFLT=1,\"IP\",\"a\",,1",
                  "AT+CGDCONT=" + std::to_string(cid) + ",\"IP\",\"a\",\"\",0,0");
    }
}

TEST(DefaultProfile, TakesMissingTextsForEmptyOnes)
{
    expectSet({.address = nullptr, .apn = nullptr}, "AT*CGDFLT=1,\"IP\",\"\",,1", "AT+CGDCONT=1,\"IP\",\"\",\"\",0,0");
    expectSet({.address = nullptr, .apn = "a"}, "AT*CGDFLT=1,\"IP\",\"a\",,1", "AT+CGDCONT=1,\"IP\",\"a\",\"\",0,0");
    expectSet({.address = "::1", .apn = nullptr}, "AT*CGDFLT=1,\"IP\",\"\",,1", "AT+CGDCONT=1,\"IP\",\"\",\"::1\",0,0");
    expectSet({.address = nullptr,
               .primaryDns = nullptr,
               .secondaryDns = nullptr,
               .name = nullptr,
               .apn = nullptr,
               .dialNumber = nullptr,
               .user = nullptr,
               .password = nullptr},
              "AT*CGDFLT=1,\"IP\",\"\",,1", "AT+CGDCONT=1,\"IP\",\"\",\"\",0,0");
}

TEST(DefaultProfile, LogsWhatItDoesNotSend)
{
    expectSet({.cid = 3,
               .type = 2,
               .address = "fe80::1",
               .primaryDns = "8.8.8.8",
               .secondaryDns = "8.8.4.4",
               .authentication = -2147483647 - 1,
               .name = "my profile",
               .apn = "a,\"b\" %s",
               .dialNumber = "*99#",
               .user = "someone",
               .password = "secret %d"},
              "AT*CGDFLT=1,\"IPV6\",\"a,\"b\" %s\",,1", "AT+CGDCONT=3,\"IPV6\",\"a,\"b\" %s\",\"fe80::1\",0,0");
    const std::string longText = filled(1500);
    expectSet({.primaryDns = longText.c_str(),
               .secondaryDns = longText.c_str(),
               .authentication = 2,
               .name = longText.c_str(),
               .dialNumber = longText.c_str(),
               .user = longText.c_str(),
               .password = longText.c_str()},
              "AT*CGDFLT=1,\"IP\",\"\",,1", "AT+CGDCONT=1,\"IP\",\"\",\"\",0,0");
}

TEST(DefaultProfile, SendsTextsThatFillTheirFields)
{
    for (const size_t apnLength : {1U, 99U, 100U}) {
        for (const size_t addressLength : {1U, 28U, 29U}) {
            const GuardedText apn(filled(apnLength));
            const GuardedText address(filled(addressLength));
            expectSet({.type = 3, .address = address, .apn = apn}, "AT*CGDFLT=1,\"IPV4V6\",\"" + apn.str() + "\",,1",
                      "AT+CGDCONT=1,\"IPV4V6\",\"" + apn.str() + "\",\"" + address.str() + "\",0,0");
        }
    }
}

TEST(DefaultProfile, SendsNothingWhenATextDoesNotFit)
{
    const std::pair<size_t, size_t> lengths[] = {{101, 0},  {0, 30},     {101, 30},    {100, 30},
                                                 {101, 29}, {255, 1},    {1, 255},     {512, 512},
                                                 {2000, 0}, {0, 100000}, {100000, 30}, {65536, 65536}};
    for (const auto &[apnLength, addressLength] : lengths) {
        const GuardedText apn(filled(apnLength));
        const GuardedText address(filled(addressLength));
        const Profile profile = {.cid = 4, .type = 3, .address = address, .apn = apn};
        Host host;
        EXPECT_EQ(profile.set(), UNI_ERROR_FALSE) << apnLength << ' ' << addressLength;
        Log log = entry(profile);
        bearerFailed(log);
        contextFailed(log);
        log.expectFrom(host);
    }
}

void script(Host &host, const std::string &command, const Failure &failure)
{
    if (failure.reply)
        host.expect(command, 5000, *failure.reply);
    else
        host.expectFailing(command, 5000);
}

const Profile kProfile = {.cid = 6, .type = 2, .apn = "a", .password = "p"};
constexpr const char *kBearer = "AT*CGDFLT=1,\"IPV6\",\"a\",,1";
constexpr const char *kContext = "AT+CGDCONT=6,\"IPV6\",\"a\",\"\",0,0";

TEST(DefaultProfile, SucceedsWithoutTheBearer)
{
    for (const Failure &failure : kFailures) {
        Host host;
        script(host, kBearer, failure);
        host.expect(kContext, 5000, kOk);
        EXPECT_EQ(kProfile.set(), UNI_ERROR_SUCCESS) << failure.name;
        Log log = entry(kProfile).failed(failure);
        bearerFailed(log);
        log.parsed(kOk, "", 1).api("%s:-return UNI_ERROR_SUCCESS", {kName}).expectFrom(host);
    }
}

TEST(DefaultProfile, FailsWithoutTheContext)
{
    for (const Failure &failure : kFailures) {
        Host host;
        host.expect(kBearer, 5000, kOk);
        script(host, kContext, failure);
        EXPECT_EQ(kProfile.set(), UNI_ERROR_FALSE) << failure.name;
        Log log = entry(kProfile).parsed(kOk, "", 1).failed(failure);
        contextFailed(log);
        log.expectFrom(host);
    }
}

TEST(DefaultProfile, FailsWithoutBoth)
{
    for (const Failure &bearer : kFailures) {
        for (const Failure &context : kFailures) {
            Host host;
            script(host, kBearer, bearer);
            script(host, kContext, context);
            EXPECT_EQ(kProfile.set(), UNI_ERROR_FALSE);
            Log log = entry(kProfile).failed(bearer);
            bearerFailed(log);
            log.failed(context);
            contextFailed(log);
            log.expectFrom(host);
        }
    }
}

} // namespace
