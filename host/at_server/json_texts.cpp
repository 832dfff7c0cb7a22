#include "host/at_server/json_texts.h"

#include <nlohmann/json.hpp>

namespace host::at_server {
namespace {

using Json = nlohmann::ordered_json;

/** Texts of a modem are bytes of no known encoding: each stands for the character of its number, and none is lost. */
std::string utf8(std::string_view bytes)
{
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80U)
            text += c;
        else
            text.append({static_cast<char>(0xC0U | byte >> 6U), static_cast<char>(0x80U | (byte & 0x3FU))});
    }
    return text;
}

Json textOrNull(std::string_view bytes)
{
    return bytes.empty() ? Json() : Json(utf8(bytes));
}

} // namespace

std::string jsonOf(const Status &status)
{
    Json json{{"version", MAINCONTROL_VERSION},
              {"device", utf8(status.device)},
              {"baud", status.baud},
              {"port", status.isPortOpen ? "open" : "closed"},
              {"why", utf8(status.why)},
              {"family", textOrNull(status.family)}};
    json["running"] = nullptr;
    if (status.running)
        json["running"] = {{"command", textOrNull(status.running->command)},
                           {"remaining_ms", status.running->remainingMs}};
    json["echo"] = status.isEchoed;
    json["waiting"] = status.waiting;
    json["clients"] = status.clients;
    json["commands"] = status.commands;
    json["reports"] = status.reports;
    json["uptime_s"] = status.uptimeS;
    json["record"] = textOrNull(status.record);
    json["rights"] = Json::array();
    for (const at::Right right : at::kEveryRight)
        if (status.rights.has(right)) json["rights"].push_back(at::nameOf(right));
    return json.dump();
}

std::string jsonOf(const Event &event)
{
    Json json{{"time", event.time}};
    if (!event.direction.empty()) json["dir"] = event.direction;
    if (!event.event.empty()) json["event"] = event.event;
    if (!event.text.empty()) json["text"] = utf8(event.text);
    if (!event.as.empty()) json["as"] = event.as;
    if (event.client != 0) json["client"] = event.client;
    if (!event.why.empty()) json["why"] = utf8(event.why);
    return json.dump();
}

} // namespace host::at_server
