/** What all tests of the client share: its records, what it tells its observer, and a socket of its own. */
#ifndef TESTS_HOST_AT_CLIENT_CLIENT_FIXTURE_H
#define TESTS_HOST_AT_CLIENT_CLIENT_FIXTURE_H

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/at_client/at_client.h"
#include "tests/host/at_client/scripted_server.h"
#include "tests/processes/child_process.h"

constexpr int32_t kTimeoutMs = 5000;
constexpr int32_t kLongMs = 60000; // of waiting for what surely comes

/** A reply's record, beyond whose terminator nothing may be touched. */
struct Response {
    Response() : record(std::make_unique<AtClientRes>()) { std::memset(record.get(), 'x', sizeof *record); }
    std::string text() const { return record->aucDataBuf; }
    std::unique_ptr<AtClientRes> record;
};

int sendCommand(const char *command, Response &response);
int sendCommand(const char *command);

/** Dispatches until so many have been delivered. */
void dispatch(int count);

class AtClient : public testing::Test {
  protected:
    using Lines = std::vector<std::string>;

    /** Reports stay asked for from the first ClientInit() on, so that all tests begin with it done. */
    static void SetUpTestSuite();
    void SetUp() override;
    void TearDown() override;

    const std::string &path() const { return path_; }
    /** What the observer and the library's callback were told. */
    static Lines told;
    /** Tells the lines above of all that the client says. */
    static const ClientObserver kTellAll;

  private:
    processes::ScratchDirectory directory_;
    std::string path_ = directory_ / "at.sock";
};

#endif
