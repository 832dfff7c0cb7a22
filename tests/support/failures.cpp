#include "tests/support/failures.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace scripted {
namespace {

using Kind = FailureKind;

struct Reply {
    Kind kind;
    const char *text;
    const char *paras = "";
    int32_t identifier = 0;
};

// The first of each kind has values where a reader would look for them.
constexpr Reply kReplies[] = {
    {Kind::Unparsable, "\r\n1,1,1,1,1\r\n"},
    {Kind::Unparsable, ""},
    {Kind::Unparsable, "OK"},
    {Kind::Unparsable, "\r\n"},
    {Kind::Unparsable, "\r\nOK"},
    {Kind::Unparsable, "OK\r\n"},
    {Kind::Unparsable, "\r\nok\r\n"},
    {Kind::Unparsable, "\r\n12\r\n"},
    {Kind::Unparsable, "\r\n1,1\r\n"},
    {Kind::Unparsable, "\r\n1,2,3,4\r\n"},
    {Kind::Unparsable, "\r\n\"\r\nOK\r\n"},
    {Kind::Unparsable, "\r\n\"\r\nOK\r\n\"\r\n"},
    {Kind::Unparsable, "\r\n\"1\r\n\r\nOK\r\n"},

    {Kind::Error, "\r\n1,1,1,1,1\r\n\r\nERROR\r\n", "", 2},
    {Kind::Error, "\r\nERROR\r\n", "", 2},
    {Kind::Error, "\r\n12\r\n\r\nERROR\r\n", "", 2},
    {Kind::Error, "\r\n1,2,3,4\r\n\r\nERROR\r\n", "", 2},
    {Kind::Error, "\r\nERROR\r\n\r\nOK\r\n", "", 2},

    {Kind::CmeError, "\r\n+CME ERROR: 100\r\n", "100", 4},
    {Kind::CmeError, "\r\n+CME ERROR: 10\r\n", "10", 4},
    {Kind::CmeError, "\r\n+CME ERROR: 16\r\n", "16", 4},
    {Kind::CmeError, "\r\n+CME ERROR: unknown\r\n", "unknown", 4},
    {Kind::CmeError, "\r\n+CME ERROR: \r\n", "", 4},
    {Kind::CmeError, "\r\n+CME ERROR: not closed", "", 4},
    {Kind::CmeError, "\r\n1,2,3,4\r\n\r\n+CME ERROR: 3\r\n", "3", 4},

    {Kind::SimBusy, "\r\n+CME ERROR: SIM busy\r\n", "SIM busy", 4},

    {Kind::CmsError, "\r\n+CMS ERROR: 500\r\n", "500", 3},
    {Kind::CmsError, "\r\n+CMS ERROR: 302\r\n", "302", 3},
    {Kind::CmsError, "\r\n+CMS ERROR: incorrect password\r\n", "incorrect password", 3},

    {Kind::NotSupported, "\r\nnot support\r\n", "", 6},

    {Kind::Prompt, "\r\n> ", "", 5},

    {Kind::Report, "\r\n+CGEV: 1,1,1,1,1\r\n\r\nOK\r\n", "1,1,1,1,1", 4193},
    {Kind::Report, "\r\n+CGEV: ME DETACH\r\n\r\nOK\r\n", "ME DETACH", 4193},
    {Kind::Report, "\r\n+CGEV: ME DETACH\r\n\r\n12\r\n\r\nOK\r\n", "ME DETACH", 4193},
    {Kind::Report, "\r\n+ZEND\r\n", "", 4111},
    {Kind::Report, "\r\n+CEREG: 1,2\r\n", "1,2", 12304},
    {Kind::Report, "\r\n+CGREG: 1\r\n\r\n12\r\n\r\nOK\r\n", "1", 12305},
    {Kind::Report, "\r\n+CGREG: 1\r\n\r\n1,2,3,4\r\n\r\nOK\r\n", "1", 12305},
};

} // namespace

const char *nameOf(FailureKind kind)
{
    switch (kind) {
    case Kind::Send:
        return "a failing send";
    case Kind::Unparsable:
        return "an unparsable reply";
    case Kind::Error:
        return "ERROR";
    case Kind::CmeError:
        return "+CME ERROR";
    case Kind::SimBusy:
        return "SIM busy";
    case Kind::CmsError:
        return "+CMS ERROR";
    case Kind::NotSupported:
        return "not support";
    case Kind::Prompt:
        return "a prompt";
    case Kind::Report:
        return "a report in front";
    }
    return "";
}

const std::vector<Failure> &allFailingReplies()
{
    static const std::vector<Failure> all = [] {
        std::vector<Failure> failures;
        for (const Reply &reply : kReplies) {
            const std::string name = nameOf(reply.kind) + std::string(": ") + testing::PrintToString(reply.text);
            failures.push_back({reply.kind, name, reply.text, reply.paras, reply.identifier});
        }
        return failures;
    }();
    return all;
}

const std::vector<Failure> &allFailures()
{
    static const std::vector<Failure> all = [] {
        std::vector<Failure> failures = allFailingReplies();
        failures.insert(failures.begin(), {Kind::Send, nameOf(Kind::Send), {}, "", 0});
        return failures;
    }();
    return all;
}

const Failure &failureOf(FailureKind kind)
{
    const std::vector<Failure> &all = allFailures();
    return *std::find_if(all.begin(), all.end(), [kind](const Failure &failure) { return failure.kind == kind; });
}

} // namespace scripted
