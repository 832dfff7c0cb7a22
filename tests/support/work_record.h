#ifndef TESTS_SUPPORT_WORK_RECORD_H
#define TESTS_SUPPORT_WORK_RECORD_H

#include <string>
#include <string_view>

#include "tests/support/guarded_text.h"
#include "tests/support/saved_tables.h"

/** A work record in guarded memory with a name and a line, to be compared whole behind a step. */
class WorkRecord {
  public:
    explicit WorkRecord(std::string_view name = "", std::string_view line = "")
    {
        setField(record_->CmdName, name);
        setField(record_->Line, line);
    }

    operator AtCmdLine *() const { return record_; } // NOLINT(google-explicit-constructor)

    void expect(std::string_view name, std::string_view line) const;

    [[nodiscard]] std::string whole() const { return {record_->Line, sizeof record_->Line}; }

  private:
    GuardedRecord<AtCmdLine> record_;
};

#endif
