/** Where reports go: data to standard output, failures and remarks to standard error, in the form that was asked for. */
#ifndef KRCTL_OUTPUT_OUTPUT_H
#define KRCTL_OUTPUT_OUTPUT_H

#include <string>

#include "krctl/output/failure.h"
#include "krctl/output/report.h"
#include "krctl/output/terminal.h"

namespace krctl {

enum class Form { Table, Json, KeyValue };

class Output {
  public:
    /** @param wantsColour, hasBlocks  as in Terminal::of() */
    Output(Form form, bool wantsColour, bool hasBlocks);

    /** The words of the command that reports from now on. */
    void setCommand(std::string command) { command_ = std::move(command); }

    void show(const Report &report) const;
    /** One of many reports: as JSON it takes one line. Written out at once. */
    void showEvent(const Report &report) const;
    void show(const Failure &failure) const;

    /** A remark for a person who waits, on standard error; only in the form for people and only on a terminal. */
    void remark(const std::string &text) const;

    Form form() const { return form_; }
    const Terminal &data() const { return data_; }
    const Terminal &errors() const { return errors_; }

  private:
    std::string failureText(const Failure &failure) const;

    Form form_;
    Terminal data_;
    Terminal errors_;
    std::string command_;
};

} // namespace krctl

#endif
