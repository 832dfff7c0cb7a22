// What a log line comes to: module, line of the source, and a format that was joined and checked by the compiler.

#include <gtest/gtest.h>

#include "lib_public/support/log.h"
#include "tests/support/scripted_host.h"

using namespace mainControl;

namespace {

using Log = ApiLog<"KR_function", "module">;

/** The only line that was logged. */
scripted::LogLine onlyLine(const scripted::Host &host)
{
    EXPECT_EQ(host.log().size(), 1U);
    return host.log().empty() ? scripted::LogLine{} : host.log().front();
}

struct Row {
    const char *name;
    int32_t (*write)(); ///< returns the line it stands in
    const char *format;
    const char *text;
};

const Row kRows[] = {
    {"plain", [] { return Log::line("nothing to fill in"), __LINE__; }, "nothing to fill in", "nothing to fill in"},
    {"number and text", [] { return Log::line("%d of %s", 1, "two"), __LINE__; }, "%d of %s", "1 of two"},
    {"real number", [] { return Log::line("%f", 0.5F), __LINE__; }, "%f", "0.500000"},
    {"no text", [] { return Log::line("%s", static_cast<char *>(nullptr)), __LINE__; }, "%s", "(null)"},
    {"no address", [] { return Log::line("%d", static_cast<int32_t *>(nullptr)), __LINE__; }, "%d", "0"},
    {"entry", [] { return Log::in(), __LINE__; }, "KR_function-in", "KR_function-in"},
    {"argument", [] { return Log::in<"mode">(7), __LINE__; }, "KR_function-in-mode:%d", "KR_function-in-mode:7"},
    {"output", [] { return Log::out<"*p">("x"), __LINE__; }, "KR_function-out-*p:%s", "KR_function-out-*p:x"},
    {"exit", [] { return Log::ret<UNI_ERROR_SUCCESS>(), __LINE__; }, "KR_function-return UNI_ERROR_SUCCESS",
     "KR_function-return UNI_ERROR_SUCCESS"},
    {"exit with a reason", [] { return Log::ret<UNI_ERROR_FALSE, "why">(), __LINE__; },
     "KR_function-return UNI_ERROR_FALSE-why", "KR_function-return UNI_ERROR_FALSE-why"},
    {"outcome", [] { return Log::outcome<"why">(UNI_ERROR_BK_FAIL1), __LINE__; },
     "KR_function-return UNI_ERROR_FALSE-why", "KR_function-return UNI_ERROR_FALSE-why"},
};

TEST(Log, WritesModuleSourceLineAndFormat)
{
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.name);
        const scripted::Host host;
        const int32_t source = row.write();
        const scripted::LogLine line = onlyLine(host);
        EXPECT_EQ(line.module, "module");
        EXPECT_EQ(line.file, "kora_t9lb.log");
        EXPECT_EQ(line.line, source);
        EXPECT_EQ(line.format, row.format);
        EXPECT_EQ(line.text, row.text);
    }
}

TEST(Log, HandsOutTheCodeOfAnExit)
{
    const scripted::Host host;
    EXPECT_EQ(Log::ret<UNI_ERROR_COMM_FAILURE>(), UNI_ERROR_COMM_FAILURE);
    EXPECT_EQ(Log::outcome(UNI_ERROR_SUCCESS), UNI_ERROR_SUCCESS);
    EXPECT_EQ(Log::outcome(UNI_ERROR_BK_FAIL1), UNI_ERROR_FALSE);
}

TEST(Log, NamesTheStepAtWhichAnExchangeEnded)
{
    constexpr struct {
        Ending ending;
        const char *exit;
        const char *exitOfSteps;
        uint32_t code;
    } kEndings[] = {
        {Ending::Ok, "UNI_ERROR_SUCCESS", "UNI_ERROR_SUCCESS", UNI_ERROR_SUCCESS},
        {Ending::NotSent, "UNI_ERROR_FALSE-send at failed", "UNI_ERROR_FALSE-send at failed", UNI_ERROR_FALSE},
        {Ending::NotParsed, "UNI_ERROR_FALSE", "UNI_ERROR_FALSE-parse at failed", UNI_ERROR_FALSE},
        {Ending::Refused, "UNI_ERROR_FALSE", "UNI_ERROR_FALSE", UNI_ERROR_FALSE},
    };
    for (const auto &row : kEndings) {
        scripted::Host host;
        EXPECT_EQ(Log::outcome(row.ending), row.code);
        EXPECT_EQ(onlyLine(host).text, std::string("KR_function-return ") + row.exit);
        host.forgetLog();
        EXPECT_EQ(Log::outcomeOfSteps(row.ending), row.code);
        EXPECT_EQ(onlyLine(host).text, std::string("KR_function-return ") + row.exitOfSteps);
    }
}

} // namespace
