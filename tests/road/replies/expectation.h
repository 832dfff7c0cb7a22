/** Whether what krctl says is what a row expects. */
#ifndef TESTS_ROAD_REPLIES_EXPECTATION_H
#define TESTS_ROAD_REPLIES_EXPECTATION_H

#include <string>
#include <string_view>
#include <vector>

#include "tests/road/replies/row.h"

namespace replies {

struct Said {
    Json data = Json::object(); ///< of krctl, with "exit", "error" and "events" beside it
    std::vector<std::string> sent;
};

/** The value at a path such as registration.eps_code, profiles[1].apn or events[domain=eps].cell; null if there is none. */
Json valueAt(const Json &from, std::string_view path);

bool fits(const Json &value, const Json &wanted);

/** A line for each value and command that is not as expected. */
std::vector<std::string> differences(const Row &row, const Said &said);

} // namespace replies

#endif
