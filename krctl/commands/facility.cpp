#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include <mainControl/api.h>
#include <mainControl/at_values.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/secret_input.h"
#include "krctl/readings/sim.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

constexpr Parameter kName{.name = "NAME", .help = "two letters of 3GPP TS 27.007 7.4, such as SC, PN, AO, OI, AI"};
constexpr Parameter kState{.name = "STATE", .help = "the lock", .kind = Parameter::Kind::Choice, .choices = kOnOff};
constexpr Parameter kClass{.name = "--class",
                           .help = "class of information; only 1, voice, is sent",
                           .kind = Parameter::Kind::Number,
                           .lowest = 0,
                           .highest = 255};

std::string facilityOf(const Context &context)
{
    std::string name = context.arguments.text(kName.name);
    const bool isName = name.size() == 2 && std::all_of(name.begin(), name.end(), [](unsigned char character) {
                            return std::isalpha(character) != 0;
                        });
    if (!isName)
        throw usageFailure('"' + name + "\" is no facility.", "krctl facility",
                           "It is " + std::string(kName.help) + '.');
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    return name;
}

Report query(Context &context)
{
    const std::string name = facilityOf(context);
    const Answer answer = context.session.call([&] {
        int32_t status = 0;
        return KR_setFacilityLock(name.c_str(), AT_CLCK_QUERY, "", 0, &status);
    });
    const auto isOn = isLockOn(answer.replies.to("AT+CLCK="));
    if (!isOn) throw context.session.failureFor("KR_setFacilityLock", "tell the state of the facility " + name);
    Report report;
    Section &section = report.addSection("", "");
    section.add(textField("Facility", "facility", name));
    section.add(flagField("Lock", "is_active", isOn, "on", "off"));
    return report;
}

Report set(Context &context)
{
    const std::string name = facilityOf(context);
    const int32_t mode = context.arguments.number(kState.name);
    // These two have tries that are counted, and commands of their own that look after them.
    if (name == AT_FACILITY_SIM)
        throw usageFailure("The PIN lock has commands of its own.", "krctl facility set",
                           mode == AT_CLCK_LOCK ? "Use \"krctl sim lock\"." : "Use \"krctl sim unlock-pin\".");
    if (name == AT_FACILITY_NETWORK && mode == AT_CLCK_UNLOCK)
        throw usageFailure("The network lock has a command of its own.", "krctl facility set",
                           "Use \"krctl lock unlock\".");
    SecretInput input(context.arguments);
    Secret password;
    input.read(kFacilityPassword, password);
    int32_t status = 0;
    (void)KR_setCmee(AT_CMEE_TEXTS); // so that a refusal says why
    const uint32_t result =
        KR_setFacilityLock(name.c_str(), mode, password.c_str(), context.arguments.number(kClass.name), &status);
    if (result != UNI_ERROR_SUCCESS) {
        Failure failure = context.session.failureFor("KR_setFacilityLock", "switch the facility " + name +
                                                                               (mode == AT_CLCK_LOCK ? " on" : " off"));
        if (failure.code == "wrong_code") failure.next = "Check the password and repeat the command.";
        throw Failure(std::move(failure));
    }
    return Report::done("The facility " + name + " is " + (mode == AT_CLCK_LOCK ? "on." : "off."),
                        {textField("", "facility", name), flagField("", "is_active", mode == AT_CLCK_LOCK)});
}

constexpr std::array kQueryParameters{kName};
constexpr std::array kSetParameters{kName, kState, kClass, kPinStdin, kPinFd};

constexpr std::array kCommands{
    Command{.path = "facility query",
            .help = "whether a lock is on",
            .examples = "krctl facility query SC",
            .parameters = kQueryParameters,
            .run = query},
    Command{.path = "facility set",
            .help = "switch a lock on or off; asks for its password",
            .examples = "krctl facility set AO on",
            .parameters = kSetParameters,
            .run = set},
};

} // namespace

std::span<const Command> facilityCommands()
{
    return kCommands;
}

} // namespace krctl
