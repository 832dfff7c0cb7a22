// The readings that fill a record: signal in the modem's own units, serving cell, transmit power.

#include <cstring>

#include <gtest/gtest.h>

#include "tests/mainControl/api_dialogue.h"

namespace {

using namespace dialogue;

constexpr Module api{scripted::kApiModule};

/** The parameters of a reply, or none for a bare OK. */
Event replyOf(const char *command, const std::string &name, const std::string &paras)
{
    return paras.empty() ? ok(command, 5000) : ok(command, 5000, name + paras, paras);
}

std::string bytesOf(const GuardedMemory &memory)
{
    return {memory.data(), memory.size()};
}

struct ZrssiRow {
    const char *paras;
    ZrssiPara record; ///< Rssi, ecValue, Rscp, rsrq, rsrp, sinr, networkType
};

const ZrssiRow kQualcomm[] = {
    {"-75", {-75, kKept, kKept, kKept, kKept, kKept, 0}},
    {"-90, -8", {kKept, -8, -90, kKept, kKept, kKept, 1}},
    {"-90,-8", {kKept, -8, -90, kKept, kKept, kKept, 1}},
    {"-95, -10, -70, 12", {-70, kKept, kKept, -10, -95, 12, 2}},
    {"-95,-10,-70,12", {-70, kKept, kKept, -10, -95, 12, 2}},
    {"-95, -10, -70", {-70, kKept, kKept, -10, -95, kKept, 2}},
    {"-95, -10, -70, 12, 5", {-70, kKept, kKept, -10, -95, 12, 2}},
    {"-90,", {kKept, kKept, -90, kKept, kKept, kKept, 1}},
    {",-8", {kKept, kKept, kKept, kKept, kKept, kKept, 1}},
    {"-95,,-70,12", {kKept, kKept, kKept, kKept, -95, kKept, 2}},
    {"none", {kKept, kKept, kKept, kKept, kKept, kKept, 0}},
    {"", {kKept, kKept, kKept, kKept, kKept, kKept, 0}},
};

const ZrssiRow kOthers[] = {
    {"-75,-8,-90", {-75, -8, -90, kKept, kKept, kKept, kKept}},
    {"-75,\"-8\", -90,4", {-75, -8, -90, kKept, kKept, kKept, kKept}},
    {"-75,-8", {-75, -8, kKept, kKept, kKept, kKept, kKept}},
    {"-75", {-75, kKept, kKept, kKept, kKept, kKept, kKept}},
    {"-75,,-90", {-75, kKept, kKept, kKept, kKept, kKept, kKept}},
    {"none", {kKept, kKept, kKept, kKept, kKept, kKept, kKept}},
    {"", {kKept, kKept, kKept, kKept, kKept, kKept, kKept}},
};

const char *zrssiCommand(int32_t platform)
{
    return platform == PF_QC_LTE ? "AT+ZRSSI?" : "AT+ZRSSI";
}

void expectZrssi(int32_t platform, const ZrssiRow &row)
{
    SCOPED_TRACE(row.paras);
    const GuardedRecord<ZrssiPara> record(kFill);
    const ZrssiPara &values = row.record;
    const Events events = {
        api("KR_getZRSSIInfo-in"),
        replyOf(zrssiCommand(platform), "+ZRSSI: ", row.paras),
        api("KR_getZRSSIInfo-out-pZrssiPara->ecValue:%d", values.ecValue),
        api("KR_getZRSSIInfo-out-pZrssiPara->networkType:%d", values.networkType),
        api("KR_getZRSSIInfo-out-pZrssiPara->Rscp:%d", values.Rscp),
        api("KR_getZRSSIInfo-out-pZrssiPara->rsrp:%d", values.rsrp),
        api("KR_getZRSSIInfo-out-pZrssiPara->rsrq:%d", values.rsrq),
        api("KR_getZRSSIInfo-out-pZrssiPara->Rssi:%d", values.Rssi),
        api("KR_getZRSSIInfo-out-pZrssiPara->sinr:%d", values.sinr),
        api("KR_getZRSSIInfo-return UNI_ERROR_SUCCESS"),
    };
    EXPECT_EQ(play(platform, events, [&] { return KR_getZRSSIInfo(record); }), UNI_ERROR_SUCCESS);
    EXPECT_EQ(std::memcmp(record.get(), &values, sizeof values), 0);
}

TEST(Zrssi, TakesTheFormThatTheNumberOfValuesTellsOnQualcomm)
{
    for (const ZrssiRow &row : kQualcomm)
        expectZrssi(PF_QC_LTE, row);
}

TEST(Zrssi, HasOneFormOnAllOtherPlatforms)
{
    for (const int32_t platform : {0, 2, 3, 4, 5, 7}) {
        SCOPED_TRACE(platform);
        for (const ZrssiRow &row : kOthers)
            expectZrssi(platform, row);
    }
}

TEST(Zrssi, FailsInSilence)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(std::to_string(platform) + nameOf(failure));
            const GuardedRecord<ZrssiPara> record(kFill);
            const Events events = {api("KR_getZRSSIInfo-in"), failing(failure, zrssiCommand(platform), 5000)};
            EXPECT_EQ(play(platform, events, [&] { return KR_getZRSSIInfo(record); }), UNI_ERROR_FALSE);
            EXPECT_EQ(bytesOf(record), std::string(sizeof(ZrssiPara), kFill));
        }
    }
}

constexpr const char *kEarlierBand = "EARLIERBAND"; // fills the array

struct CellRow {
    std::string paras;
    int32_t eciLac, pci;
    std::string band;
    int32_t dlEarfcn;
};

const CellRow kCells[] = {
    {"27447297,120,B3,1850", 27447297, 120, "B3", 1850},
    {"27447297,120,\"B3\",1850", 27447297, 120, "B3", 1850},
    {"-1,-2,\"B 3\",-4,5", -1, -2, "B 3", -4},
    {"1,2,\"B\t3  x\",4", 1, 2, "B\t3  x", 4},
    {"1,2,\"B,3\",4", 1, 2, "B,3", 4},
    {"1,2,\"\",4", 1, 2, "", 4},
    {"1,2,B3", 1, 2, "B3", 0},
    {"1,2,B3,", 1, 2, "B3", 0},
    {"1,2,B3,x", 1, 2, "B3", 0},
    {"1,2", 1, 2, kEarlierBand, 0},
    {"1", 1, kKept, kEarlierBand, 0},
    {"x,2,B3,4", kKept, kKept, kEarlierBand, 0},
    {"", kKept, kKept, kEarlierBand, 0},
    {"1,2,LTE BAND,4", 1, 2, "LTE", 0},
    // The array keeps 11 characters; the channel is read all the same.
    {"1,2,ABCDEFGHIJK,4", 1, 2, "ABCDEFGHIJK", 4},
    {"1,2,ABCDEFGHIJKL,4", 1, 2, "ABCDEFGHIJK", 4},
    {"1,2,\"AB DE GH JK\",4", 1, 2, "AB DE GH JK", 4},
    {"1,2,\"AB DE GH JK MN PQ\",4", 1, 2, "AB DE GH JK", 4},
    {"1,2," + filled(254) + ",4", 1, 2, filled(11), 4},
    {"1,2," + filled(255) + ",4", 1, 2, filled(11), 4},
    {"1,2," + filled(512) + ",4", 1, 2, filled(11), 4},
    {"1,2," + filled(1017) + ",4", 1, 2, filled(11), 4},
    // A line of 1024 characters cannot be rewritten and keeps its commas.
    {"1,2," + filled(1018) + ",4", 1, kKept, kEarlierBand, 0},
};

/** The bytes of the array: a band behind which the earlier one still stands. */
std::string bandBytes(const std::string &band)
{
    std::string bytes(kEarlierBand, sizeof CellInfo::band);
    return bytes.replace(0, band.size() + 1, band.c_str(), band.size() + 1);
}

TEST(Cell, IsReadIntoItsRecord)
{
    for (const int32_t platform : kPlatforms) {
        for (const CellRow &row : kCells) {
            SCOPED_TRACE(std::to_string(platform) + ": " + row.paras);
            const GuardedRecord<CellInfo> cell(kFill);
            std::memcpy(cell->band, kEarlierBand, sizeof cell->band);
            const Events events = {
                api("KR_getCellInfo-in"),
                replyOf("AT+ZCELLINFO?", "+ZCELLINFO: ", row.paras),
                api("KR_getCellInfo-out-pCellInfo->eci_lac:%d", row.eciLac),
                api("KR_getCellInfo-out-pCellInfo->pci:%d", row.pci),
                api("KR_getCellInfo-out-pCellInfo->band:%s", row.band),
                api("KR_getCellInfo-out-pCellInfo->dlEarfcn:%d", row.dlEarfcn),
                api("KR_getCellInfo-return UNI_ERROR_SUCCESS"),
            };
            EXPECT_EQ(play(platform, events, [&] { return KR_getCellInfo(cell); }), UNI_ERROR_SUCCESS);
            EXPECT_EQ(cell->eci_lac, row.eciLac);
            EXPECT_EQ(cell->pci, row.pci);
            EXPECT_STREQ(cell->band, row.band.c_str());
            EXPECT_EQ(cell->dlEarfcn, row.dlEarfcn);
            if (!row.band.empty()) {
                EXPECT_EQ(std::string(cell->band, sizeof cell->band), bandBytes(row.band));
            }
        }
    }
}

/** The line behind a failure. */
Event failed(const std::string &function, Failure failure)
{
    return api(function +
               (failure == Failure::Send ? "-return UNI_ERROR_FALSE-send at failed" : "-return UNI_ERROR_FALSE"));
}

TEST(Cell, IsUntouchedByAFailure)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(std::to_string(platform) + nameOf(failure));
            const GuardedRecord<CellInfo> cell(kFill);
            const Events events = {api("KR_getCellInfo-in"), failing(failure, "AT+ZCELLINFO?", 5000),
                                   failed("KR_getCellInfo", failure)};
            EXPECT_EQ(play(platform, events, [&] { return KR_getCellInfo(cell); }), UNI_ERROR_FALSE);
            EXPECT_EQ(bytesOf(cell), std::string(sizeof(CellInfo), kFill));
        }
    }
}

struct PowerRow {
    const char *paras;
    int32_t nettype;
    float txpow;
    const char *logged;
};

constexpr float kEarlierPower = -7.25F;

const PowerRow kPowers[] = {
    {"3,12.5", 3, 12.5F, "12.500000"},
    {"-3,-12.5", -3, -12.5F, "-12.500000"},
    {"3, 23", 3, 23.F, "23.000000"},
    {"3,+.5x", 3, .5F, "0.500000"},
    {"3,1.25e2,9", 3, 125.F, "125.000000"},
    {"3,0x1p3", 3, 8.F, "8.000000"},
    // What is logged is the value after it has become a float.
    {"3,16777217", 3, 16777216.F, "16777216.000000"},
    {"3,0.1", 3, 0.1F, "0.100000"},
    {"3,12345.678", 3, 12345.678F, "12345.677734"},
    {"3", 3, kEarlierPower, "-7.250000"},
    {"3,", 3, kEarlierPower, "-7.250000"},
    {"3,x", 3, kEarlierPower, "-7.250000"},
    {"3 12.5", 3, kEarlierPower, "-7.250000"},
    {"3,\"12.5\"", 3, kEarlierPower, "-7.250000"},
    {"x,12.5", kKept, kEarlierPower, "-7.250000"},
    {"", kKept, kEarlierPower, "-7.250000"},
};

TEST(TxPower, IsReadFromTheParametersAsTheyStand)
{
    for (const int32_t platform : kPlatforms) {
        for (const PowerRow &row : kPowers) {
            SCOPED_TRACE(row.paras);
            const GuardedRecord<ZairInfo> air(kFill);
            air->txpow = kEarlierPower;
            const Events events = {
                api("KR_getTxPowerInfo-in"),
                replyOf("AT*ZAIRINFO?", "*ZAIRINFO: ", row.paras),
                api("KR_getTxPowerInfo-out-pZairInfo->nettype:%d", row.nettype),
                api("KR_getTxPowerInfo-out-pZairInfo->txpow:%f", std::string(row.logged)),
                api("KR_getTxPowerInfo-return UNI_ERROR_SUCCESS"),
            };
            EXPECT_EQ(play(platform, events, [&] { return KR_getTxPowerInfo(air); }), UNI_ERROR_SUCCESS);
            EXPECT_EQ(air->nettype, row.nettype);
            EXPECT_EQ(air->txpow, row.txpow);
        }
    }
}

TEST(TxPower, IsUntouchedByAFailure)
{
    for (const int32_t platform : kPlatforms) {
        for (const Failure failure : kFailures) {
            SCOPED_TRACE(std::to_string(platform) + nameOf(failure));
            const GuardedRecord<ZairInfo> air(kFill);
            const Events events = {api("KR_getTxPowerInfo-in"), failing(failure, "AT*ZAIRINFO?", 5000),
                                   failed("KR_getTxPowerInfo", failure)};
            EXPECT_EQ(play(platform, events, [&] { return KR_getTxPowerInfo(air); }), UNI_ERROR_FALSE);
            EXPECT_EQ(bytesOf(air), std::string(sizeof(ZairInfo), kFill));
        }
    }
}

} // namespace
