#include "bench/workloads.h"

#include <algorithm>

#include <mainControl/mainControl.h>

#include "bench/host.h"
#include "bench/outputs.h"

namespace bench {
namespace {

std::string twoDigits(int value)
{
    return {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
}

std::string sixteenContexts()
{
    std::string reply = "\r\n";
    for (int cid = 1; cid <= 16; ++cid) {
        reply.append("+CGDCONT: ").append(std::to_string(cid)).append(",\"IPV4V6\",\"apn").append(twoDigits(cid));
        reply.append(".operator.example\",\"0.0.0.0\",0,0\r\n");
    }
    return reply + "\r\nOK\r\n";
}

std::string twentyOperators()
{
    std::string reply = "\r\n+COPS: ";
    for (int i = 1; i <= 20; ++i) {
        const std::string digits = twoDigits(i);
        reply.append(i == 1 ? "(2" : ",(1").append(",\"Operator ").append(digits);
        reply.append("\",\"Op ").append(digits).append("\",\"460").append(digits).append("\",7)");
    }
    return reply + "\r\n\r\nOK\r\n";
}

} // namespace

std::string linesOf(std::string_view head, size_t lineLength, size_t characters)
{
    constexpr std::string_view kValue = "145,\"+493012345678\",\"Somebody's name, and what else is known\"";
    std::string line(head);
    while (line.size() < lineLength)
        line += kValue;
    line.resize(lineLength - 2);
    if (std::count(line.begin(), line.end(), '"') % 2 != 0) line.back() = line.back() == '"' ? '0' : '"';
    line += "\r\n";
    std::string reply = "\r\n";
    while (reply.size() + line.size() + 6 <= characters)
        reply += line;
    return reply + "\r\nOK\r\n";
}

const std::vector<Workload> &workloads()
{
    static const std::vector<Workload> all = {
        {"a", "a bare OK: atStart", "\r\nOK\r\n", [] { atStart(); }},
        {"b", "the IMSI: KR_getIMSI", "\r\n460001234567890\r\n\r\nOK\r\n", [] { KR_getIMSI(sizeof text - 1, text); }},
        {"c", "one +CREG line in mode 2: cregRead", "\r\n+CREG: 2,1,\"1A2B\",\"01A2D3C4\",7\r\n\r\nOK\r\n",
         [] { cregRead(&creg); }},
        {"d", "+CME ERROR: cgsnExec", "\r\n+CME ERROR: SIM failure\r\n", [] { cgsnExec(text); }},
        {"e", "sixteen PDP contexts: cgdcontRead", sixteenContexts(), [] { cgdcontRead(&contexts); }},
        {"f", "twenty operators: copsTest", twentyOperators(), [] { copsTest(&networks); }},
        {"g", "ten thousand characters of lines: cgsnExec", linesOf("+CPBR: ", 48, 10000), [] { cgsnExec(text); }},
        {"h", "a +CEREG report: ProcessMainControlAtCallback",
         "\r\n+CEREG: 1,\"1A2B\",\"01A2D3C4\",7\r\n" + std::string(1, '\0'), // over what the last call left
         [] {
             copyReply(report);
             ProcessMainControlAtCallback(&report);
         }},
    };
    return all;
}

void prepareLibrary()
{
    KR_setCeregNotifyCallback(hear);
}

} // namespace bench
