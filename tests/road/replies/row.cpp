#include "tests/road/replies/row.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <utility>

#include "host/family/family.h"
#include "tests/processes/child_process.h"

namespace replies {
namespace {

constexpr std::string_view kRefusal = "\r\nERROR\r\n";

/** Lone low surrogates, which JSON readers refuse, as characters for private use: U+F780 to U+F7FF. */
std::string withReadableOctets(std::string text)
{
    constexpr std::string_view kLow = "\\udc";
    constexpr size_t kEscapeSize = 6;
    for (size_t at = text.find(kLow); at != std::string::npos; at = text.find(kLow, at + kEscapeSize)) {
        const std::string before = at >= kEscapeSize ? text.substr(at - kEscapeSize, 4) : "";
        const bool isOfPair = before == "\\ud8" || before == "\\ud9" || before == "\\uda" || before == "\\udb";
        if (!isOfPair) text.replace(at, kLow.size(), "\\uf7");
    }
    return text;
}

std::vector<std::string> familiesOf(const Json &value)
{
    if (value != "all") return value.get<std::vector<std::string>>();
    std::vector<std::string> all(host::family::kChoices.size());
    std::transform(host::family::kChoices.begin(), host::family::kChoices.end(), all.begin(),
                   [](const host::family::Row &row) { return std::string(row.word); });
    return all;
}

Row rowOf(const Json &object)
{
    Row row;
    row.id = object.at("id").get<std::string>();
    row.families = familiesOf(object.at("families"));
    row.otherwise = object.value("otherwise", std::string(kRefusal));
    row.echoes = object.value("echo", false);
    row.isExactCase = object.value("exact_case", false);
    row.isPluggedIn = object.value("plugged_in", false);
    row.isDebatable = object.value("debatable", false);
    row.reports = object.value("reports", std::vector<std::string>());
    row.run = object.at("run").get<std::vector<std::string>>();
    if (object.contains("input")) row.input = object.at("input").get<std::string>();
    row.expect = object.at("expect");
    row.sends = object.value("sends", std::vector<std::string>());
    row.never = object.value("never", std::vector<std::string>());
    for (const auto &[command, reply] : object.at("say").items())
        row.say.emplace(row.foldedCommand(command), reply);
    if (row.expect.empty() && row.sends.empty() && row.never.empty())
        throw std::runtime_error(row.id + " expects nothing");
    return row;
}

} // namespace

std::string Row::foldedCommand(std::string_view command) const
{
    std::string folded(command);
    if (!isExactCase)
        std::transform(folded.begin(), folded.end(), folded.begin(),
                       [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    return folded;
}

std::string Row::className() const
{
    std::string name = id.substr(0, id.find('/'));
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

std::vector<Row> readRows(const std::string &file)
{
    const std::string text = processes::contents(file);
    if (text.empty()) throw std::runtime_error("nothing in " + file);
    std::vector<Row> rows;
    for (const Json &object : Json::parse(withReadableOctets(text)))
        if (object.contains("id")) rows.push_back(rowOf(object));
    return rows;
}

std::string octets(std::string_view text)
{
    std::string bytes;
    while (!text.empty()) {
        const bool isOctet = text.size() >= 3 && (text.substr(0, 2) == "\xEF\x9E" || text.substr(0, 2) == "\xEF\x9F");
        if (isOctet) {
            const int low = (text[1] & 1) * 0x40 + (text[2] & 0x3F); // U+F780 begins with EF 9E 80
            bytes += static_cast<char>(0x80 + low);
        } else {
            bytes += text.front();
        }
        text.remove_prefix(isOctet ? 3 : 1);
    }
    return bytes;
}

} // namespace replies
