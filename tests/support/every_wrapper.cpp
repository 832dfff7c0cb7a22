#include "every_wrapper.h"

#include <cstring>
#include <ostream>

#include <gtest/gtest.h>

#include <mainControl/wrappers.h>

namespace wrappers {
namespace {

/// An output of a wrapper: as large as it can be, and untouched by a call that fails.
template <typename Output>
class Untouched {
  public:
    Untouched() { std::memset(&value_, kPattern, sizeof value_); }

    Output &operator*() { return value_; }

    /// Passes a result on, after a look at what the call has written.
    std::uint32_t after(std::uint32_t code) const
    {
        Untouched fresh;
        if (code != 0) {
            EXPECT_EQ(std::memcmp(&value_, &fresh.value_, sizeof value_), 0) << "an output was written on failure";
        }
        return code;
    }

  private:
    static constexpr int kPattern = 0x5A;
    Output value_;
};

using ReplyText = char[16384]; // more than any reply can become

std::uint32_t withText(std::uint32_t (*read)(char *))
{
    Untouched<ReplyText> text;
    return text.after(read(*text));
}

} // namespace

const char *nameOf(Failure failure)
{
    switch (failure) {
    case Failure::Send:
        return "a failing send";
    case Failure::Unparsable:
        return "an unparsable reply";
    case Failure::Error:
        return "ERROR";
    case Failure::CmeError:
        return "+CME ERROR";
    case Failure::CmsError:
        return "+CMS ERROR";
    case Failure::NotSupported:
        return "not support";
    case Failure::Prompt:
        return "a prompt";
    case Failure::Report:
        return "a report in front";
    }
    return "";
}

std::uint32_t Wrapper::codeOf(Failure failure) const
{
    for (const Exception &exception : exceptions) {
        if (exception.failure == failure) return exception.code;
    }
    return UNI_ERROR_FALSE;
}

std::ostream &operator<<(std::ostream &out, const Wrapper &wrapper)
{
    return out << wrapper.name;
}

const std::vector<Wrapper> &all()
{
    static const std::vector<Wrapper> rows = {
        {"atStart", atStart, "AT", 5000},
        {"ateExec", [] { return ateExec(1); }, "ATE1", 5000},
        {"cmeeSet", [] { return cmeeSet(2); }, "AT+CMEE=2", 5000},
        {"cgsnExec", [] { return withText(cgsnExec); }, "AT+CGSN", 5000},
        {"zmsnRead", [] { return withText(zmsnRead); }, "AT+ZMSN?", 5000},
    };
    return rows;
}

} // namespace wrappers
