#include "tests/support/work_record.h"

#include <gtest/gtest.h>

#include "tests/support/parse_run.h"

namespace {

std::string padded(std::string_view text, size_t size)
{
    std::string field(text);
    field.resize(size, '\0');
    return field;
}

} // namespace

void WorkRecord::expect(std::string_view name, std::string_view line) const
{
    EXPECT_EQ(std::string(record_->CmdName, sizeof record_->CmdName), padded(name, sizeof record_->CmdName));
    EXPECT_TRUE(whole() == padded(line, sizeof record_->Line))
        << "expected " << shown(line) << ", got " << shown(record_->Line);
}
