#include "tests/support/every_wrapper.h"

#include <cstring>
#include <ostream>
#include <utility>

#include <gtest/gtest.h>

#include <mainControl/wrappers.h>

namespace wrappers {
namespace {

/** An output of a wrapper: as large as it can be, and untouched by a call that fails. */
template <typename Output>
class Untouched {
  public:
    Untouched() { std::memset(&value_, kPattern, sizeof value_); }

    Output &operator*() { return value_; }

    /** Passes a result on, after a look at what the call has written. */
    uint32_t after(uint32_t code) const
    {
        Untouched fresh;
        if (code != 0) {
            EXPECT_EQ(std::memcmp(&value_, &fresh.value_, sizeof value_), 0) << "an output was written on failure";
        }
        return code;
    }

  private:
    static constexpr int kPattern = 0x5A;
    Output value_;
};

using Text = char[16384]; // more than any reply can become
using Numbers = int32_t[8];
using SimResponse = uint32_t[4096];

/** A call with one output, which may be an array of them. */
template <typename Output, typename Call>
std::function<uint32_t()> with(Call call)
{
    return [call] {
        Untouched<Output> output;
        return output.after(call(*output));
    };
}

/** A call of a wrapper that reads numbers. */
template <typename... Pointers>
std::function<uint32_t()> reading(uint32_t (*wrapper)(Pointers...))
{
    return with<Numbers>([wrapper](Numbers &numbers) {
        return [&]<size_t... Index>(std::index_sequence<Index...>)
        {
            return wrapper((numbers + Index)...);
        }
        (std::index_sequence_for<Pointers...>{});
    });
}

/** A call of a wrapper that fills a record or a text. */
template <typename Record>
std::function<uint32_t()> filling(uint32_t (*wrapper)(Record *))
{
    return with<Record>([wrapper](Record &record) { return wrapper(&record); });
}

/** The outputs of a wrapper that reads texts and numbers. */
struct EpsState {
    Numbers numbers;
    Text area;
    Text cell;
};
struct Setting {
    Numbers numbers;
    Text state;
};

} // namespace

uint32_t Wrapper::codeOf(Failure failure) const
{
    for (const Exception &exception : exceptions) {
        if (exception.failure == failure) return exception.code;
    }
    if (failure == Failure::SimBusy) return codeOf(Failure::CmeError);
    return UNI_ERROR_FALSE;
}

std::ostream &operator<<(std::ostream &out, const Wrapper &wrapper)
{
    return out << wrapper.name;
}

const std::vector<Wrapper> &all()
{
    static const std::vector<Wrapper> rows = {
        {"atStart", atStart, "AT", 5000},
        {"ateExec", [] { return ateExec(1); }, "ATE1", 5000},
        {"cmeeSet", [] { return cmeeSet(2); }, "AT+CMEE=2", 5000},
        {"cgsnExec", with<Text>([](Text &text) { return cgsnExec(text); }), "AT+CGSN", 5000},
        {"zmsnRead", with<Text>([](Text &text) { return zmsnRead(text); }), "AT+ZMSN?", 5000},

        {"clckSetQuery", with<Numbers>([](Numbers &n) { return clckSet("SC", 2, nullptr, 7, n); }), "AT+CLCK=\"SC\",2",
         10000},
        {"clckSetChange",
         with<Numbers>([](Numbers &n) { return clckSet("SC", 1, "1234", 1, n); }),
         "AT+CLCK=\"SC\",1,\"1234\",1",
         5000,
         {{Failure::Error, UNI_ERROR_SETTING_CPIN_INCORRECT_PASS}, {Failure::CmeError, UNI_ERROR_SETTING_UNKNOWN}}},
        {"xxSet", with<Numbers>([](Numbers &n) { return xxSet(2, n); }), "AT+XX=2", 5000},
        {"epincRead", with<Numbers>([](Numbers &n) { return epincRead(n); }), "AT+EPINC?", 5000},
        {"cardmodeExec", reading(cardmodeExec), "AT+CARDMODE", 5000},
        {"zrapRead", with<Numbers>([](Numbers &n) { return zrapRead(1, n, n + 1); }), "AT+ZRAP?", 5000},
        {"zpinpukTest", reading(zpinpukTest), "AT+ZPINPUK=?", 10000},
        {"cpinRead",
         reading(cpinRead),
         "AT+CPIN?",
         5000,
         {{Failure::CmeError, UNI_ERROR_SETTING_UNKNOWN}, {Failure::SimBusy, UNI_ERROR_SETTING_SIM_BUSY}}},
        {"cpinReadOnTsp",
         reading(cpinRead),
         "AT+CPIN?",
         5000,
         {{Failure::CmeError, UNI_ERROR_SETTING_SIM_NOT_INSERTED}},
         PF_TSP},
        {"cpinSet",
         [] {
             return cpinSet({"1234", ""});
         },
         "AT+CPIN=1234", 10000},
        {"cpinSetQuoted",
         [] {
             return cpinSet({"1234", "5678"});
         },
         "AT+CPIN=\"1234\",\"5678\"",
         10000,
         {},
         PF_MTK},
        {"cpwdSet",
         [] {
             return cpwdSet({"1234", "5678"});
         },
         "AT+CPWD=\"SC\",\"1234\",\"5678\"", 10000},

        {"zsecRead", reading(zsecRead), "AT+ZSEC?", 5000},
        {"zlcokRead", reading(zlcokRead), "AT+ZLOCK?", 5000},
        {"znckSet", [] { return znckSet("12345678"); }, "AT+ZNCK=\"12345678\"", 10000},
        {"znckRead", reading(znckRead), "AT+ZNCK?", 5000},
        {"spsimlockinfoExec", reading(spsimlockinfoExec), "AT+SPSIMLOCKINFO", 5000},
        {"esmlckSet", [] { return esmlckSet(0, 1, "1234"); }, "AT+ESMLCK=0,1,\"1234\"", 10000},
        {"esmlckRead", with<Numbers>([](Numbers &n) { return esmlckRead(0, n, n + 1, n + 2); }), "AT+ESMLCK?", 5000},

        {"cgdcontRead", filling(cgdcontRead), "AT+CGDCONT?", 5000},
        {"cgdcontSet",
         [] {
             return cgdcontSet({1, "IP", "net", "", 0, 0});
         },
         "AT+CGDCONT=1,\"IP\",\"net\",\"\",0,0", 5000},
        {"cgdfltSet",
         [] {
             return cgdfltSet({1, "IP", "net", "", 0, 0});
         },
         "AT*CGDFLT=1,\"IP\",\"net\",,1", 5000},

        {"zoprtRead", reading(zoprtRead), "AT+ZOPRT?", 5000},
        {"zoprtSet", [] { return zoprtSet(1); }, "AT+ZOPRT=1", 5000},
        {"zsetSet", with<Setting>([](Setting &s) { return zsetSet("N", 1, s.state, s.numbers); }), "AT+ZSET=\"N\",1",
         5000},
        {"FOTACTRSet", with<Numbers>([](Numbers &n) { return FOTACTRSet(1, n, n + 1); }), "AT+FOTACTR=1", 5000},
        {"AtNetstaticIp", [] { return AtNetstaticIp("10.0.0.1"); }, "AT*prop=net.static_ip,1,10.0.0.1", 5000},
        {"AtRamdumpHostIp", [] { return AtRamdumpHostIp("10.0.0.1"); }, "AT*prop=ramdump.host_ip,1,10.0.0.1", 5000},

        {"cfunSet", [] { return cfunSet(1); }, "at+cfun=1", 5000},
        {"cfunSetOnTsp", [] { return cfunSet(1); }, "at+cfun=1", 20000, {}, PF_TSP},
        {"cfunRead", reading(cfunRead), "at+cfun?", 5000},
        {"cregSet", [] { return cregSet(2); }, "AT+CREG=2", 5000},
        {"cgregSet", [] { return cgregSet(2); }, "AT+CGREG=2", 5000},
        {"ceregSet", [] { return ceregSet(2); }, "AT+CEREG=2", 5000},
        {"zgaatSet", [] { return zgaatSet(1); }, "AT+ZGAAT=1", 5000},
        {"cgattSet", [] { return cgattSet(1); }, "AT+CGATT=1", 10000},
        {"ceregRead",
         with<EpsState>([](EpsState &s) { return ceregRead(s.numbers, s.numbers + 1, s.area, s.cell, s.numbers + 2); }),
         "at+CEREG?", 5000},
        {"cgregRead", reading(cgregRead), "at+CGREG?", 5000},
        {"cregRead", filling(cregRead), "AT+CREG?", 5000},

        {"crsmSet", with<SimResponse>([](SimResponse &r) {
             return crsmSet({176, 12258, 0, 0, 10, ""}, reinterpret_cast<CrsmRes *>(r));
         }),
         "AT+CRSM=176,12258,0,0,10,", 5000},
        {"crsmSetOnMtk",
         with<SimResponse>([](SimResponse &r) {
             return crsmSet({176, 12258, 0, 0, 10, ""}, reinterpret_cast<CrsmRes *>(r));
         }),
         "AT+CRSM=176,12258,0,0,10",
         5000,
         {},
         PF_MTK},
        {"zdonRead", filling(zdonRead), "AT+ZDON?", 5000},
        {"zpasRead", filling(zpasRead), "AT+ZPAS?", 5000},
        {"copsSet",
         [] {
             return copsSet({1, 2, "46000", 7});
         },
         "AT+COPS=1,2,46000,7", 180000},
        {"copsSetQuoted",
         [] {
             return copsSet({1, 2, "46000", 7});
         },
         "AT+COPS=1,2,\"46000\",7",
         180000,
         {},
         PF_TSP},
        {"copsRead", filling(copsRead), "AT+COPS?", 5000},
        {"copsTest", filling(copsTest), "AT+COPS=?", 180000},
        // copsSet5 takes its reply whole and has tests of its own.

        {"zsntSet", [] { return zsntSet(0, 0, 2); }, "AT+ZSNT=0,0,2", 10000},
        {"zsntRead", reading(zsntRead), "AT+ZSNT?", 5000},
        {"sysconfigRead", filling(sysconfigRead), "AT^SYSCONFIG?", 5000},
        {"sysconfigSet", [] { return sysconfigSet(2, 0, 1, 3); }, "AT^SYSCONFIG=2,0,1,3", 5000},
        {"eratRead", reading(eratRead), "AT+ERAT?", 5000},
        {"eratSet", [] { return eratSet(2, 2); }, "AT+ERAT=2,2", 5000},
        {"zprefbandSet", [] { return zprefbandSet(0); }, "AT+ZPREFBAND=\"0\"", 5000},

        {"sysinfoExec", with<Numbers>([](Numbers &n) { return sysinfoExec(n, n + 1, n + 2, n + 3, n + 4, 0, 0); }),
         "AT^SYSINFO", 5000},
        {"zrssiExec", filling(zrssiExec), "AT+ZRSSI", 5000},
        {"zrssiLteRead", filling(zrssiLteRead), "AT+ZRSSI?", 5000},
        {"zltelcRead", reading(zltelcRead), "AT+ZLTELC?", 5000},
    };
    return rows;
}

} // namespace wrappers
