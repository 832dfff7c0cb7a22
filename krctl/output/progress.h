/** A bar on standard error that moves while a call blocks: how long it has run, and how long it may take at most.
 *  Without a terminal nothing is drawn. */
#ifndef KRCTL_OUTPUT_PROGRESS_H
#define KRCTL_OUTPUT_PROGRESS_H

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "krctl/output/terminal.h"

namespace krctl {

/** The line that is drawn: "Scanning  ###-----  12 s of at most 180 s". */
std::string progressLine(const std::string &what, std::chrono::seconds elapsed, std::chrono::seconds atMost,
                         const Terminal &terminal);

class Progress {
  public:
    Progress(const Terminal &terminal, std::string what, std::chrono::seconds atMost);
    /** Wipes the line. */
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

  private:
    void draw();

    const Terminal terminal_;
    const std::string what_;
    const std::chrono::seconds atMost_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool isEnded_ = false;
    std::thread drawing_;
};

} // namespace krctl

#endif
