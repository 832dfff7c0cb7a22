// The handlers, each alone with a parsed report.

#include <cstring>

#include "tests/support/api_call.h"
#include "tests/support/heard.h"
#include "tests/support/sample_text.h"

namespace {

using scripted::Host;
using scripted::kPlatforms;
using scripted::OnPlatform;
using Handler = uint32_t (*)(AtRes *);

/** A parsed report: its text, and behind the terminator a pattern up to the last byte. */
class Record {
  public:
    static constexpr char kPattern = 0x5A;

    explicit Record(const std::string &paras) : record_(static_cast<unsigned char>(kPattern))
    {
        std::memcpy(record_->Paras, paras.c_str(), paras.size() + 1);
        before_ = bytes();
    }

    operator AtRes *() const { return record_; } // NOLINT(google-explicit-constructor): it stands for a record

    /** Expects that the text now is another one, filled with zeros up to the length that it had, and all else as it
     *  was. */
    void expectText(const std::string &text, const std::string &of) const
    {
        const size_t length = std::strlen(before_.c_str() + offsetof(AtRes, Paras));
        ASSERT_LE(text.size(), length) << of;
        std::string expected = before_;
        expected.replace(offsetof(AtRes, Paras), length, text + std::string(length - text.size(), '\0'));
        EXPECT_TRUE(bytes() == expected) << of << ": " << std::string(record_->Paras, length);
    }
    void expectUntouched(const std::string &of) const { EXPECT_TRUE(bytes() == before_) << of; }

  private:
    [[nodiscard]] std::string bytes() const { return {record_.data(), record_.size()}; }

    GuardedRecord<AtRes> record_;
    std::string before_;
};

struct Kind {
    const char *by;
    Handler handle;
};

constexpr Kind kCreg = {"creg", CREG_Notify};
constexpr Kind kCereg = {"cereg", CEREG_Notify};
constexpr Kind kCgreg = {"cgreg", CGREG_Notify};

struct Place {
    int32_t status;
    std::string areaCode;
    std::string cellId;
};

struct ReportRow {
    std::string paras;
    std::string rewritten;
    Place place;
};

/** Expects that a report is rewritten, and heard on every platform; on TSP only if it names a place. Nothing is
 *  logged. */
void expectHeard(const Kind &kind, const ReportRow &row)
{
    const Listeners listeners;
    const bool isSomewhere = !row.place.areaCode.empty() || !row.place.cellId.empty();
    for (const int32_t platform : kPlatforms) {
        const OnPlatform on(platform);
        Listeners::listen();
        for (const bool isListening : {true, false}) {
            if (!isListening) Listeners::stopListening();
            Host host;
            const Record record(row.paras);
            EXPECT_EQ(kind.handle(record), 0U) << row.paras;
            record.expectText(row.rewritten, row.paras);
            std::vector<Heard> heard;
            if (isListening && (platform != PF_TSP || isSomewhere))
                heard.push_back({kind.by, row.place.status, row.place.areaCode, row.place.cellId});
            Listeners::expect(heard, row.paras);
            Log().expectFrom(host);
        }
    }
}

constexpr const char *kDigits35 = "01234567890123456789012345678901234";
constexpr const char *kDigits36 = "012345678901234567890123456789012345";

/** The whole line is taken as it is, so that the word behind the status begins with the comma. */
ReportRow unchanged(const std::string &paras, const std::string &areaCode)
{
    return {paras, paras, {1, areaCode, ""}};
}

// What all three kinds make the same of.
const ReportRow kReports[] = {
    {"1,\"00A1\",\"0001B2C3\"", "1 00A1 0001B2C3", {1, "00A1", "0001B2C3"}},
    {"1,00A1,0001B2C3", "1 00A1 0001B2C3", {1, "00A1", "0001B2C3"}},
    {"5,\"00A1\",\"0001B2C3\",7", "5 00A1 0001B2C3 7", {5, "00A1", "0001B2C3"}},
    {"1,\"00A1\",\"0001B2C3\",7,\"01\"", "1 00A1 0001B2C3 7 01", {1, "00A1", "0001B2C3"}},
    {"1,\"00A1\",\"0001B2C3\",,\"\"", "1 00A1 0001B2C3 \xFD \xFD", {1, "00A1", "0001B2C3"}},
    {"2,1,\"00A1\",\"0001\"", "2 1 00A1 0001", {2, "1", "00A1"}},
    {"-1,\"A\",\"B\"", "-1 A B", {-1, "A", "B"}},
    {"2147483647,\"A\",\"B\"", "2147483647 A B", {INT32_MAX, "A", "B"}},
    {"-2147483648,\"A\",\"B\"", "-2147483648 A B", {INT32_MIN, "A", "B"}},
    {"2", "2", {2, "", ""}},
    {"2,", "2 ", {2, "", ""}},
    {"3,\"00A1\"", "3 00A1", {3, "00A1", ""}},
    {"3,\"00A1\",\"\"", "3 00A1 \xFD", {3, "00A1", ""}},
    {"3,\"00A1\",,7", "3 00A1 \xFD 7", {3, "00A1", ""}},
    {"1,\"A\",\"a b\tc\"",
     "1 A a\xFE"
     "b\xFC"
     "c",
     {1, "A", "a b\tc"}},
    {"1,\"A\",\"a,b\"", "1 A a,b", {1, "A", "a,b"}},
    {"1,\"A\",\"a\xFD\"", "1 A a\xFD", {1, "A", "a\xFD"}},
    {"", "", {0, "", ""}},
    {"x", "x", {0, "", ""}},
    {"FFFE,\"A\",\"B\"", "FFFE A B", {0, "", ""}},
    {",\"xA\",\"B\"", " xA B", {0, "", ""}},
    {"\"1\",\"A\",\"B\"", "1 A B", {1, "A", "B"}},
    {std::string("1,\"") + kDigits35 + "\",\"B\"", std::string("1 ") + kDigits35 + " B", {1, kDigits35, "B"}},
    {std::string("1,\"") + kDigits36 + "\",\"B\"", std::string("1 ") + kDigits36 + " B", {1, kDigits35, "B"}},
    {std::string("1,\"A\",\"") + kDigits35 + '"', std::string("1 A ") + kDigits35, {1, "A", kDigits35}},
    {std::string("1,\"A\",\"") + kDigits36 + '"', std::string("1 A ") + kDigits36, {1, "A", kDigits35}},
    {"1,\"" + filled(300) + "\",\"" + filled(300) + "\",7,\"" + filled(300) + '"',
     "1 " + filled(300) + ' ' + filled(300) + " 7 " + filled(300),
     {1, filled(35), filled(35)}},
    {"1,\"" + filled(1015) + "\",\"\"", "1 " + filled(1015) + " \xFD", {1, filled(35), ""}},
};

TEST(Registration, IsHeardFromEveryKindOfReport)
{
    for (const Kind &kind : {kCreg, kCereg, kCgreg}) {
        for (const ReportRow &row : kReports)
            expectHeard(kind, row);
    }
}

// A line of 1024 characters is not rewritten.
TEST(Registration, IsReadFromALongLineAsItStands)
{
    for (const Kind &kind : {kCreg, kCereg, kCgreg}) {
        expectHeard(kind, unchanged("1," + filled(1022), ',' + filled(34)));
        expectHeard(kind, unchanged("1,\"A\",\"" + filled(5000) + '"', ",\"A\",\"" + filled(29)));
        expectHeard(kind, {"1," + filled(1021), "1 " + filled(1021), {1, filled(35), ""}});
    }
}

TEST(Registration, HasItsAreaCodeRestoredButInPacketReports)
{
    struct AreaRow {
        ReportRow report;
        const char *packetAreaCode;
    };
    const AreaRow rows[] = {
        {{"1,\"a b\tc\",\"d e\"",
          "1 a\xFE"
          "b\xFC"
          "c d\xFE"
          "e",
          {1, "a b\tc", "d e"}},
         "a\xFE"
         "b\xFC"
         "c"},
        {{"1,\"\",\"B\"", "1 \xFD B", {1, "", "B"}}, "\xFD"},
        {{"1,,\"B\"", "1 \xFD B", {1, "", "B"}}, "\xFD"},
        {{"1,\"\",\"\"", "1 \xFD \xFD", {1, "", ""}}, "\xFD"},
        {{"1,\"\",\"\",7,\"\"", "1 \xFD \xFD 7 \xFD", {1, "", ""}}, "\xFD"},
        {{"1,\"\"", "1 \xFD", {1, "", ""}}, "\xFD"},
        {{"1,\"\",", "1 \xFD \xFD", {1, "", ""}}, "\xFD"},
    };
    for (const AreaRow &row : rows) {
        expectHeard(kCreg, row.report);
        expectHeard(kCereg, row.report);
        ReportRow packet = row.report;
        packet.place.areaCode = row.packetAreaCode;
        expectHeard(kCgreg, packet);
    }
}

// More markers than there are quotes: the tail of the longer line is lost.
TEST(Registration, LosesTheTailOfALineThatGrows)
{
    expectHeard(kCreg, {"2,,", "2 \xFD", {2, "", ""}});
    expectHeard(kCgreg, {"2,,", "2 \xFD", {2, "\xFD", ""}});
    expectHeard(kCereg, {"2,,,B", "2 \xFD \xFD", {2, "", ""}});
    expectHeard(kCgreg, {"2,,,B", "2 \xFD \xFD", {2, "\xFD", ""}});
}

TEST(Registration, IsRefusedWithoutARecord)
{
    const Listeners listeners;
    for (const Kind &kind : {kCreg, kCereg, kCgreg}) {
        for (const int32_t platform : kPlatforms) {
            const OnPlatform on(platform);
            Host host;
            EXPECT_EQ(kind.handle(nullptr), 1U) << kind.by;
            Listeners::expect({}, kind.by);
            Log().expectFrom(host);
        }
    }
}

TEST(PacketDomainEvents, AreLoggedByName)
{
    const Listeners listeners;
    const Record record("NW DETACH, \"1\",,");
    for (AtRes *const report : {static_cast<AtRes *>(record), static_cast<AtRes *>(nullptr)}) {
        Host host;
        EXPECT_EQ(CGEV_Notify(report), 0U);
        record.expectUntouched("CGEV");
        Listeners::expect({}, "CGEV");
        Log().api("%s", {"CGEV_Notify"}).expectFrom(host);
    }
}

TEST(OtherReports, AreTakenAndDropped)
{
    const Kind kinds[] = {
        {"ZPASR", ZPASR_Notify},       {"ZDONR", ZDONR_Notify},         {"ZOPERTER", ZOPERTER_Notify},
        {"PSBEARER", PSBEARER_Notify}, {"EUSIM", EUSIM_Notify},         {"ECSQ", ECSQ_Notify},
        {"ESMLA", ESMLA_Notify},       {"ECFU", ECFU_Notify},           {"ESPEECH", ESPEECH_Notify},
        {"ESCRI", ESCRI_Notify},       {"ESIMS", ESIMS_Notify},         {"ETESTSIM", ETESTSIM_Notify},
        {"ECIPH", ECIPH_Notify},       {"ECELLINFO", ECELLINFO_Notify}, {"ENWINFO", ENWINFO_Notify},
        {"ZPBIC", ZPBIC_Notify},
    };
    const Listeners listeners;
    for (const Kind &kind : kinds) {
        const Record record("1,\"A\",\"B\"");
        for (AtRes *const report : {static_cast<AtRes *>(record), static_cast<AtRes *>(nullptr)}) {
            Host host;
            EXPECT_EQ(kind.handle(report), 0U) << kind.by;
            record.expectUntouched(kind.by);
            Listeners::expect({}, kind.by);
            Log().expectFrom(host);
        }
    }
}

} // namespace
