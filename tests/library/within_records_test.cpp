// Two texts outgrow their field and run on into the one behind it, as hosts expect. The sanitizers are silent because the
// record is all that is written, not because nobody looks: a byte beyond the record does not pass.

#include <cstring>
#include <memory>

#include <gtest/gtest.h>

#include "tests/support/record_at.h"
#include "tests/support/sample_text.h"
#include "tests/support/scripted_host.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define IS_SANITIZED
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define IS_SANITIZED
#endif

namespace {

constexpr size_t kEntries = 100;
constexpr int32_t kScanTimeoutMs = 180000;

/** As many operators as a list has entries, the last one with the longest short name. */
std::string fullScan()
{
    std::string reply;
    for (size_t i = 1; i < kEntries; ++i)
        reply += "\r\n+COPS: 1,\"L\",\"S\",\"46001\",7\r\n";
    return reply + "\r\n+COPS: 1,\"L\",\"" + filled(32) + "\"\r\n\r\nOK\r\n";
}

/** Calls copsTest() with a list at an address. */
void scanInto(char *list)
{
    scripted::Host host;
    host.expect("AT+COPS=?", kScanTimeoutMs, fullScan());
    EXPECT_EQ(copsTest(recordAt<ScanNetworkList>(list)), 0U);
}

/** A block of memory that the sanitizer knows the end of. */
std::unique_ptr<char[]> blockOf(size_t size)
{
    return std::unique_ptr<char[]>(new char[size]());
}

TEST(WithinRecords, AShortNameRunsOnToTheEndOfTheLastEntry)
{
    const auto block = blockOf(sizeof(ScanNetworkList));
    scanInto(block.get());
    ScanNetworkList list;
    std::memcpy(&list, block.get(), sizeof list);
    EXPECT_EQ(list.nCount, 100);
    const char *const name = block.get() + offsetof(ScanNetworkList, entry) + (kEntries - 1) * sizeof list.entry[0] +
                             offsetof(ScanNetworkInfo, strName);
    EXPECT_EQ(std::string(name), filled(32));
    EXPECT_GT(std::strlen(name), sizeof list.entry[0].strName + sizeof list.entry[0].strCode - 1);
}

TEST(WithinRecords, APinRunsOnThroughTheSecretBehindIt)
{
    const std::string pin = filled(39);
    scripted::Host host;
    host.expectFailing("AT+CPIN=" + pin + "," + pin.substr(sizeof PinCodePair::code), 10000);
    int32_t left = 0;
    EXPECT_NE(KR_verifyPIN(0, pin.c_str(), &left, &left), 0U);
}

TEST(WithinRecords, APinThatFillsTheRecordIsNotSent)
{
    const scripted::Host host;
    int32_t left = 0;
    EXPECT_NE(KR_verifyPIN(0, filled(40).c_str(), &left, &left), 0U);
}

#ifdef IS_SANITIZED

class WithinRecordsDeathTest : public testing::Test {
  protected:
    WithinRecordsDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(WithinRecordsDeathTest, AListThatIsAByteShortIsReported)
{
    const auto block = blockOf(sizeof(ScanNetworkList) - 1);
    EXPECT_DEATH(scanInto(block.get()), "heap-buffer-overflow");
}

TEST_F(WithinRecordsDeathTest, AListThatIsNotAlignedIsReported)
{
    const auto block = blockOf(sizeof(ScanNetworkList) + 1);
    EXPECT_DEATH(scanInto(block.get() + 1), "misaligned address");
}

#endif

} // namespace
