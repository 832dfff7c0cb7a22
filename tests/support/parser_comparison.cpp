#include "tests/support/parser_comparison.h"

#include <cstring>

#include <gtest/gtest.h>

#include "tests/support/parse_run.h"
#include "tests/support/plain_parser.h"

void compareParses(const std::string &reply, unsigned char pattern, Reached &reached)
{
    SCOPED_TRACE(shown(reply));
    ParseRun run(reply, pattern);
    plain::Parser plainly(reply, *run.record.get());
    plainly.procDataLen = g_iProcDataLen;
    for (int call = 0; call < 3; ++call) {
        run.fillRecord();
        plainly.record = *run.record.get();
        const uint32_t code = plainly.parse();
        ASSERT_EQ(run.parse().code, code);
        ASSERT_EQ(run.text.bytes(), plainly.buffer);
        ASSERT_EQ(run.record->CmdId, plainly.record.CmdId);
        ASSERT_EQ(run.record->Result, plainly.record.Result);
        ASSERT_EQ(run.record->ParasLen, plainly.record.ParasLen);
        ASSERT_STREQ(run.record->Paras, plainly.record.Paras);
        ASSERT_EQ(std::memcmp(run.record->Paras, plainly.record.Paras, sizeof(AtRes::Paras)), 0);
        ASSERT_EQ(g_iProcDataLen, plainly.procDataLen);
        ASSERT_EQ(g_bWaitingRes, 1);
        ASSERT_EQ(run.host.texts(scripted::kParserModule), plainly.log);
        ++reached.codes[code];
        if (code != 0) break;
        reached.identifiers.insert(plainly.record.CmdId);
        reached.bodies += plainly.record.Paras[0] != '\0' && plainly.record.Result == 1 ? 1 : 0;
        reached.callerLines += plainly.record.CmdId == 89 && plainly.record.Result == 1 ? 1 : 0;
        reached.editedFurther += call > 0 ? 1 : 0;
    }
}

void compareOperatorScan(const std::string &reply, Reached &reached)
{
    SCOPED_TRACE(shown(reply));
    ParseRun run(reply);
    plain::Parser plainly(reply, *run.record.get());
    const uint32_t code = plainly.parseOperatorScan();
    ASSERT_EQ(run.parseOperatorScan().code, code);
    ASSERT_EQ(run.text.bytes(), reply + '\0') << "an operator scan is not edited";
    ASSERT_EQ(std::memcmp(run.record.get(), &plainly.record, sizeof(AtRes)), 0);
    ++reached.codes[code];
}
