#include <array>

#include <mainControl/api.h>
#include <mainControl/at_values.h>
#include <mainControl/wrappers/pdp.h>

#include "krctl/commands/commands.h"
#include "krctl/commands/quotable_text.h"
#include "krctl/readings/profiles.h"
#include "krctl/session/session.h"

namespace krctl {
namespace {

constexpr std::array kTypes{Name{PDP_TYPE_IP, "ip"}, Name{PDP_TYPE_IPV6, "ipv6"}, Name{PDP_TYPE_IPV4V6, "ipv4v6"}};

constexpr Parameter kApn{.name = "APN", .help = "the access point name that the operator gives"};
constexpr Parameter kCid{.name = "--cid",
                         .help = "context of the profile, 1 unless given",
                         .kind = Parameter::Kind::Number,
                         .lowest = 1,
                         .highest = 16};
constexpr Parameter kType{
    .name = "--type", .help = "addresses, ip unless given", .kind = Parameter::Kind::Choice, .choices = kTypes};
constexpr Parameter kAddress{.name = "--address", .help = "a fixed address, if the operator gave one"};

void checkText(const std::string &text, size_t most, const char *name)
{
    if (text.size() > most || !isQuotable(text))
        throw usageFailure('"' + text + "\" is no " + name + '.', "krctl data profile set",
                           "It has at most " + std::to_string(most) +
                               " letters, digits and marks, and no blank or quote.");
}

Report showProfiles(Context &context)
{
    PdpContextList list{};
    const Answer answer = context.session.call([&] { return cgdcontRead(&list); });
    if (!answer.isDone()) throw context.session.failureFor("cgdcontRead", "list its profiles");
    Report report;
    Section &section = report.addSection("", "profiles");
    section.kind = Section::Kind::Table;
    section.whenEmpty = "No profile is defined.";
    for (const Profile &profile : profilesOf(answer.replies.to("AT+CGDCONT?")))
        section.rows.push_back({numberField("Context", "cid", profile.cid), textField("Type", "type", profile.type),
                                textField("APN", "apn", profile.apn),
                                textField("Address", "address", profile.address)});
    return report;
}

Report setProfile(Context &context)
{
    const Arguments &arguments = context.arguments;
    const std::string apn = arguments.text(kApn.name);
    const std::string address = arguments.text(kAddress.name);
    const int32_t cid = arguments.number(kCid.name, 1);
    checkText(apn, sizeof PdpContext::apn - 1, "access point name");
    checkText(address, sizeof PdpContext::pdpAddress - 1, "address");
    context.session.require(KR_setDefaultProfile(cid, arguments.number(kType.name), address.c_str(), "", "", 0, "",
                                                 apn.c_str(), "", "", ""),
                            "KR_setDefaultProfile", "set the profile");
    return Report::done("Context " + std::to_string(cid) + " uses the access point " + apn + '.',
                        {numberField("", "cid", cid), textField("", "type", arguments.text(kType.name, "ip")),
                         textField("", "apn", apn), textField("", "address", address)});
}

Report attachOrDetach(Context &context, bool isAttach)
{
    context.session.require(KR_setDomainAttachMode(isAttach ? AT_CGATT_ATTACHED : AT_CGATT_DETACHED),
                            "KR_setDomainAttachMode",
                            isAttach ? "attach to the packet domain" : "detach from the packet domain");
    return Report::done(isAttach ? "The modem is attached to the packet domain."
                                 : "The modem is detached from the packet domain.",
                        {flagField("", "is_attached", isAttach)});
}

Report attach(Context &context)
{
    return attachOrDetach(context, true);
}

Report detach(Context &context)
{
    return attachOrDetach(context, false);
}

constexpr std::array kSetParameters{kApn, kCid, kType, kAddress};

constexpr std::array kCommands{
    Command{.path = "data profile show",
            .help = "the profiles that are defined",
            .examples = "krctl data profile show",
            .run = showProfiles},
    Command{.path = "data profile set",
            .help = "define the default profile",
            .examples = "krctl data profile set internet\nkrctl data profile set internet --type ipv4v6 --cid 5",
            .parameters = kSetParameters,
            .run = setProfile},
    Command{
        .path = "data attach", .help = "attach to the packet domain", .examples = "krctl data attach", .run = attach},
    Command{
        .path = "data detach", .help = "detach from the packet domain", .examples = "krctl data detach", .run = detach},
};

} // namespace

std::span<const Command> dataCommands()
{
    return kCommands;
}

} // namespace krctl
