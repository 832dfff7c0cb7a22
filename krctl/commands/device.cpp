#include <array>
#include <utility>

#include <mainControl/api.h>

#include "host/family/family.h"
#include "krctl/commands/commands.h"
#include "krctl/commands/identity.h"
#include "krctl/commands/library_value.h"

namespace krctl {
namespace {

struct Item {
    const char *label;
    const char *key;
    uint32_t (*getter)(int32_t, char *);
};

constexpr std::array kItems{
    Item{"Manufacturer", "manufacturer", KR_getManufacturer},
    Item{"Model", "model", KR_getModelID},
    Item{"Firmware", "firmware", KR_getFirmwareRevision},
    Item{"Hardware", "hardware", KR_getHardwareRevision},
    Item{"IMEI", "imei", KR_getIMEI},
    Item{"Serial number", "serial_number", KR_getSerialNumber},
};

bool hasSerialNumber(const Session &session)
{
    return host::family::rowOfPlatform(session.platform()).hasSerialNumber;
}

Report info(Context &context)
{
    Session &session = context.session;
    session.require(KR_startAT(), "KR_startAT", "answer");
    Report report;
    Section &section = report.addSection("", "");
    for (const Item &item : kItems) {
        // Where there is none the library asks for none.
        const bool isNone = item.getter == KR_getSerialNumber && !hasSerialNumber(session);
        section.add(textField(item.label, item.key,
                              isNone ? "" : identity(session, ItemKind::Device, item.getter, item.label)));
    }
    section.add(textField("Family", "family", session.platformName()));
    session.finish(report);
    return report;
}

Report serial(Context &context)
{
    Session &session = context.session;
    if (!hasSerialNumber(session))
        throw notOnPlatform("Modems of this family have no serial number.", session.where("KR_getSerialNumber"),
                            "The IMEI is shown by \"krctl device info\".");
    std::string number(kMostText + 1, '\0');
    session.require(KR_getSerialNumber(kMostText, number.data()), "KR_getSerialNumber", "tell its serial number");
    Report report;
    report.addSection("", "").add(textField("Serial number", "serial_number", writtenText(std::move(number))));
    return report;
}

constexpr std::array kCommands{
    Command{.path = "device info",
            .help = "maker, model, revisions, IMEI, serial number",
            .examples = "krctl device info\nkrctl -J device info",
            .run = info},
    Command{
        .path = "device serial", .help = "the serial number alone", .examples = "krctl device serial", .run = serial},
};

} // namespace

std::span<const Command> deviceCommands()
{
    return kCommands;
}

} // namespace krctl
