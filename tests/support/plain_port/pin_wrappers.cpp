#include "tests/support/plain_port/exchange.h"
#include "tests/support/plain_port/wrappers.h"

namespace plain {
namespace {

constexpr int32_t kMtk = 3;
constexpr int32_t kTsp = 4;
constexpr int32_t kSpreadtrum = 5;
constexpr int32_t kLong = 10000;

uint32_t clckQuery(World &world, const char *facility, int32_t *status)
{
    world.log(kSet, "###T9LB LOG### clckSet 2 == mode begin");
    Exchange exchange(world);
    if (!exchange.send(format("AT+CLCK=\"%s\",%d", facility, 2), kLong)) {
        world.log(kSet, "###T9LB LOG### clckSet ClientSendCmd return UNI_ERROR_FALSE");
        return kFalse;
    }
    if (!exchange.parse()) {
        world.log(kSet, "###T9LB LOG### clckSet Bk_Parse_At_Res return UNI_ERROR_FALSE");
        return kFalse;
    }
    if (exchange.isOk()) {
        scan(exchange.paras(), "%d, %*d", status);
        world.log(kSet, "###T9LB LOG### clckSet ClientSendCmd return UNI_ERROR_SUCCESS");
        return kSuccess;
    }
    world.log(kSet, "###T9LB LOG### clckSet last return UNI_ERROR_FALSE");
    return kFalse;
}

std::string clckCommand(const char *facility, int32_t mode, const char *password, int32_t class_)
{
    if (class_ == 1) return format(R"(AT+CLCK="%s",%d,"%s",%d)", facility, mode, password, class_);
    return format(R"(AT+CLCK="%s",%d,"%s")", facility, mode, password);
}

uint32_t clckError(const Exchange &exchange)
{
    if (exchange.mentions("incorrect password") || exchange.mentions("Incorrect password")) {
        exchange.world.log(kSet, "###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_CPIN_INCORRECT_PASS");
        return 24;
    }
    if (exchange.mentions("SIM PUK required")) {
        exchange.world.log(kSet, "###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_CPIN_PUKPASS_REQUIRED");
        return 25;
    }
    exchange.world.log(kSet, "###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_UNKNOWN");
    return 29;
}

int32_t stateOf(const Exchange &exchange)
{
    if (exchange.mentions("SIM PIN")) {
        exchange.world.log(kSet, "###T9LB LOG### CpinRead SIM PIN");
        return 1;
    }
    if (exchange.mentions("SIM PUK")) {
        exchange.world.log(kSet, "###T9LB LOG### CpinRead SIM PUK");
        return 2;
    }
    if (exchange.mentions("PH-NET PIN")) {
        exchange.world.log(kSet, "###T9LB LOG### CpinRead PH-NET PIN");
        return 6;
    }
    exchange.world.log(kSet, "###T9LB LOG### CpinRead SETTING_PIN_UNREQUIRED");
    return 0;
}

uint32_t cpinReadError(const Exchange &exchange)
{
    if (exchange.world.globals.platform == kTsp) return 28;
    if (exchange.mentions("sim failure") || exchange.mentions("SIM failure")) return 26;
    if (exchange.mentions("sim not inserted") || exchange.mentions("SIM not inserted")) return 28;
    if (exchange.mentions("sim busy") || exchange.mentions("SIM busy")) return 27;
    return 29;
}

} // namespace

uint32_t clckSet(World &world, const char *facility, int32_t mode, const char *password, int32_t class_,
                 int32_t *status)
{
    if (mode == 2) return clckQuery(world, facility, status);
    Exchange exchange(world);
    if (!exchange.send(clckCommand(facility, mode, password, class_))) {
        world.log(kSet, "###T9LB LOG### clckSet 2 != mode return UNI_ERROR_FALSE");
        return kFalse;
    }
    if (!exchange.parse()) return kFalse;
    switch (exchange.record.Result) {
    case AT_RES_RESULT_OK:
        world.log(kSet, "###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SUCCESS");
        return kSuccess;
    case AT_RES_RESULT_CME_ERROR:
        return clckError(exchange);
    case AT_RES_RESULT_ERROR:
        world.log(kSet, "###T9LB LOG### clckSet 2 != mode return UNI_ERROR_SETTING_CPIN_INCORRECT_PASS");
        return 24;
    default:
        world.log(kSet, "###T9LB LOG### clckSet last return UNI_ERROR_FALSE");
        return kFalse;
    }
}

uint32_t xxSet(World &world, int32_t selector, int32_t *count)
{
    Exchange exchange(world);
    if (!exchange.succeeds(format("AT+XX=%d", selector))) return kFalse;
    scan(exchange.paras(), "%d, %*d", count);
    return kSuccess;
}

uint32_t epincRead(World &world, int32_t counts[4])
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+EPINC?")) return kFalse;
    scan(exchange.rewritten(), "%d %d %d %d", &counts[0], &counts[1], &counts[2], &counts[3]);
    return kSuccess;
}

uint32_t cardmodeExec(World &world, int32_t *mode)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+CARDMODE")) return kFalse;
    scan(exchange.paras(), "%d, %*d", mode);
    return kSuccess;
}

uint32_t zrapRead(World &world, int32_t /*cardType*/, int32_t *pinLeft, int32_t *pukLeft)
{
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZRAP?")) return kFalse;
    scan(exchange.rewritten(), "%d %*d %d %*d", pinLeft, pukLeft);
    return kSuccess;
}

uint32_t zpinpukTest(World &world, int32_t *pinLeft, int32_t *pukLeft)
{
    world.log(kSet, "###T9LB LOG### zpinpukTest begin");
    Exchange exchange(world);
    if (!exchange.succeeds("AT+ZPINPUK=?", kLong)) return kFalse;
    scan(exchange.rewritten(), "%d %d", pinLeft, pukLeft);
    return kSuccess;
}

uint32_t cpinRead(World &world, int32_t *state)
{
    world.log(kSet, "###T9LB LOG### CpinRead begin");
    Exchange exchange(world);
    if (!exchange.send("AT+CPIN?")) {
        world.log(kSet, "###T9LB LOG### CpinRead ClientSendCmd return UNI_ERROR_FALSE");
        return kFalse;
    }
    exchange.parse();
    if (exchange.isOk()) {
        world.log(kSet, "###T9LB LOG### CpinRead tAtRes.Result == AT_RES_RESULT_OK");
        *state = stateOf(exchange);
        world.log(kSet, "###T9LB LOG### CpinRead return UNI_ERROR_SUCCESS");
        return kSuccess;
    }
    if (exchange.record.Result == AT_RES_RESULT_CME_ERROR) return cpinReadError(exchange);
    world.log(kSet, "###T9LB LOG### CpinRead return last UNI_ERROR_FALSE");
    return kFalse;
}

uint32_t cpinSet(World &world, PinCodePair pair)
{
    world.log(kSet, "###T9LB LOG### cpinSet begin");
    const auto *const code = reinterpret_cast<const char *>(&pair); // may run on into newCode
    const int32_t platform = world.globals.platform;
    const bool quotes = platform == kSpreadtrum || platform == kMtk || platform == kTsp;
    std::string command;
    if (pair.newCode[0] == '\0')
        command = quotes ? format("AT+CPIN=\"%s\"", code) : format("AT+CPIN=%s", code);
    else
        command =
            quotes ? format(R"(AT+CPIN="%s","%s")", code, pair.newCode) : format("AT+CPIN=%s,%s", code, pair.newCode);
    Exchange exchange(world);
    if (!exchange.send(command, kLong)) return kFalse;
    if (!exchange.parse()) return kFalse;
    world.log(kSet, "###T9LB LOG### Bk_Parse_At_Res SUCCESS");
    if (exchange.isOk()) {
        world.log(kSet, "###T9LB LOG### cpinSet result ok");
        return kSuccess;
    }
    if (exchange.record.Result == AT_RES_RESULT_CME_ERROR) {
        if (exchange.mentions("incorrect password")) return 24;
        if (exchange.mentions("SIM PUK required") || exchange.mentions("12")) return 25;
    }
    return kFalse;
}

uint32_t cpwdSet(World &world, PinCodePair pair)
{
    Exchange exchange(world);
    const auto *const code = reinterpret_cast<const char *>(&pair); // may run on into newCode
    if (!exchange.send(format(R"(AT+CPWD="%s","%s","%s")", "SC", code, pair.newCode), kLong)) return kFalse;
    if (!exchange.parse()) return kFalse;
    if (exchange.isOk()) return kSuccess;
    if (exchange.record.Result == AT_RES_RESULT_CME_ERROR) {
        if (exchange.mentions("incorrect password") || exchange.mentions("Incorrect password")) return 24;
        if (exchange.mentions("SIM PUK required")) return 25;
    }
    return kFalse;
}

} // namespace plain
