/** Replies of modems with what a client has to get of them. */
#ifndef TESTS_HOST_AT_SERVER_GOLDEN_REPLIES_H
#define TESTS_HOST_AT_SERVER_GOLDEN_REPLIES_H

#include <string_view>

struct GoldenReply {
    std::string_view command;
    std::string_view fromModem; ///< in the framing of a modem that knows its standard
    std::string_view toClient;
};

/** A report never goes inside of one of these lines. */
constexpr GoldenReply kGoldenReplies[] = {
    {"AT+CFUN=1", "\r\nOK\r\n", "\r\nOK\r\n"},
    {"AT+CPWD=\"SC\",\"1\",\"2\"", "\r\n+CME ERROR: incorrect password\r\n", "\r\n+CME ERROR: incorrect password\r\n"},
    {"AT+CSQ", "\r\n+CSQ: 20,99\r\n\r\nOK\r\n", "\r\n+CSQ: 20,99\r\n\r\nOK\r\n"},
    {"AT+CGSN", "\r\n123456789012345\r\n\r\nOK\r\n", "\r\n123456789012345\r\n\r\nOK\r\n"},
    {"AT+CREG?", "\r\n+CREG: 2,1,\"1A2B\",\"01C2D3E4\",7\r\n\r\nOK\r\n",
     "\r\n+CREG: 2,1,\"1A2B\",\"01C2D3E4\",7\r\n\r\nOK\r\n"},
    {"at+CEREG?", "\r\n+CEREG: 2,1,\"00A1\",\"0001B2C3\",7\r\n\r\nOK\r\n",
     "\r\n2,1,\"00A1\",\"0001B2C3\",7\r\n\r\nOK\r\n"},
    {"AT+CGREG?", "\r\n+CGREG: 0,1\r\n\r\nOK\r\n", "\r\n0,1\r\n\r\nOK\r\n"},
    {"AT+CGDCONT?",
     "\r\n+CGDCONT: 1,\"IP\",\"internet\",\"\",0,0\r\n+CGDCONT: 2,\"IPV6\",\"ims\",\"\",0,0\r\n\r\nOK\r\n",
     "\r\n+CGDCONT: 1,\"IP\",\"internet\",\"\",0,0\r\n+CGDCONT: 2,\"IPV6\",\"ims\",\"\",0,0\r\n\r\nOK\r\n"},
    {"AT+COPS=?",
     "\r\n+COPS: (2,\"One\",\"O\",\"46000\",7),(1,\"Two\",\"T\",\"46001\",2),,(0,1,2,3,4),(0,1,2)\r\n\r\nOK\r\n",
     "\r\n+COPS: 2,\"One\",\"O\",\"46000\",7\r\n+COPS: 1,\"Two\",\"T\",\"46001\",2\r\n\r\nOK\r\n"},
    {"AT^SYSINFO", "\r\n^SYSINFO: 2,3,0,5,1\r\n\r\nOK\r\n", "\r\n^SYSINFO:2,3,0,5,1\r\n\r\nOK\r\n"},
    {"AT+CMGS=5", "\r\n> ", "\r\n> "},
};

#endif
