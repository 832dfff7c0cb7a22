#include "simulator/scenario_file.h"

#include <functional>
#include <initializer_list>
#include <limits>
#include <stdexcept>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/family/family.h"
#include "simulator/text.h"

namespace simulator {
namespace {

using nlohmann::json;

/** What is wrong, and where. */
struct BadScenario : std::runtime_error {
    BadScenario(const std::string &path, std::string_view what) : std::runtime_error(concat(path, ": ", what)) {}
};

/** A value of the document with its place in it. Each reader refuses what is not of its kind. */
struct Node {
    const json &value;
    std::string path;

    [[noreturn]] void refuse(std::string_view what) const { throw BadScenario(path.empty() ? "scenario" : path, what); }

    Node at(const std::string &key, const json &member) const
    {
        return {member, path.empty() ? key : path + '.' + key};
    }
    std::string text() const
    {
        if (!value.is_string()) refuse("must be a text");
        return value.get<std::string>();
    }
    bool boolean() const
    {
        if (!value.is_boolean()) refuse("must be true or false");
        return value.get<bool>();
    }
    long number(long lowest, long highest) const
    {
        const bool isNumber = value.is_number_integer() &&
                              (!value.is_number_unsigned() || value.get<uint64_t>() <= static_cast<uint64_t>(highest));
        if (!isNumber || value.get<int64_t>() < lowest || value.get<int64_t>() > highest)
            refuse(concat("must be a whole number from ", lowest, " to ", highest));
        return value.get<long>();
    }
};

using Setter = std::function<void(const Node &)>;
using Keys = std::initializer_list<std::pair<const char *, Setter>>;

/** Lets each key of an object be read, and knows no others. */
void readObject(const Node &node, Keys keys)
{
    if (!node.value.is_object()) node.refuse("must be an object");
    for (const auto &[key, value] : node.value.items()) {
        const Node member = node.at(key, value);
        bool isKnown = false;
        for (const auto &[name, set] : keys) {
            if (key != name) continue;
            set(member);
            isKnown = true;
        }
        if (!isKnown) member.refuse("unknown key");
    }
}

template <typename Read>
void readArray(const Node &node, Read read)
{
    if (!node.value.is_array()) node.refuse("must be an array");
    size_t index = 0;
    for (const json &element : node.value)
        read(Node{element, concat(node.path, '[', index++, ']')});
}

Setter into(std::string &target)
{
    return [&target](const Node &node) { target = node.text(); };
}

Setter into(bool &target)
{
    return [&target](const Node &node) { target = node.boolean(); };
}

constexpr int kLongestMs = 24 * 60 * 60 * 1000;

template <typename Number>
Setter into(Number &target, long lowest, long highest)
{
    return [&target, lowest, highest](const Node &node) { target = static_cast<Number>(node.number(lowest, highest)); };
}

Setter digitsInto(std::string &target, size_t atLeast, size_t atMost)
{
    return [&target, atLeast, atMost](const Node &node) {
        target = node.text();
        if (!isDigits(target, atLeast, atMost)) node.refuse(concat("must be ", atLeast, " to ", atMost, " digits"));
    };
}

Setter millisecondsInto(int &target)
{
    return into(target, 0, kLongestMs);
}

template <typename Value>
struct Name {
    const char *name;
    Value value;
};

template <typename Value, size_t Size>
Value valueOf(const Node &node, const Name<Value> (&names)[Size])
{
    std::string known;
    for (const Name<Value> &name : names) {
        if (node.text() == name.name) return name.value;
        known += concat(known.empty() ? "" : ", ", name.name);
    }
    node.refuse(concat("must be one of ", known));
}

constexpr Name<Technology> kTechnologies[] = {
    {"gsm", Technology::Gsm}, {"umts", Technology::Umts}, {"lte", Technology::Lte}};

constexpr Name<Sloppiness> kSloppiness[] = {
    {"bare-lf", Sloppiness::BareLineFeeds},
    {"cr-cr-lf", Sloppiness::DoubledReturns},
    {"no-empty-line-before-final", Sloppiness::NoEmptyLineBeforeEnd},
    {"empty-lines-between", Sloppiness::EmptyLinesBetween},
    {"no-blank-behind-colon", Sloppiness::NoBlankBehindColon},
    {"text-behind-final", Sloppiness::TextBehindFinalResult},
};

void readIdentity(const Node &node, Identity &identity)
{
    readObject(node, {{"manufacturer", into(identity.manufacturer)},
                      {"model", into(identity.model)},
                      {"firmware", into(identity.firmware)},
                      {"hardware", into(identity.hardware)},
                      {"imei", digitsInto(identity.imei, 14, 16)},
                      {"serial", into(identity.serial)}});
}

void readSim(const Node &node, SimSettings &sim)
{
    readObject(node, {{"present", into(sim.isPresent)},
                      {"usim", into(sim.isUsim)},
                      {"pin_enabled", into(sim.isPinEnabled)},
                      {"pin", digitsInto(sim.pin, 4, 8)},
                      {"puk", digitsInto(sim.puk, 8, 8)},
                      {"pin_tries", into(sim.pinTries, 0, SimCard::kMaxPinTries)},
                      {"puk_tries", into(sim.pukTries, 0, SimCard::kMaxPukTries)},
                      {"blocked", into(sim.isBlocked)},
                      {"imsi", digitsInto(sim.imsi, 6, 15)},
                      {"iccid", digitsInto(sim.iccid, 18, 20)},
                      {"number", into(sim.number)},
                      {"provider", into(sim.provider)},
                      {"home_name", into(sim.homeName)},
                      {"busy_ms", millisecondsInto(sim.busyMs)}});
}

void readLock(const Node &node, LockSettings &lock)
{
    readObject(
        node,
        {{"active", into(lock.isActive)}, {"code", digitsInto(lock.code, 4, 16)}, {"tries", into(lock.tries, 0, 99)}});
}

void readFacilities(const Node &node, Scenario &scenario)
{
    if (!node.value.is_object()) node.refuse("must be an object");
    for (const auto &[name, lock] : node.value.items()) {
        const Node member = node.at(name, lock);
        const bool isOwn = name != AT_FACILITY_SIM && name != AT_FACILITY_NETWORK;
        if (name.size() != 2 || upperCase(name) != name || !isOwn)
            member.refuse("must be two capital letters other than SC and PN");
        readLock(member, scenario.facilities[name]);
    }
}

Operator readOperator(const Node &node)
{
    constexpr long kLargestArea = 0xFFFF;
    constexpr long kLargestCell = 0xFFFFFFF;
    Operator made;
    readObject(node, {{"name", into(made.name)},
                      {"short", into(made.shortName)},
                      {"plmn", digitsInto(made.plmn, 5, 6)},
                      {"forbidden", into(made.isForbidden)},
                      {"area", into(made.area, 1, kLargestArea)},
                      {"cell", into(made.cell, 1, kLargestCell)},
                      {"technologies", [&](const Node &names) {
                           made.technologies.clear();
                           readArray(names, [&](const Node &name) {
                               made.technologies.push_back(valueOf(name, kTechnologies));
                           });
                       }}});
    if (made.plmn.empty()) node.refuse("has no plmn");
    if (made.name.empty()) made.name = made.plmn;
    if (made.shortName.empty()) made.shortName = made.name;
    return made;
}

void readSignal(const Node &node, SignalSettings &signal)
{
    readObject(node, {{"rssi", into(signal.rssiDbm, -113, -25)},
                      {"walk", into(signal.walkDb, 0, 30)},
                      {"weakest", into(signal.weakestDbm, -113, -25)},
                      {"strongest", into(signal.strongestDbm, -113, -25)}});
    if (signal.weakestDbm > signal.strongestDbm) node.refuse("weakest is stronger than strongest");
}

void readContext(const Node &node, PdpContexts &contexts)
{
    int cid = 0;
    PdpContext context;
    readObject(node, {{"cid", into(cid, 1, kMaxContexts)},
                      {"type", into(context.type)},
                      {"apn", into(context.apn)},
                      {"address", into(context.address)}});
    if (cid == 0) node.refuse("has no cid");
    contexts[cid] = context;
}

void readTiming(const Node &node, Timing &timing)
{
    const auto readCommands = [&](const Node &commands) {
        if (!commands.value.is_object()) commands.refuse("must be an object");
        for (const auto &[beginning, delay] : commands.value.items())
            millisecondsInto(timing.commands[upperCase(beginning)])(commands.at(beginning, delay));
    };
    readObject(node, {{"command_ms", millisecondsInto(timing.commandMs)},
                      {"scan_ms", millisecondsInto(timing.scanMs)},
                      {"select_ms", millisecondsInto(timing.selectMs)},
                      {"sim_ms", millisecondsInto(timing.simMs)},
                      {"power_ms", millisecondsInto(timing.powerMs)},
                      {"registration_ms", millisecondsInto(timing.registrationMs)},
                      {"commands", readCommands}});
}

constexpr long kLargestOffset = 1 << 20;

Setter offsetInto(Offset &offset)
{
    return [&offset](const Node &node) {
        if (node.value == "random")
            offset.reset();
        else
            offset = static_cast<size_t>(node.number(0, kLargestOffset));
    };
}

Fault readFault(const Node &node)
{
    Fault fault;
    const auto readReport = [&](const Node &report) {
        fault.report.emplace();
        readObject(report, {{"text", into(fault.report->text)}, {"offset", offsetInto(fault.report->offset)}});
    };
    const auto readGarbage = [&](const Node &garbage) {
        readObject(garbage, {{"bytes", into(fault.garbageBytes, 1, kLargestOffset)},
                             {"offset", offsetInto(fault.garbageOffset)}});
    };
    const auto readUnplug = [&](const Node &unplug) {
        fault.unplugs = true;
        readObject(unplug, {{"ms", millisecondsInto(fault.unplugMs)}, {"offset", offsetInto(fault.unplugOffset)}});
    };
    const auto readSplit = [&](const Node &split) {
        readArray(split, [&](const Node &offset) {
            fault.split.push_back(static_cast<size_t>(offset.number(0, kLargestOffset)));
        });
    };
    const auto readFraming = [&](const Node &framing) {
        readArray(framing, [&](const Node &name) { fault.framing.push_back(valueOf(name, kSloppiness)); });
    };
    readObject(node, {{"command", into(fault.command)},
                      {"nth", into(fault.nth, 1, std::numeric_limits<int>::max())},
                      {"framing", readFraming},
                      {"split", readSplit},
                      {"gap_ms", millisecondsInto(fault.gapMs)},
                      {"delay_ms", millisecondsInto(fault.delayMs)},
                      {"lose_final", into(fault.losesFinal)},
                      {"echo", into(fault.echoes)},
                      {"overlong_line", into(fault.overlongLine, 1, kLargestOffset)},
                      {"garbage", readGarbage},
                      {"report", readReport},
                      {"unplug", readUnplug}});
    return fault;
}

void readAll(const Node &root, Scenario &scenario)
{
    const auto readFamily = [&](const Node &node) {
        scenario.family = node.text();
        std::string known;
        for (const host::family::Row &row : host::family::kRows) {
            if (row.word == scenario.family) return;
            known += concat(known.empty() ? "" : ", ", row.word);
        }
        node.refuse(concat("must be one of ", known));
    };
    const auto readOperators = [&](const Node &node) {
        scenario.operators.clear();
        readArray(node, [&](const Node &each) { scenario.operators.push_back(readOperator(each)); });
    };
    const auto readContexts = [&](const Node &node) {
        scenario.contexts.clear();
        readArray(node, [&](const Node &each) { readContext(each, scenario.contexts); });
    };
    const auto readFaults = [&](const Node &node) {
        readArray(node, [&](const Node &each) { scenario.faults.push_back(readFault(each)); });
    };
    readObject(root, {{"description", [](const Node &node) { node.text(); }},
                      {"family", readFamily},
                      {"identity", [&](const Node &node) { readIdentity(node, scenario.identity); }},
                      {"sim", [&](const Node &node) { readSim(node, scenario.sim); }},
                      {"network_lock", [&](const Node &node) { readLock(node, scenario.networkLock); }},
                      {"facilities", [&](const Node &node) { readFacilities(node, scenario); }},
                      {"operators", readOperators},
                      {"signal", [&](const Node &node) { readSignal(node, scenario.signal); }},
                      {"contexts", readContexts},
                      {"timing", [&](const Node &node) { readTiming(node, scenario.timing); }},
                      {"faults", readFaults},
                      {"echo", into(scenario.echo)},
                      {"cmee", into(scenario.cmee, AT_CMEE_OFF, AT_CMEE_TEXTS)}});
}

} // namespace

std::string readScenario(std::string_view text, Scenario &scenario)
{
    try {
        const json document = json::parse(text);
        readAll({document, ""}, scenario);
        return {};
    } catch (const BadScenario &bad) {
        return bad.what();
    } catch (const json::exception &bad) {
        return concat("not JSON: ", bad.what());
    }
}

} // namespace simulator
